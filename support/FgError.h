#pragma once

#include <atomic>
#include <cstdint>

#include "support/Failure.h"

namespace quillon {

/// The last error of a wrapper: one number, not one per thread.
class Fg_Error {
public:
    int setErr(int number) {
        number_.store(number, std::memory_order_relaxed);
        return number;
    }
    int getErrorNumberBuffer() const { return number_.load(std::memory_order_relaxed); }
    /// Second-level errors are not kept: stores nothing and answers NotImplemented.
    int setErrLevel2(int /*number*/, const char* /*text*/) { return NotImplemented; }

private:
    std::atomic<std::int32_t> number_{Success};  ///< the table look-ups and forwarders record without a lock
};

}  // namespace quillon
