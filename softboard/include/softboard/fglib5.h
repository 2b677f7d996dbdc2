/// @file
/// The SDK library, `libfglib5.so`, as an applet sees it: parameters of the design and of the SDK by numeric id,
/// acquisition, and the description of the parameters.
///
/// Integer results are 0 (or a number asked for) on success and a negative SOFTBOARD_E_... code otherwise. `dma` is
/// always 0.
#ifndef SOFTBOARD_FGLIB5_H
#define SOFTBOARD_FGLIB5_H

#include <stdint.h>

#include "softboard/export.h"
#include "softboard/tavrt.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;
typedef struct Fg_Struct_s Fg_Struct;

/// Value types of a parameter access.
enum fg_param_types {
    FG_PARAM_TYPE_INT32 = 1,   ///< pointer to a signed 32-bit integer
    FG_PARAM_TYPE_UINT32 = 2,  ///< pointer to an unsigned 32-bit integer
    FG_PARAM_TYPE_INT64 = 3,   ///< pointer to a signed 64-bit integer
    FG_PARAM_TYPE_UINT64 = 4,  ///< pointer to an unsigned 64-bit integer
    FG_PARAM_TYPE_DOUBLE = 5,  ///< pointer to a double
    FG_PARAM_TYPE_TEXT = 6,    ///< pointer to the characters themselves; a read fills them with the terminator
    FG_PARAM_TYPE_NEW_TEXT =
        22,  ///< read only: pointer to a char*, which gets a new text (Fg_freeParameterStringWithType)
    FG_PARAM_TYPE_FIELD = 4096,     ///< pointer to a fg_field_access
    FG_PARAM_TYPE_FIELD_INT = 4098  ///< pointer to a fg_field_int
};

/// One element of a field.
typedef struct fg_field_int {
    uint32_t value;
    uint32_t index;
} fg_field_int;

/// A run of elements of a field.
typedef struct fg_field_access {
    int32_t vtype;   ///< 1, 2 or 4098: `value` points to 32-bit elements; 3 or 4: to 64-bit elements
    uint32_t index;  ///< first element
    uint32_t count;  ///< number of elements
    void* value;     ///< at byte 16; owned by the caller
} fg_field_access;

/// Binds a board to a design. With bit 0 of `flags` set, a board that runs the same design keeps its state; otherwise
/// it is configured anew and all parameters have the design's initial values. Null on failure;
/// Fg_getLastErrorNumber(null) tells why.
SOFTBOARD_API Fg_Struct* Fg_InitHandleSlaveAware(const char* name, struct IXdevice* device, fpga_design* design,
                                                 int flags);
SOFTBOARD_API Fg_Struct* Fg_InitHandle(const char* name, struct IXdevice* device, fpga_design* design);
SOFTBOARD_API int Fg_FreeGrabber(Fg_Struct* fg);
/// The code of the last call on this handle's board that failed; for a null handle that of the last failed
/// Fg_InitHandle.
SOFTBOARD_API int Fg_getLastErrorNumber(Fg_Struct* fg);
SOFTBOARD_API int Fg_getAppletId(Fg_Struct* fg, const void* reserved);

/// The id of a parameter of the design or of the SDK; negative if there is none.
SOFTBOARD_API int Fg_getParameterIdByName(Fg_Struct* fg, const char* name);
SOFTBOARD_API int Fg_setParameterWithType(Fg_Struct* fg, int id, const void* value, unsigned dma, int type);
SOFTBOARD_API int Fg_getParameterWithType(Fg_Struct* fg, int id, void* value, unsigned dma, int type);
/// Releases a text that a read of type 22 gave; `value` is the text itself.
SOFTBOARD_API int Fg_freeParameterStringWithType(Fg_Struct* fg, int id, void* value, unsigned dma, int type);
/// The same accesses with the parameter's own type (4098 for a field).
SOFTBOARD_API int Fg_setParameter(Fg_Struct* fg, int id, const void* value, unsigned dma);
SOFTBOARD_API int Fg_getParameter(Fg_Struct* fg, int id, void* value, unsigned dma);
/// First record of the parameter description (176-byte records), for port 0 only. It lives as long as the handle.
SOFTBOARD_API void* Fg_getParameterInfo(Fg_Struct* fg, int port);
/// All parameters that can be read and written, to and from a file of "name=value" lines.
SOFTBOARD_API int Fg_saveConfig(Fg_Struct* fg, const char* filename);
SOFTBOARD_API int Fg_loadConfig(Fg_Struct* fg, const char* filename);

/// Starts the acquisition of `count` frames, without end if that is -1; it ends by itself at its count, and when no
/// frame has come for FG_TIMEOUT seconds of the board. 0 starts nothing and is no failure. What runs by itself, free
/// images and the simulator, begins anew; a frame that a trigger has begun before is not taken.
/// @param flags   noted in the transcript, and nothing else: what a memory does is a matter of the memory.
/// @param memory  from softboard_memory_open, of this board; or null: then frames are counted and not drawn.
/// @return 0; SOFTBOARD_E_ARGUMENT: a count below -1, a pointer that is no such memory; SOFTBOARD_E_ACQUISITION: one
///         runs already.
SOFTBOARD_API int Fg_AcquireEx(Fg_Struct* fg, unsigned dma, int64_t count, unsigned flags, void* memory);
/// Ends the acquisition; a frame that is under way is dropped. 0 also once after it has ended by itself, else
/// SOFTBOARD_E_ACQUISITION if none runs.
SOFTBOARD_API int Fg_stopAcquireEx(Fg_Struct* fg, unsigned dma, void* memory, unsigned flags);
SOFTBOARD_API int Fg_Acquire(Fg_Struct* fg, unsigned dma, int64_t count);
SOFTBOARD_API int Fg_stopAcquire(Fg_Struct* fg, unsigned dma);
/// Number of the last frame of the acquisition, the running or the last one; 0 before the first.
SOFTBOARD_API int64_t Fg_getLastPicNumberEx(Fg_Struct* fg, unsigned dma, void* memory);
/// Waits until frame `number` has come, and gives the number of the last one. `timeout` are seconds of the day; with
/// SOFTBOARD_CLOCK_FREE this call moves the board's time itself, and they are the board's seconds.
/// @return SOFTBOARD_E_ACQUISITION, at once, if the acquisition has ended or asks for fewer frames; SOFTBOARD_E_TIMEOUT
///         when the time is over, and at once if the acquisition ended because no frame came for FG_TIMEOUT seconds.
SOFTBOARD_API int64_t Fg_getLastPicNumberBlockingEx(Fg_Struct* fg, int64_t number, unsigned dma, unsigned timeout,
                                                    void* memory);
/// `param` 0: 1 while an acquisition runs; 1: frames so far; 2: frames asked for, -1 without end; others: see
/// softboard_status. Of the running acquisition or the last one.
/// @return SOFTBOARD_E_ARGUMENT for another `param`; SOFTBOARD_E_RANGE for a frame that is not in the memory.
SOFTBOARD_API int64_t Fg_getStatusEx(Fg_Struct* fg, unsigned param, int64_t data, unsigned dma, void* memory);

/* This board has no shading: null or SOFTBOARD_E_NOT_IMPLEMENTED. */
SOFTBOARD_API void* Fg_AllocShading(Fg_Struct* fg, int set, int camera);
SOFTBOARD_API int Fg_FreeShading(Fg_Struct* fg, void* shading);
SOFTBOARD_API int Shad_SetSubValueLine(void* shading, int x, int channel, float value);
SOFTBOARD_API int Shad_SetMultValueLine(void* shading, int x, int channel, float value);
SOFTBOARD_API int Shad_SetFixedPatternNoiseLine(void* shading, int x, int channel, int on);
SOFTBOARD_API int Shad_GetMaxLine(void* shading);
SOFTBOARD_API int Shad_GetAccess(void* shading);
SOFTBOARD_API int Shad_FreeAccess(void* shading);
SOFTBOARD_API int Shad_WriteActLine(void* shading, int line);

#ifdef __cplusplus
}
#endif

#endif
