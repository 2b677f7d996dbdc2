#include "quillon/client/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
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

std::string readable(double number) {
    constexpr int digits = 12;
    const double magnitude = std::abs(number);
    std::array<char, 64> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, digits);
    std::string text(buffer.data(), written.ptr);
    if (text.find('e') != std::string::npos && magnitude > 1e-9 && magnitude < 1e15) {
        const int behindPoint = digits - 1 - static_cast<int>(std::floor(std::log10(magnitude)));
        const auto fixed = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed,
                                         std::max(behindPoint, 0));
        text.assign(buffer.data(), fixed.ptr);
        if (text.find('.') != std::string::npos) {
            text.erase(text.find_last_not_of('0') + 1);
        }
        if (text.ends_with('.')) {
            text.pop_back();
        }
    }
    return text;
}

std::string readableUnit(std::string_view unit) {
    return unit == "Celsius" ? "°C" : utf8(unit);
}

}  // namespace quillon::client
