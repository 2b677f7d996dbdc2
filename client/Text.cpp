#include "quillon/client/Text.h"

#include <array>
#include <charconv>
#include <system_error>

namespace quillon::client {

std::string utf8(std::string_view latin1) {
    std::string text;
    text.reserve(latin1.size());
    for (const char character : latin1) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            text.push_back(character);
        } else {
            text.push_back(static_cast<char>(0xC0 | (byte >> 6)));
            text.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
        }
    }
    return text;
}

std::string shortest(double number) {
    std::array<char, 64> buffer{};
    const auto [end, failure] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return std::string(buffer.data(), failure == std::errc{} ? end : buffer.data());
}

}  // namespace quillon::client
