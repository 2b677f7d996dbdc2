#include "softboard/src/ImageTrigger.h"

#include <string>

#include "softboard/frames.h"
#include "softboard/softboard.h"

namespace softboard {
namespace {

// What the design understands.
constexpr std::int64_t FreeRunMode = 0;
constexpr std::int64_t TriggeredMode = 1;
constexpr std::int64_t GatedMode = 2;
constexpr std::int64_t SoftwareSource = 4;

}  // namespace

void ImageTrigger::bind(const Find& find, Switchboard& switchboard, FrameAssembler& frames) {
    *this = ImageTrigger();
    switchboard_ = &switchboard;
    assembler_ = &frames;
    const std::string unit = "Device1_Process0_Trigger_Trigger_";
    busy_ = find(unit + "ImgTrgIsBusy");
    mode_ = watched(find, unit + "ImgTriggerMode");
    enable_ = watched(find, unit + "ImgTriggerEnable");
    source_ = watched(find, unit + "ImgTrgInSource");
    input_ = watched(find, "Device1_Process0_Trigger_InputSignal_ImgTrgInSource_Input_Select");
    polarity_ = watched(find, unit + "ImgTrgInPolarity");
    softwareLevel_ = watched(find, unit + "SoftwareTrgInput");
    softwarePulse_ = watched(find, unit + "SoftwareTrgPulse");
    flashPolarity_ = watched(find, unit + "FlashPolarity");
    debouncing_ = find(unit + "ImgTrgDebouncingTime");
    delay_ = find(unit + "ImgTrgDelay");
    yOffset_ = find(unit + "YOffset");
    yLength_ = find(unit + "YLength");
    maxGatedHeight_ = find(unit + "MaxGatedHeight");
    imageHeight_ = find("Device1_Process0_ImageHeight_ImageHeight");
    flashEnable_ = find(unit + "FlashEnable");
    flashDelay_ = find(unit + "FlashDelay");
    bound_ = allFound();
    if (bound_) {
        debouncer_.connect(inputLevel());
        changeMode();
        showFlash();
    }
}

bool ImageTrigger::allFound() const {
    for (const Parameter* parameter : {static_cast<const Parameter*>(busy_), mode_, enable_, source_, input_, polarity_,
                                       debouncing_, delay_, softwareLevel_, softwarePulse_, yOffset_, yLength_,
                                       maxGatedHeight_, imageHeight_, flashEnable_, flashDelay_, flashPolarity_}) {
        if (parameter == nullptr) {
            return false;
        }
    }
    return true;
}

void ImageTrigger::written(const Parameter& parameter) {
    if (!bound_) {
        return;
    }
    if (&parameter == mode_) {
        if (integerOf(mode_) != modeInForce_) {
            changeMode();
        }
    } else if (&parameter == flashPolarity_) {
        showFlash();
    } else if (&parameter == softwarePulse_) {
        if (modeInForce_ == TriggeredMode && integerOf(softwarePulse_) == 1 && integerOf(source_) == SoftwareSource &&
            integerOf(enable_) == 1) {
            trigger();
        }
    } else {
        if (&parameter == input_) {
            debouncer_.connect(inputLevel());
        }
        followTrigger();
    }
}

void ImageTrigger::inputChanged(unsigned input, bool level) {
    if (bound_ && integerOf(input_) == input && debouncer_.input(level, switchboard_->now(), realOf(debouncing_))) {
        followTrigger();
    }
}

void ImageTrigger::happen() {
    debouncer_.change();
    followTrigger();
}

bool ImageTrigger::inputLevel() const {
    const std::int64_t input = integerOf(input_);
    return input >= 0 && input < InputCount && switchboard_->level(FirstInputSelect + static_cast<unsigned>(input));
}

bool ImageTrigger::triggerLevel() const {
    if (integerOf(enable_) != 1) {
        return false;
    }
    if (integerOf(source_) == SoftwareSource) {
        return integerOf(softwareLevel_) == 1;
    }
    return debouncer_.level() != (integerOf(polarity_) == 1);
}

void ImageTrigger::followTrigger() {
    if (!bound_) {
        return;
    }
    const bool high = triggerLevel();
    if (high == triggerHigh_) {
        return;
    }
    triggerHigh_ = high;
    if (high) {
        trigger();
    } else if (modeInForce_ == GatedMode) {
        closeGate();
    }
}

void ImageTrigger::changeMode() {
    endImage(0);
    modeInForce_ = integerOf(mode_);
    // A gate that stands open lets an image begin at once; a trigger has to rise first.
    triggerHigh_ = modeInForce_ != GatedMode && triggerLevel();
    if (modeInForce_ == FreeRunMode) {
        beginImage();
    }
    followTrigger();
}

void ImageTrigger::trigger() {
    if (modeInForce_ != FreeRunMode && !running_) {
        ++triggers_;
        beginImage();
    }
}

void ImageTrigger::closeGate() {
    if (inFrame_ && switchboard_->level(SOFTBOARD_LVAL)) {
        closing_ = true;
    } else {
        endImage(SOFTBOARD_FRAME_GATE_ENDED);
    }
}

void ImageTrigger::restartFreeRun() {
    if (bound_ && modeInForce_ == FreeRunMode) {
        endImage(0);
        beginImage();
    }
}

void ImageTrigger::beginImage() {
    running_ = true;
    closing_ = false;
    exposures_ = 0;
    lines_ = 0;
    imageLines_ = 0;
    ++imageNumber_;
    busy_->setInteger(modeInForce_ != FreeRunMode ? 1 : 0);
}

void ImageTrigger::endImage(unsigned flags) {
    endFrame(flags);
    running_ = false;
    busy_->setInteger(0);
}

void ImageTrigger::endFrame(unsigned flags) {
    if (!inFrame_) {
        return;
    }
    inFrame_ = false;
    frames_ += frameLines_ != 0 ? 1U : 0U;
    switchboard_->setLevel(SOFTBOARD_FVAL, false);
    switchboard_->pulse(SOFTBOARD_FRAME_END);
    const bool shortened = frameLines_ < integerOf(imageHeight_);
    assembler_->frameEnded(switchboard_->now(), flags | (shortened ? unsigned{SOFTBOARD_FRAME_SHORT} : 0U));
}

void ImageTrigger::exposureStarted() {
    if (running_ && exposures_++ == integerOf(flashDelay_) && integerOf(flashEnable_) == 1) {
        flash_ = true;
        showFlash();
    }
}

void ImageTrigger::exposureEnded() {
    if (flash_) {
        flash_ = false;
        showFlash();
    }
}

void ImageTrigger::faultStruck(bool lost) {
    assembler_->faultStruck();
    if (lost) {
        assembler_->lineLost();
    }
}

void ImageTrigger::showFlash() {
    switchboard_->setLevel(SOFTBOARD_FLASH, flash_ != (integerOf(flashPolarity_) == 1));
}

void ImageTrigger::lineStarted(const pixels::Line& line) {
    if (!running_) {
        return;
    }
    const std::int64_t delay = modeInForce_ != FreeRunMode ? integerOf(delay_) : 0;
    const bool leftOut = lines_ < integerOf(yOffset_) + delay;
    ++lines_;
    if (leftOut) {
        return;
    }
    if (!inFrame_) {
        inFrame_ = true;
        frameLines_ = 0;
        assembler_->frameBegan();
        switchboard_->setLevel(SOFTBOARD_FVAL, true);
        switchboard_->pulse(SOFTBOARD_FRAME_START);
    }
    assembler_->lineBegan(line);
}

void ImageTrigger::lineEnded() {
    if (!inFrame_) {
        return;
    }
    ++imageLines_;
    ++frameLines_;
    assembler_->lineEnded(switchboard_->now());
    const bool gateDecides = modeInForce_ == GatedMode && integerOf(maxGatedHeight_) == 1;
    if (closing_ || (!gateDecides && imageLines_ >= integerOf(yLength_))) {
        endImage(closing_ ? unsigned{SOFTBOARD_FRAME_GATE_ENDED} : 0U);
        if (modeInForce_ == FreeRunMode) {
            beginImage();
        }
    } else if (frameLines_ >= integerOf(imageHeight_)) {
        endFrame(0);
    }
}

}  // namespace softboard
