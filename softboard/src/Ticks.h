/// @file
/// The time of the board: whole ticks of the design's clock, 8 ns.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace softboard {

using Tick = std::int64_t;

/// The tick of what is not due.
inline constexpr Tick Never = std::numeric_limits<Tick>::max();

inline constexpr double TicksPerMicrosecond = 125.0;

/// The nearest number of ticks, but at least `least`, and at most those of a second, which no setting needs.
inline Tick ticksOf(double microseconds, Tick least) {
    constexpr double Most = 1e6 * TicksPerMicrosecond;
    const double ticks = microseconds * TicksPerMicrosecond;
    return ticks > static_cast<double>(least) ? static_cast<Tick>(std::min(ticks, Most) + 0.5) : least;
}

/// The nearest number of ticks; Never for what no clock will reach.
inline Tick wholeTicks(double microseconds) {
    constexpr double Longest = 1e18;
    const double ticks = microseconds * TicksPerMicrosecond;
    return ticks < Longest ? static_cast<Tick>(ticks + 0.5) : Never;
}

constexpr Tick ticksInSeconds(std::int64_t seconds) {
    constexpr auto TicksPerSecond = static_cast<Tick>(TicksPerMicrosecond * 1e6);
    return seconds * TicksPerSecond;
}

inline double microsecondsOf(Tick ticks) {
    return static_cast<double>(ticks) / TicksPerMicrosecond;
}

}  // namespace softboard
