#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// The pattern generator that can take the camera's place. Its timing is set in one of three speed modes; in each, some
/// parameters are free and the others follow, so that a write here changes what others may take.
///
/// Line lengths are multiples of 32 pixels. A refused value fails with ValueOutOfRange, an unknown speed mode with
/// ValueNotInList.
class CameraSimulator {
public:
    CameraSimulator(AppletState& state, DesignParameters& design, ParameterRecords& records)
        : simulator_(state.simulator), design_(design), records_(records) {}

    /// Sets what the generator starts with, and the published maximum of the pixel frequency.
    void initialize();

    /// FG_CAMERASIMULATOR_ENABLE: FG_CAMPORT, FG_CAMERASIMULATOR.
    void setSimulatorEnable(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_PATTERN: FG_HORIZONTAL, FG_VERTICAL, FG_DIAGONAL.
    void setSimulatorPattern(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_PATTERN_OFFSET: 0 to 255.
    void setSimulatorPatternOffset(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_ROLL: FG_ON, FG_OFF.
    void setSimulatorRoll(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_SELECT_MODE: FG_PIXEL_FREQUENCY, FG_LINERATE, FG_FRAMERATE.
    void setSimulatorSelectMode(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_TRIGGER_MODE: SIMULATION_FREE_RUN, RISING_EDGE_TRIGGERS_...
    void setSimulatorTriggerMode(std::uint32_t value, bool reportErrors);
    /// FG_CAMERASIMULATOR_WIDTH: pixels, 1 to widthLimit.
    void setSimulatorWidth(std::uint32_t value);
    /// FG_CAMERASIMULATOR_LINE_GAP: pixels, 0 to lineGapLimit.
    void setSimulatorLineGap(std::uint32_t value);
    /// FG_CAMERASIMULATOR_HEIGHT: lines, 1 to heightLimit.
    void setSimulatorHeight(std::uint32_t value);
    /// FG_CAMERASIMULATOR_FRAME_GAP: lines, 0 to frameGapLimit.
    void setSimulatorFrameGap(std::uint32_t value);
    /// FG_CAMERASIMULATOR_PIXEL_FREQUENCY: MHz, 0 to 4000.
    void setSimulatorPixelFrequency(double value);
    /// FG_CAMERASIMULATOR_LINERATE: lines per second, from 0.1.
    void setSimulatorLineRate(double value);
    /// FG_CAMERASIMULATOR_FRAMERATE: frames per second, from 0.1.
    void setSimulatorFrameRate(double value);

    /// FG_CAMERASIMULATOR_LINE_GAP: pixels that the generator leaves; 0 outside the pixel-frequency mode.
    std::uint32_t lineGap() const;
    /// FG_CAMERASIMULATOR_FRAME_GAP: lines that the generator leaves; 0 in the frame-rate mode.
    std::uint32_t frameGap() const;
    // What the design's integers give; a rate that was written reads back rounded to whole cycles.
    /// FG_CAMERASIMULATOR_PIXEL_FREQUENCY: MHz.
    double pixelFrequency();
    /// FG_CAMERASIMULATOR_LINERATE: lines per second.
    double lineRate();
    /// FG_CAMERASIMULATOR_FRAMERATE: frames per second.
    double frameRate();
    /// FG_CAMERASIMULATOR_ACTIVE: of SequenceCycles, as the design has them; FG_CAMERASIMULATOR_PASSIVE is the rest.
    std::uint32_t activeCycles();
    /// FG_CAMERASIMULATOR_ACTIVE: 0 outside the pixel-frequency mode, where the sequence says nothing.
    std::uint32_t activeCyclesForSaving();
    /// FG_CAMERASIMULATOR_PASSIVE: the rest of the sequence, or 0.
    std::uint32_t passiveCyclesForSaving();

    static constexpr std::uint32_t SequenceCycles =
        2000;  ///< length of one pixel-frequency sequence, design clock cycles

private:
    double sequenceRate();
    double frameSequenceRate();
    double pixelRate();
    double lineRateLimit() const;
    double frameRateLimit() const;
    std::uint32_t widthLimit();
    std::uint32_t lineGapLimit();
    std::uint32_t heightLimit();
    std::uint32_t frameGapLimit() const;
    void sendLineSize(std::uint32_t width, std::uint32_t gap);
    void sendFrameSize(std::uint32_t height, std::uint32_t gap);
    void publishModeAccess();

    SimulatorState& simulator_;
    DesignParameters& design_;
    ParameterRecords& records_;
};

}  // namespace quillon
