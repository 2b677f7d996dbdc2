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

namespace {

/// The digits that people read of a number; more are noise of its binary form.
constexpr int ReadableDigits = 12;

}  // namespace

std::string readable(double number) {
    const double magnitude = std::abs(number);
    std::array<char, 64> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, ReadableDigits);
    std::string text(buffer.data(), written.ptr);
    if (text.find('e') != std::string::npos && magnitude > 1e-9 && magnitude < 1e15) {
        const int behindPoint = ReadableDigits - 1 - static_cast<int>(std::floor(std::log10(magnitude)));
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

namespace {

/// The distance between numbers of the digits that people read, where `number` is.
double readableStep(double number) {
    return std::pow(10.0, std::floor(std::log10(std::abs(number))) + 1 - ReadableDigits);
}

double readBack(const std::string& text) {
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

std::string readableLeast(double bound) {
    const std::string text = readable(bound);
    return readBack(text) < bound ? readable(bound + readableStep(bound)) : text;
}

std::string readableMost(double bound) {
    const std::string text = readable(bound);
    return readBack(text) > bound ? readable(bound - readableStep(bound)) : text;
}

std::string readableUnit(std::string_view unit) {
    return unit == "Celsius" ? "°C" : utf8(unit);
}

}  // namespace quillon::client
