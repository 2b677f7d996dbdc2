#include "client/SharedLibrary.h"

#include <dlfcn.h>

#include <string>
#include <utility>

#include "client/Errors.h"

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
