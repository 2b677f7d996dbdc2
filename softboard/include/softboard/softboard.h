/// @file
/// The control side of the software board: what a host, a test or a tool may do that hardware would do by itself.
///
/// A *board* is the device that `Std_entry` takes. An applet that is opened on it loads a design, and from then on
/// every access that reaches the design, the SDK's own parameters or the registers is written to the board's
/// *transcript*. Values can be changed from the hardware's side, and faults can be planned.
///
/// All functions may be called from any thread. Functions that return `int` give 0 for success and a negative
/// SOFTBOARD_E_... code otherwise. A null board addresses the process-wide part where a function says so, and is
/// SOFTBOARD_E_ARGUMENT elsewhere.
#ifndef SOFTBOARD_SOFTBOARD_H
#define SOFTBOARD_SOFTBOARD_H

#include <stddef.h>
#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/// A board in software is the `IXdevice` that goes to `Std_entry`.
struct IXdevice;

/// Codes that the software board, its SDK and its register access answer with. They lie outside the applet's own codes.
enum softboard_error {
    SOFTBOARD_OK = 0,
    SOFTBOARD_E_ARGUMENT = -9001,         ///< a null pointer, an unknown board, a process (DMA) other than 0
    SOFTBOARD_E_UNKNOWN_ID = -9002,       ///< no parameter, register or event has this id or name
    SOFTBOARD_E_TYPE = -9003,             ///< the parameter is not accessed with this value type
    SOFTBOARD_E_READ_ONLY = -9004,        ///< a write of a parameter or register that can only be read
    SOFTBOARD_E_WRITE_ONLY = -9005,       ///< a read of a parameter or register that can only be written
    SOFTBOARD_E_RANGE = -9006,            ///< an index outside a field, a text longer than its buffer
    SOFTBOARD_E_NO_DESIGN = -9007,        ///< no design has been loaded on the board
    SOFTBOARD_E_ACQUISITION = -9008,      ///< an acquisition call in the wrong state
    SOFTBOARD_E_TIMEOUT = -9009,          ///< a picture did not arrive in time
    SOFTBOARD_E_NOT_IMPLEMENTED = -9010,  ///< shading, which this SDK does not have
    SOFTBOARD_E_FILE = -9011,             ///< a file could not be read or written, or its content makes no sense
    SOFTBOARD_E_INTERNAL = -9012          ///< memory is short
};

/// What a transcript entry is.
enum softboard_direction {
    SOFTBOARD_READ = 0,   ///< a get of a parameter or a read of a register
    SOFTBOARD_WRITE = 1,  ///< a set of a parameter or a write of a register
    SOFTBOARD_CALL = 2    ///< any other call of a stand-in library; `name` is the function, `value` its arguments
};

/// One entry of a transcript. The texts live until the transcript is cleared or the board is closed.
typedef struct softboard_access {
    uint64_t sequence;  ///< 1 for the first entry of the board, rising by 1, never reused, kept across
                        ///< softboard_transcript_clear
    int32_t direction;  ///< softboard_direction
    int32_t id;         ///< parameter id or register number; 0 for a call
    int32_t dma;        ///< the process that was addressed
    int32_t type;       ///< value type of a parameter access; 0 for registers and calls
    int64_t result;     ///< the code or number that the caller got
    const char* name;   ///< parameter, "register NAME", or function
    const char* value;  ///< integers in decimal, doubles in the shortest form that reads back, texts as they are,
                        ///< fields as "[index]=value" or "[index..last]=v0,v1,...", arguments separated by ", "
} softboard_access;

/* ---- Boards ---- */

/// Opens a new board, with no design. Null if memory is short.
SOFTBOARD_API struct IXdevice* softboard_open(void);
/// Closes a board. Every handle on it must have been freed before.
SOFTBOARD_API int softboard_close(struct IXdevice* board);

/* ---- Transcript ---- */

/// Number of entries. A null board gives the process-wide transcript: loader calls, and SDK calls that name no board.
SOFTBOARD_API size_t softboard_transcript_size(struct IXdevice* board);
/// Copies entry `index` (from 0) to `*out`.
SOFTBOARD_API int softboard_transcript_get(struct IXdevice* board, size_t index, softboard_access* out);
/// Forgets all entries.
SOFTBOARD_API int softboard_transcript_clear(struct IXdevice* board);
/// Switches recording on (1, the state of a new board) or off (0), as for a benchmark. Faults and counts work in both
/// states.
SOFTBOARD_API int softboard_transcript_record(struct IXdevice* board, int enabled);

/* ---- Faults ---- */

/// Plans that the `nth` (from 1) access from now on in `direction` to the parameter or register `name` answers `code`
/// and does nothing else. `nth` 0 plans it for every access. `direction` SOFTBOARD_CALL names a function instead: it
/// then returns `code`, or null if its result is a pointer. A null board plans for functions that know no board
/// (TavLoadDesignFromBuffer, TavLoadTavFileWithType, ...). The name need not exist yet. Several plans may stand at
/// once.
SOFTBOARD_API int softboard_plan_fault(struct IXdevice* board, const char* name, int direction, unsigned nth,
                                       int64_t code);
/// Plans that the `nth` (from 1; 0: every) parameter or register access of any name and either direction from now on
/// answers `code`.
SOFTBOARD_API int softboard_plan_fault_at(struct IXdevice* board, unsigned nth, int64_t code);
/// Forgets all planned faults.
SOFTBOARD_API int softboard_clear_faults(struct IXdevice* board);

/* ---- The hardware's side ---- */

/// Changes or reads the value of a parameter (by its name in the design or the SDK) without leaving a trace in the
/// transcript. The access rights of the parameter do not matter. While the board has no design, changes of names that
/// the SDK does not know are kept and made as soon as a design is put on the board that has them; reads are
/// SOFTBOARD_E_NO_DESIGN.
SOFTBOARD_API int softboard_set_integer(struct IXdevice* board, const char* name, int64_t value);
SOFTBOARD_API int softboard_get_integer(struct IXdevice* board, const char* name, int64_t* value);
SOFTBOARD_API int softboard_set_double(struct IXdevice* board, const char* name, double value);
SOFTBOARD_API int softboard_get_double(struct IXdevice* board, const char* name, double* value);
SOFTBOARD_API int softboard_set_text(struct IXdevice* board, const char* name, const char* value);
/// Copies at most `size` bytes with the terminator; SOFTBOARD_E_RANGE if the text is longer.
SOFTBOARD_API int softboard_get_text(struct IXdevice* board, const char* name, char* buffer, size_t size);
/// One element of a field parameter, such as a lookup table's content.
SOFTBOARD_API int softboard_set_element(struct IXdevice* board, const char* name, size_t index, int64_t value);
SOFTBOARD_API int softboard_get_element(struct IXdevice* board, const char* name, size_t index, int64_t* value);
/// Removes a parameter from the design, so that its name no longer resolves and its id is unknown. While the board has
/// no design this too is kept for the next one. SOFTBOARD_HIDE does the same, and for events, in every load of a design
/// (see softboard/README.md).
SOFTBOARD_API int softboard_hide_parameter(struct IXdevice* board, const char* name);
/// Changes or reads a register of the design.
SOFTBOARD_API int softboard_set_register(struct IXdevice* board, const char* name, uint64_t value);
SOFTBOARD_API int softboard_get_register(struct IXdevice* board, const char* name, uint64_t* value);
/// How a register of the design can be accessed, in the loader's numbers: 0 only read, 1 only written, 2 both.
SOFTBOARD_API int softboard_get_register_direction(struct IXdevice* board, const char* name, int* direction);
/// Lets `count` pictures arrive at once, if an acquisition without a memory runs; SOFTBOARD_E_ACQUISITION with one,
/// whose frames come of lines only. Others arrive by themselves, as the design's triggers decide.
SOFTBOARD_API int softboard_deliver_pictures(struct IXdevice* board, int64_t count);
/// The number that the SDK's Fg_getLastErrorNumber answers for this board; a null board: for a null SDK handle. It
/// stands until it is changed; with 0 the code of the last failed call is answered again, 0 at first.
SOFTBOARD_API int softboard_set_sdk_error(struct IXdevice* board, int number);

/* ---- Digital signals ---- */

/// Signals of the switchboard, under the numbers by which the design's Select parameters choose them. 21 to 28 are
/// GPI 0 to 7, 29 to 32 are front GPI 0 to 3; the other numbers up to 36 are always low.
enum softboard_signal {
    SOFTBOARD_EXSYNC = 1,
    SOFTBOARD_EXSYNC2 = 2,
    SOFTBOARD_FLASH = 3,
    SOFTBOARD_LVAL = 4,
    SOFTBOARD_FVAL = 5,
    SOFTBOARD_GPI_0 = 21,
    SOFTBOARD_FRONT_GPI_0 = 29,
    SOFTBOARD_LINE_START = 33,  ///< this and the following: pulses too short to be seen as a level
    SOFTBOARD_LINE_END = 34,
    SOFTBOARD_FRAME_START = 35,
    SOFTBOARD_FRAME_END = 36
};

/// Moves the board's clock on by 0 to 60 seconds (in microseconds; SOFTBOARD_E_ARGUMENT otherwise), and lets everything
/// happen that is due by then: ExSync, lines, frames, flash, what the analyzers measure, events, the drift of the
/// monitors. Frames of an acquisition are drawn when it returns. While nothing moves the clock (see softboard/clock.h)
/// time stands still and none of them moves, except that a change of an input or a parameter acts at once.
/// softboard/README.md tells the model. The clock counts ticks of 8 ns; what is left of a tick is kept.
SOFTBOARD_API int softboard_advance_signals(struct IXdevice* board, double microseconds);
/// The time of that clock in microseconds, 0 when a design is put on the board.
SOFTBOARD_API int softboard_get_signal_time(struct IXdevice* board, double* microseconds);
/// Moves the clock on likewise, but no further than to the next tick at which the design raises an event, by its name
/// as in softboard_event_count; *raised tells whether it did.
SOFTBOARD_API int softboard_advance_to_event(struct IXdevice* board, const char* event, double microseconds,
                                             int* raised);
/// Gives an input a level (0 low, else high): 0 to 7 are GPI 0 to 7, 8 to 11 are front GPI 0 to 3; others are
/// SOFTBOARD_E_RANGE. The design shows it in its input status. A change of the input status from the hardware's side is
/// the same thing.
SOFTBOARD_API int softboard_set_input(struct IXdevice* board, unsigned input, int level);
/// The level of an output, which is that of the signal it selects, inverted or not: 0 is the camera trigger, 1 to 8 are
/// GPO 0 to 7, 9 and 10 are front GPO 0 and 1; others are SOFTBOARD_E_RANGE.
SOFTBOARD_API int softboard_get_output(struct IXdevice* board, unsigned output, int* level);
/// The level of a signal, a softboard_signal or another number from 0 to 36; others are SOFTBOARD_E_RANGE.
SOFTBOARD_API int softboard_get_signal(struct IXdevice* board, unsigned signal, int* level);
/// How often the design has raised an event since it was put on the board. `name` is the design's name of the event,
/// as "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0"; SOFTBOARD_E_UNKNOWN_ID if there is none.
SOFTBOARD_API int softboard_event_count(struct IXdevice* board, const char* name, uint64_t* count);

/* ---- Counts ---- */

/// How often the stand-in function `function` ("TavUnloadTavFile", "Fg_FreeGrabber", ...) has been called in this
/// process.
SOFTBOARD_API uint64_t softboard_call_count(const char* function);
/// Designs that are loaded now, SDK handles that are alive now: both 0 when everything has been given back.
SOFTBOARD_API uint64_t softboard_live_designs(void);
SOFTBOARD_API uint64_t softboard_live_handles(void);

#ifdef __cplusplus
}
#endif

#endif
