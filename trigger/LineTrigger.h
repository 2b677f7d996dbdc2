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

    void setLineTriggerMode(std::int32_t value, bool reportErrors);   ///< GRABBER_CONTROLLED, ASYNC_TRIGGER, ..._GATED
    void setExsyncOn(std::int32_t value, bool reportErrors);          ///< FG_ON, FG_OFF
    void setLineTriggerInSrc(std::int32_t value, bool reportErrors);  ///< TRGINSRC_...
    void setLineTriggerInPolarity(std::int32_t value, bool reportErrors);  ///< HIGH_ON_ZERO_LOW, HIGH_ON_ZERO_HIGH
    void setLineTriggerDebouncing(double value, bool reportErrors);        ///< 0.008 to 30 us
    void setLineDownscale(std::int32_t value, bool reportErrors);          ///< 1 to 255 pulses
    void setLineDownscaleInit(std::int32_t value,
                              bool reportErrors);  ///< 1 to 255 pulses up to the first ExSync of a frame
    void setShaftEncoderOn(std::int32_t value, bool reportErrors);                  ///< FG_ON, FG_OFF
    void setShaftEncoderMode(std::int32_t value, bool reportErrors);                ///< FILTER_X1, FILTER_X2, FILTER_X4
    void setShaftEncoderInSrc(std::int32_t value, bool reportErrors);               ///< TRGINSRC_...
    void setShaftEncoderLeading(std::int32_t value, bool reportErrors);             ///< SOURCE_A, SOURCE_B
    void setShaftEncoderCompensationEnable(std::int32_t value, bool reportErrors);  ///< FG_ON, FG_OFF
    void setShaftEncoderCompensationCount(std::uint32_t value, bool reportErrors);  ///< 0 to 1048575 pulses
    void setLinePeriode(double value, bool reportErrors);                           ///< 0.512 to 2097.144 us
    void setLineExposure(double value, bool reportErrors);          ///< 0.512 us to the period, at most 1048.568 us
    void setExsyncPolarity(std::int32_t value, bool reportErrors);  ///< FG_LOW, FG_HIGH
    void setLineTriggerDelay(double value, bool reportErrors);      ///< 0 us to the period

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
