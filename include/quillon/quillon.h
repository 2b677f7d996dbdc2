/// @file
/// The interface of libQuillon.so, for C (C11) and C++.
///
/// **Handle.** A host calls Std_entry and stores the result; the address of that location is the handle that all other
/// functions take. The location is the host's. A handle is invalid if it is null or if its location holds null, which
/// is what Fg_FreeGrabber leaves there: functions then answer QuillonInvalidHandle (-2001), or null, or a mask of 0,
/// and do nothing.
///
/// **Results.** 0 (QuillonSuccess) or a negative code. A code of quillon/ErrorCodes.def is the applet's own; any other
/// is the SDK's or the design's, handed on. Most calls also leave their code as the last error of the wrapper.
///
/// **Process.** `dma` is 0, the only process of this applet, unless said otherwise.
///
/// **Threads.** Parameter calls (get, set, free of strings) may come from any thread; a get or set waits for the one
/// before it. The names, events and records may be read from any thread. Acquisition calls never wait for a parameter
/// call. Fg_saveConfig and Fg_loadConfig must not run beside sets, and Fg_FreeGrabber beside no call on its handle.
#ifndef QUILLON_QUILLON_H
#define QUILLON_QUILLON_H

#include <stddef.h>
#include <stdint.h>

#include "quillon/RegisterInfo.h"
#include "quillon/Vocabulary.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/// An open applet, as Std_entry makes it.
typedef struct QuillonWrapper QuillonWrapper;
/// The address of the location that holds it.
typedef QuillonWrapper** QuillonHandle;
/// A board, as the SDK or the software board opens it.
struct IXdevice;
/// A shading handle; this applet has none.
struct ShadingMaster;

// ---- Opening and closing ----

/// Opens the applet on a board: links the SDK, loads the carried design, and brings it to the start-up state.
///
/// @param device  the board; handed to the SDK untouched, and to be alive until Fg_FreeGrabber.
/// @param status  gets 0 or why there is no applet; may be null.
/// @param flags   bit 0: another applet drives the design, leave it as it is. All bits go to the SDK.
/// @return the applet, or null with `*status`:
///   QuillonInternalFailure (-2031): libfglib5.so or its Fg_InitHandle is missing;
///   QuillonDesignNotLoaded (-100): the design could not be loaded;
///   the SDK's last error: it refused the design.
/// Two calls at the same time are safe but for the device and design that Info then tells.
QuillonWrapper* Std_entry(struct IXdevice* device, int* status, int flags);

/// Gives the SDK's handle back and destroys the applet, whatever the SDK answers; the handle's location is null then.
/// Strings that were handed out are released with it.
/// @return the SDK's result; -2001.
int Fg_FreeGrabber(QuillonHandle handle);

/// @return the last error of this applet (one for all threads); -2001.
int Fg_getLastErrorNumber(QuillonHandle handle);

// ---- What the applet is ----

/// Answers for the library without an applet being open. Keys of QuillonInfoKey tell what each answers or stores.
/// @param arg1,arg2  0, or an index for the SDK's own keys.
/// @param in,out     result slots of the type that the key names, or null; for QuillonInfoEnumerator `in` is a name.
/// @return what the key answers, else 0. -2130 for an unknown key, -2070 for an unknown name or index. The value of an
///   enumerator may be negative, too (TRGINSOFTWARE is -1).
/// The texts and images live as long as the library. From any thread.
int Info(int key, int arg1, int arg2, void* in, void* out);

/// Creates and opens a file with a name of its own, in the manner of the C library's function of this name.
/// @param fileTemplate  a path whose last six characters in front of the suffix are "XXXXXX"; they are replaced.
/// @param suffixLength  characters behind them, 0 or more.
/// @return a file descriptor, the caller's to close; -1 with errno set. From any thread.
int mkstemps(char* fileTemplate, int suffixLength);

/// The id that the SDK has for the applet. `argument` is the SDK's business.
/// @return the SDK's result; -12 if the SDK lacks the function; -2001.
int Fg_getAppletId(QuillonHandle handle, void* argument);

// ---- Parameters ----

/// Writes a parameter: the value is checked, remembered, and sent to the design before the call returns.
///
/// @param id     a FgParameterId, or one that FG_REGISTER_IDS or FG_SDK_IDS begin.
/// @param value  what the kind of the parameter says (quillon/Parameters.def): int32_t, int64_t, double, the characters
///   of a text, or with FgTypeFieldAccess a FieldParameterAccess and with any other type a FieldParameterInt_s.
/// @param type   counts for tables of values only.
/// @return 0;
///   QuillonNotAvailable (-12): the parameter can only be read;
///   QuillonInvalidHandle (-2001);
///   QuillonInternalFailure (-2031): the design lacks what the parameter needs;
///   QuillonInvalidParameter (-2070): a null value, an unknown id or process, a field of another width;
///   QuillonValueNotInList (-2075), QuillonValueOutOfRange (-6000), QuillonValueNotAligned (-7080): the value;
///   QuillonFileNotFound (-2076), QuillonFileNotWritten (-5001): the file that a text names;
///   a code of the SDK or the design. What was remembered stays as it was then.
int Fg_setParameterWithType(QuillonHandle handle, int id, const void* value, unsigned dma, FgParamTypes type);

/// Reads a parameter. Most values are remembered and touch no hardware; a status comes from the design.
///
/// @param value  room for what the kind of the parameter says. Of a text: with FgTypeString a place for a `char*`,
/// which
///   is to be released with Fg_freeParameterStringWithType; with FgTypeCharBuffer a buffer that is long enough.
///   FG_PARAM_DESCR reads the parameter's name out of the place first.
/// @param type   FgTypeInt64 and FgTypeUInt64 clear 8 bytes at `value` first (null faults then).
/// @return 0; -2001; -2031: the design gave an impossible value or lacks the parameter; -2070: a null value, an unknown
///   id or process, entries outside a table; -2078: a text with a type other than 6 and 22; a code of the SDK or the
///   design.
int Fg_getParameterWithType(QuillonHandle handle, int id, void* value, unsigned dma, FgParamTypes type);

/// Releases a string that a read with FgTypeString stored. May run beside any call, also of other threads.
/// @param value  the string itself.
/// @return 0; -2078: a type other than FgTypeString, with the last error as it was; -2070: no string that is out;
///   -2001. An unknown process leaves as a C++ exception.
int Fg_freeParameterStringWithType(QuillonHandle handle, int id, void* value, unsigned dma, FgParamTypes type);

/// @return the id of a public parameter or of a register ("DRA_..."); -2070 for any other name and for null; -2001.
int Fg_getParameterIdByName(QuillonHandle handle, const char* name);
/// @return the name at a position, from 0 to Fg_getNrOfParameter() - 1, alive as long as the applet; null for any
///   other position.
const char* Fg_getParameterName(QuillonHandle handle, int index);
/// @return the id of the parameter at a position; -2070; -2001.
int Fg_getParameterId(QuillonHandle handle, int index);
/// @return how many parameters have a position; -2001.
int Fg_getNrOfParameter(QuillonHandle handle);

// ---- Description ----

/// The tree of records that describe the parameters; its ranges and access flags follow what is set.
/// @param port  0, the only one.
/// @return the newest top-level group (follow `next`), alive as long as the applet; null for another port, or where the
///   SDK could not answer the same.
RegisterInfo* Fg_getParameterInfo(QuillonHandle handle, int port);

/// The GenApi description of the parameters as they are now, an XML text with a terminator.
/// @param buffer  where it goes, or null to ask for its size.
/// @param size    bytes at `buffer`; gets the size of the document, terminator included, if `buffer` is null.
/// @return 0; -2070: no `size`; -2075: an unknown port; -500: the buffer is too small; -2001.
int Fg_getParameterInfoXML(QuillonHandle handle, int port, char* buffer, size_t* size);

/// @return the mask of an event by its name in the design or its public one; 0 for any other name and for null.
uint64_t Fg_getEventMask(QuillonHandle handle, const char* name);
/// @return the public name of an event, or the design's if it has none, alive as long as the applet; null.
const char* Fg_getEventName(QuillonHandle handle, uint64_t mask);

// ---- Configuration ----

/// Writes what is set to a file whose name ends in ".mcf".
/// @return 0; -5001: no such name, or the file could not be written; -2001.
int Fg_saveConfig(QuillonHandle handle, const char* fileName);
/// Reads such a file: all values are remembered, then each is sent as a set would, refusals without a word.
/// @return 0; -2076: there is no such file; -5000: it is for another applet, or lacks a key. What was read until then
///   stays; -2001.
int Fg_loadConfig(QuillonHandle handle, const char* fileName);

// ---- Acquisition, forwarded to the SDK ----
// Arguments and results are the SDK's. -12 if the SDK lacks the function, -2001. After a negative result
// Fg_getLastErrorNumber tells the SDK's last error.

/// Starts an acquisition of `count` pictures, without end if that is -1, into the SDK's `memory`.
int Fg_AcquireEx(QuillonHandle handle, unsigned dma, int64_t count, unsigned flags, void* memory);
int Fg_stopAcquireEx(QuillonHandle handle, unsigned dma, void* memory, unsigned flags);
int64_t Fg_getStatusEx(QuillonHandle handle, unsigned param, int64_t data, unsigned dma, void* memory);
/// The number of the latest picture.
int64_t Fg_getLastPicNumberEx(QuillonHandle handle, unsigned dma, void* memory);
/// The same, when picture `number` has come; waits `timeout` seconds at most.
int64_t Fg_getLastPicNumberBlockingEx(QuillonHandle handle, int64_t number, unsigned dma, unsigned timeout,
                                      void* memory);

// ---- Shading, which this applet does not have ----
// -2130 (QuillonNotImplemented), also as last error; -2001.

/// @return null, with -1 as last error.
struct ShadingMaster* Fg_AllocShading(QuillonHandle handle, int set, int mode);
int Fg_FreeShading(QuillonHandle handle, struct ShadingMaster* shading);
int Shad_SetSubValueLine(QuillonHandle handle, struct ShadingMaster* shading, int x, int channel, float value);
int Shad_SetMultValueLine(QuillonHandle handle, struct ShadingMaster* shading, int x, int channel, float value);
int Shad_SetFixedPatternNoiseLine(QuillonHandle handle, struct ShadingMaster* shading, int x, int channel, int on);
int Shad_GetMaxLine(QuillonHandle handle, struct ShadingMaster* shading);
int Shad_GetAccess(QuillonHandle handle, struct ShadingMaster* shading);
int Shad_FreeAccess(QuillonHandle handle, struct ShadingMaster* shading);
int Shad_WriteActLine(QuillonHandle handle, struct ShadingMaster* shading, int line);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
