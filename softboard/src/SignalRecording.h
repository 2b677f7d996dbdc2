/// @file
/// The edges and events of a while, for whoever wants to see them afterwards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "softboard/recording.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Not locked; the board's lock guards it.
class SignalRecording {
public:
    void begin(std::size_t most) {
        changes_ = {};
        lost_ = 0;
        most_ = most;
    }
    bool isRunning() const { return most_ != 0; }
    void clear() { begin(most_); }

    void signal(Tick tick, unsigned select, bool level) { add(tick, nullptr, SOFTBOARD_CHANGE_SIGNAL, select, level); }
    void output(Tick tick, unsigned output, bool level) { add(tick, nullptr, SOFTBOARD_CHANGE_OUTPUT, output, level); }
    /// The name must stay until clear().
    void event(Tick tick, const char* name, unsigned bit) { add(tick, name, SOFTBOARD_CHANGE_EVENT, bit, true); }

    const std::vector<softboard_change>& changes() const { return changes_; }
    std::uint64_t lost() const { return lost_; }

private:
    void add(Tick tick, const char* event, softboard_change_kind kind, unsigned number, bool level) {
        if (changes_.size() >= most_) {
            ++lost_;
            return;
        }
        changes_.push_back(
            {static_cast<std::uint64_t>(tick), event, static_cast<std::uint32_t>(kind), number, level ? 1U : 0U});
    }

    std::size_t most_ = 0;
    std::vector<softboard_change> changes_;
    std::uint64_t lost_ = 0;
};

}  // namespace softboard
