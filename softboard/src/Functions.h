/// @file
/// The functions of the stand-in libraries, as they are counted and named in transcripts and fault plans.
#pragma once

#include <array>
#include <cstddef>

namespace softboard {

enum class Function : std::size_t {
#define FUNCTION(name) name,
#include "softboard/src/Functions.def"
#undef FUNCTION
};

inline constexpr std::array FunctionNames = {
#define FUNCTION(name) #name,
#include "softboard/src/Functions.def"
#undef FUNCTION
};

constexpr const char* nameOf(Function function) {
    return FunctionNames[static_cast<std::size_t>(function)];
}

}  // namespace softboard
