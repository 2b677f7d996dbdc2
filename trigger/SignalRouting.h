#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// The switchboard for digital signals: fifteen routes, each with a source and a polarity, the older digital output,
/// the signal analyzer's read-outs, and the trigger message to the camera.
///
/// A refused value fails with ValueOutOfRange; a source that is on offer but has no select in the design with
/// ValueNotInList.
class SignalRouting {
public:
    SignalRouting(AppletState& state, DesignParameters& design) : routing_(state.routing), design_(design) {}

    void setRouteSource(Route route, std::uint32_t value,
                        bool reportErrors);  ///< GND, VCC or an FG_SIGNAL_... of the route
    void setRoutePolarity(Route route, std::uint32_t value, bool reportErrors);  ///< FG_LOW, FG_HIGH
    void setDigioOutput(std::int32_t value,
                        bool reportErrors);  ///< levels of GPO 3 (bit 0) and GPO 7 (bit 1); -1 sends nothing
    void setAnalyzerClear(std::int32_t value, bool reportErrors);  ///< FG_APPLY
    void setPulseMessage(std::int32_t value, bool reportErrors);   ///< FG_PULSE_IMMEDIATE, FG_PULSE_WIDTH

    /// What the design last accepted for the route; for the camera's, what was last requested.
    std::uint32_t source(Route route) const;
    std::uint32_t polarity(Route route) const;
    /// The levels of GPO 3 and GPO 7, or -1 if one of them is no fixed level.
    std::int32_t digioOutput() const;
    /// The design's 33-bit difference, widened to 64 bits with its sign.
    std::int64_t pulseCountDifference();

private:
    RouteState& stateOf(Route route) { return routing_.routes[static_cast<std::size_t>(route)]; }
    const RouteState& stateOf(Route route) const { return routing_.routes[static_cast<std::size_t>(route)]; }
    void sendRoute(Route route, std::uint32_t source, std::uint32_t polarity);
    void setFixedLevel(Route route, bool high);

    RoutingState& routing_;
    DesignParameters& design_;
};

}  // namespace quillon
