#include "softboard/src/ShaftEncoder.h"

#include <algorithm>
#include <string>

namespace softboard {
namespace {

constexpr std::int64_t MostCompensation = 1048575;

/// Which quarter of a forward period two tracks are in: both low, the leading one high, both, the other one.
unsigned quarterOf(bool leading, bool other) {
    return leading ? (other ? 2 : 1) : (other ? 3 : 0);
}

}  // namespace

void ShaftEncoder::bind(const Find& find) {
    *this = ShaftEncoder();
    const std::string unit = "Device1_Process0_Trigger_Trigger_Encoder";
    mode_ = find(unit + "ABMode");
    lead_ = find(unit + "ABLead");
    compensation_ = find(unit + "Compensation");
    count_ = find(unit + "CompensationCount");
}

bool ShaftEncoder::allFound() const {
    return mode_ != nullptr && lead_ != nullptr && compensation_ != nullptr && count_ != nullptr;
}

bool ShaftEncoder::follow(bool a, bool b) {
    const bool leadsB = integerOf(lead_) == 1;
    const unsigned before = leadsB ? quarterOf(b_, a_) : quarterOf(a_, b_);
    const unsigned now = leadsB ? quarterOf(b, a) : quarterOf(a, b);
    a_ = a;
    b_ = b;
    const bool forward = now == (before + 1) % 4;
    const bool backward = before == (now + 1) % 4;
    // What neither is, both tracks at once, tells no direction.
    if (!on() || !(forward || backward) || !counts(forward ? now : before)) {
        return false;
    }
    if (integerOf(compensation_) != 1) {
        return forward;
    }
    const std::int64_t count = integerOf(count_);
    count_->setInteger(forward ? std::max<std::int64_t>(count - 1, 0) : std::min(count + 1, MostCompensation));
    return forward && count == 0;
}

/// True if the place between a quarter and the one before it is a count.
bool ShaftEncoder::counts(unsigned quarter) const {
    switch (integerOf(mode_)) {
        case 1: return quarter == 1;
        case 2: return quarter == 1 || quarter == 3;
        default: return true;
    }
}

}  // namespace softboard
