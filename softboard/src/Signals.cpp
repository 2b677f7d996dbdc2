#include "softboard/src/Signals.h"

#include <algorithm>
#include <utility>

#include "softboard/softboard.h"

namespace softboard {
namespace {

// Bits of FG_CAMSTATUS_EXTENDED; the camera's clock is the host's.
constexpr std::int64_t CameraClock = 1;
constexpr std::int64_t LineValid = 2;
constexpr std::int64_t FrameValid = 4;
constexpr std::int64_t CameraTrigger = 8;
constexpr std::int64_t ImageTriggerInput = 16;
constexpr std::int64_t AllCameraSignals = LineValid | FrameValid | CameraTrigger | ImageTriggerInput;

}  // namespace

void Signals::bind(const Find& find, const std::vector<std::string>& events, FrameTaker& taker) {
    taker_ = &taker;
    begunTick_ = 0.0;
    sourceWaits_ = false;
    inputs_ = watched(find, "Device1_Process1_Trigger_Inputs_InputStatus_Status");
    clear_ = watched(find, "Device1_Process1_Trigger_Analyzer_Clear_Value");
    overflow_ = watched(find, "Device1_Process0_Overflow_OverflowOccurred");
    cameraStatus_ = find("FG_CAMSTATUS_EXTENDED");
    overflowed_ = integerOf(overflow_) != 0;
    switchboard_.bind(find, events);
    frames_.bind(pixelSettings_, taker);
    image_.bind(find, switchboard_, frames_);
    port_.bind(find, switchboard_, image_);
    pixelSettings_.bind(find);
    pixelSettings_.setScene(stage_.view());
    pixelSettings_.setSimulator(port_.connected() == LineSource::Simulator);
    line_.bind(find, switchboard_, image_, port_, stage_);
    simulator_.bind(find, switchboard_, port_);
    switchboard_.onCameraTrigger([this] { simulator_.cameraTriggerRose(); });
    debug_.bind(find, switchboard_, port_, frames_, pixelSettings_);
    monitors_.bind(find);
    followInputs();
    shownSignals_ = cameraSignals();
    recording_.clear();
    record();
    stage_.belt().restart(edges_);
    follow(std::exchange(edges_, {}));
}

void Signals::record() {
    switchboard_.recordIn(recording_.isRunning() ? &recording_ : nullptr);
}

void Signals::record(std::size_t most) {
    recording_.begin(most);
    record();
}

const SignalRecording& Signals::recording() {
    if (recording_.isRunning()) {
        switchboard_.recordOutputs();
    }
    return recording_;
}

Tick Signals::next() const {
    return std::min({line_.next(), simulator_.next(), nextBesideLines(), taker_ != nullptr ? taker_->next() : Never});
}

Tick Signals::ahead(double microseconds) {
    const double passed = begunTick_ + microseconds * TicksPerMicrosecond;
    const auto whole = static_cast<Tick>(passed);
    begunTick_ = passed - static_cast<double>(whole);
    return switchboard_.now() + whole;
}

bool Signals::run(Tick until) {
    const std::uint64_t through = taker_->through();
    for (;;) {
        runLines(std::min(until, nextBesideLines() - 1));
        const Tick due = next();
        if (due > until) {
            break;
        }
        switchboard_.setTime(std::max(due, switchboard_.now()));
        happen();
        if (sourceWaits_) {
            followSource();
        }
        if (taker_->through() != through) {
            return false;
        }
    }
    switchboard_.setTime(std::max(until, switchboard_.now()));
    return true;
}

/// Lines by themselves, which are most of what happens: none of the others is due until then, and only a frame that
/// ends can change that.
void Signals::runLines(Tick until) {
    while (!sourceWaits_ && taker_->next() > until) {
        const Tick line = line_.next();
        const Tick simulator = simulator_.next();
        const Tick due = std::min(line, simulator);
        if (due > until) {
            return;
        }
        switchboard_.setTime(due);
        if (line <= simulator) {
            line_.happen();
        } else {
            simulator_.happen();
        }
    }
}

Tick Signals::nextBesideLines() const {
    return std::min(std::min(stage_.belt().next(), outages_.next()), std::min(image_.next(), debug_.next()));
}

/// What is due first; at the same tick in this order.
void Signals::happen() {
    const Tick now = switchboard_.now();
    if (stage_.belt().next() <= now) {
        stage_.belt().happen(now, edges_);
        follow(edges_);
        edges_.clear();
    } else if (outages_.next() <= now) {
        apply(outages_.take());
    } else if (line_.next() <= now) {
        line_.happen();
    } else if (simulator_.next() <= now) {
        simulator_.happen();
    } else if (image_.next() <= now) {
        image_.happen();
    } else if (debug_.next() <= now) {
        debug_.happen();
    } else {
        taker_->happen(now);
    }
}

void Signals::follow(const Belt::Edges& edges) {
    std::int64_t levels = integerOf(inputs_);
    for (const Belt::Edge& edge : edges) {
        const std::int64_t bit = std::int64_t{1} << edge.input;
        levels = edge.level ? levels | bit : levels & ~bit;
    }
    if (inputs_ != nullptr && levels != integerOf(inputs_)) {
        inputs_->setInteger(levels);
        followInputs();
    }
}

void Signals::apply(const Outages::Change& change) {
    if (change.what == SOFTBOARD_OUTAGE_LINK) {
        taker_->linkChanged(!change.gone, switchboard_.now());
    } else if (cameraStatus_ != nullptr) {
        const std::int64_t status = integerOf(cameraStatus_);
        cameraStatus_->setInteger(change.gone ? status & ~CameraClock : status | CameraClock);
    }
}

void Signals::endOutages() {
    for (const int what : {SOFTBOARD_OUTAGE_CAMERA, SOFTBOARD_OUTAGE_LINK}) {
        if (outages_.isGone(what)) {
            apply({switchboard_.now(), what, false});
        }
    }
    outages_.clear();
}

void Signals::show() {
    monitors_.show(switchboard_.now());
    taker_->show(switchboard_.now());
    showCameraSignals(AllCameraSignals);
}

void Signals::restartPath() {
    image_.restartFreeRun();
    frames_.forget();
    line_.restartScene();
    followSource();
    simulator_.restart();
}

void Signals::followSource() {
    const bool connected = port_.connect();
    sourceWaits_ = !connected && port_.switchWaits();
    if (connected) {
        pixelSettings_.setSimulator(port_.connected() == LineSource::Simulator);
        simulator_.restart();
    }
}

int Signals::setInput(unsigned input, bool level) {
    if (input >= InputCount) {
        return SOFTBOARD_E_RANGE;
    }
    if (inputs_ == nullptr) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    const std::int64_t bit = std::int64_t{1} << input;
    inputs_->setInteger(level ? integerOf(inputs_) | bit : integerOf(inputs_) & ~bit);
    written(*inputs_);
    return SOFTBOARD_OK;
}

int Signals::level(unsigned select, bool& level) const {
    if (select >= Switchboard::SignalCount) {
        return SOFTBOARD_E_RANGE;
    }
    level = switchboard_.level(select);
    return SOFTBOARD_OK;
}

int Signals::eventCount(std::string_view event, std::uint64_t& count) const {
    const std::uint64_t* const counted = switchboard_.eventCount(event);
    if (counted == nullptr) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    count = *counted;
    return SOFTBOARD_OK;
}

void Signals::written(const Parameter& parameter) {
    if (switchboard_.written(parameter)) {
        return;
    }
    if (&parameter == inputs_) {
        followInputs();
    } else if (&parameter == clear_) {
        if (integerOf(clear_) == 1) {
            switchboard_.clearAnalyzers();
        }
    } else if (&parameter == overflow_) {
        followOverflow();
    } else {
        pixelSettings_.written(parameter);
        monitors_.written(parameter, switchboard_.now());
        image_.written(parameter);
        line_.written(parameter);
        simulator_.written(parameter);
        debug_.written(parameter);
        if (port_.selects(parameter) || sourceWaits_) {
            followSource();
        }
    }
    settle();
    showCameraSignals(cameraSignals() ^ shownSignals_);
}

/// Lets happen what a change has made due at once, as an ExSync2 without delay or a frame on its way over a DMA that
/// takes no time. The simulator's lines wait for time.
void Signals::settle() {
    while (line_.next() <= switchboard_.now()) {
        line_.happen();
    }
    while (taker_->next() <= switchboard_.now()) {
        taker_->happen(switchboard_.now());
    }
}

std::int64_t Signals::cameraSignals() const {
    bool cameraTrigger = false;
    switchboard_.output(0, cameraTrigger);
    return (switchboard_.level(SOFTBOARD_LVAL) ? LineValid : 0) |
           (switchboard_.level(SOFTBOARD_FVAL) ? FrameValid : 0) | (cameraTrigger ? CameraTrigger : 0) |
           (image_.triggerActive() ? ImageTriggerInput : 0);
}

/// The camera status keeps what the host gave it where no signal has moved.
void Signals::showCameraSignals(std::int64_t which) {
    shownSignals_ = cameraSignals();
    if (which != 0 && cameraStatus_ != nullptr) {
        cameraStatus_->setInteger((integerOf(cameraStatus_) & ~which) | (shownSignals_ & which));
    }
}

void Signals::followInputs() {
    const std::int64_t levels = integerOf(inputs_);
    for (unsigned input = 0; input < InputCount; ++input) {
        const bool level = ((levels >> input) & 1) != 0;
        if (level != switchboard_.level(FirstInputSelect + input)) {
            switchboard_.setLevel(FirstInputSelect + input, level);
            image_.inputChanged(input, level);
            line_.inputChanged(input, level);
        }
    }
}

void Signals::followOverflow() {
    const bool overflowed = integerOf(overflow_) != 0;
    if (overflowed && !overflowed_) {
        switchboard_.raise(OverflowEvent);
    }
    overflowed_ = overflowed;
}

}  // namespace softboard
