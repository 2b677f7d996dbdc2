/// @file
/// What stands in front of a software board's camera, and what goes wrong on the way of its pictures.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>

#include "quillon/client/Export.h"

namespace quillon::client {

/// A line that a scene is asked for. A tick is 8 ns of the board's clock.
struct QUILLON_CLIENT_API SceneLine {
    std::uint64_t tick = 0;  ///< when its exposure ended
    double positionMm = 0;   ///< of the belt, when its exposure began
    double exposureUs = 0;   ///< how long it was exposed
    bool flash = false;      ///< whether the flash was active meanwhile
};

/// Draws a line: red, green and blue of each pixel in turn, 16 bits each, black at first. A line for which it says no,
/// or throws, is black.
using DrawLine = std::function<bool(const SceneLine& about, std::span<std::uint16_t> pixels)>;

/// How bright a scene is.
struct QUILLON_CLIENT_API Light {
    double referenceUs = 0;  ///< the exposure at which the scene looks as it is; 0: the exposure does not matter
    double flashGain = 1;    ///< what all is multiplied by while the flash is active, 0 to 1000
    double noise = 0;        ///< standard deviation, as a part of full scale: 0 to 1
};

/// A time without an end, in µs.
inline constexpr double Forever = std::numeric_limits<double>::infinity();

/// A belt moves with one speed until a time, counted from its start.
struct QUILLON_CLIENT_API BeltMove {
    double untilUs = Forever;  ///< greater than that of the move before
    double mmPerSecond = 0;    ///< negative: it runs back; 0: it stands
};

/// A shaft encoder of two tracks, square waves a quarter of a period apart. A track that is not connected drives none
/// of the inputs, which are 0 to 7 for GPI 0 to 7 and 8 to 11 for front GPI 0 to 3.
struct QUILLON_CLIENT_API Encoder {
    double countsPerMm = 0;     ///< periods of a track in a millimetre of the belt, up to 100000; 0: no encoder
    std::optional<unsigned> a;  ///< the input of the track that leads while the belt runs forward
    std::optional<unsigned> b;  ///< the input of the other track
};

/// What befalls a line.
enum class LineFault {
    Drop = 0,    ///< it does not arrive from the camera, and counts as lost
    Repeat = 1,  ///< it arrives twice, at once
    Invert = 2   ///< each bit of its pixels is inverted
};

/// What befalls a frame.
enum class FrameFault {
    Lose = 0,      ///< it is lost on its way, with all its lines
    Truncate = 1,  ///< only its first lines reach the host; the others count as lost
    Stall = 2      ///< when its first line is there, the DMA stands still for a time
};

/// What can be out of order for a time.
enum class Outage {
    Camera = 0,  ///< without it no line comes of a line trigger
    Link = 1     ///< without it no frame reaches the host
};

}  // namespace quillon::client
