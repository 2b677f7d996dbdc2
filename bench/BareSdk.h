#pragma once

#include <cstdint>
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

    /// An acquisition without end, into a memory of the board or into none.
    int acquire(void* memory) const { return acquire_(handle_, 0, -1, 0, memory); }
    std::int64_t lastPicture() const { return lastPicture_(handle_, 0, nullptr); }

    client::SoftBoard& board() { return board_; }
    /// A function of the board's library, as it is loaded here.
    template <class Function>
    static Function* boardFunction(const char* name) {
        return reinterpret_cast<Function*>(address(name));
    }

private:
    static void* address(const char* name);

    client::Library library_;
    client::SoftBoard board_;
    void* design_ = nullptr;
    void* handle_ = nullptr;
    int (*set_)(void*, int, const void*, unsigned, int) = nullptr;
    int (*get_)(void*, int, void*, unsigned, int) = nullptr;
    int (*idByName_)(void*, const char*) = nullptr;
    int (*acquire_)(void*, unsigned, std::int64_t, unsigned, void*) = nullptr;
    std::int64_t (*lastPicture_)(void*, unsigned, void*) = nullptr;
    int (*freeGrabber_)(void*) = nullptr;
    int (*unload_)(void*) = nullptr;
};

}  // namespace quillon::bench
