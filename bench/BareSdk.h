#pragma once

#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"

namespace quillon::bench {

/// The SDK without an applet: a design on a board of its own, reached through the same stand-in that the applet calls.
class BareSdk {
public:
    BareSdk();
    BareSdk(const BareSdk&) = delete;
    BareSdk& operator=(const BareSdk&) = delete;
    ~BareSdk();

    struct Access {
        int id;
        bool write;
        int type;
        std::uint32_t value;
    };
    /// The accesses of a transcript, ready to be made here. Only those of 32-bit parameters are taken.
    std::vector<Access> accessesOf(const std::vector<client::Access>& transcript) const;
    void make(Access& access) const {
        if (access.write) {
            set_(handle_, access.id, &access.value, 0, access.type);
        } else {
            get_(handle_, access.id, &access.value, 0, access.type);
        }
    }

private:
    client::Library library_;
    client::SoftBoard board_;
    void* design_ = nullptr;
    void* handle_ = nullptr;
    int (*set_)(void*, int, const void*, unsigned, int) = nullptr;
    int (*get_)(void*, int, void*, unsigned, int) = nullptr;
    int (*idByName_)(void*, const char*) = nullptr;
    int (*freeGrabber_)(void*) = nullptr;
    int (*unload_)(void*) = nullptr;
};

}  // namespace quillon::bench
