#pragma once

#include <cstdint>

#include "support/ErrorCode.h"

namespace quillon {

/// The last error of a wrapper: one number, not one per thread.
class Fg_Error {
public:
    int setErr(int number) {
        number_ = number;
        return number_;
    }
    int getErrorNumberBuffer() const { return number_; }
    /// Second-level errors are not kept: stores nothing and answers NotImplemented.
    int setErrLevel2(int /*number*/, const char* /*text*/) { return NotImplemented; }

private:
    std::int32_t number_ = Success;
};

}  // namespace quillon
