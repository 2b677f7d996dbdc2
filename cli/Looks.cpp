#include "cli/Looks.h"

#include <algorithm>

namespace quillon::cli {

Looks::Looks(std::ostream& out, double seconds, unsigned times)
    : out_(out),
      interval_(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds))),
      left_(times),
      due_(Clock::now()) {}

bool Looks::next() {
    out_.flush();
    if (!out_.good() || left_ == 1) {
        return false;
    }
    left_ -= left_ > 0 ? 1 : 0;
    // What took longer than an interval is not made up for.
    due_ = std::max(due_ + interval_, Clock::now());
    return Interrupt::wait(due_ - Clock::now());
}

}  // namespace quillon::cli
