#include "bench/BareSdk.h"

#include <dlfcn.h>

#include <cstdlib>
#include <stdexcept>

namespace quillon::bench {

namespace {

template <class Function>
void resolve(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(dlsym(library, name));
    if (function == nullptr) {
        throw std::runtime_error(std::string("the stand-in lacks ") + name);
    }
}

void* open(const char* file) {
    const std::string path = (client::testing::builtStandIns() / file).string();
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return library;
}

}  // namespace

BareSdk::BareSdk()
    : library_(client::Library::open(client::testing::builtLibrary(), client::testing::builtStandIns())),
      board_(client::testing::builtStandIns()) {
    void* sdk = open("libfglib5.so");
    void* loader = open("libtavrt.so");
    resolve(sdk, "Fg_setParameterWithType", set_);
    resolve(sdk, "Fg_getParameterWithType", get_);
    resolve(sdk, "Fg_getParameterIdByName", idByName_);
    resolve(sdk, "Fg_AcquireEx", acquire_);
    resolve(sdk, "Fg_getLastPicNumberEx", lastPicture_);
    resolve(sdk, "Fg_FreeGrabber", freeGrabber_);
    resolve(loader, "TavUnloadTavFile", unload_);
    void* (*load)(const void*, std::size_t, int) = nullptr;
    void* (*initHandle)(const char*, void*, void*) = nullptr;
    resolve(loader, "TavLoadDesignFromBuffer", load);
    resolve(sdk, "Fg_InitHandle", initHandle);
    std::uint64_t size = 0;
    void* image = nullptr;
    library_.functions().Info(QuillonInfoDesignImage, 0, 0, &size, &image);
    design_ = load(image, size, 1);
    handle_ = initHandle("Quillon.tav", board_.device(), design_);
    if (handle_ == nullptr) {
        throw std::runtime_error("the design is not accepted");
    }
    board_.record(false);
}

BareSdk::~BareSdk() {
    freeGrabber_(handle_);
    unload_(design_);
}

void* BareSdk::address(const char* name) {
    void (*found)() = nullptr;
    resolve(open("libsoftboard.so"), name, found);
    return reinterpret_cast<void*>(found);
}

std::vector<BareSdk::Access> BareSdk::accessesOf(const std::vector<client::Access>& transcript) const {
    std::vector<Access> accesses;
    for (const client::Access& access : transcript) {
        if (access.direction != client::Direction::Call && (access.type == 1 || access.type == 2)) {
            accesses.push_back({idByName_(handle_, access.name.c_str()), access.direction == client::Direction::Write,
                                access.type,
                                static_cast<std::uint32_t>(std::strtoul(access.value.c_str(), nullptr, 10))});
        }
    }
    return accesses;
}

}  // namespace quillon::bench
