/// @file
/// The one clock of the software board, in ticks of 8 ns: signals, lines, frames and monitors go by it.
#ifndef SOFTBOARD_CLOCK_H
#define SOFTBOARD_CLOCK_H

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/// What moves the clock. softboard_advance_signals moves it on in every mode.
enum softboard_clock_mode {
    SOFTBOARD_CLOCK_STEPPED = 0,  ///< nothing else: two runs give the same bytes
    SOFTBOARD_CLOCK_REAL = 1,     ///< the time of day, `speed` times as fast
    SOFTBOARD_CLOCK_FREE = 2,     ///< whoever waits for a frame: time jumps from event to event, and nothing is lost
    SOFTBOARD_CLOCK_AUTO = 3  ///< the time of day while an acquisition runs, nothing otherwise: the mode of a new board
};

/// Sets the mode. `speed` is board seconds per second of the day (above 0, at most 1000; only for REAL and AUTO).
/// @return 0, SOFTBOARD_E_ARGUMENT for an unknown board, mode or speed.
SOFTBOARD_API int softboard_clock(struct IXdevice* board, int mode, double speed);

#ifdef __cplusplus
}
#endif

#endif
