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

    /// FG_TRIGGERCAMERA_SOURCE, FG_TRIGGEROUT_GPO_0_SOURCE, FG_TRIGGEROUT_GPO_1_SOURCE,
    /// FG_TRIGGEROUT_GPO_2_SOURCE, FG_TRIGGEROUT_GPO_3_SOURCE, FG_TRIGGEROUT_GPO_4_SOURCE,
    /// FG_TRIGGEROUT_GPO_5_SOURCE, FG_TRIGGEROUT_GPO_6_SOURCE, FG_TRIGGEROUT_GPO_7_SOURCE,
    /// FG_TRIGGEROUT_FRONT_GPO_0_SOURCE, FG_TRIGGEROUT_FRONT_GPO_1_SOURCE, FG_SIGNAL_ANALYZER_0_SOURCE,
    /// FG_SIGNAL_ANALYZER_1_SOURCE, FG_CUSTOM_SIGNAL_EVENT_0_SOURCE, FG_CUSTOM_SIGNAL_EVENT_1_SOURCE:
    /// GND, VCC or an FG_SIGNAL_... of the route.
    void setRouteSource(Route route, std::uint32_t value, bool reportErrors);
    /// FG_TRIGGERCAMERA_POLARITY, FG_TRIGGEROUT_GPO_0_POLARITY, FG_TRIGGEROUT_GPO_1_POLARITY,
    /// FG_TRIGGEROUT_GPO_2_POLARITY, FG_TRIGGEROUT_GPO_3_POLARITY, FG_TRIGGEROUT_GPO_4_POLARITY,
    /// FG_TRIGGEROUT_GPO_5_POLARITY, FG_TRIGGEROUT_GPO_6_POLARITY, FG_TRIGGEROUT_GPO_7_POLARITY,
    /// FG_TRIGGEROUT_FRONT_GPO_0_POLARITY, FG_TRIGGEROUT_FRONT_GPO_1_POLARITY, FG_SIGNAL_ANALYZER_0_POLARITY,
    /// FG_SIGNAL_ANALYZER_1_POLARITY, FG_CUSTOM_SIGNAL_EVENT_0_POLARITY, FG_CUSTOM_SIGNAL_EVENT_1_POLARITY:
    /// FG_LOW, FG_HIGH.
    void setRoutePolarity(Route route, std::uint32_t value, bool reportErrors);
    /// FG_DIGIO_OUTPUT: levels of GPO 3 (bit 0) and GPO 7 (bit 1); -1 sends nothing.
    void setDigioOutput(std::int32_t value, bool reportErrors);
    /// FG_SIGNAL_ANALYZER_CLEAR: FG_APPLY.
    void setAnalyzerClear(std::int32_t value, bool reportErrors);
    /// FG_CLHS_TRIGGER_PULSE_MESSAGE: FG_PULSE_IMMEDIATE, FG_PULSE_WIDTH.
    void setPulseMessage(std::int32_t value, bool reportErrors);

    /// What the design last accepted for the route; for the camera's, what was last requested.
    std::uint32_t source(Route route) const;
    std::uint32_t polarity(Route route) const;
    /// FG_DIGIO_OUTPUT: the levels of GPO 3 and GPO 7, or -1 if one of them is no fixed level.
    std::int32_t digioOutput() const;
    /// FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE: the design's 33-bit difference, widened to 64 bits with its sign.
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
