#include "softboard/src/Signals.h"

#include <cmath>

#include "softboard/softboard.h"

namespace softboard {

void Signals::bind(const Find& find, const std::vector<std::string>& events) {
    begunTick_ = 0.0;
    inputs_ = watched(find, "Device1_Process1_Trigger_Inputs_InputStatus_Status");
    clear_ = watched(find, "Device1_Process1_Trigger_Analyzer_Clear_Value");
    overflow_ = watched(find, "Device1_Process0_Overflow_OverflowOccurred");
    overflowed_ = integerOf(overflow_) != 0;
    switchboard_.bind(find, events);
    image_.bind(find, switchboard_);
    line_.bind(find, switchboard_, image_);
    monitors_.bind(find);
    followInputs();
}

void Signals::advance(double microseconds) {
    const double passed = begunTick_ + microseconds * TicksPerMicrosecond;
    const auto whole = static_cast<Tick>(passed);
    begunTick_ = passed - static_cast<double>(whole);
    line_.run(switchboard_.now() + whole);
    monitors_.show(switchboard_.now());
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
    if (&parameter == inputs_) {
        followInputs();
    } else if (&parameter == clear_) {
        if (integerOf(clear_) == 1) {
            switchboard_.clearAnalyzers();
        }
    } else if (&parameter == overflow_) {
        followOverflow();
    } else {
        monitors_.written(parameter, switchboard_.now());
        image_.written(parameter);
        line_.written(parameter);
    }
    line_.run(switchboard_.now());  // what a change has made due at once, as an ExSync2 without delay
}

void Signals::followInputs() {
    const std::int64_t levels = integerOf(inputs_);
    for (unsigned input = 0; input < InputCount; ++input) {
        const bool level = ((levels >> input) & 1) != 0;
        if (level != switchboard_.level(FirstInputSelect + input)) {
            switchboard_.setLevel(FirstInputSelect + input, level);
            image_.inputChanged();
            line_.inputChanged(input, level);
        }
    }
}

void Signals::followOverflow() {
    const bool overflowed = integerOf(overflow_) != 0;
    if (overflowed && !overflowed_) {
        switchboard_.raise("Device1_Process0_Overflow_Overflow");
    }
    overflowed_ = overflowed;
}

}  // namespace softboard
