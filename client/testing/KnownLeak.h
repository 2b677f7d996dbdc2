/// @file
/// For tests of the one failure that leaves memory behind by its definition: a design that does not load.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace quillon::client::testing {

/// Memory that is allocated while it lives is no finding of the leak check.
class KnownLeak {
public:
#if defined(__SANITIZE_ADDRESS__)
    KnownLeak() {
        __lsan_disable();
    }
    ~KnownLeak() {
        __lsan_enable();
    }
#else
    KnownLeak() {}
    ~KnownLeak() {}
#endif
    KnownLeak(const KnownLeak&) = delete;
    KnownLeak& operator=(const KnownLeak&) = delete;
};

}  // namespace quillon::client::testing
