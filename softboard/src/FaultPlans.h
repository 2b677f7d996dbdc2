/// @file
/// Failures that a test has planned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "softboard/softboard.h"

namespace softboard {

/// Not locked; its owner's lock guards it.
class SOFTBOARD_API FaultPlans {
public:
    /// True when nothing is planned, so that the usual access pays for one comparison only.
    bool empty() const { return plans_.empty(); }
    void clear() { plans_.clear(); }

    /// `nth` counts from now on, from 1; 0 means every time.
    void plan(std::string name, softboard_direction direction, unsigned nth, std::int64_t code);
    /// The `nth` access of any name and direction but a call.
    void planAnyAccess(unsigned nth, std::int64_t code);

    /// Counts one access or call, in every plan that it fits, and gives the code of the first plan that falls due.
    std::optional<std::int64_t> due(softboard_direction direction, std::string_view name);

private:
    struct Plan {
        std::string name;
        softboard_direction direction;
        bool anyAccess;
        bool always;
        unsigned remaining;
        std::int64_t code;
        bool fits(softboard_direction theDirection, std::string_view theName) const;
    };

    std::vector<Plan> plans_;
};

}  // namespace softboard
