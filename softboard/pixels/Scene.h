/// @file
/// What stands in front of the camera.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "softboard/pixels/Line.h"

namespace softboard::pixels {

class Scene {
public:
    Scene() = default;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    virtual ~Scene() = default;

    /// The raw line that the camera takes: `pixels` times three components in the camera's order, each a byte for 8
    /// bits and a 16-bit word of the computer for more, the value in its low `bits`. What is above them is ignored, and
    /// pixels at the end that are not delivered are 0.
    /// @param bits    8, 10, 12, 14 or 16
    /// @param memory  for the line, long enough for it
    /// @return where it lies: in `memory`, or in the scene's own, which then stays as it is until the next call
    virtual std::span<const std::byte> take(const Line& line, std::uint32_t pixels, std::uint32_t bits,
                                            std::span<std::byte> memory) = 0;

    /// How far the belt moves from one of its rows to the next. Where there is no belt, each line shows the next row.
    virtual double nanometresPerRow() const { return 1e5; }
};

/// Eight upright bars of one width: white, yellow, cyan, green, magenta, red, blue, black. Each goes from full scale at
/// its left to half of it at its right, so that every stage behind the camera shows. All lines are the same.
class BarScene : public Scene {
public:
    std::span<const std::byte> take(const Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override;

    /// Component `component` of pixel `x`, at full scale of 16 bits.
    static std::uint16_t component(std::uint32_t x, std::uint32_t pixels, std::size_t component);

private:
    std::uint32_t pixels_ = 0;
    std::uint32_t bits_ = 0;
    std::vector<std::byte> line_;  ///< for pixels_ of bits_
};

}  // namespace softboard::pixels
