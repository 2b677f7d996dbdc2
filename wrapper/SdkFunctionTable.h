/// @file
/// The functions of the SDK library, found by name at run time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "quillon/Vocabulary.h"
#include "support/Failure.h"
#include "wrapper/SdkTypes.h"

namespace quillon {

#include "quillon/RegisterInfo.h"

// SDK_FUNCTION(result, name, arguments), in the order in which they are resolved.
#define QUILLON_SDK_FUNCTIONS(SDK_FUNCTION)                                                                            \
    SDK_FUNCTION(int, Fg_getAppletId, (Fg_Struct_s*, void*))                                                           \
    SDK_FUNCTION(int, Fg_setParameter, (Fg_Struct_s*, int, const void*, unsigned))                                     \
    SDK_FUNCTION(int, Fg_setParameterWithType, (Fg_Struct_s*, int, const void*, unsigned, FgParamTypes))               \
    SDK_FUNCTION(int, Fg_getParameter, (Fg_Struct_s*, int, void*, unsigned))                                           \
    SDK_FUNCTION(int, Fg_getParameterWithType, (Fg_Struct_s*, int, void*, unsigned, FgParamTypes))                     \
    SDK_FUNCTION(int, Fg_freeParameterStringWithType, (Fg_Struct_s*, int, void*, unsigned, FgParamTypes))              \
    SDK_FUNCTION(int, Fg_saveConfig, (Fg_Struct_s*, const char*))                                                      \
    SDK_FUNCTION(int, Fg_loadConfig, (Fg_Struct_s*, const char*))                                                      \
    SDK_FUNCTION(int, Fg_Acquire, (Fg_Struct_s*, unsigned, std::int64_t))                                              \
    SDK_FUNCTION(int, Fg_stopAcquire, (Fg_Struct_s*, unsigned))                                                        \
    SDK_FUNCTION(std::int64_t, Fg_getLastPicNumberBlockingEx, (Fg_Struct_s*, std::int64_t, unsigned, unsigned, void*)) \
    SDK_FUNCTION(std::int64_t, Fg_getLastPicNumberEx, (Fg_Struct_s*, unsigned, void*))                                 \
    SDK_FUNCTION(int, Fg_FreeGrabber, (Fg_Struct_s*))                                                                  \
    SDK_FUNCTION(int, Fg_getLastErrorNumber, (Fg_Struct_s*))                                                           \
    SDK_FUNCTION(std::int64_t, Fg_getStatusEx, (Fg_Struct_s*, unsigned, std::int64_t, unsigned, void*))                \
    SDK_FUNCTION(int, Fg_AcquireEx, (Fg_Struct_s*, unsigned, std::int64_t, unsigned, void*))                           \
    SDK_FUNCTION(int, Fg_stopAcquireEx, (Fg_Struct_s*, unsigned, void*, unsigned))                                     \
    SDK_FUNCTION(RegisterInfo*, Fg_getParameterInfo, (Fg_Struct_s*, int))                                              \
    SDK_FUNCTION(ShadingMaster*, Fg_AllocShading, (Fg_Struct_s*, int, int))                                            \
    SDK_FUNCTION(int, Fg_FreeShading, (Fg_Struct_s*, ShadingMaster*))                                                  \
    SDK_FUNCTION(int, Shad_SetSubValueLine, (Fg_Struct_s*, ShadingMaster*, int, int, float))                           \
    SDK_FUNCTION(int, Shad_SetMultValueLine, (Fg_Struct_s*, ShadingMaster*, int, int, float))                          \
    SDK_FUNCTION(int, Shad_SetFixedPatternNoiseLine, (Fg_Struct_s*, ShadingMaster*, int, int, int))                    \
    SDK_FUNCTION(int, Shad_GetMaxLine, (Fg_Struct_s*, ShadingMaster*))                                                 \
    SDK_FUNCTION(int, Shad_GetAccess, (Fg_Struct_s*, ShadingMaster*))                                                  \
    SDK_FUNCTION(int, Shad_FreeAccess, (Fg_Struct_s*, ShadingMaster*))                                                 \
    SDK_FUNCTION(int, Shad_WriteActLine, (Fg_Struct_s*, ShadingMaster*, int))

/// One pointer per function; null where the SDK lacks it. Some entries are resolved only because the table is shared
/// with other applets.
struct SdkFunctionTable {
#define SDK_FUNCTION(result, name, arguments) result(*name) arguments = nullptr;
    QUILLON_SDK_FUNCTIONS(SDK_FUNCTION)
#undef SDK_FUNCTION

    /// Looks every name up in the open library `library`, in order.
    void resolve(void* library);
};

/// The address of `name` in the open library `library`, or null.
void* findSymbol(void* library, const char* name);

/// Stores the function `name` of the open library `library` in `function`; null if the library lacks it.
template <class Function>
void resolveFunction(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(findSymbol(library, name));
}

/// Calls `function`. One that the SDK lacks answers NotAvailable, or null where it would have answered a pointer.
template <class Result, class... Parameters, class... Arguments>
Result callIfThere(Result (*function)(Parameters...), Arguments... arguments) {
    if (function != nullptr) {
        return function(arguments...);
    }
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return NotAvailable;
    }
}

}  // namespace quillon
