/// @file
/// The functions that the library exports, under their C names. A handle is a pointer to the location that holds what
/// Std_entry returned.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/FgIxWrapperImpl.h"
#include "info/RegisterInfo.h"
#include "wrapper/SdkTypes.h"

namespace quillon {

using Handle = FgIxWrapperImpl**;

/// The wrapper behind `handle`; null for an invalid handle.
inline FgIxWrapperImpl* wrapperOf(Handle handle) {
    return handle != nullptr ? *handle : nullptr;
}

}  // namespace quillon

extern "C" {

#pragma GCC visibility push(default)

/// Builds a wrapper on `device` and brings it to its ready state: null on failure, with the reason in `*status` (which
/// may be null). Bit 0 of `flags` leaves the design as it is; all of `flags` goes to the SDK.
quillon::FgIxWrapperImpl* Std_entry(IXdevice* device, int* status, int flags);

/// What the applet is, by numeric key; needs no wrapper.
int Info(int key, int arg1, int arg2, void* in, void* out);

/// See quillon::makeTemporaryFile.
int mkstemps(char* fileTemplate, int suffixLength);

int Fg_setParameterWithType(quillon::Handle handle, int id, const void* value, unsigned dma,
                            quillon::FgParamTypes type);
int Fg_getParameterWithType(quillon::Handle handle, int id, void* value, unsigned dma, quillon::FgParamTypes type);
int Fg_freeParameterStringWithType(quillon::Handle handle, int id, void* value, unsigned dma,
                                   quillon::FgParamTypes type);
int Fg_getParameterIdByName(quillon::Handle handle, const char* name);
const char* Fg_getParameterName(quillon::Handle handle, int index);
int Fg_getParameterId(quillon::Handle handle, int index);
int Fg_getNrOfParameter(quillon::Handle handle);
int Fg_saveConfig(quillon::Handle handle, const char* fileName);
int Fg_loadConfig(quillon::Handle handle, const char* fileName);
int Fg_getParameterInfoXML(quillon::Handle handle, int port, char* buffer, std::size_t* size);
std::uint64_t Fg_getEventMask(quillon::Handle handle, const char* name);
const char* Fg_getEventName(quillon::Handle handle, std::uint64_t mask);
quillon::RegisterInfo* Fg_getParameterInfo(quillon::Handle handle, int port);

int Fg_getAppletId(quillon::Handle handle, void* value);
int Fg_AcquireEx(quillon::Handle handle, unsigned dma, std::int64_t count, unsigned flags, void* memory);
int Fg_stopAcquireEx(quillon::Handle handle, unsigned dma, void* memory, unsigned flags);
std::int64_t Fg_getStatusEx(quillon::Handle handle, unsigned param, std::int64_t data, unsigned dma, void* memory);
std::int64_t Fg_getLastPicNumberEx(quillon::Handle handle, unsigned dma, void* memory);
std::int64_t Fg_getLastPicNumberBlockingEx(quillon::Handle handle, std::int64_t number, unsigned dma, unsigned timeout,
                                           void* memory);
int Fg_FreeGrabber(quillon::Handle handle);
int Fg_getLastErrorNumber(quillon::Handle handle);

ShadingMaster* Fg_AllocShading(quillon::Handle handle, int first, int second);
int Fg_FreeShading(quillon::Handle handle, ShadingMaster* shading);
int Shad_SetSubValueLine(quillon::Handle handle, ShadingMaster* shading, int x, int channel, float value);
int Shad_SetMultValueLine(quillon::Handle handle, ShadingMaster* shading, int x, int channel, float value);
int Shad_SetFixedPatternNoiseLine(quillon::Handle handle, ShadingMaster* shading, int x, int channel, int value);
int Shad_GetMaxLine(quillon::Handle handle, ShadingMaster* shading);
int Shad_GetAccess(quillon::Handle handle, ShadingMaster* shading);
int Shad_FreeAccess(quillon::Handle handle, ShadingMaster* shading);
int Shad_WriteActLine(quillon::Handle handle, ShadingMaster* shading, int line);

#pragma GCC visibility pop
}
