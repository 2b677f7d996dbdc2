#include "softboard/src/Switchboard.h"

#include <algorithm>

#include "softboard/softboard.h"

namespace softboard {
namespace {

const std::string Prefix = "Device1_Process1_Trigger_";
const std::string CameraEvents = Prefix + "Events_Events_LVAL_FVAL_";

}  // namespace

bool Switchboard::Route::rises(unsigned signal, bool level) const {
    return bound() && integerOf(select) == signal && level != inverted();
}

Switchboard::Route Switchboard::routeOf(const Find& find, const std::string& stem) {
    return {find(Prefix + stem + "_SelectSignal_Select"), find(Prefix + stem + "_Polarity_Invert")};
}

void Switchboard::bind(const Find& find, const std::vector<std::string>& events) {
    *this = Switchboard();
    bindEvents(events);
    bindRoutes(find);
    for (const Route* const route : listeningRoutes()) {
        if (route->select != nullptr) {
            route->select->watch();
        }
    }
    noteListeners();
}

std::array<const Switchboard::Route*, 5> Switchboard::listeningRoutes() const {
    return {&analyzers_[0].route, &analyzers_[1].route, &customEvents_[0].route, &customEvents_[1].route, &outputs_[0]};
}

void Switchboard::noteListeners() {
    heard_ = {};
    for (const Route* const route : listeningRoutes()) {
        const std::int64_t select = integerOf(route->select);
        if (select >= 0 && select < SignalCount) {
            heard_[static_cast<std::size_t>(select)] = true;
        }
    }
}

bool Switchboard::written(const Parameter& parameter) {
    const auto routes = listeningRoutes();
    if (std::none_of(routes.begin(), routes.end(), [&](const Route* it) { return it->select == &parameter; })) {
        return false;
    }
    noteListeners();
    return true;
}

void Switchboard::bindRoutes(const Find& find) {
    difference_ = find(Prefix + "Analyzer_Difference_Status");
    std::size_t output = 0;
    outputs_[output++] = routeOf(find, "OutputMapping_CamTrigger0_SelectTrigger");
    for (int gpo = 0; gpo < 8; ++gpo) {
        outputs_[output++] = routeOf(find, "OutputMapping_SelectGPO_Select" + std::to_string(gpo));
    }
    for (int gpo = 0; gpo < 2; ++gpo) {
        outputs_[output++] = routeOf(find, "OutputMapping_SelectFrontGPO_Select" + std::to_string(gpo));
    }
    for (std::size_t number = 0; number < analyzers_.size(); ++number) {
        const std::string stem = "Analyzer_Analyzer" + std::to_string(number);
        analyzers_[number] = {routeOf(find, stem + "_Select"),
                              find(Prefix + stem + "_PeriodCurrent"),
                              find(Prefix + stem + "_PeriodMax"),
                              find(Prefix + stem + "_PeriodMin"),
                              find(Prefix + stem + "_PulseCountSignal_Status"),
                              std::nullopt};
    }
    const std::string customEvent = CameraEvents + "CustomSignalEvent";
    for (std::size_t number = 0; number < customEvents_.size(); ++number) {
        const std::string digit = std::to_string(number);
        customEvents_[number] = {routeOf(find, "Events_SelectCustomSignalEvent" + digit),
                                 counterOf(customEvent + digit)};
    }
}

void Switchboard::bindEvents(const std::vector<std::string>& events) {
    for (unsigned bit = 0; bit < events.size(); ++bit) {
        eventCounts_.emplace(events[bit], EventCount{bit, 0});
    }
    constexpr unsigned BackInputs = 8;
    const std::string back = Prefix + "Inputs_InputEvents_InputEvents_";
    const std::string front = Prefix + "Inputs_InputEvents_InputFrontEvents_Front";
    for (unsigned input = 0; input < InputCount; ++input) {
        const std::string& family = input < BackInputs ? back : front;
        const std::string pin = "Pin" + std::to_string(input < BackInputs ? input : input - BackInputs);
        const std::string notPin = "Not" + pin;
        edgeEvents_[FirstInputSelect + input] = {counterOf(family + pin), counterOf(family + notPin)};
    }
    edgeEvents_[SOFTBOARD_LINE_START].rising = counterOf(CameraEvents + "Cam0LineStart");
    edgeEvents_[SOFTBOARD_LINE_END].rising = counterOf(CameraEvents + "Cam0LineEnd");
    edgeEvents_[SOFTBOARD_FRAME_START].rising = counterOf(CameraEvents + "Cam0FrameStart");
    edgeEvents_[SOFTBOARD_FRAME_END].rising = counterOf(CameraEvents + "Cam0FrameEnd");
}

Switchboard::Counter Switchboard::counterOf(const std::string& event) {
    const auto found = eventCounts_.find(event);
    return found != eventCounts_.end() ? &*found : nullptr;
}

void Switchboard::carry(unsigned select, bool level) {
    bool counted = false;
    for (Analyzer& analyzer : analyzers_) {
        if (analyzer.bound() && analyzer.route.rises(select, level)) {
            analyzer.pulse(now_);
            counted = true;
        }
    }
    if (counted) {
        updateDifference();
    }
    for (const CustomEvent& event : customEvents_) {
        if (event.route.rises(select, level)) {
            raise(event.counter);
        }
    }
    if (cameraTriggerRose_ && outputs_[0].rises(select, level)) {
        cameraTriggerRose_();
    }
}

int Switchboard::output(unsigned output, bool& level) const {
    if (output >= OutputCount) {
        return SOFTBOARD_E_RANGE;
    }
    const Route& route = outputs_[output];
    if (!route.bound()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    const std::int64_t select = integerOf(route.select);
    const bool known = select >= 0 && select < SignalCount;
    level = (known && levels_[static_cast<std::size_t>(select)]) != route.inverted();
    return SOFTBOARD_OK;
}

void Switchboard::raise(std::string_view event) {
    const auto found = eventCounts_.find(event);
    raise(found != eventCounts_.end() ? &*found : nullptr);
}

void Switchboard::recordIn(SignalRecording* recording) {
    recording_ = recording;
    for (unsigned number = 0; number < OutputCount; ++number) {
        recordedOutputs_[number] = outputIsHigh(number);
    }
}

void Switchboard::recordOutputs() {
    for (unsigned number = 0; number < OutputCount; ++number) {
        const bool high = outputIsHigh(number);
        if (high != recordedOutputs_[number]) {
            recordedOutputs_[number] = high;
            recording_->output(now_, number, high);
        }
    }
}

bool Switchboard::outputIsHigh(unsigned number) const {
    bool high = false;
    output(number, high);
    return high;
}

const std::uint64_t* Switchboard::eventCount(std::string_view name) const {
    const auto found = eventCounts_.find(name);
    return found != eventCounts_.end() ? &found->second.count : nullptr;
}

bool Switchboard::Analyzer::bound() const {
    return route.bound() && periodCurrent != nullptr && periodMax != nullptr && periodMin != nullptr &&
           pulseCount != nullptr;
}

void Switchboard::Analyzer::pulse(Tick now) {
    pulseCount->setInteger(integerOf(pulseCount) + 1);
    if (lastPulse) {
        const double period = microsecondsOf(now - *lastPulse);
        const bool first = realOf(periodMin) == 0.0;
        periodCurrent->setReal(period);
        periodMax->setReal(std::max(period, realOf(periodMax)));
        periodMin->setReal(first ? period : std::min(period, realOf(periodMin)));
    }
    lastPulse = now;
}

void Switchboard::Analyzer::clear() {
    if (bound()) {
        pulseCount->setInteger(0);
        periodCurrent->setReal(0.0);
        periodMax->setReal(0.0);
        periodMin->setReal(0.0);
        lastPulse.reset();
    }
}

void Switchboard::clearAnalyzers() {
    for (Analyzer& analyzer : analyzers_) {
        analyzer.clear();
    }
    updateDifference();
}

void Switchboard::updateDifference() {
    constexpr std::int64_t Bits33 = 0x1FFFFFFFF;  // the difference is a two's complement number of 33 bits
    if (difference_ != nullptr) {
        difference_->setInteger((integerOf(analyzers_[0].pulseCount) - integerOf(analyzers_[1].pulseCount)) & Bits33);
    }
}

}  // namespace softboard
