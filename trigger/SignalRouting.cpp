#include "trigger/SignalRouting.h"

#include <algorithm>
#include <array>

#include "design/HandlerFrame.h"
#include "info/Enumerations.h"

namespace quillon {

namespace {

/// What may feed the camera trigger, a GPO or a front GPO; and an analyzer or a custom event.
constexpr Enumeration SignalSourceOutput = EnumSignalSource;
constexpr Enumeration SignalSourceFull = EnumSignalSourceFull;

/// The number under which the design selects a source.
struct SelectRow {
    std::uint32_t source;
    std::uint32_t select;
};

// The fixed levels are missing, since sendRoute() makes them of select 0; and so is FG_SIGNAL_CAM0_INTERVAL_MODE, which
// is on offer for outputs, but no output of this design takes it: a write ends in ValueNotInList.
constexpr auto Selects = std::to_array<SelectRow>({
    {FG_SIGNAL_CAM0_EXSYNC, 1},     {FG_SIGNAL_CAM0_EXSYNC2, 2},
    {FG_SIGNAL_CAM0_FLASH, 3},      {FG_SIGNAL_CAM0_LVAL, 4},
    {FG_SIGNAL_CAM0_FVAL, 5},       {FG_SIGNAL_CAM0_LINE_START, 33},
    {FG_SIGNAL_CAM0_LINE_END, 34},  {FG_SIGNAL_CAM0_FRAME_START, 35},
    {FG_SIGNAL_CAM0_FRAME_END, 36}, {FG_SIGNAL_GPI_0, 21},
    {FG_SIGNAL_GPI_1, 22},          {FG_SIGNAL_GPI_2, 23},
    {FG_SIGNAL_GPI_3, 24},          {FG_SIGNAL_GPI_4, 25},
    {FG_SIGNAL_GPI_5, 26},          {FG_SIGNAL_GPI_6, 27},
    {FG_SIGNAL_GPI_7, 28},          {FG_SIGNAL_FRONT_GPI_0, 29},
    {FG_SIGNAL_FRONT_GPI_1, 30},    {FG_SIGNAL_FRONT_GPI_2, 31},
    {FG_SIGNAL_FRONT_GPI_3, 32},
});

/// The two design parameters of a route.
struct RouteRow {
    Ix select, invert;
    Enumeration sources;
};

constexpr std::array<RouteRow, RouteCount> Routes = {{
    {Ix::Trigger_OutputMapping_CamTrigger0_SelectTrigger_SelectSignal_Select,
     Ix::Trigger_OutputMapping_CamTrigger0_SelectTrigger_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select0_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select0_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select1_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select1_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select2_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select2_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select3_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select3_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select4_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select4_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select5_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select5_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select6_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select6_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectGPO_Select7_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectGPO_Select7_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectFrontGPO_Select0_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectFrontGPO_Select0_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_OutputMapping_SelectFrontGPO_Select1_SelectSignal_Select,
     Ix::Trigger_OutputMapping_SelectFrontGPO_Select1_Polarity_Invert, SignalSourceOutput},
    {Ix::Trigger_Analyzer_Analyzer0_Select_SelectSignal_Select, Ix::Trigger_Analyzer_Analyzer0_Select_Polarity_Invert,
     SignalSourceFull},
    {Ix::Trigger_Analyzer_Analyzer1_Select_SelectSignal_Select, Ix::Trigger_Analyzer_Analyzer1_Select_Polarity_Invert,
     SignalSourceFull},
    {Ix::Trigger_Events_SelectCustomSignalEvent0_SelectSignal_Select,
     Ix::Trigger_Events_SelectCustomSignalEvent0_Polarity_Invert, SignalSourceFull},
    {Ix::Trigger_Events_SelectCustomSignalEvent1_SelectSignal_Select,
     Ix::Trigger_Events_SelectCustomSignalEvent1_Polarity_Invert, SignalSourceFull},
}};

const RouteRow& rowOf(Route route) {
    return Routes[static_cast<std::size_t>(route)];
}

bool isOffered(Route route, std::uint32_t source) {
    return holds(rowOf(route).sources, static_cast<int>(source));
}

/// The select of a source other than a fixed level.
std::uint32_t selectOf(std::uint32_t source) {
    const auto row = std::ranges::find(Selects, source, &SelectRow::source);
    require(row != Selects.end(), ValueNotInList);
    return row->select;
}

bool isFixedLevel(std::uint32_t source) {
    return source == VCC || source == GND;
}

}  // namespace

std::uint32_t SignalRouting::source(Route route) const {
    return route == Route::Camera ? stateOf(route).requestedSource : stateOf(route).appliedSource;
}

std::uint32_t SignalRouting::polarity(Route route) const {
    return route == Route::Camera ? stateOf(route).requestedPolarity : stateOf(route).appliedPolarity;
}

/// Both fixed levels are select 0, straight or inverted; the polarity has no effect on them.
void SignalRouting::sendRoute(Route route, std::uint32_t source, std::uint32_t polarity) {
    std::uint32_t select = 0;
    std::uint32_t invert = source == VCC ? 1 : 0;
    if (!isFixedLevel(source)) {
        select = selectOf(source);
        invert = polarity == FG_LOW ? 1 : 0;
    }
    design_.writeUnsigned(rowOf(route).select, select);
    design_.writeUnsigned(rowOf(route).invert, invert);
}

void SignalRouting::setRouteSource(Route route, std::uint32_t value, bool reportErrors) {
    changeField(
        stateOf(route).requestedSource, value, reportErrors, [&] { require(isOffered(route, value), ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            sendRoute(route, value, polarity(route));
            stateOf(route).appliedSource = value;
        });
}

void SignalRouting::setRoutePolarity(Route route, std::uint32_t value, bool reportErrors) {
    changeField(
        stateOf(route).requestedPolarity, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_LOW, FG_HIGH); },
        [&](std::uint32_t /*previous*/) {
            sendRoute(route, source(route), value);
            stateOf(route).appliedPolarity = value;
        });
}

void SignalRouting::setDigioOutput(std::int32_t value, bool reportErrors) {
    changeField(
        routing_.digioOutput, value, reportErrors, [&] { requireRange(value, -1, 3); },
        [&](std::int32_t /*previous*/) {
            if (value >= 0) {
                setFixedLevel(Route::Gpo3, (value & 1) != 0);
                setFixedLevel(Route::Gpo7, (value & 2) != 0);
            }
        });
}

void SignalRouting::setFixedLevel(Route route, bool high) {
    setRouteSource(route, high ? VCC : GND, Reporting);
}

std::int32_t SignalRouting::digioOutput() const {
    const std::uint32_t low = source(Route::Gpo3);
    const std::uint32_t high = source(Route::Gpo7);
    if (!isFixedLevel(low) || !isFixedLevel(high)) {
        return -1;
    }
    return (low == VCC ? 1 : 0) | (high == VCC ? 2 : 0);
}

void SignalRouting::setAnalyzerClear(std::int32_t value, bool reportErrors) {
    changeField(
        routing_.analyzerClear, value, reportErrors, [&] { require(value == FG_APPLY, ValueOutOfRange); },
        [&](std::int32_t /*previous*/) {
            design_.writeUnsigned(Ix::Trigger_Analyzer_Clear_Value, 1);
            design_.writeUnsigned(Ix::Trigger_Analyzer_Clear_Value, 0);
        });
}

void SignalRouting::setPulseMessage(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        routing_.pulseMessage, value, reportErrors,
        [&] {
            requireOneOf<std::int32_t>(value, {FG_PULSE_IMMEDIATE, FG_PULSE_WIDTH});
        },
        design_, Ix::Trigger_OutputMapping_CamTrigger0_CLHSTrigger_EnablePulseWidth_Value,
        value == FG_PULSE_WIDTH ? 1 : 0);
}

std::int64_t SignalRouting::pulseCountDifference() {
    constexpr std::uint64_t signBit = std::uint64_t{1} << 32U;
    constexpr std::uint64_t upperHalf = 0xFFFFFFFF00000000U;
    const std::uint64_t difference = design_.readUnsigned64(Ix::Trigger_Analyzer_Difference_Status, FgTypeInt64);
    return static_cast<std::int64_t>((difference & signBit) != 0 ? difference | upperHalf : difference);
}

}  // namespace quillon
