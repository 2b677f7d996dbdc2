#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// When the camera is told to read a line: by the period generator, by an external pulse, or by a shaft encoder; and
/// the ExSync signal that tells it.
///
/// Times are microseconds, sent as they are. A refused value fails with ValueOutOfRange. The access flags of records
/// are for readers: a parameter that is shown as read-only in a mode takes writes all the same.
class LineTrigger {
public:
    LineTrigger(AppletState& state, DesignParameters& design, ParameterRecords& records)
        : trigger_(state.lineTrigger), design_(design), records_(records) {}

    /// FG_LINETRIGGERMODE: GRABBER_CONTROLLED, ASYNC_TRIGGER, ..._GATED.
    void setLineTriggerMode(std::int32_t value, bool reportErrors);
    /// FG_EXSYNCON: FG_ON, FG_OFF.
    void setExsyncOn(std::int32_t value, bool reportErrors);
    /// FG_LINETRIGGERINSRC: TRGINSRC_...
    void setLineTriggerInSrc(std::int32_t value, bool reportErrors);
    /// FG_LINETRIGGERINPOLARITY: HIGH_ON_ZERO_LOW, HIGH_ON_ZERO_HIGH.
    void setLineTriggerInPolarity(std::int32_t value, bool reportErrors);
    /// FG_LINETRIGGERDEBOUNCING: 0.008 to 30 us.
    void setLineTriggerDebouncing(double value, bool reportErrors);
    /// FG_LINE_DOWNSCALE: 1 to 255 pulses.
    void setLineDownscale(std::int32_t value, bool reportErrors);
    /// FG_LINE_DOWNSCALEINIT: 1 to 255 pulses up to the first ExSync of a frame.
    void setLineDownscaleInit(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODERON: FG_ON, FG_OFF.
    void setShaftEncoderOn(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODERMODE: FILTER_X1, FILTER_X2, FILTER_X4.
    void setShaftEncoderMode(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODERINSRC: TRGINSRC_...
    void setShaftEncoderInSrc(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODERLEADING: SOURCE_A, SOURCE_B.
    void setShaftEncoderLeading(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODER_COMPENSATION_ENABLE: FG_ON, FG_OFF.
    void setShaftEncoderCompensationEnable(std::int32_t value, bool reportErrors);
    /// FG_SHAFTENCODER_COMPENSATION_COUNT: 0 to 1048575 pulses.
    void setShaftEncoderCompensationCount(std::uint32_t value, bool reportErrors);
    /// FG_LINEPERIODE: 0.512 to 2097.144 us.
    void setLinePeriode(double value, bool reportErrors);
    /// FG_LINEEXPOSURE: 0.512 us to the period, at most 1048.568 us.
    void setLineExposure(double value, bool reportErrors);
    /// FG_EXSYNCPOLARITY: FG_LOW, FG_HIGH.
    void setExsyncPolarity(std::int32_t value, bool reportErrors);
    /// FG_LINETRIGGERDELAY: 0 us to the period.
    void setLineTriggerDelay(double value, bool reportErrors);

    // What a new period or mode means for those who read the descriptions.
    void refreshExposureMaximum();
    void refreshDelayMaximum();

private:
    void setInputSource(std::int32_t& field, std::int32_t value, bool reportErrors, Ix unitInput,
                        std::uint32_t unitValue, Ix inputSelect);
    void publishInputAccess(int flags);
    bool isPeriodBound() const;
    double maxExposure() const;

    LineTriggerState& trigger_;
    DesignParameters& design_;
    ParameterRecords& records_;
};

}  // namespace quillon
