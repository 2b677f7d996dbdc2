/// @file
/// What the digital signals did, to the tick: a recording of their edges and of the design's events.
#ifndef SOFTBOARD_RECORDING_H
#define SOFTBOARD_RECORDING_H

#include <stddef.h>
#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/// The most changes that a recording may keep.
#define SOFTBOARD_RECORDING_MOST 4000000

/// What has changed.
enum softboard_change_kind {
    SOFTBOARD_CHANGE_SIGNAL = 0,  ///< a signal that has a level: softboard_signal 0 to 32
    SOFTBOARD_CHANGE_OUTPUT = 1,  ///< an output, by the number that softboard_get_output takes
    SOFTBOARD_CHANGE_EVENT = 2    ///< the design has raised an event
};

/// One change. A tick is 8 ns of the board's clock.
typedef struct softboard_change {
    uint64_t tick;
    const char* event;  ///< the design's name of the event, which stays until another design is put on the board;
                        ///< null for a signal and an output
    uint32_t kind;      ///< softboard_change_kind
    uint32_t number;    ///< of the signal or output; of an event the bit of its mask
    uint32_t level;     ///< from now on, 0 or 1; 1 for an event
} softboard_change;

/// Begins a recording that keeps the first `most` changes from now on, in the order in which they come, and forgets an
/// earlier one; with 0 none is kept any more. A change of an output's routing is one of its level, from the tick on in
/// which it is made. A design that is put on the board empties the recording.
/// @return 0; SOFTBOARD_E_NO_DESIGN; SOFTBOARD_E_ARGUMENT for an unknown board, or more than SOFTBOARD_RECORDING_MOST.
SOFTBOARD_API int softboard_record_signals(struct IXdevice* board, size_t most);
/// How many changes the recording has kept, and how many came when it was full.
SOFTBOARD_API int softboard_recording_size(struct IXdevice* board, size_t* kept, uint64_t* lost);
/// Copies `count` changes from number `first` (from 0) on; `changes` may be null for none. SOFTBOARD_E_RANGE if the
/// recording has not kept so many.
SOFTBOARD_API int softboard_recorded_changes(struct IXdevice* board, size_t first, size_t count,
                                             softboard_change* changes);

#ifdef __cplusplus
}
#endif

#endif
