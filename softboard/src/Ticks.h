/// @file
/// The time of the digital signals: whole ticks of the design's clock, 8 ns.
#pragma once

#include <algorithm>
#include <cstdint>

namespace softboard {

using Tick = std::int64_t;

inline constexpr double TicksPerMicrosecond = 125.0;

/// The nearest number of ticks, but at least `least`, and at most those of a second, which no setting needs.
inline Tick ticksOf(double microseconds, Tick least) {
    constexpr double Most = 1e6 * TicksPerMicrosecond;
    const double ticks = microseconds * TicksPerMicrosecond;
    return ticks > static_cast<double>(least) ? static_cast<Tick>(std::min(ticks, Most) + 0.5) : least;
}

inline double microsecondsOf(Tick ticks) {
    return static_cast<double>(ticks) / TicksPerMicrosecond;
}

}  // namespace softboard
