#include "quillon/client/Installation.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>

#include "quillon/client/Errors.h"

namespace quillon::client {
namespace {

namespace fs = std::filesystem;

constexpr const char* Home = "QUILLON_HOME";

/// In a folder that has the applet's own lib/.
std::optional<Installation> in(const fs::path& home) {
    std::error_code unreadable;
    const fs::path applet = home / "lib" / "libQuillon.so";
    if (!fs::exists(applet, unreadable)) {
        return std::nullopt;
    }
    return Installation{applet, home / "lib" / "softboard"};
}

/// The file that this code is in: the shared library, or a program.
fs::path ownFile() {
    Dl_info own{};
    std::error_code unreadable;
    if (dladdr(reinterpret_cast<void*>(&ownFile), &own) == 0 || own.dli_fname == nullptr) {
        return {};
    }
    // A program is told as it was called, which may have been by a search of PATH.
    const fs::path told = fs::canonical(own.dli_fname, unreadable);
    const fs::path program = fs::read_symlink("/proc/self/exe", unreadable);
    return told.empty() || told.filename() == program.filename() ? program : told;
}

std::optional<fs::path> homeOfEnvironment() {
    const char* const home = std::getenv(Home);
    return home != nullptr && *home != '\0' ? std::optional<fs::path>(home) : std::nullopt;
}

}  // namespace

std::optional<Installation> findInstallation() {
    if (const auto home = homeOfEnvironment()) {
        return in(*home);
    }
    for (fs::path folder = ownFile().parent_path(); !folder.empty(); folder = folder.parent_path()) {
        for (const fs::path& home : {folder, folder / "quillon", folder / QUILLON_LIBRARY_FOLDER / "quillon"}) {
            if (auto found = in(home)) {
                return found;
            }
        }
        if (folder == folder.root_path()) {
            break;
        }
    }
    return in(fs::path(QUILLON_INSTALLED_LIBRARIES) / "quillon");
}

Installation requireInstallation() {
    if (auto found = findInstallation()) {
        return *found;
    }
    if (const auto home = homeOfEnvironment()) {
        throw LibraryError(std::string("there is no lib/libQuillon.so in ") + Home + "=" + home->string());
    }
    throw LibraryError("there is no libQuillon.so near " + ownFile().string() +
                       " nor in " QUILLON_INSTALLED_LIBRARIES "/quillon/lib; " + Home +
                       " may name the folder above its lib/");
}

}  // namespace quillon::client
