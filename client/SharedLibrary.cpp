#include "client/SharedLibrary.h"

#include <dlfcn.h>
#include <link.h>

#include <string>
#include <utility>

#include "quillon/client/Errors.h"

namespace quillon::client {

SharedLibrary::SharedLibrary(const std::filesystem::path& file)
    : file_(file), handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
        const char* words = dlerror();
        std::string reason = words != nullptr ? words : "unknown reason";
        // The loader's words begin with the file where it is the file itself that is missing or no library.
        if (const std::string prefix = file.string() + ": "; reason.starts_with(prefix)) {
            reason.erase(0, prefix.size());
        }
        throw LibraryError("cannot load " + file.string() + ": " + reason);
    }
}

SharedLibrary::SharedLibrary(std::filesystem::path file, void* handle) : file_(std::move(file)), handle_(handle) {}

SharedLibrary SharedLibrary::loaded(const char* name) {
    void* const handle = dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (handle == nullptr) {
        throw LibraryError(std::string("this process has not loaded ") + name);
    }
    struct link_map* map = nullptr;
    const bool located = dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0;
    return SharedLibrary(located ? map->l_name : name, handle);
}

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : file_(std::move(other.file_)), handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
    std::swap(file_, other.file_);
    std::swap(handle_, other.handle_);
    return *this;
}

SharedLibrary::~SharedLibrary() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

void* SharedLibrary::symbol(const char* name) const {
    void* address = dlsym(handle_, name);
    if (address == nullptr) {
        throw LibraryError(file_.string() + " has no function " + name);
    }
    return address;
}

}  // namespace quillon::client
