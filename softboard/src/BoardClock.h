/// @file
/// What moves the board's time: nothing but its host, the time of day, or whoever waits for a frame.
#pragma once

#include <chrono>

#include "softboard/clock.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Not locked; the board's lock guards it.
class BoardClock {
public:
    using Day = std::chrono::steady_clock;

    void set(int mode, double speed) {
        mode_ = mode;
        speed_ = speed;
    }
    bool isFree() const { return mode_ == SOFTBOARD_CLOCK_FREE; }
    /// True if the time of day moves it, now that an acquisition runs or does not.
    bool followsDay(bool acquiring) const {
        return mode_ == SOFTBOARD_CLOCK_REAL || (mode_ == SOFTBOARD_CLOCK_AUTO && acquiring);
    }

    /// From here on the time of day counts.
    void begin() { last_ = Day::now(); }
    /// Microseconds of the board since the last call, or since it began.
    double passed() {
        const Day::time_point now = Day::now();
        const double microseconds = std::chrono::duration<double, std::micro>(now - last_).count();
        last_ = now;
        return microseconds * speed_;
    }
    /// How long so many ticks of the board last.
    Day::duration duration(Tick ticks) const {
        return std::chrono::duration_cast<Day::duration>(
            std::chrono::duration<double, std::micro>(microsecondsOf(ticks) / speed_));
    }

private:
    int mode_ = SOFTBOARD_CLOCK_AUTO;
    double speed_ = 1.0;
    Day::time_point last_;
};

}  // namespace softboard
