#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include "quillon/client/Frames.h"

namespace quillon::cli::testing {

/// Red, green, blue.
using Pixel = std::array<unsigned, 3>;

/// A frame with memory of its own, packed as the board packs one.
class PackedFrame {
public:
    PackedFrame(unsigned width, unsigned lines, unsigned bits,
                const std::function<Pixel(unsigned x, unsigned y)>& pixelAt)
        : bytes_((std::size_t{3} * width * lines * bits + 7) / 8) {
        about.number = 1;
        about.image = 1;
        about.width = width;
        about.lines = lines;
        about.bits = bits;
        std::size_t place = 0;
        for (unsigned y = 0; y < lines; ++y) {
            for (unsigned x = 0; x < width; ++x) {
                const Pixel pixel = pixelAt(x, y);
                for (const unsigned value : {pixel[2], pixel[1], pixel[0]}) {
                    for (unsigned bit = 0; bit < bits; ++bit, ++place) {
                        bytes_[place / 8] |= static_cast<std::byte>((value >> bit & 1U) << place % 8);
                    }
                }
            }
        }
    }

    operator client::Frame() const { return client::Frame(about, bytes_); }

    client::FrameDescription about;

private:
    std::vector<std::byte> bytes_;
};

}  // namespace quillon::cli::testing
