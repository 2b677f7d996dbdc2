#include "softboard/src/LineTrigger.h"

#include <algorithm>
#include <string>
#include <utility>

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

void LineTrigger::bind(const Find& find, Switchboard& switchboard, ImageTrigger& image, CameraPort& port,
                       const Stage& stage) {
    *this = LineTrigger();
    switchboard_ = &switchboard;
    image_ = &image;
    port_ = &port;
    stage_ = &stage;
    const std::string unit = "Device1_Process0_Trigger_Trigger_";
    mode_ = watched(find, unit + "LineTriggerMode");
    enable_ = watched(find, unit + "ExsyncEnable");
    period_ = watched(find, unit + "ExsyncPeriod");
    polarity_ = watched(find, unit + "ExsyncPolarity");
    exposure_ = find(unit + "ExsyncExposure");
    delay_ = find(unit + "Exsync2Delay");
    inputA_ = watched(find, "Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select");
    inputB_ = watched(find, "Device1_Process0_Trigger_InputSignal_LineTrgInSourceB_Input_Select");
    inputPolarity_ = watched(find, unit + "LineTrgInPolarity");
    debouncing_ = find(unit + "LineTrgDebouncingTime");
    encoder_.bind(find);
    downscale_ = find(unit + "LineTrgDownscaler");
    phase_ = find(unit + "LineTrgPhase");
    sensorWidth_ = find("Device1_Process0_Buffer_0_SensorWidth");
    parallelism_ = find("Device1_Process0_Buffer_0_LinkPixelSpace_Parallelism");
    camera_ = find("FG_CAMSTATUS_EXTENDED");
    bound_ = allFound();
    if (bound_) {
        connectTracks();
        followGenerator();
        showExsync();
        showExsync2();
    }
}

bool LineTrigger::allFound() const {
    for (const Parameter* parameter :
         {mode_, enable_, inputA_, inputB_, inputPolarity_, debouncing_, downscale_, phase_, period_, exposure_,
          polarity_, delay_, sensorWidth_, parallelism_, camera_}) {
        if (parameter == nullptr) {
            return false;
        }
    }
    return encoder_.allFound();
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
    } else if (&parameter == inputA_ || &parameter == inputB_ || &parameter == inputPolarity_) {
        connectTracks();
    } else if (&parameter == polarity_) {
        showExsync();
        showExsync2();
    }
}

void LineTrigger::followGenerator() {
    const std::int64_t mode = integerOf(mode_);
    const bool generating = integerOf(enable_) == 1 && (mode == GeneratorMode || mode == GatedGeneratorMode);
    if (generating == generating_) {
        return;
    }
    generating_ = generating;
    nextCycle_ = Never;
    if (generating_) {
        cycleStart_ = switchboard_->now();
        scheduleCycle();
    }
}

/// The cycle that runs gets the period that is set now, even if it should have ended by that.
void LineTrigger::scheduleCycle() {
    nextCycle_ = std::max(cycleStart_ + period(), switchboard_->now() + 1);
}

void LineTrigger::inputChanged(unsigned number, bool level) {
    if (bound_) {
        input(trackA_, inputA_, number, level);
        input(trackB_, inputB_, number, level);
    }
}

void LineTrigger::input(Debouncer& track, const Parameter* select, unsigned number, bool level) {
    if (integerOf(select) == number && track.input(level, switchboard_->now(), realOf(debouncing_))) {
        tracksChanged();
    }
}

/// A change of what is connected is no edge.
void LineTrigger::connectTracks() {
    const auto level = [&](const Parameter* select) {
        const std::int64_t input = integerOf(select);
        return input >= 0 && input < InputCount && switchboard_->level(FirstInputSelect + static_cast<unsigned>(input));
    };
    trackA_.connect(level(inputA_));
    trackB_.connect(level(inputB_));
    const bool inverted = integerOf(inputPolarity_) == 1;
    activeA_ = trackA_.level() != inverted;
    encoder_.connect(activeA_, trackB_.level() != inverted);
}

void LineTrigger::tracksChanged() {
    const bool inverted = integerOf(inputPolarity_) == 1;
    const bool active = trackA_.level() != inverted;
    const bool rises = active && !activeA_;
    activeA_ = active;
    const bool forward = encoder_.follow(active, trackB_.level() != inverted);
    if (encoder_.on() ? forward : rises) {
        pulse();
    }
}

void LineTrigger::pulse() {
    const std::int64_t mode = integerOf(mode_);
    const bool external = mode == ExternalMode || (mode == GatedExternalMode && image_->running());
    if (!external || integerOf(enable_) != 1) {
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

/// What is due at the same tick happens in this order: the line ends, the exposure, ExSync2; the next cycle begins,
/// ExSync2 begins; the inputs change.
void LineTrigger::happen() {
    const Tick now = switchboard_->now();
    if (lineEnd_ <= now) {
        lineEnd_ = Never;
        port_->endLine(LineSource::Camera);
    } else if (exposureEnd_ <= now) {
        endExposure();
    } else if (exsync2Ends(now)) {
        changeExsync2();
    } else if (nextCycle_ <= now) {
        cycleStart_ = nextCycle_;
        scheduleCycle();
        trigger();
    } else if (nextExsync2_ <= now) {
        changeExsync2();
    } else {
        (trackA_.next() <= now ? trackA_ : trackB_).change();
        tracksChanged();
    }
}

void LineTrigger::addExsync2Edge(Exsync2Edge edge) {
    exsync2Edges_.push_back(edge);
    // It comes before others only if the delay has become shorter.
    for (std::size_t at = exsync2Edges_.size() - 1; at != 0 && edge.before(exsync2Edges_[at - 1]); --at) {
        std::swap(exsync2Edges_[at - 1], exsync2Edges_[at]);
    }
    nextExsync2_ = exsync2Edges_.front().tick;
}

void LineTrigger::changeExsync2() {
    exsync2_ = exsync2Edges_.front().active;
    exsync2Edges_.pop_front();
    nextExsync2_ = exsync2Edges_.empty() ? Never : exsync2Edges_.front().tick;
    showExsync2();
}

void LineTrigger::trigger() {
    if (exsync_ || (gated(integerOf(mode_)) && !image_->running())) {
        return;
    }
    const Tick now = switchboard_->now();
    const Tick exposure = ticksOf(realOf(exposure_), ShortestTime);
    const Tick delay = ticksOf(realOf(delay_), 0);
    exsync_ = true;
    exposureBegan_ = now;
    beltPosition_ = stage_->belt().position(now);
    showExsync();
    image_->exposureStarted();
    exposureEnd_ = now + exposure;
    if (delay == 0 && exsync2Edges_.empty()) {  // the usual case: it begins with ExSync
        exsync2_ = true;
        showExsync2();
    } else {
        addExsync2Edge({now + delay, true});
    }
    addExsync2Edge({now + exposure + delay, false});
}

void LineTrigger::endExposure() {
    exposureEnd_ = Never;
    exsync_ = false;
    showExsync();
    const bool flash = image_->flashes();
    image_->exposureEnded();
    if ((integerOf(camera_) & 1) != 0) {
        const Tick now = switchboard_->now();
        const Tick ticks = integerOf(sensorWidth_) / std::max<std::int64_t>(integerOf(parallelism_), 1);
        lineEnd_ = now + std::max<Tick>(ticks, 1);
        port_->beginLine(LineSource::Camera, {.tick = now,
                                              .position = stage_->position(beltPosition_, lines_++),
                                              .settings = 0,
                                              .exposure = static_cast<std::uint32_t>(now - exposureBegan_) & 0xFFFFFFF,
                                              .flash = flash ? 1U : 0U,
                                              .inverted = 0});
    }
}

}  // namespace softboard
