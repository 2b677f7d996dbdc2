#include "tests/support/SupportProbe.h"

#include <dlfcn.h>

#include "support/Library.h"
#include "support/Logging.h"

#pragma GCC visibility push(default)

const char* probe_find(const char* name, const char* root) {
    const auto library = orlo::tools::logging::findLibrary(name, root);
    Dl_info found{};
    if (library == nullptr || dladdr(library->symbol("probe_find"), &found) == 0) {
        return nullptr;
    }
    return found.dli_fname;
}

const void* probe_logger(const char* name) {
    return orlo::tools::logging::Logging::instance().getLogger(name);
}

int probe_is_enabled(const char* name, int level) {
    return orlo::tools::logging::Logging::instance().getLogger(name)->isEnabled(level) ? 1 : 0;
}

#pragma GCC visibility pop
