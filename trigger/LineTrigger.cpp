#include "trigger/LineTrigger.h"

#include <algorithm>

#include "design/DesignClock.h"
#include "design/HandlerFrame.h"
#include "trigger/TriggerInputs.h"

namespace quillon {

namespace {

constexpr double ShortestLine = 0.512;              ///< 64 ticks; of period and exposure
constexpr double LongestPeriod = 2097.144;          ///< 262143 ticks
constexpr double LineExposureCeiling = 1048.568;    ///< 131071 ticks; the longest exposure in any mode
constexpr std::uint32_t MaxCompensation = 1048575;  ///< 20 bits of pulses
constexpr std::int32_t MaxDownscale = 255;          ///< pulses
constexpr double TicksPerPrescale = 3.0;            ///< the debouncing runs on periods of 24 ns

/// What a mode means to the design, and whether the trigger inputs matter in it.
struct ModeRow {
    std::uint32_t designMode;
    int inputAccess;
};

ModeRow modeRow(std::int32_t mode) {
    switch (mode) {
        case GRABBER_CONTROLLED: return {0, ReadOnlyAccess};
        case ASYNC_TRIGGER: return {1, OpenAccess};
        case GRABBER_CONTROLLED_GATED: return {2, ReadOnlyAccess};
        case ASYNC_GATED: return {3, OpenAccess};
        default: fail(ValueOutOfRange);
    }
}

/// The debouncing time in periods of 24 ns, to nearest.
std::uint32_t debouncePrescale(double microseconds) {
    return static_cast<std::uint32_t>(TicksPerMicrosecond * microseconds / TicksPerPrescale + 0.5);
}

}  // namespace

void LineTrigger::setExsyncOn(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.exsyncOn, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_OFF, FG_ON); }, design_,
        Ix::Trigger_Trigger_ExsyncEnable, static_cast<std::uint32_t>(value));
}

void LineTrigger::setLineTriggerInPolarity(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.inPolarity, value, reportErrors,
        [&] { requireRange<std::int32_t>(value, HIGH_ON_ZERO_HIGH, HIGH_ON_ZERO_LOW); }, design_,
        Ix::Trigger_Trigger_LineTrgInPolarity, static_cast<std::uint32_t>(value));
}

void LineTrigger::setLineDownscale(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.downscale, value, reportErrors, [&] { requireRange(value, 1, MaxDownscale); }, design_,
        Ix::Trigger_Trigger_LineTrgDownscaler, static_cast<std::uint32_t>(value));
}

void LineTrigger::setLineDownscaleInit(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.downscaleInit, value, reportErrors, [&] { requireRange(value, 1, MaxDownscale); }, design_,
        Ix::Trigger_Trigger_LineTrgPhase, static_cast<std::uint32_t>(value));
}

void LineTrigger::setShaftEncoderLeading(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.shaftEncoderLeading, value, reportErrors,
        [&] { requireRange<std::int32_t>(value, SOURCE_A, SOURCE_B); }, design_, Ix::Trigger_Trigger_EncoderABLead,
        static_cast<std::uint32_t>(value));
}

void LineTrigger::setShaftEncoderCompensationEnable(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.shaftEncoderCompensationEnable, value, reportErrors,
        [&] { requireRange<std::int32_t>(value, FG_OFF, FG_ON); }, design_, Ix::Trigger_Trigger_EncoderCompensation,
        static_cast<std::uint32_t>(value));
}

void LineTrigger::setShaftEncoderCompensationCount(std::uint32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.shaftEncoderCompensationCount, value, reportErrors, [&] { requireRange(value, 0U, MaxCompensation); },
        design_, Ix::Trigger_Trigger_EncoderCompensationCount, value);
}

void LineTrigger::setExsyncPolarity(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.exsyncPolarity, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_LOW, FG_HIGH); },
        design_, Ix::Trigger_Trigger_ExsyncPolarity, value == FG_LOW ? 1 : 0);
}

void LineTrigger::setLineTriggerMode(std::int32_t value, bool reportErrors) {
    ModeRow row{};
    changeField(
        trigger_.mode, value, reportErrors, [&] { row = modeRow(value); },
        [&](std::int32_t /*previous*/) {
            publishInputAccess(row.inputAccess);
            design_.writeUnsigned(Ix::Trigger_Trigger_LineTriggerMode, row.designMode);
            refreshExposureMaximum();
        });
}

void LineTrigger::publishInputAccess(int flags) {
    for (const FgParameterId parameter : {FG_LINETRIGGERINSRC, FG_LINETRIGGERINPOLARITY, FG_LINETRIGGERDEBOUNCING,
                                          FG_LINE_DOWNSCALE, FG_LINE_DOWNSCALEINIT, FG_SHAFTENCODERON}) {
        records_.setAccessFlags(parameter, flags);
    }
    if (trigger_.shaftEncoderOn != FG_ON) {
        return;
    }
    // The compensation's switch is published twice and its count not at all; setShaftEncoderOn publishes both. The
    // count thus keeps the access that it had when the encoder was switched on.
    for (const FgParameterId parameter : {FG_SHAFTENCODERMODE, FG_SHAFTENCODERINSRC, FG_SHAFTENCODERLEADING,
                                          FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_SHAFTENCODER_COMPENSATION_ENABLE}) {
        records_.setAccessFlags(parameter, flags);
    }
}

void LineTrigger::setLineTriggerInSrc(std::int32_t value, bool reportErrors) {
    setInputSource(trigger_.inSrc, value, reportErrors, Ix::Trigger_Trigger_LineTrgInSourceA, 0,
                   Ix::Trigger_InputSignal_LineTrgInSourceA_Input_Select);
}

void LineTrigger::setShaftEncoderInSrc(std::int32_t value, bool reportErrors) {
    setInputSource(trigger_.shaftEncoderInSrc, value, reportErrors, Ix::Trigger_Trigger_LineTrgInSourceB, 1,
                   Ix::Trigger_InputSignal_LineTrgInSourceB_Input_Select);
}

/// A fixed selector of the trigger unit's input first, then the input that feeds it.
void LineTrigger::setInputSource(std::int32_t& field, std::int32_t value, bool reportErrors, Ix unitInput,
                                 std::uint32_t unitValue, Ix inputSelect) {
    const auto select = inputSelectOf(value);
    changeField(
        field, value, reportErrors, [&] { require(select.has_value(), ValueOutOfRange); },
        [&](std::int32_t /*previous*/) {
            design_.writeUnsigned(unitInput, unitValue);
            design_.writeUnsigned(inputSelect, *select);
        });
}

void LineTrigger::setLineTriggerDebouncing(double value, bool reportErrors) {
    changeField(
        trigger_.debouncing, value, reportErrors, [&] { requireRange(value, ShortestDebouncing, LongestDebouncing); },
        [&](double /*previous*/) {
            design_.writeDouble(Ix::Trigger_Trigger_LineTrgDebouncingTime, value);
            design_.writeUnsigned(Ix::Trigger_Inputs_Debounce8_Prescale_Period, debouncePrescale(value));
        });
}

/// The design's one parameter holds 0 for an encoder that is off, and the filter for one that is on.
void LineTrigger::setShaftEncoderOn(std::int32_t value, bool reportErrors) {
    changeField(
        trigger_.shaftEncoderOn, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_OFF, FG_ON); },
        [&](std::int32_t /*previous*/) {
            const bool on = value == FG_ON;
            const int flags = on ? records_.accessFlags(FG_SHAFTENCODERON) : ReadOnlyAccess;
            design_.writeUnsigned(Ix::Trigger_Trigger_EncoderABMode,
                                  on ? static_cast<std::uint32_t>(trigger_.shaftEncoderMode) : 0);
            for (const FgParameterId parameter :
                 {FG_SHAFTENCODERMODE, FG_SHAFTENCODERINSRC, FG_SHAFTENCODERLEADING,
                  FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_SHAFTENCODER_COMPENSATION_COUNT}) {
                records_.setAccessFlags(parameter, flags);
            }
        });
}

void LineTrigger::setShaftEncoderMode(std::int32_t value, bool reportErrors) {
    changeField(
        trigger_.shaftEncoderMode, value, reportErrors,
        [&] { requireRange<std::int32_t>(value, FILTER_X1, FILTER_X4); },
        [&](std::int32_t /*previous*/) {
            if (trigger_.shaftEncoderOn != FG_OFF) {
                design_.writeUnsigned(Ix::Trigger_Trigger_EncoderABMode, static_cast<std::uint32_t>(value));
            }
        });
}

/// A shorter period leaves exposure and delay as they are, in force and remembered; only their next write is measured
/// against it.
void LineTrigger::setLinePeriode(double value, bool reportErrors) {
    changeField(
        trigger_.linePeriode, value, reportErrors, [&] { requireRange(value, ShortestLine, LongestPeriod); },
        [&](double /*previous*/) {
            design_.writeDouble(Ix::Trigger_Trigger_ExsyncPeriod, value);
            refreshExposureMaximum();
            refreshDelayMaximum();
        });
}

void LineTrigger::setLineExposure(double value, bool reportErrors) {
    changeField(
        trigger_.lineExposure, value, reportErrors, [&] { requireRange(value, ShortestLine, maxExposure()); },
        [&](double /*previous*/) {
            design_.writeDouble(Ix::Trigger_Trigger_ExsyncExposure, value);
            refreshExposureMaximum();
        });
}

void LineTrigger::setLineTriggerDelay(double value, bool reportErrors) {
    changeField(
        trigger_.delay, value, reportErrors, [&] { requireRange(value, 0.0, trigger_.linePeriode); },
        [&](double /*previous*/) { design_.writeDouble(Ix::Trigger_Trigger_Exsync2Delay, value); });
}

bool LineTrigger::isPeriodBound() const {
    return trigger_.mode == GRABBER_CONTROLLED || trigger_.mode == GRABBER_CONTROLLED_GATED;
}

double LineTrigger::maxExposure() const {
    return isPeriodBound() ? std::min(trigger_.linePeriode, LineExposureCeiling) : LineExposureCeiling;
}

void LineTrigger::refreshExposureMaximum() {
    records_.setMaximum(FG_LINEEXPOSURE, std::max(maxExposure(), SmallestPositiveDouble));
}

void LineTrigger::refreshDelayMaximum() {
    records_.setMaximum(FG_LINETRIGGERDELAY, std::max(trigger_.linePeriode, SmallestPositiveDouble));
}

}  // namespace quillon
