#pragma once

#include <chrono>
#include <ostream>

#include "cli/Interrupt.h"

namespace quillon::cli {

/// The looks of a verb that looks again and again, until there were enough, Ctrl-C ends it, or its reader has gone.
///
///     Looks looks(console.out, 1.0, 3);
///     do {
///         ...
///     } while (looks.next());
class Looks {
public:
    /// `seconds`: from one look to the next, at least 0. `times`: 0 is without end.
    Looks(std::ostream& out, double seconds, unsigned times);

    /// Lets out what was printed and waits until it is time for another look; false if there is to be none.
    bool next();

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& out_;
    Clock::duration interval_;
    unsigned left_;  ///< 0 is without end
    Clock::time_point due_;
    Interrupt interrupt_;
};

}  // namespace quillon::cli
