/// @file
/// What the tests of the drawing share: pictures to stand in front of the camera, and frames to look at.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "softboard/pixels/Line.h"
#include "softboard/pixels/Scene.h"
#include "softboard/pixels/Settings.h"

namespace softboard::pixels::testing {

/// Components in the camera's order at full scale of 16 bits.
using Triple = std::array<std::uint16_t, Colours>;

/// Rows of pixels; the position of a line is its row.
class RowScene : public Scene {
public:
    explicit RowScene(std::vector<std::vector<Triple>> rows) : rows_(std::move(rows)) {}
    std::span<const std::byte> take(const Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override;

private:
    std::vector<std::vector<Triple>> rows_;
};

/// A row of grey pixels.
std::vector<Triple> greys(std::initializer_list<std::uint16_t> values);

/// Line `row` of a scene of rows.
Line lineAt(std::int64_t row, std::uint32_t settings = 0);

struct Frame {
    Drawn drawn;
    std::vector<std::byte> bytes;  ///< those that were written

    /// The bytes from `first` on as hexadecimal digits: `count` of them, or all that there are.
    std::string hex(std::size_t first = 0, std::size_t count = static_cast<std::size_t>(-1)) const;
    /// The bytes as words, the low byte first.
    std::vector<std::uint16_t> words() const;
};

/// Draws lines, each with the settings of its version, into memory of `capacity` bytes, in all ways that there are;
/// these must agree and leave alone what lies behind what they say that they wrote.
Frame drawFrame(const std::vector<Settings>& settings, std::span<const Line> lines, Scene& scene, std::size_t capacity);
/// The same with one kind of settings, the lines 0 to `lines` - 1 of the scene and memory for all.
Frame drawFrame(const Settings& settings, std::int64_t lines, Scene& scene);
/// One grey 16-bit camera line of full scale values, as words of the format.
std::vector<std::uint16_t> drawGreys(Settings settings, std::initializer_list<std::uint16_t> values);

}  // namespace softboard::pixels::testing
