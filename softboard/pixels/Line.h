/// @file
/// A line as the board's signals have decided it, and what came of drawing many.
#pragma once

#include <cstddef>
#include <cstdint>

namespace softboard::pixels {

/// A line of a frame. The board keeps one for every line that waits, so it is small.
struct Line {
    std::int64_t tick;       ///< when its exposure ended, or the simulator began to send it
    std::int64_t position;   ///< of the belt when its exposure began, in nanometres; of the simulator simulatorPosition
    std::uint32_t settings;  ///< version of the settings that it is drawn with
    std::uint32_t exposure : 28;  ///< how long it was exposed, in ticks; 0 from the simulator
    std::uint32_t flash : 1;      ///< the flash was active meanwhile
    std::uint32_t inverted : 1;   ///< each bit of its pixels is inverted on its way to the host
};
static_assert(sizeof(Line) == 24);

inline constexpr std::int64_t SimulatorFrameLines = 65536;  ///< no simulator frame is longer

/// The position of a simulator line: both numbers count active frames and lines, from 0.
constexpr std::int64_t simulatorPosition(std::int64_t frame, std::int64_t line) {
    return frame * SimulatorFrameLines + line;
}

/// What was written of a frame.
struct Drawn {
    std::size_t bytes = 0;
    std::size_t lines = 0;   ///< complete ones; no line is written in part
    bool truncated = false;  ///< the next line did not fit, and drawing ended in front of it

    bool operator==(const Drawn&) const = default;
};

}  // namespace softboard::pixels
