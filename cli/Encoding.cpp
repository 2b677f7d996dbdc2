#include "cli/Encoding.h"

#include <algorithm>
#include <cstddef>

#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD";

unsigned byteAt(std::string_view text, std::size_t place) {
    return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
}

/// Bytes of the UTF-8 character that begins the text; 0 if none does.
std::size_t characterLength(std::string_view text) {
    const unsigned first = byteAt(text, 0);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xC2 && first < 0xE0 ? 2 : first >= 0xE0 && first < 0xF0 ? 3 : 4;
    if (first < 0xC2 || first > 0xF4 || length > text.size()) {
        return 0;
    }
    // The bounds of the second byte leave out what has a shorter form, surrogates, and what lies beyond U+10FFFF.
    const unsigned least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    const bool continues = std::ranges::all_of(
        text.substr(1, length - 1), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; });
    return continues && byteAt(text, 1) >= least && byteAt(text, 1) <= most ? length : 0;
}

}  // namespace

std::string asUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length > 0) {
            result += text.substr(0, length);
        } else {
            result += byteAt(text, 0) >= 0xA0 ? client::utf8(text.substr(0, 1)) : std::string(Replacement);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

}  // namespace quillon::cli
