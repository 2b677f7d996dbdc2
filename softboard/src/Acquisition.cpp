#include "softboard/src/Acquisition.h"

#include <algorithm>

namespace softboard {

void Acquisition::start(std::int64_t count, Clock::time_point now) {
    running_ = true;
    wanted_ = count;
    pictures_ = 0;
    begunPicture_ = 0.0;
    last_ = now;
}

void Acquisition::advance(Clock::time_point now, std::optional<double> period) {
    const double elapsed = std::chrono::duration<double>(now - last_).count();
    last_ = now;
    if (!running_ || !period || !(*period > 0.0)) {
        return;
    }
    constexpr double MostAtOnce = 1e15;  // far from what a 64-bit count overflows at
    const double arrived = std::min(begunPicture_ + elapsed / *period, MostAtOnce);
    const auto whole = static_cast<std::int64_t>(arrived);
    begunPicture_ = arrived - static_cast<double>(whole);
    deliver(whole);
}

void Acquisition::deliver(std::int64_t count) {
    if (!running_) {
        return;
    }
    pictures_ += count;
    if (wanted_ >= 0) {
        pictures_ = std::min(pictures_, wanted_);
    }
}

}  // namespace softboard
