// A dispatcher whose loggers all stand at level 5.

#include <cstdint>

namespace {

void getLogger(const char* name, std::uint64_t* handle, int* level) {
    *handle = static_cast<std::uint64_t>(name[0]);
    *level = 5;
}

void write(std::uint64_t, int, const char*, int, void*) {}

void attach(void*, void (*)(), void (*)(std::uint64_t, int),
            void (**getLoggerFunction)(const char*, std::uint64_t*, int*),
            void (**writeFunction)(std::uint64_t, int, const char*, int, void*)) {
    *getLoggerFunction = getLogger;
    *writeFunction = write;
}

void detach(void*) {}

struct Descriptor {
    decltype(&attach) attachFunction;
    decltype(&detach) detachFunction;
};

}  // namespace

extern "C" {
__attribute__((visibility("default"))) extern const Descriptor logging_dispatcher_descriptor;
const Descriptor logging_dispatcher_descriptor = {attach, detach};
}
