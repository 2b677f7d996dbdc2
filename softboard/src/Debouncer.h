/// @file
/// An input of a trigger unit behind its debouncing.
#pragma once

#include "softboard/src/Ticks.h"

namespace softboard {

/// A level counts when the input has had it for the debouncing time without a break; shorter pulses are not seen. Up to
/// the time of a new design, 0.112 us, it counts at once: who changes an input while the clock stands still sees what
/// comes of it, unless a longer time is asked for.
///
/// Not locked; the board's lock guards it.
class Debouncer {
public:
    static constexpr Tick ShortestTime = 14;  ///< times up to this one are none

    bool level() const { return level_; }

    /// The input has this level from now on. True if that counts at once.
    /// @param time  in microseconds
    bool input(bool level, Tick now, double time) {
        const Tick ticks = ticksOf(time, 0);
        if (level == level_) {
            due_ = Never;
        } else if (ticks <= ShortestTime) {
            change();
            return true;
        } else if (due_ == Never) {
            due_ = now + ticks;
        }
        return false;
    }
    /// Another input is connected, and its level counts.
    void connect(bool level) {
        level_ = level;
        due_ = Never;
    }

    /// When the level changes; Never if it does not.
    Tick next() const { return due_; }
    void change() {
        level_ = !level_;
        due_ = Never;
    }

private:
    bool level_ = false;
    Tick due_ = Never;
};

}  // namespace softboard
