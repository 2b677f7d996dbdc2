#include "support/Library.h"

#include <dlfcn.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "support/Locks.h"

namespace orlo::tools::logging {

namespace {

using templates::platform::SpinLockVariable;
using templates::platform::SpinLockVariableGuard;

constexpr std::size_t PathSize = 1024;

// Found once for the process. The buffer lies in the applet, so its address also tells the applet's own file.
std::array<char, PathSize> installRoot{};
bool installRootFound = false;
SpinLockVariable installRootLock;

constexpr std::array MarkingNames = {"bin", "dll", "Hardware Applets", "lib", "lib64"};

void stripTrailingSlashes(std::string& path) {
    path.erase(std::find_if(path.rbegin(), path.rend(), [](char c) { return c != '/'; }).base(), path.end());
}

/// Cuts the last component off `path`; false if nothing is left then.
bool cutLastComponent(std::string& path) {
    const auto slash = path.rfind('/');
    path.erase(slash == std::string::npos ? 0 : slash);
    stripTrailingSlashes(path);
    return !path.empty();
}

bool marksInstallation(const std::string& path) {
    const auto slash = path.rfind('/');
    const char* last = path.c_str() + (slash == std::string::npos ? 0 : slash + 1);
    return std::any_of(MarkingNames.begin(), MarkingNames.end(),
                       [last](const char* name) { return strcasecmp(last, name) == 0; });
}

void storeRoot(const std::string& root) {
    installRoot.fill('\0');
    std::memcpy(installRoot.data(), root.data(), std::min(root.size(), PathSize - 1));
    installRootFound = true;
}

std::optional<std::string> rootFromOwnFile() {
    Dl_info own{};
    if (dladdr(installRoot.data(), &own) == 0 || own.dli_fname == nullptr) {
        return std::nullopt;
    }
    const std::string file = own.dli_fname;
    return file.empty() || file.size() >= PathSize ? std::nullopt : rootAbove(file);
}

/// Fills installRoot if it can; false if neither the applet's place nor the environment tells a root.
bool findInstallRoot() {
    const SpinLockVariableGuard guard(installRootLock);
    if (installRootFound) {
        return true;
    }
    if (const auto root = rootFromOwnFile()) {
        storeRoot(*root);
        return true;
    }
    const char* environment = std::getenv("ORLODIR5_64");
    if (environment == nullptr) {
        environment = std::getenv("ORLODIR5");
    }
    if (environment == nullptr) {
        return false;
    }
    std::string root(environment, strnlen(environment, PathSize - 1));
    stripTrailingSlashes(root);
    storeRoot(root);
    return true;
}

}  // namespace

std::optional<std::string> rootAbove(std::string file) {
    while (cutLastComponent(file)) {
        if (marksInstallation(file)) {
            cutLastComponent(file);
            return file;
        }
    }
    return std::nullopt;
}

Library::Library(std::string path) : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_DEEPBIND)), path_(std::move(path)) {
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        error_ = reason != nullptr ? reason : "";
    }
}

Library::~Library() {
    if (closeOnRelease_ && handle_ != nullptr) {
        dlclose(handle_);
    }
}

void* Library::symbol(const char* name) const {
    return dlsym(handle_, name);
}

std::unique_ptr<Library> findLibrary(const char* name, const char* root) {
    if (root == nullptr) {
        if (!findInstallRoot()) {
            return nullptr;
        }
        root = installRoot.data();
    }
    std::string path = std::string(root) + "/lib64/lib" + name + ".so";
    path.resize(std::min(path.size(), PathSize - 1));
    auto library = std::make_unique<Library>(std::move(path));
    return library->isOpen() ? std::move(library) : nullptr;
}

}  // namespace orlo::tools::logging
