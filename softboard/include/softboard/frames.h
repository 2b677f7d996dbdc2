/// @file
/// Pictures of the software board: the memory that an acquisition fills, and what is known of each frame in it.
///
/// The pointer that softboard_memory_open gives is the one that goes to Fg_AcquireEx, through the applet or without it.
/// An acquisition without a memory (null) counts pictures and draws none.
///
/// All functions may be called from any thread. Functions that return `int` give 0 or a negative SOFTBOARD_E_... code.
#ifndef SOFTBOARD_FRAMES_H
#define SOFTBOARD_FRAMES_H

#include <stddef.h>
#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/// Buffers of one size for frames.
typedef struct softboard_memory softboard_memory;

/// How a memory is filled again when all its buffers hold frames.
enum softboard_memory_modes {
    SOFTBOARD_MEMORY_RING = 0,  ///< the oldest frame is overwritten; the mode of a new memory
    SOFTBOARD_MEMORY_HOLD = 1   ///< only buffers that were released are filled; frames wait on the board until then
};

/// Flags of a frame.
enum softboard_frame_flags {
    SOFTBOARD_FRAME_SHORT = 1,       ///< it has fewer lines than the image height
    SOFTBOARD_FRAME_GATE_ENDED = 2,  ///< its image ended because the gate fell
    SOFTBOARD_FRAME_TRUNCATED = 4,   ///< the buffer is smaller than the frame: its end is missing
    SOFTBOARD_FRAME_LINES_LOST = 8,  ///< lines of it did not fit into the board's own memory, or a fault took them
    SOFTBOARD_FRAME_INJECTED = 16,   ///< it came in through a debug point
    SOFTBOARD_FRAME_RED_FIRST = 32,  ///< a pixel's first component is red, see softboard_byte_order
    SOFTBOARD_FRAME_MIXED = 64,      ///< width, bits or order changed within it: they are told of its first line
    SOFTBOARD_FRAME_FAULTY = 128     ///< a planned fault has befallen it, or a line of it
};

/// What is known of a frame. A tick is 8 ns of the board's clock.
typedef struct softboard_frame {
    uint64_t size;         ///< of this structure, filled in by the caller: sizeof(softboard_frame)
    uint64_t number;       ///< 1, 2, 3 ... since the start of the acquisition, without gaps
    uint64_t image;        ///< which frame of the trigger unit this is since the start, from 1: gaps are frames that
                           ///< the image selector left out or that were lost
    uint64_t first_tick;   ///< when the exposure of its first line ended, or the simulator began to send that line
    uint64_t last_tick;    ///< the same of its last line
    uint64_t bytes;        ///< of the picture in its buffer
    uint64_t lost_before;  ///< frames that were lost between the frame before and this one
    uint32_t width;        ///< pixels of a line, as bits and order those of the first
    uint32_t lines;        ///< complete lines in the buffer
    uint32_t bits;         ///< of a component: 8, 10, 12, 14 or 16; a pixel has three, packed without gaps
                           ///< from the lowest bit of the first byte on
    uint32_t flags;        ///< softboard_frame_flags
    uint32_t buffer;       ///< index of its buffer
    uint32_t settings;     ///< version of the settings that its first line was drawn with; a later one is greater
} softboard_frame;

/// Makes `buffers` buffers of `buffer_size` bytes each, filled with zeros, for acquisitions of this board.
/// @param shm_name  null, or the name of a POSIX shared memory object (as "/frames") that the buffers lie in, one after
///                  the other; it must not exist yet, and is removed when the memory is closed.
/// @return null if the board is unknown, a number is 0, the product overflows, the shared memory cannot be made, or
///         memory is short.
SOFTBOARD_API softboard_memory* softboard_memory_open(struct IXdevice* board, size_t buffer_size, unsigned buffers,
                                                      const char* shm_name);
/// Gives the buffers back. SOFTBOARD_E_ACQUISITION while an acquisition fills them; SOFTBOARD_E_ARGUMENT if this is no
/// open memory. A memory outlives its board and is closed all the same.
SOFTBOARD_API int softboard_memory_close(softboard_memory* memory);
/// Sets the mode, one of softboard_memory_modes. SOFTBOARD_E_ACQUISITION while an acquisition runs.
SOFTBOARD_API int softboard_memory_mode(softboard_memory* memory, int mode);
/// The buffer of frame `number`, and its description in `*about` if that is not null. Null if the frame has not come
/// yet or is gone. A ring's buffer may be filled again at any time.
SOFTBOARD_API const void* softboard_memory_data(softboard_memory* memory, int64_t number, softboard_frame* about);
/// Releases frame `number`, so that its buffer can be filled again (hold mode). SOFTBOARD_E_RANGE if it is not held.
SOFTBOARD_API int softboard_memory_release(softboard_memory* memory, int64_t number);
/// Has `frame_came` called with every further frame: on the thread that drew it, without a lock, before anybody who
/// waits for it wakes. Null switches it off. The call-back must not close the memory.
SOFTBOARD_API int softboard_on_frame(softboard_memory* memory,
                                     void (*frame_came)(void* user, const softboard_frame* about, const void* data),
                                     void* user);
/// The order of a pixel's components in memory: blue first (0, as the hardware has it), or red first (else).
SOFTBOARD_API int softboard_byte_order(struct IXdevice* board, int red_first);

/// Numbers for `param` of Fg_getStatusEx beside 0 (runs), 1 (pictures) and 2 (pictures asked for). Those of a frame
/// take its number as `data`, and are SOFTBOARD_E_RANGE for a frame that is not in the memory.
enum softboard_status {
    SOFTBOARD_STATUS_FRAME_BYTES = 1000,
    SOFTBOARD_STATUS_FRAME_BUFFER = 1001,
    SOFTBOARD_STATUS_FRAME_FIRST_TICK = 1002,
    SOFTBOARD_STATUS_FRAME_LINES = 1003,
    SOFTBOARD_STATUS_FRAME_FLAGS = 1004,
    SOFTBOARD_STATUS_LOST_FRAMES = 1010,    ///< since the start of the acquisition
    SOFTBOARD_STATUS_LOST_LINES = 1011,     ///< since the start of the acquisition
    SOFTBOARD_STATUS_BYTES_WAITING = 1012,  ///< in the board's own memory, on their way to the host
    SOFTBOARD_STATUS_FAULTS = 1013          ///< planned faults of lines and frames that have struck since the start
};

#ifdef __cplusplus
}
#endif

#endif
