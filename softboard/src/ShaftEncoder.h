/// @file
/// The shaft encoder filter: two tracks in, the pulses of a forward movement out.
#pragma once

#include <cstdint>

#include "softboard/src/BoundParameters.h"

namespace softboard {

/// Not locked; the board's lock guards it.
///
/// The tracks are square waves, a quarter of a period apart. The movement is forward while the leading one
/// (EncoderABLead: 0 track A, 1 track B) changes first. EncoderABMode 1 takes a count from each period, where the
/// leading track rises while the other is low; 2 takes two, where the leading track changes; 3 takes four, where any of
/// them does. A count lies at one place, in whichever direction it is passed.
///
/// Forward counts give pulses. With EncoderCompensation, backward ones add to EncoderCompensationCount, and forward
/// ones take it down to 0 before they give pulses again: no place gives two.
class ShaftEncoder {
public:
    void bind(const Find& find);
    bool allFound() const;

    bool on() const { return integerOf(mode_) != 0; }
    /// The tracks have these levels, and nothing comes of it.
    void connect(bool a, bool b) {
        a_ = a;
        b_ = b;
    }
    /// The tracks have these levels now. True if a pulse comes of it.
    bool follow(bool a, bool b);

private:
    bool counts(unsigned quarter) const;

    const Parameter* mode_ = nullptr;
    const Parameter* lead_ = nullptr;
    const Parameter* compensation_ = nullptr;
    Parameter* count_ = nullptr;
    bool a_ = false;
    bool b_ = false;
};

}  // namespace softboard
