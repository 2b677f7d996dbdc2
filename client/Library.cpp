#include "quillon/client/Library.h"

#include <array>
#include <utility>
#include <vector>

#include "client/SharedLibrary.h"
#include "quillon/ErrorCode.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Installation.h"

namespace quillon::client {

namespace {

constexpr const char* AppletFile = "libQuillon.so";

// In this order: each needs those before it. A library that is loaded satisfies every later demand for its SONAME, the
// applet's own dlopen of the SDK included.
constexpr std::array standIns{"libsoftboard.so", "libtavrt.so", "liborlo_hw.so", "libfglib5.so"};

}  // namespace

struct Library::Loaded {
    Loaded(std::vector<SharedLibrary> needed, SharedLibrary library)
        : standInLibraries(std::move(needed)), applet(std::move(library)) {
#define QUILLON_EXPORT(name) applet.resolve(#name, functions.name);
#include "quillon/Exports.def"
#undef QUILLON_EXPORT
    }

    std::vector<SharedLibrary> standInLibraries;
    SharedLibrary applet;
    Functions functions;
};

Library::Library(std::shared_ptr<const Loaded> loaded) : loaded_(std::move(loaded)) {}

Library Library::open(const std::filesystem::path& file) {
    return Library(
        std::make_shared<const Loaded>(std::vector<SharedLibrary>(), SharedLibrary(std::filesystem::absolute(file))));
}

Library Library::open(const std::filesystem::path& file, const std::filesystem::path& standInDirectory) {
    std::vector<SharedLibrary> needed;
    needed.reserve(standIns.size());
    for (const char* name : standIns) {
        needed.emplace_back(std::filesystem::absolute(standInDirectory) / name);
    }
    return Library(std::make_shared<const Loaded>(std::move(needed), SharedLibrary(std::filesystem::absolute(file))));
}

Library Library::open() {
    const Installation installation = requireInstallation();
    return open(installation.applet, installation.softBoard);
}

Library Library::loaded() {
    return Library(std::make_shared<const Loaded>(std::vector<SharedLibrary>(), SharedLibrary::loaded(AppletFile)));
}

const Functions& Library::functions() const {
    return loaded_->functions;
}

const std::filesystem::path& Library::file() const {
    return loaded_->applet.file();
}

int Library::info(int key, int arg1, int arg2, void* in, void* out) const {
    return functions().Info(key, arg1, arg2, in, out);
}

std::string Library::infoText(int key) const {
    const char* text = nullptr;
    const int code = info(key, 0, 0, nullptr, &text);
    if (code != Success || text == nullptr) {
        throw CallError("Info(" + std::to_string(key) + ")", code);
    }
    return text;
}

std::optional<int> Library::constant(const std::string& name) const {
    std::string argument = name;
    const int value = info(QuillonInfoEnumerator, 0, 0, argument.data(), nullptr);
    return value == InvalidParameter ? std::nullopt : std::optional(value);
}

std::span<const std::byte> Library::designImage() const {
    return block(QuillonInfoDesignImage);
}

std::span<const std::byte> Library::icon() const {
    return block(QuillonInfoIcon);
}

std::span<const std::byte> Library::block(int key) const {
    std::uint64_t size = 0;
    const std::byte* bytes = nullptr;
    const int code = info(key, 0, 0, &size, &bytes);
    if (code != Success) {
        throw CallError("Info(" + std::to_string(key) + ")", code);
    }
    return {bytes, size};
}

}  // namespace quillon::client
