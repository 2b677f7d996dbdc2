/// @file
/// Inside the applet a failure is a thrown plain `int`, an ErrorCode or a code of the SDK, which travels the same road.
/// It becomes a return value in FgIxWrapperImpl::setParameter and getParameter, and nowhere else.
#pragma once

#include "quillon/ErrorCode.h"

namespace quillon {

/// Ends the current operation with `code`.
[[noreturn]] inline void fail(int code) {
    throw code;
}

/// Ends the current operation with `code` unless `condition` holds.
inline void require(bool condition, int code) {
    if (!condition) {
        fail(code);
    }
}

}  // namespace quillon
