// The flat C functions. No logic of the applet lives here: what they settle is what an invalid handle, or a function
// that the SDK lacks, answers, and when the last error is touched.

#include "applet/Exports.h"

#include <cstring>
#include <utility>

#include "support/Failure.h"
#include "wrapper/TemporaryFile.h"

using namespace quillon;

namespace {

/// Calls the virtual operation `operation` with the wrapper behind `handle`; `invalid` for an invalid handle.
template <class Result, class... Parameters, class... Arguments>
Result forwardToWrapper(QuillonHandle handle, Result invalid, Result (FgIxWrapper::*operation)(Parameters...),
                        Arguments... arguments) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    return wrapper != nullptr ? (wrapper->*operation)(arguments...) : invalid;
}

/// Calls the SDK's function `entry` with the SDK's handle, and records the SDK's last error if its result is negative.
template <class Result, class... Parameters, class... Arguments>
Result forwardToSdk(QuillonHandle handle, Result (*SdkFunctionTable::*entry)(Fg_Struct_s*, Parameters...),
                    Arguments... arguments) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    if (wrapper == nullptr) {
        return InvalidHandle;
    }
    const auto function = wrapper->wrapperFg().*entry;
    if (function == nullptr || wrapper->fglibFg() == nullptr) {
        wrapper->setError(NotAvailable);
        return NotAvailable;
    }
    const Result result = function(wrapper->fglibFg(), arguments...);
    wrapper->setError(result < 0 ? wrapper->Fg_getLastErrorNumberIx() : int{Success});
    return result;
}

/// Calls an operation of the shading interface; its result is the last error, whatever it is.
template <class... Parameters, class... Arguments>
int forwardToShading(QuillonHandle handle, int (FgIxWrapper::*operation)(Parameters...), Arguments... arguments) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    if (wrapper == nullptr) {
        return InvalidHandle;
    }
    const int result = (wrapper->*operation)(arguments...);
    wrapper->setError(result);
    return result;
}

}  // namespace

int mkstemps(char* fileTemplate, int suffixLength) {
    return makeTemporaryFile(fileTemplate, suffixLength);
}

int Fg_setParameterWithType(QuillonHandle handle, int id, const void* value, unsigned dma, FgParamTypes type) {
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::setParameter, id, value, dma, type);
}

int Fg_getParameterWithType(QuillonHandle handle, int id, void* value, unsigned dma, FgParamTypes type) {
    if (wrapperOf(handle) != nullptr && (type == FgTypeInt64 || type == FgTypeUInt64)) {
        // A handler that writes 32 bits leaves a clean 64-bit result. A null value faults here, as it always has with
        // these types.
        std::memset(value, 0, sizeof(std::uint64_t));
    }
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::getParameter, id, value, dma, type);
}

int Fg_freeParameterStringWithType(QuillonHandle handle, int id, void* value, unsigned dma, FgParamTypes type) {
    if (wrapperOf(handle) != nullptr && type != FgTypeString) {
        return NotAString;
    }
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::freeParameterString, id, value, dma, type);
}

int Fg_getParameterIdByName(QuillonHandle handle, const char* name) {
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::Fg_getParameterIdByName, name);
}

const char* Fg_getParameterName(QuillonHandle handle, int index) {
    return forwardToWrapper<const char*>(handle, nullptr, &FgIxWrapper::Fg_getParameterName, index);
}

int Fg_getParameterId(QuillonHandle handle, int index) {
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::Fg_getParameterId, index);
}

int Fg_getNrOfParameter(QuillonHandle handle) {
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::Fg_getNrOfParameter);
}

int Fg_saveConfig(QuillonHandle handle, const char* fileName) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    return wrapper != nullptr ? wrapper->Fg_saveConfig(wrapper->fglibFg(), fileName) : int{InvalidHandle};
}

int Fg_loadConfig(QuillonHandle handle, const char* fileName) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    return wrapper != nullptr ? wrapper->Fg_loadConfig(wrapper->fglibFg(), fileName) : int{InvalidHandle};
}

int Fg_getParameterInfoXML(QuillonHandle handle, int port, char* buffer, std::size_t* size) {
    return forwardToWrapper<int>(handle, InvalidHandle, &FgIxWrapper::Fg_getParameterInfoXML,
                                 reinterpret_cast<Fg_Struct_s*>(handle), port, buffer, size);
}

std::uint64_t Fg_getEventMask(QuillonHandle handle, const char* name) {
    return forwardToWrapper<std::uint64_t>(handle, 0, &FgIxWrapper::Fg_getEventMask, name);
}

const char* Fg_getEventName(QuillonHandle handle, std::uint64_t mask) {
    return forwardToWrapper<const char*>(handle, nullptr, &FgIxWrapper::Fg_getEventName, mask);
}

/// Asks that the SDK could answer, but answers for itself.
RegisterInfo* Fg_getParameterInfo(QuillonHandle handle, int port) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    if (wrapper == nullptr || wrapper->wrapperFg().Fg_getParameterInfo == nullptr || wrapper->fglibFg() == nullptr) {
        return nullptr;
    }
    return wrapper->Fg_getParameterInfo(port);
}

int Fg_getAppletId(QuillonHandle handle, void* value) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_getAppletId, value);
}

int Fg_AcquireEx(QuillonHandle handle, unsigned dma, std::int64_t count, unsigned flags, void* memory) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_AcquireEx, dma, count, flags, memory);
}

int Fg_stopAcquireEx(QuillonHandle handle, unsigned dma, void* memory, unsigned flags) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_stopAcquireEx, dma, memory, flags);
}

std::int64_t Fg_getStatusEx(QuillonHandle handle, unsigned param, std::int64_t data, unsigned dma, void* memory) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_getStatusEx, param, data, dma, memory);
}

std::int64_t Fg_getLastPicNumberEx(QuillonHandle handle, unsigned dma, void* memory) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_getLastPicNumberEx, dma, memory);
}

std::int64_t Fg_getLastPicNumberBlockingEx(QuillonHandle handle, std::int64_t number, unsigned dma, unsigned timeout,
                                           void* memory) {
    return forwardToSdk(handle, &SdkFunctionTable::Fg_getLastPicNumberBlockingEx, number, dma, timeout, memory);
}

int Fg_FreeGrabber(QuillonHandle handle) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    if (wrapper == nullptr) {
        return InvalidHandle;
    }
    // A null SDK handle goes to the SDK as it is; only a function that is not there cannot be called.
    const auto freeGrabber = wrapper->wrapperFg().Fg_FreeGrabber;
    const int result = freeGrabber != nullptr ? freeGrabber(wrapper->fglibFg()) : int{Success};
    delete wrapper;
    *handle = nullptr;
    return result;
}

int Fg_getLastErrorNumber(QuillonHandle handle) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    return wrapper != nullptr ? wrapper->FgIxWrapper::Fg_getLastErrorNumber() : int{InvalidHandle};
}

ShadingMaster* Fg_AllocShading(QuillonHandle handle, int first, int second) {
    FgIxWrapperImpl* wrapper = wrapperOf(handle);
    if (wrapper == nullptr) {
        return nullptr;
    }
    ShadingMaster* shading = wrapper->Fg_AllocShading(first, second);
    wrapper->setError(shading != nullptr ? Success : ShadingNotAllocated);
    return shading;
}

int Fg_FreeShading(QuillonHandle handle, ShadingMaster* shading) {
    return forwardToShading(handle, &FgIxWrapper::Fg_FreeShading, shading);
}

int Shad_SetSubValueLine(QuillonHandle handle, ShadingMaster* shading, int x, int channel, float value) {
    return forwardToShading(handle, &FgIxWrapper::Shad_SetSubValueLine, shading, x, channel, value);
}

int Shad_SetMultValueLine(QuillonHandle handle, ShadingMaster* shading, int x, int channel, float value) {
    return forwardToShading(handle, &FgIxWrapper::Shad_SetMultValueLine, shading, x, channel, value);
}

int Shad_SetFixedPatternNoiseLine(QuillonHandle handle, ShadingMaster* shading, int x, int channel, int value) {
    return forwardToShading(handle, &FgIxWrapper::Shad_SetFixedPatternNoiseLine, shading, x, channel, value);
}

int Shad_GetMaxLine(QuillonHandle handle, ShadingMaster* shading) {
    return forwardToShading(handle, &FgIxWrapper::Shad_GetMaxLine, shading);
}

int Shad_GetAccess(QuillonHandle handle, ShadingMaster* shading) {
    return forwardToShading(handle, &FgIxWrapper::Shad_GetAccess, shading);
}

int Shad_FreeAccess(QuillonHandle handle, ShadingMaster* shading) {
    return forwardToShading(handle, &FgIxWrapper::Shad_FreeAccess, shading);
}

int Shad_WriteActLine(QuillonHandle handle, ShadingMaster* shading, int line) {
    return forwardToShading(handle, &FgIxWrapper::Shad_WriteActLine, shading, line);
}
