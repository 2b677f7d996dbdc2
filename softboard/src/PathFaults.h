/// @file
/// What is planned to befall lines and frames on their way.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace softboard {

/// Plans for the nth of a row of things. Not locked; the board's lock guards it.
template <class What>
class CountedFaults {
public:
    /// `nth` counts from now on, from 1; 0 means every one.
    void plan(std::uint64_t nth, const What& what) { plans_.push_back({nth == 0, nth, what}); }
    void clear() { plans_.clear(); }

    /// The next one comes: calls `strikes` with what befalls it, in the order of the plans.
    template <class Strikes>
    void next(Strikes strikes) {
        if (plans_.empty()) {
            return;
        }
        std::erase_if(plans_, [&](Plan& plan) {
            const bool due = plan.every || --plan.remaining == 0;
            if (due) {
                strikes(plan.what);
            }
            return due && !plan.every;
        });
    }

private:
    struct Plan {
        bool every;
        std::uint64_t remaining;
        What what;
    };

    std::vector<Plan> plans_;
};

/// Of lines: a softboard_line_faults each.
class LineFaults {
public:
    using Strikes = std::bitset<3>;

    void plan(std::uint64_t nth, std::size_t what) { plans_.plan(nth, what); }
    void clear() { plans_.clear(); }
    /// All that befalls the next line.
    Strikes next() {
        Strikes strikes;
        plans_.next([&](std::size_t what) { strikes.set(what); });
        return strikes;
    }

private:
    CountedFaults<std::size_t> plans_;
};

/// What befalls one frame.
struct FrameFault {
    int what = 0;  ///< softboard_frame_faults
    double amount = 0.0;
};
using FrameFaults = CountedFaults<FrameFault>;

}  // namespace softboard
