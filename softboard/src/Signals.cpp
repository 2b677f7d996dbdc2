#include "softboard/src/Signals.h"

#include <algorithm>
#include <string>

#include "softboard/softboard.h"

namespace grabber {
namespace {

/// Selects of the switchboard: the inputs stand in a row from here.
constexpr std::int64_t FirstInputSelect = 21;

const std::string Prefix = "Device1_Process1_Trigger_";

/// A 32-bit or wider integer; 0 if the design lacks it.
std::int64_t integerOf(const Parameter* parameter) {
    std::int64_t value = 0;
    if (parameter != nullptr) {
        parameter->integer(value);
    }
    return value;
}

double realOf(const Parameter* parameter) {
    double value = 0.0;
    parameter->real(value);
    return value;
}

}  // namespace

bool Signals::Route::inverted() const {
    return integerOf(invert) == 1;
}

std::optional<unsigned> Signals::Route::input() const {
    const std::int64_t position = integerOf(select) - FirstInputSelect;
    return position >= 0 && position < InputCount ? std::optional(static_cast<unsigned>(position)) : std::nullopt;
}

Signals::Route Signals::routeOf(const Find& find, const std::string& stem) {
    return {find(Prefix + stem + "_SelectSignal_Select"), find(Prefix + stem + "_Polarity_Invert")};
}

void Signals::bind(const Find& find) {
    *this = Signals();
    inputs_ = find(Prefix + "Inputs_InputStatus_Status");
    clear_ = find(Prefix + "Analyzer_Clear_Value");
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
        analyzers_[number].route = routeOf(find, stem + "_Select");
        analyzers_[number].periodCurrent = find(Prefix + stem + "_PeriodCurrent");
        analyzers_[number].periodMax = find(Prefix + stem + "_PeriodMax");
        analyzers_[number].periodMin = find(Prefix + stem + "_PeriodMin");
        analyzers_[number].pulseCount = find(Prefix + stem + "_PulseCountSignal_Status");
    }
}

bool Signals::inputLevel(unsigned input) const {
    return ((integerOf(inputs_) >> input) & 1) != 0;
}

int Signals::setInput(unsigned input, bool level) {
    if (input >= InputCount) {
        return SOFTBOARD_E_RANGE;
    }
    if (inputs_ == nullptr) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    if (inputLevel(input) == level) {
        return SOFTBOARD_OK;
    }
    inputs_->setInteger(integerOf(inputs_) ^ (std::int64_t{1} << input));
    for (Analyzer& analyzer : analyzers_) {
        if (analyzer.bound() && analyzer.route.input() == input && level != analyzer.route.inverted()) {
            analyzer.pulse(now_);
        }
    }
    updateDifference();
    return SOFTBOARD_OK;
}

int Signals::output(unsigned output, bool& level) const {
    if (output >= OutputCount) {
        return SOFTBOARD_E_RANGE;
    }
    const Route& route = outputs_[output];
    if (!route.bound()) {
        return SOFTBOARD_E_UNKNOWN_ID;
    }
    const auto input = route.input();
    level = (input && inputLevel(*input)) != route.inverted();
    return SOFTBOARD_OK;
}

bool Signals::Analyzer::bound() const {
    return route.bound() && periodCurrent != nullptr && periodMax != nullptr && periodMin != nullptr &&
           pulseCount != nullptr;
}

void Signals::Analyzer::pulse(double now) {
    pulseCount->setInteger(integerOf(pulseCount) + 1);
    if (lastPulse) {
        const double period = now - *lastPulse;
        const bool first = realOf(periodMin) == 0.0;
        periodCurrent->setReal(period);
        periodMax->setReal(std::max(period, realOf(periodMax)));
        periodMin->setReal(first ? period : std::min(period, realOf(periodMin)));
    }
    lastPulse = now;
}

void Signals::Analyzer::clear() {
    if (bound()) {
        pulseCount->setInteger(0);
        periodCurrent->setReal(0.0);
        periodMax->setReal(0.0);
        periodMin->setReal(0.0);
        lastPulse.reset();
    }
}

void Signals::clearAnalyzers() {
    if (integerOf(clear_) != 1) {
        return;
    }
    for (Analyzer& analyzer : analyzers_) {
        analyzer.clear();
    }
    updateDifference();
}

void Signals::updateDifference() {
    constexpr std::int64_t Bits33 = 0x1FFFFFFFF;  // the difference is a two's complement number of 33 bits
    if (difference_ != nullptr) {
        difference_->setInteger((integerOf(analyzers_[0].pulseCount) - integerOf(analyzers_[1].pulseCount)) & Bits33);
    }
}

}  // namespace grabber
