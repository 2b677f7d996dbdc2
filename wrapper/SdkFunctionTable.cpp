#include "wrapper/SdkFunctionTable.h"

#include <dlfcn.h>

namespace quillon {

void* findSymbol(void* library, const char* name) {
    return dlsym(library, name);
}

void SdkFunctionTable::resolve(void* library) {
#define SDK_FUNCTION(result, name, arguments) resolveFunction(library, #name, this->name);
    QUILLON_SDK_FUNCTIONS(SDK_FUNCTION)
#undef SDK_FUNCTION
}

}  // namespace quillon
