#include "cli/Arguments.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace quillon::cli {

namespace {

/// The number that all of `text` is.
template <typename Number, typename... Format>
std::optional<Number> parseWhole(std::string_view text, Format... format) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number, format...);
    if (failure != std::errc{} || end != text.data() + text.size() || text.empty()) {
        return std::nullopt;
    }
    return number;
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

}  // namespace

std::vector<std::string> protectNegativeNumbers(std::vector<std::string> words) {
    for (std::string& word : words) {
        if (word.size() > 1 && word[0] == '-' && (isDigit(word[1]) || word[1] == '.' || parseReal(word))) {
            word.insert(word.begin(), ' ');
        }
    }
    return words;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return "";
    }
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string inCapitals(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return text;
}

std::optional<WholeNumber> parseWholeNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    const auto magnitude = parseWhole<std::uint64_t>(text, hexadecimal ? 16 : 10);
    constexpr std::uint64_t smallest = std::uint64_t{1} << 63;
    if (!magnitude || (negative && *magnitude > smallest)) {
        return std::nullopt;
    }
    return WholeNumber{negative, *magnitude};
}

std::optional<double> parseReal(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return parseWhole<double>(text);
}

std::optional<std::pair<std::string, std::string>> splitAssignment(std::string_view text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos) {
        return std::nullopt;
    }
    auto assignment = std::pair(trimmed(text.substr(0, sign)), trimmed(text.substr(sign + 1)));
    return assignment.first.empty() ? std::nullopt : std::optional(std::move(assignment));
}

}  // namespace quillon::cli
