#include "softboard/src/Outages.h"

#include <algorithm>

namespace softboard {

void Outages::plan(int what, Tick from, Tick until) {
    add({from, what, true});
    if (until != Never) {
        add({until, what, false});
    }
}

void Outages::clear() {
    *this = Outages();
}

void Outages::add(Change change) {
    const auto behind = std::upper_bound(changes_.begin(), changes_.end(), change,
                                         [](const Change& a, const Change& b) { return a.tick < b.tick; });
    changes_.insert(behind, change);
}

Outages::Change Outages::take() {
    const Change change = changes_.front();
    changes_.erase(changes_.begin());
    gone_[static_cast<std::size_t>(change.what)] = change.gone;
    return change;
}

}  // namespace softboard
