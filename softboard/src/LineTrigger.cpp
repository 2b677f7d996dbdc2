#include "softboard/src/LineTrigger.h"

#include <algorithm>
#include <string>

#include "softboard/softboard.h"

namespace softboard {
namespace {

// What the design understands.
constexpr std::int64_t GeneratorMode = 0;
constexpr std::int64_t ExternalMode = 1;
constexpr std::int64_t GatedGeneratorMode = 2;
constexpr std::int64_t GatedExternalMode = 3;

constexpr Tick ShortestTime = 64;  // of a period and of an exposure, 0.512 us

bool gated(std::int64_t mode) {
    return mode == GatedGeneratorMode || mode == GatedExternalMode;
}

}  // namespace

void LineTrigger::bind(const Find& find, Switchboard& switchboard, ImageTrigger& image) {
    *this = LineTrigger();
    switchboard_ = &switchboard;
    image_ = &image;
    const std::string unit = "Device1_Process0_Trigger_Trigger_";
    mode_ = watched(find, unit + "LineTriggerMode");
    enable_ = watched(find, unit + "ExsyncEnable");
    period_ = watched(find, unit + "ExsyncPeriod");
    polarity_ = watched(find, unit + "ExsyncPolarity");
    exposure_ = find(unit + "ExsyncExposure");
    delay_ = find(unit + "Exsync2Delay");
    input_ = find("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select");
    inputPolarity_ = find(unit + "LineTrgInPolarity");
    downscale_ = find(unit + "LineTrgDownscaler");
    phase_ = find(unit + "LineTrgPhase");
    sensorWidth_ = find("Device1_Process0_Buffer_0_SensorWidth");
    parallelism_ = find("Device1_Process0_Buffer_0_LinkPixelSpace_Parallelism");
    camera_ = find("FG_CAMSTATUS_EXTENDED");
    bound_ = allFound();
    if (bound_) {
        followGenerator();
        showExsync();
    }
}

bool LineTrigger::allFound() const {
    for (const Parameter* parameter : {mode_, enable_, input_, inputPolarity_, downscale_, phase_, period_, exposure_,
                                       polarity_, delay_, sensorWidth_, parallelism_, camera_}) {
        if (parameter == nullptr) {
            return false;
        }
    }
    return true;
}

Tick LineTrigger::period() const {
    return ticksOf(realOf(period_), ShortestTime);
}

void LineTrigger::written(const Parameter& parameter) {
    if (!bound_) {
        return;
    }
    if (&parameter == mode_ || &parameter == enable_) {
        followGenerator();
    } else if (&parameter == period_ && generating_) {
        scheduleCycle();
    } else if (&parameter == polarity_) {
        showExsync();
    }
}

void LineTrigger::followGenerator() {
    const std::int64_t mode = integerOf(mode_);
    const bool generating = integerOf(enable_) == 1 && (mode == GeneratorMode || mode == GatedGeneratorMode);
    if (generating == generating_) {
        return;
    }
    generating_ = generating;
    ++generation_;
    if (generating_) {
        cycleStart_ = switchboard_->now();
        scheduleCycle();
    }
}

/// The cycle that runs gets the period that is set now, even if it should have ended by that.
void LineTrigger::scheduleCycle() {
    ++generation_;
    due_.push({std::max(cycleStart_ + period(), switchboard_->now() + 1), Action::Trigger, generation_});
}

void LineTrigger::inputChanged(unsigned input, bool level) {
    if (!bound_ || integerOf(enable_) != 1) {
        return;
    }
    const std::int64_t mode = integerOf(mode_);
    const bool external = mode == ExternalMode || (mode == GatedExternalMode && image_->running());
    const bool active = level != (integerOf(inputPolarity_) == 1);
    if (!external || !active || integerOf(input_) != input) {
        return;
    }
    if (imageOfPulses_ != image_->imageNumber()) {
        imageOfPulses_ = image_->imageNumber();
        pulsesLeft_ = integerOf(phase_);
    }
    if (--pulsesLeft_ <= 0) {
        pulsesLeft_ = integerOf(downscale_);
        trigger();
    }
}

void LineTrigger::run(Tick until) {
    while (!due_.empty() && due_.top().tick <= until) {
        const Due due = due_.top();
        due_.pop();
        switchboard_->setTime(due.tick);
        happen(due);
    }
    switchboard_->setTime(until);
}

void LineTrigger::happen(const Due& due) {
    switch (due.action) {
        case Action::EndLine:
            if (transferring_ && due.number == line_) {
                endLine();
            }
            break;
        case Action::EndExposure: endExposure(); break;
        case Action::Trigger:
            if (due.number == generation_) {
                trigger();
                cycleStart_ = due.tick;
                scheduleCycle();
            }
            break;
        case Action::BeginExsync2:
        case Action::EndExsync2:
            exsync2_ = due.action == Action::BeginExsync2;
            showExsync();
            break;
    }
}

void LineTrigger::trigger() {
    if (exsync_ || (gated(integerOf(mode_)) && !image_->running())) {
        return;
    }
    const Tick end = switchboard_->now() + ticksOf(realOf(exposure_), ShortestTime);
    const Tick delay = ticksOf(realOf(delay_), 0);
    exsync_ = true;
    showExsync();
    image_->exposureStarted();
    due_.push({end, Action::EndExposure, 0});
    due_.push({switchboard_->now() + delay, Action::BeginExsync2, 0});
    due_.push({end + delay, Action::EndExsync2, 0});
}

void LineTrigger::endExposure() {
    exsync_ = false;
    showExsync();
    image_->exposureEnded();
    if ((integerOf(camera_) & 1) != 0) {
        beginLine();
    }
}

void LineTrigger::showExsync() {
    const bool inverted = integerOf(polarity_) == 1;
    switchboard_->setLevel(SOFTBOARD_EXSYNC, exsync_ != inverted);
    switchboard_->setLevel(SOFTBOARD_EXSYNC2, exsync2_ != inverted);
}

void LineTrigger::beginLine() {
    if (transferring_) {
        endLine();
    }
    transferring_ = true;
    ++line_;
    image_->lineStarted();
    switchboard_->setLevel(SOFTBOARD_LVAL, true);
    switchboard_->pulse(SOFTBOARD_LINE_START);
    const Tick ticks = integerOf(sensorWidth_) / std::max<std::int64_t>(integerOf(parallelism_), 1);
    due_.push({switchboard_->now() + std::max<Tick>(ticks, 1), Action::EndLine, line_});
}

void LineTrigger::endLine() {
    transferring_ = false;
    switchboard_->setLevel(SOFTBOARD_LVAL, false);
    switchboard_->pulse(SOFTBOARD_LINE_END);
    image_->lineEnded();
}

}  // namespace softboard
