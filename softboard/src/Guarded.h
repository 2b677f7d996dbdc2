/// @file
/// The edge of the C functions: no exception leaves one.
#pragma once

namespace softboard {

/// `body()`, or `otherwise` if it throws, which it does only when memory is short.
template <class Result, class Body>
Result guarded(Result otherwise, Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return otherwise;
    }
}

}  // namespace softboard
