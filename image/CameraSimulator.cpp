#include "image/CameraSimulator.h"

#include <algorithm>

#include "design/DesignClock.h"
#include "design/HandlerFrame.h"

namespace quillon {

namespace {

constexpr std::uint32_t PixelsPerCycle = 32;     ///< the generator works in units of 32 pixels
constexpr double CyclePixels = PixelsPerCycle;   ///< the same in formulas of doubles
constexpr std::uint32_t MaxLineCycles = 294920;  ///< the longest line, active pixels and gap
constexpr std::uint32_t MaxFrameLines = 65536;   ///< the longest frame, active lines and gap
constexpr double MaxPixelRate = CyclePixels / ClockPeriod;
static_assert(MaxPixelRate == 3999999999.9999995);

constexpr double MaxPixelFrequency = MaxPixelRate / Mega;  ///< MHz
static_assert(MaxPixelFrequency == 3999.9999999999995);

constexpr double LowestRate = 0.1;                ///< lines or frames per second
constexpr double HighestPixelFrequency = 4000.0;  ///< MHz
constexpr std::uint32_t PatternLevels = 256;      ///< values of a pixel before the pattern begins again

/// Truncates to 64 bits and keeps the low 32: a negative number wraps to a huge one. What 64 bits cannot hold counts as
/// the hardware's conversion gives it, with low bits of 0.
std::uint32_t toCycles(double value) {
    const bool fits = value > -9223372036854775809.0 && value < 9223372036854775808.0;
    return fits ? static_cast<std::uint32_t>(static_cast<std::int64_t>(value)) : 0;
}

std::uint32_t roundUpToCycle(std::uint32_t pixels) {
    const std::uint32_t whole = pixels & ~(PixelsPerCycle - 1);
    return whole == pixels ? pixels : whole + PixelsPerCycle;
}

}  // namespace

void CameraSimulator::initialize() {
    simulator_.maxPixelRate = MaxPixelRate;
    const SimulatorState start;
    simulator_.activeWidth = start.activeWidth;
    simulator_.activeLineGap = start.activeLineGap;
    simulator_.activeHeight = start.activeHeight;
    simulator_.activeFrameGap = start.activeFrameGap;
    simulator_.cachedFrameRate = start.cachedFrameRate;
    records_.setMaximum(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, simulator_.maxPixelRate / Mega);
}

// Rates from the design. Each is read anew wherever a formula names it.

double CameraSimulator::sequenceRate() {
    return 1.0 / (design_.readUnsigned(Ix::CameraSimulator_PixelFrequency_SequenceLength_ImageWidth) * ClockPeriod);
}

double CameraSimulator::frameSequenceRate() {
    const std::uint32_t sequence = design_.readUnsigned(Ix::CameraSimulator_PixelFrequency_SequenceLength_ImageWidth);
    return 1.0 / ((simulator_.simulatorHeight * sequence) * ClockPeriod);  // the product is formed in 32 bits
}

double CameraSimulator::pixelRate() {
    return pixelFrequency() * Mega;
}

double CameraSimulator::pixelFrequency() {
    if (simulator_.simulatorSelectMode != FG_PIXEL_FREQUENCY) {
        return MaxPixelFrequency;
    }
    return activeCycles() * CyclePixels / SequenceCycles / ClockPeriod / Mega;
}

double CameraSimulator::lineRate() {
    switch (simulator_.simulatorSelectMode) {
        case FG_LINERATE: return sequenceRate();
        case FG_FRAMERATE: return CyclePixels / (simulator_.activeWidth * ClockPeriod);
        case FG_PIXEL_FREQUENCY: return pixelRate() / (simulator_.activeWidth + simulator_.activeLineGap);
        default: fail(ValueNotInList);
    }
}

double CameraSimulator::frameRate() {
    switch (simulator_.simulatorSelectMode) {
        case FG_LINERATE: return sequenceRate() / (simulator_.simulatorHeight + simulator_.activeFrameGap);
        case FG_FRAMERATE: return frameSequenceRate();
        case FG_PIXEL_FREQUENCY:
            return pixelRate() / ((simulator_.activeWidth + simulator_.activeLineGap) *
                                  (simulator_.activeFrameGap + simulator_.simulatorHeight));
        default: fail(ValueNotInList);
    }
}

std::uint32_t CameraSimulator::activeCycles() {
    return design_.readUnsigned(Ix::CameraSimulator_PixelFrequency_ActivePixel_Number);
}

std::uint32_t CameraSimulator::activeCyclesForSaving() {
    return simulator_.simulatorSelectMode == FG_PIXEL_FREQUENCY ? activeCycles() : 0;
}

std::uint32_t CameraSimulator::passiveCyclesForSaving() {
    return simulator_.simulatorSelectMode == FG_PIXEL_FREQUENCY ? SequenceCycles - activeCycles() : 0;
}

std::uint32_t CameraSimulator::lineGap() const {
    return simulator_.simulatorSelectMode == FG_PIXEL_FREQUENCY ? simulator_.activeLineGap : 0;
}

std::uint32_t CameraSimulator::frameGap() const {
    return simulator_.simulatorSelectMode == FG_FRAMERATE ? 0 : simulator_.activeFrameGap;
}

// Limits of the free parameters.

double CameraSimulator::lineRateLimit() const {
    return simulator_.maxPixelRate / (simulator_.activeWidth + CyclePixels);
}

double CameraSimulator::frameRateLimit() const {
    return simulator_.maxPixelRate /
           ((simulator_.activeWidth + PixelsPerCycle) * simulator_.simulatorHeight);  // the product in 32 bits
}

std::uint32_t CameraSimulator::widthLimit() {
    switch (simulator_.simulatorSelectMode) {
        case FG_PIXEL_FREQUENCY: return MaxLineCycles - simulator_.activeLineGap;
        case FG_LINERATE:
            return std::min(MaxLineCycles, toCycles(simulator_.maxPixelRate / sequenceRate() - CyclePixels));
        case FG_FRAMERATE:
            return std::min(
                MaxLineCycles,
                toCycles(simulator_.maxPixelRate / (simulator_.simulatorHeight * frameSequenceRate()) - CyclePixels));
        default: fail(ValueNotInList);
    }
}

std::uint32_t CameraSimulator::lineGapLimit() {
    const std::uint32_t rest = MaxLineCycles - simulator_.activeWidth;
    switch (simulator_.simulatorSelectMode) {
        case FG_PIXEL_FREQUENCY: return rest;
        case FG_LINERATE:
            return std::min(rest,
                            toCycles(simulator_.maxPixelRate / sequenceRate() - simulator_.activeWidth - CyclePixels));
        case FG_FRAMERATE: return 0;
        default: fail(ValueNotInList);
    }
}

std::uint32_t CameraSimulator::heightLimit() {
    if (simulator_.simulatorSelectMode != FG_FRAMERATE) {
        return MaxFrameLines - simulator_.activeFrameGap;
    }
    return std::min(MaxFrameLines,
                    toCycles(simulator_.maxPixelRate / ((simulator_.activeWidth + CyclePixels) * frameSequenceRate())));
}

std::uint32_t CameraSimulator::frameGapLimit() const {
    return simulator_.simulatorSelectMode == FG_PIXEL_FREQUENCY ? MaxFrameLines - simulator_.simulatorHeight : 0;
}

// Sizes.

/// The names of the two design parameters do not match what they take: the first gets the whole line, the second its
/// active part.
void CameraSimulator::sendLineSize(std::uint32_t width, std::uint32_t gap) {
    const std::uint32_t roundedWidth = roundUpToCycle(width);
    const std::uint32_t roundedGap = roundUpToCycle(gap);
    require(roundedWidth + roundedGap <= MaxLineCycles, ValueOutOfRange);
    simulator_.activeWidth = roundedWidth;
    simulator_.activeLineGap = roundedGap;
    design_.writeUnsigned(Ix::CameraSimulator_Size_ImageWidth, (roundedWidth + roundedGap) / PixelsPerCycle);
    design_.writeUnsigned(Ix::CameraSimulator_LineGap_Number, roundedWidth / PixelsPerCycle);
}

void CameraSimulator::sendFrameSize(std::uint32_t height, std::uint32_t gap) {
    require(height + gap <= MaxFrameLines, ValueOutOfRange);
    simulator_.activeHeight = height;
    simulator_.activeFrameGap = gap;
    design_.writeUnsigned(Ix::CameraSimulator_Size_ImageHeight, height + gap);
    design_.writeUnsigned(Ix::CameraSimulator_FrameGap_Number, height);
}

void CameraSimulator::setSimulatorWidth(std::uint32_t value) {
    changeField(
        simulator_.simulatorWidth, value, Reporting,
        [&] {
            require(value != 0, ValueOutOfRange);
            require(value <= widthLimit(), ValueOutOfRange);
        },
        [&](std::uint32_t /*previous*/) {
            sendLineSize(value, lineGap());
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_LINE_GAP, lineGapLimit()); });
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_HEIGHT, heightLimit()); });
            records_.setMaximum(FG_CAMERASIMULATOR_LINERATE, std::max(lineRateLimit(), SmallestPositiveDouble));
            records_.setMaximum(FG_CAMERASIMULATOR_FRAMERATE, std::max(frameRateLimit(), SmallestPositiveDouble));
        });
}

void CameraSimulator::setSimulatorLineGap(std::uint32_t value) {
    changeField(
        simulator_.simulatorLineGap, value, Reporting, [&] { require(value <= lineGapLimit(), ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            sendLineSize(simulator_.activeWidth, value);
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_WIDTH, widthLimit()); });
        });
}

void CameraSimulator::setSimulatorHeight(std::uint32_t value) {
    changeField(
        simulator_.simulatorHeight, value, Reporting,
        [&] {
            require(value != 0, ValueOutOfRange);
            require(value <= heightLimit(), ValueOutOfRange);
        },
        [&](std::uint32_t /*previous*/) {
            sendFrameSize(value, frameGap());
            if (simulator_.simulatorSelectMode == FG_FRAMERATE) {
                setSimulatorFrameRate(simulator_.simulatorFrameRate);
            }
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_WIDTH, widthLimit()); });
            records_.setMaximum(FG_CAMERASIMULATOR_FRAME_GAP, frameGapLimit());
            records_.setMaximum(FG_CAMERASIMULATOR_FRAMERATE, std::max(frameRateLimit(), SmallestPositiveDouble));
        });
}

void CameraSimulator::setSimulatorFrameGap(std::uint32_t value) {
    changeField(
        simulator_.simulatorFrameGap, value, Reporting, [&] { require(value <= frameGapLimit(), ValueOutOfRange); },
        [&](std::uint32_t /*previous*/) {
            sendFrameSize(simulator_.simulatorHeight, value);
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_HEIGHT, heightLimit()); });
        });
}

// Speed.

void CameraSimulator::setSimulatorPixelFrequency(double value) {
    changeField(
        simulator_.simulatorPixelFrequency, value, Reporting, [&] { requireRange(value, 0.0, HighestPixelFrequency); },
        [&](double /*previous*/) {
            const std::uint32_t active = toCycles(value * Mega * SequenceCycles * ClockPeriod / CyclePixels + 0.5);
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_ActivePixel_Number, active);
            // Below 1 MHz no cycle of the sequence is active: the generator stands still, and the pattern fills the
            // whole sequence as with one cycle.
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_RepeatPat_Divisor,
                                  SequenceCycles / std::max(active, 1U));
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_SequenceLength_ImageWidth, SequenceCycles);
            simulator_.cachedFrameRate = frameRate();
        });
}

void CameraSimulator::setSimulatorLineRate(double value) {
    changeField(
        simulator_.simulatorLineRate, value, Reporting, [&] { requireRange(value, LowestRate, lineRateLimit()); },
        [&](double /*previous*/) {
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_SequenceLength_ImageWidth,
                                  toCycles(0.5 + 1.0 / (value * ClockPeriod)));
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_ActivePixel_Number, 1);
            sendLineSize(simulator_.activeWidth, 0);
            simulator_.cachedFrameRate = frameRate();
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_WIDTH, widthLimit()); });
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_LINE_GAP, lineGapLimit()); });
        });
}

void CameraSimulator::setSimulatorFrameRate(double value) {
    changeField(
        simulator_.simulatorFrameRate, value, Reporting, [&] { requireRange(value, LowestRate, frameRateLimit()); },
        [&](double /*previous*/) {
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_SequenceLength_ImageWidth,
                                  toCycles(1.0 / (value * ClockPeriod) / simulator_.simulatorHeight + 0.5));
            design_.writeUnsigned(Ix::CameraSimulator_PixelFrequency_ActivePixel_Number, 1);
            sendLineSize(simulator_.activeWidth, 0);
            sendFrameSize(simulator_.simulatorHeight, 0);
            simulator_.cachedFrameRate = frameSequenceRate();
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_WIDTH, widthLimit()); });
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_HEIGHT, heightLimit()); });
        });
}

/// Which of the timing parameters are open to writes in the speed mode.
void CameraSimulator::publishModeAccess() {
    const std::uint32_t mode = simulator_.simulatorSelectMode;
    const auto publish = [this](FgParameterId parameter, bool open) {
        records_.setAccessFlags(parameter, open ? OpenAccess : ReadOnlyAccess);
    };
    publish(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, mode == FG_PIXEL_FREQUENCY);
    publish(FG_CAMERASIMULATOR_LINERATE, mode == FG_LINERATE);
    publish(FG_CAMERASIMULATOR_FRAMERATE, mode == FG_FRAMERATE);
    publish(FG_CAMERASIMULATOR_LINE_GAP, mode == FG_PIXEL_FREQUENCY);
    publish(FG_CAMERASIMULATOR_FRAME_GAP, mode != FG_FRAMERATE);
}

void CameraSimulator::setSimulatorSelectMode(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorSelectMode, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_PIXEL_FREQUENCY, FG_FRAMERATE); },
        [&](std::uint32_t /*previous*/) {
            publishModeAccess();
            design_.writeUnsigned(Ix::CameraSimulator_ControlPixelClock_Mode, value == FG_PIXEL_FREQUENCY ? 0 : 1);
            const double lineRateBefore = lineRateLimit();  // of the width that was active before it is rounded
            sendLineSize(simulator_.activeWidth, simulator_.simulatorLineGap);
            sendFrameSize(simulator_.simulatorHeight, simulator_.simulatorFrameGap);
            switch (value) {
                case FG_LINERATE: setSimulatorLineRate(std::min(lineRateBefore, simulator_.simulatorLineRate)); break;
                case FG_FRAMERATE: setSimulatorFrameRate(simulator_.cachedFrameRate); break;
                default: setSimulatorPixelFrequency(simulator_.simulatorPixelFrequency); break;
            }
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_WIDTH, widthLimit()); });
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_LINE_GAP, lineGapLimit()); });
            refreshLimit([&] { records_.setMaximum(FG_CAMERASIMULATOR_HEIGHT, heightLimit()); });
            records_.setMaximum(FG_CAMERASIMULATOR_FRAME_GAP, frameGapLimit());
        });
}

// Pattern and trigger.

void CameraSimulator::setSimulatorEnable(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorEnable, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_CAMPORT, FG_CAMERASIMULATOR); },
        [&](std::uint32_t /*previous*/) { design_.writeUnsigned(Ix::CameraSimulator_Enable_SelectSource, value); });
}

void CameraSimulator::setSimulatorPattern(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorPattern, value, reportErrors,
        [&] { requireRange<std::uint32_t>(value, FG_HORIZONTAL, FG_DIAGONAL); },
        [&](std::uint32_t /*previous*/) {
            design_.writeUnsigned(Ix::CameraSimulator_EnableX_Enable_Value, value == FG_VERTICAL ? 0 : 1);
            design_.writeUnsigned(Ix::CameraSimulator_Y_Divisor, value == FG_HORIZONTAL ? 1 : PatternLevels);
        });
}

void CameraSimulator::setSimulatorPatternOffset(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorPatternOffset, value, reportErrors, [&] { requireRange(value, 0U, PatternLevels - 1); },
        [&](std::uint32_t /*previous*/) { design_.writeUnsigned(Ix::CameraSimulator_Offset_Value, value); });
}

void CameraSimulator::setSimulatorRoll(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorRoll, value, reportErrors, [&] { requireRange<std::uint32_t>(value, FG_OFF, FG_ON); },
        [&](std::uint32_t /*previous*/) {
            design_.writeUnsigned(Ix::CameraSimulator_Frame_Divisor, value == FG_ON ? PatternLevels : 1);
        });
}

void CameraSimulator::setSimulatorTriggerMode(std::uint32_t value, bool reportErrors) {
    changeField(
        simulator_.simulatorTriggerMode, value, reportErrors,
        [&] {
            requireOneOf<std::uint32_t>(value,
                                        {SIMULATION_FREE_RUN, RISING_EDGE_TRIGGERS_LINE, RISING_EDGE_TRIGGERS_FRAME});
        },
        [&](std::uint32_t /*previous*/) {
            design_.writeUnsigned(Ix::CameraSimulator_TriggerValve_FreeRun_Select,
                                  value == SIMULATION_FREE_RUN ? 1 : 0);
            design_.writeUnsigned(Ix::CameraSimulator_TriggerValve_TriggerValve_Mode,
                                  value == RISING_EDGE_TRIGGERS_LINE ? 1 : 2);
        });
}

}  // namespace quillon
