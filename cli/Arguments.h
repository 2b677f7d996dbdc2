#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon::cli {

/// The words of a command line, made ready for the parser: what begins as a negative number, such as "-1" or
/// "-5mm/s", is a value and never an option, and gets a blank in front that trimmed() takes away again.
std::vector<std::string> protectNegativeNumbers(std::vector<std::string> words);

/// Without blanks at either end.
std::string trimmed(std::string_view text);

/// With capitals for its small letters of ASCII.
std::string inCapitals(std::string text);

/// A whole number in decimal or, with 0x, in hexadecimal, with a sign if there is one; nothing for any other text or a
/// number that 64 bits don't hold. A number above the largest signed one comes as its 64 bits with `negative` false.
struct WholeNumber {
    bool negative;
    std::uint64_t magnitude;
};
std::optional<WholeNumber> parseWholeNumber(std::string_view text);

/// A decimal number; nothing for any other text.
std::optional<double> parseReal(std::string_view text);

/// Splits "NAME=VALUE" at the first "="; nothing if there is none or no name.
std::optional<std::pair<std::string, std::string>> splitAssignment(std::string_view text);

}  // namespace quillon::cli
