/// @file
/// The digital side of a board, all that moves with the simulated clock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/ImageTrigger.h"
#include "softboard/src/LineTrigger.h"
#include "softboard/src/Monitors.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. It holds pointers to its own members and stays where it is.
class Signals {
public:
    Signals() = default;
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// Takes up the parameters of a design, which have to stay in place until the next call, and the names of its
    /// events. It is time 0 again.
    void bind(const Find& find, const std::vector<std::string>& events);

    /// Moves the time on, by microseconds, with all that happens meanwhile. It stands still otherwise.
    void advance(double microseconds);
    double time() const { return microsecondsOf(switchboard_.now()); }

    /// Gives an input a level, now.
    int setInput(unsigned input, bool level);
    int output(unsigned output, bool& level) const { return switchboard_.output(output, level); }
    /// The level of the signal with this number among the selects of the switchboard.
    int level(unsigned select, bool& level) const;
    int eventCount(std::string_view event, std::uint64_t& count) const;

    /// To be told of every change of a watched parameter, after it.
    void written(const Parameter& parameter);

private:
    void followInputs();
    void followOverflow();

    Switchboard switchboard_;
    ImageTrigger image_;
    LineTrigger line_;
    Monitors monitors_;
    double begunTick_ = 0.0;  ///< the part of the next tick that has passed, 0 to 1
    Parameter* inputs_ = nullptr;
    const Parameter* clear_ = nullptr;
    const Parameter* overflow_ = nullptr;
    bool overflowed_ = false;
};

}  // namespace softboard
