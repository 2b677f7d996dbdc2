/// @file
/// The applet opens its libraries with RTLD_DEEPBIND, and a sanitizer's run time ends the process at such a call, since
/// the opened library would get past its interceptors. A test program that links this file answers `dlopen` itself, for
/// the whole process, and leaves the flag out. Only sanitizer builds link it.
#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) void* dlopen(const char* file, int mode) {
    using Open = void* (*)(const char*, int);
    static const Open next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    return next(file, mode & ~RTLD_DEEPBIND);
}
