#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "info/ParameterRecords.h"
#include "trigger/TriggerBlock.h"

namespace quillon {

/// How lines become images: in free run, by an external trigger or gate, each of these also over several buffers; and
/// the flash that goes with it.
///
/// A refused value fails with ValueOutOfRange.
class ImageTrigger {
public:
    ImageTrigger(AppletState& state, DesignParameters& design, ParameterRecords& records,
                 const TriggerBlock& triggerBlock)
        : trigger_(state.imageTrigger), design_(design), records_(records), triggerBlock_(triggerBlock) {}

    /// FG_IMGTRIGGERMODE: FREE_RUN, ASYNC_TRIGGER, ASYNC_GATED, ..._MULTIFRAME.
    void setImgTriggerMode(std::int32_t value, bool reportErrors);
    /// FG_IMGTRIGGERON: FG_ON, FG_OFF.
    void setImgTriggerOn(std::int32_t value, bool reportErrors);
    /// FG_FLASHON: FG_ON, FG_OFF.
    void setFlashOn(std::int32_t value, bool reportErrors);
    /// FG_IMGTRIGGER_ASYNC_HEIGHT: 1 to 16777216 lines.
    void setImgTriggerAsyncHeight(std::int32_t value, bool reportErrors);
    /// FG_IMGTRIGGERINSRC: TRGINSRC_..., TRGINSOFTWARE.
    void setImgTriggerInSrc(std::int32_t value, bool reportErrors);
    /// FG_IMGTRIGGERINPOLARITY: HIGH_ON_ZERO_LOW, HIGH_ON_ZERO_HIGH.
    void setImgTriggerInPolarity(std::int32_t value, bool reportErrors);
    /// FG_IMGTRIGGERGATEDELAY: 0 to 65535 lines.
    void setImgTriggerGateDelay(std::uint32_t value, bool reportErrors);
    /// FG_IMGTRIGGERDEBOUNCING: 0.008 to 30 us.
    void setImgTriggerDebouncing(double value, bool reportErrors);
    /// FG_FLASH_POLARITY: FG_LOW, FG_HIGH.
    void setFlashPolarity(std::int32_t value, bool reportErrors);
    /// FG_STROBEPULSEDELAY: 0 to 65535 lines.
    void setStrobePulseDelay(std::uint32_t value, bool reportErrors);
    /// FG_SENDSOFTWARETRIGGER: FG_APPLY; each write is one pulse.
    void setSendSoftwareTrigger(std::int32_t value, bool reportErrors);
    /// FG_SETSOFTWARETRIGGER: FG_LOW, FG_HIGH.
    void setSetSoftwareTrigger(std::int32_t value, bool reportErrors);

private:
    ImageTriggerState& trigger_;
    DesignParameters& design_;
    ParameterRecords& records_;
    const TriggerBlock& triggerBlock_;
};

}  // namespace quillon
