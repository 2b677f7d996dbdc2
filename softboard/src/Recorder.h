/// @file
/// Where calls are counted, written down and made to fail: one per board, and one for the process.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "softboard/src/FaultPlans.h"
#include "softboard/src/Functions.h"
#include "softboard/src/Transcript.h"

namespace softboard {

/// Counts a call of a stand-in function.
SOFTBOARD_API void countCall(Function function);
/// Calls of the function of this name so far in the process; 0 for an unknown name.
SOFTBOARD_API std::uint64_t callCount(std::string_view name);

/// What a transcript notes of a result: numbers as they are, 1 for a pointer, 0 for null.
template <class Result>
std::int64_t notedResult(Result result) {
    if constexpr (std::is_pointer_v<Result>) {
        return result != nullptr ? 1 : 0;
    } else {
        return static_cast<std::int64_t>(result);
    }
}

/// What a planned fault makes of a function's result: its code, or null.
template <class Result>
Result faultyResult(std::int64_t code) {
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return static_cast<Result>(code);
    }
}

class Recorder {
public:
    /// Runs one call of a stand-in function: counts it, lets a planned fault take its place, otherwise runs `body`
    /// under the lock, and writes it down with the text that `arguments` makes. `onFault` gets the code of such a
    /// fault.
    template <class Arguments, class Body, class OnFault>
    auto call(Function function, Arguments arguments, Body body, OnFault onFault) {
        using Result = decltype(body());
        countCall(function);
        const std::lock_guard guard(mutex);
        const auto fault = faults.empty() ? std::nullopt : faults.due(SOFTBOARD_CALL, nameOf(function));
        if (fault) {
            onFault(*fault);
        }
        const Result result = fault ? faultyResult<Result>(*fault) : body();
        if (transcript.recording()) {
            transcript.add(SOFTBOARD_CALL, 0, 0, 0, notedResult(result), nameOf(function), arguments());
        }
        return result;
    }
    template <class Arguments, class Body>
    auto call(Function function, Arguments arguments, Body body) {
        return call(function, arguments, body, [](std::int64_t) {});
    }

    mutable std::mutex mutex;
    Transcript transcript;
    FaultPlans faults;
};

/// The arguments of a call as a transcript shows them, separated by ", ". Pointers that are no texts are left to the
/// caller.
inline void appendArgument(std::string& text, const char* argument) {
    text += argument != nullptr ? argument : "null";
}
template <class Number>
requires std::is_integral_v<Number>
void appendArgument(std::string& text, Number argument) {
    text += std::to_string(argument);
}
template <class... Arguments>
std::string listed(const Arguments&... arguments) {
    std::string text;
    ((text += text.empty() ? "" : ", ", appendArgument(text, arguments)), ...);
    return text;
}

}  // namespace softboard
