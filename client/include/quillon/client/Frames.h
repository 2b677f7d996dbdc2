/// @file
/// Pictures: their bytes, and what is known of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quillon::client {

/// What a pixel consists of.
enum class Component : unsigned { Red, Green, Blue };

/// What may be said of a frame, as bits of FrameDescription::flags.
enum class FrameFlag : std::uint32_t {
    Short = 1,      ///< it has fewer lines than the image height
    GateEnded = 2,  ///< its image ended because the gate fell
    Truncated = 4,  ///< the buffer is smaller than the frame: its end is missing
    LinesLost = 8,  ///< lines of it did not fit into the board's own memory
    Injected = 16   ///< it came in through a debug point
};

/// What is known of a frame beside its bytes. A tick is 8 ns of the board's clock.
struct FrameDescription {
    std::uint64_t number = 0;      ///< 1, 2, 3 ... since the start of the acquisition, without gaps
    std::uint64_t image = 0;       ///< the same among the frames that the trigger made: gaps are frames that were left
                                   ///< out or lost
    std::uint64_t firstTick = 0;   ///< when its first line was there
    std::uint64_t lastTick = 0;    ///< when its last line was there
    std::uint64_t lostBefore = 0;  ///< frames that were lost between the frame before and this one
    std::uint32_t width = 0;       ///< pixels of a line
    std::uint32_t lines = 0;       ///< complete lines
    std::uint32_t bits = 0;        ///< of a component: 8, 10, 12, 14 or 16
    std::uint32_t flags = 0;       ///< FrameFlag
    std::uint32_t buffer = 0;      ///< index of its buffer
    std::uint32_t settings = 0;    ///< version of the settings that its first line was drawn with

    bool has(FrameFlag flag) const { return (flags & static_cast<std::uint32_t>(flag)) != 0; }
    /// The flags by their names: "short", "gate ended", "truncated", "lines lost", "injected".
    std::vector<std::string> flagNames() const;
};

/// A picture that lies in memory of somebody else, who keeps it there as long as the frame is looked at.
///
/// The bytes are one stream of bits, from the lowest bit of the first byte on: blue, green and red of the first pixel,
/// then those of the next; lines follow each other without a gap.
class Frame {
public:
    /// Throws ValueError for a number of bits that no format has, and for fewer bytes than the lines take.
    Frame(const FrameDescription& description, std::span<const std::byte> bytes);

    const FrameDescription& description() const { return description_; }
    std::uint32_t width() const { return description_.width; }
    std::uint32_t lines() const { return description_.lines; }
    std::uint32_t bits() const { return description_.bits; }
    /// The largest value of a component: 255 for 8 bits.
    std::uint32_t largest() const { return (1U << bits()) - 1; }
    /// The frame as it lies in memory.
    std::span<const std::byte> bytes() const { return bytes_; }

    /// A component of the pixel in column `x` of line `y`, both from 0. Throws ValueError outside the picture.
    std::uint16_t component(std::uint32_t x, std::uint32_t y, Component component) const;
    /// Line `y` from 0: red, green and blue of each pixel in turn. Throws ValueError outside the picture and for a
    /// `line` that has not three elements a pixel.
    void readLine(std::uint32_t y, std::span<std::uint16_t> line) const;

private:
    std::uint16_t at(std::uint64_t component) const;

    FrameDescription description_;
    std::span<const std::byte> bytes_;
};

}  // namespace quillon::client
