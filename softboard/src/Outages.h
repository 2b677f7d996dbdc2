/// @file
/// Times at which something is planned to be out of order, and in order again.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "softboard/faults.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Not locked; the board's lock guards it.
class Outages {
public:
    struct Change {
        Tick tick = Never;
        int what = SOFTBOARD_OUTAGE_CAMERA;
        bool gone = false;
    };

    /// From `from` to `until`, which may be Never.
    void plan(int what, Tick from, Tick until);
    void clear();

    Tick next() const { return changes_.empty() ? Never : changes_.front().tick; }
    /// The next change, which is planned no more.
    Change take();
    /// What is gone by a plan, and not yet back.
    bool isGone(int what) const { return gone_[static_cast<std::size_t>(what)]; }

private:
    void add(Change change);

    std::vector<Change> changes_;  ///< in their order
    std::array<bool, 2> gone_{};
};

}  // namespace softboard
