/// @file
/// The clock that the design counts its times on.
#pragma once

namespace quillon {

inline constexpr double Mega = 1e6;  ///< microseconds in a second, hertz in a megahertz

inline constexpr double ClockPeriod = 8e-9;         ///< seconds
inline constexpr double Tick = ClockPeriod * Mega;  ///< the same in microseconds
inline constexpr double TicksPerMicrosecond = 125.0;
static_assert(Tick == 0.008 && Tick * TicksPerMicrosecond == 1.0);

}  // namespace quillon
