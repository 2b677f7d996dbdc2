#include "trigger/ImageTrigger.h"

#include "design/HandlerFrame.h"
#include "trigger/TriggerInputs.h"

namespace quillon {

namespace {

constexpr std::uint32_t MaxDelayLines = 65535;
constexpr std::int32_t MaxAsyncHeight = 16777216;  ///< lines; above the region's own bound

/// The trigger unit's inputs: the software trigger has one of its own.
constexpr std::uint32_t ExternalInput = 2;
constexpr std::uint32_t SoftwareInput = 4;

std::uint32_t designMode(std::int32_t mode) {
    switch (mode) {
        case FREE_RUN: return 0;
        case ASYNC_TRIGGER:
        case ASYNC_TRIGGER_MULTIFRAME: return 1;
        case ASYNC_GATED:
        case ASYNC_GATED_MULTIFRAME: return 2;
        default: fail(ValueOutOfRange);
    }
}

}  // namespace

void ImageTrigger::setImgTriggerMode(std::int32_t value, bool reportErrors) {
    std::uint32_t mode = 0;
    changeField(
        trigger_.mode, value, reportErrors, [&] { mode = designMode(value); },
        [&](std::int32_t /*previous*/) {
            const int inputAccess = value == FREE_RUN ? ReadOnlyAccess : OpenAccess;
            for (const FgParameterId parameter :
                 {FG_IMGTRIGGERINSRC, FG_IMGTRIGGERINPOLARITY, FG_IMGTRIGGERGATEDELAY, FG_IMGTRIGGERDEBOUNCING}) {
                records_.setAccessFlags(parameter, inputAccess);
            }
            records_.setAccessFlags(FG_IMGTRIGGER_ASYNC_HEIGHT,
                                    value == ASYNC_TRIGGER_MULTIFRAME ? OpenAccess : ReadOnlyAccess);
            design_.writeUnsigned(Ix::Trigger_Trigger_ImgTriggerMode, mode);
            // A switch for gates over several buffers; in spite of its name it holds no height.
            design_.writeUnsigned(Ix::Trigger_Trigger_MaxGatedHeight, value == ASYNC_GATED_MULTIFRAME ? 1 : 0);
            triggerBlock_.send();
        });
}

void ImageTrigger::setImgTriggerAsyncHeight(std::int32_t value, bool reportErrors) {
    changeField(
        trigger_.asyncHeight, value, reportErrors, [&] { requireRange(value, 1, MaxAsyncHeight); },
        [&](std::int32_t /*previous*/) {
            if (trigger_.mode == ASYNC_TRIGGER_MULTIFRAME) {
                triggerBlock_.sendLength(static_cast<std::uint32_t>(value));
            }
        });
}

void ImageTrigger::setImgTriggerInSrc(std::int32_t value, bool reportErrors) {
    const bool software = value == TRGINSOFTWARE;
    const auto select = software ? std::optional<std::uint32_t>(0) : inputSelectOf(value);
    changeField(
        trigger_.inSrc, value, reportErrors, [&] { require(select.has_value(), ValueOutOfRange); },
        [&](std::int32_t /*previous*/) {
            design_.writeUnsigned(Ix::Trigger_Trigger_ImgTrgInSource, software ? SoftwareInput : ExternalInput);
            design_.writeUnsigned(Ix::Trigger_InputSignal_ImgTrgInSource_Input_Select, *select);
        });
}

void ImageTrigger::setImgTriggerDebouncing(double value, bool reportErrors) {
    changeField(
        trigger_.debouncing, value, reportErrors, [&] { requireRange(value, ShortestDebouncing, LongestDebouncing); },
        [&](double /*previous*/) { design_.writeDouble(Ix::Trigger_Trigger_ImgTrgDebouncingTime, value); });
}

void ImageTrigger::setImgTriggerOn(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.on, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_OFF, FG_ON); }, design_,
        Ix::Trigger_Trigger_ImgTriggerEnable, static_cast<std::uint32_t>(value));
}

void ImageTrigger::setFlashOn(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.flashOn, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_OFF, FG_ON); }, design_,
        Ix::Trigger_Trigger_FlashEnable, static_cast<std::uint32_t>(value));
}

void ImageTrigger::setImgTriggerInPolarity(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.inPolarity, value, reportErrors,
        [&] { requireRange<std::int32_t>(value, HIGH_ON_ZERO_HIGH, HIGH_ON_ZERO_LOW); }, design_,
        Ix::Trigger_Trigger_ImgTrgInPolarity, static_cast<std::uint32_t>(value));
}

void ImageTrigger::setImgTriggerGateDelay(std::uint32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.gateDelay, value, reportErrors, [&] { requireRange(value, 0U, MaxDelayLines); }, design_,
        Ix::Trigger_Trigger_ImgTrgDelay, value);
}

void ImageTrigger::setFlashPolarity(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.flashPolarity, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_LOW, FG_HIGH); },
        design_, Ix::Trigger_Trigger_FlashPolarity, value == FG_LOW ? 1 : 0);
}

void ImageTrigger::setStrobePulseDelay(std::uint32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.strobePulseDelay, value, reportErrors, [&] { requireRange(value, 0U, MaxDelayLines); }, design_,
        Ix::Trigger_Trigger_FlashDelay, value);
}

void ImageTrigger::setSendSoftwareTrigger(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.sendSoftwareTrigger, value, reportErrors, [&] { require(value == FG_APPLY, ValueOutOfRange); },
        design_, Ix::Trigger_Trigger_SoftwareTrgPulse, 1);
}

void ImageTrigger::setSetSoftwareTrigger(std::int32_t value, bool reportErrors) {
    changeFieldAndWrite(
        trigger_.setSoftwareTrigger, value, reportErrors, [&] { requireRange<std::int32_t>(value, FG_LOW, FG_HIGH); },
        design_, Ix::Trigger_Trigger_SoftwareTrgInput, static_cast<std::uint32_t>(value));
}

}  // namespace quillon
