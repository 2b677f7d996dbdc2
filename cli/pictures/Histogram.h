#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/Chart.h"
#include "quillon/client/Frames.h"

namespace quillon::cli {

/// How often each brightness occurs in frames, for red, green and blue. Brightness is a share of the largest value, so
/// that frames of different formats go together.
class Histogram {
public:
    /// Brightness is told in as many steps: the upper eight bits of a value.
    static constexpr std::size_t Steps = 256;

    struct Colour {
        std::array<std::uint64_t, Steps> counts{};
        double least = 1;  ///< of all values, as shares of the largest that there can be
        double most = 0;
        double sum = 0;
    };

    void add(const client::Frame& frame);

    std::uint64_t pixels() const { return pixels_; }
    const Colour& of(client::Component component) const { return colours_[static_cast<std::size_t>(component)]; }
    /// The mean of a colour as a share; 0 without pixels.
    double mean(client::Component component) const;

    /// For each colour a line with its range and mean, and bars: each colour's highest is as high as there is room.
    std::vector<std::string> asText() const;
    /// The three colours as curves.
    Chart asChart() const;

private:
    std::array<Colour, 3> colours_;
    std::uint64_t pixels_ = 0;
};

}  // namespace quillon::cli
