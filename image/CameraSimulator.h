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

    void setSimulatorEnable(std::uint32_t value, bool reportErrors);   ///< FG_CAMPORT, FG_CAMERASIMULATOR
    void setSimulatorPattern(std::uint32_t value, bool reportErrors);  ///< FG_HORIZONTAL, FG_VERTICAL, FG_DIAGONAL
    void setSimulatorPatternOffset(std::uint32_t value, bool reportErrors);  ///< 0 to 255
    void setSimulatorRoll(std::uint32_t value, bool reportErrors);           ///< FG_ON, FG_OFF
    void setSimulatorSelectMode(std::uint32_t value,
                                bool reportErrors);  ///< FG_PIXEL_FREQUENCY, FG_LINERATE, FG_FRAMERATE
    void setSimulatorTriggerMode(std::uint32_t value,
                                 bool reportErrors);  ///< SIMULATION_FREE_RUN, RISING_EDGE_TRIGGERS_...
    void setSimulatorWidth(std::uint32_t value);      ///< pixels, 1 to widthLimit
    void setSimulatorLineGap(std::uint32_t value);    ///< pixels, 0 to lineGapLimit
    void setSimulatorHeight(std::uint32_t value);     ///< lines, 1 to heightLimit
    void setSimulatorFrameGap(std::uint32_t value);   ///< lines, 0 to frameGapLimit
    void setSimulatorPixelFrequency(double value);    ///< MHz, 0 to 4000
    void setSimulatorLineRate(double value);          ///< lines per second, from 0.1
    void setSimulatorFrameRate(double value);         ///< frames per second, from 0.1

    std::uint32_t lineGap() const;
    std::uint32_t frameGap() const;
    // What the design's integers give; a rate that was written reads back rounded to whole cycles.
    double pixelFrequency();                 ///< MHz
    double lineRate();                       ///< lines per second
    double frameRate();                      ///< frames per second
    std::uint32_t activeCycles();            ///< of SequenceCycles, as the design has them
    std::uint32_t activeCyclesForSaving();   ///< 0 outside the pixel-frequency mode, where the sequence says nothing
    std::uint32_t passiveCyclesForSaving();  ///< the rest of the sequence, or 0

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
