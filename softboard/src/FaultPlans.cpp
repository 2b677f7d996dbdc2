#include "softboard/src/FaultPlans.h"

#include <utility>

namespace softboard {

void FaultPlans::plan(std::string name, softboard_direction direction, unsigned nth, std::int64_t code) {
    plans_.push_back({std::move(name), direction, false, nth == 0, nth, code});
}

void FaultPlans::planAnyAccess(unsigned nth, std::int64_t code) {
    plans_.push_back({{}, SOFTBOARD_READ, true, nth == 0, nth, code});
}

bool FaultPlans::Plan::fits(softboard_direction theDirection, std::string_view theName) const {
    if (anyAccess) {
        return theDirection != SOFTBOARD_CALL;
    }
    return direction == theDirection && name == theName;
}

std::optional<std::int64_t> FaultPlans::due(softboard_direction direction, std::string_view name) {
    std::optional<std::int64_t> code;
    for (auto plan = plans_.begin(); plan != plans_.end();) {
        if (!plan->fits(direction, name) || (!plan->always && --plan->remaining != 0)) {
            ++plan;
            continue;
        }
        code = code ? code : plan->code;
        plan = plan->always ? plan + 1 : plans_.erase(plan);
    }
    return code;
}

}  // namespace softboard
