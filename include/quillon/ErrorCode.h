/// @file
/// The applet's error codes for C++, and what they mean.
#pragma once

#include <string_view>

namespace quillon {

/// The codes of QuillonCode under their short names.
enum ErrorCode : int {
#define ERROR_CODE(name, code, sentence) name = code,
#include "quillon/ErrorCodes.def"
#undef ERROR_CODE
};

/// A code in words.
struct CodeText {
    int code;
    std::string_view name;      ///< such as "ValueOutOfRange"
    std::string_view sentence;  ///< what it means, without a full stop
};

/// All codes of the applet, from 0 downwards.
inline constexpr CodeText ErrorCodeTexts[] = {
#define ERROR_CODE(name, code, sentence) {code, #name, sentence},
#include "quillon/ErrorCodes.def"
#undef ERROR_CODE
};

}  // namespace quillon
