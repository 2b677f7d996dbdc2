#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/Json.h"
#include "cli/Parameters.h"
#include "quillon/client/Applet.h"

namespace quillon::cli {

/// A parameter's value. The empty one stands for a read that answered success and left no value.
using Value =
    std::variant<std::monostate, std::int64_t, std::uint64_t, double, std::string, std::vector<std::uint32_t>>;

/// Turns the text of a command line into a value of the parameter's kind: a number, the name of an enumerator or of a
/// public constant, its label, a text, or the entries of a lookup table separated by commas. A number may have a unit:
/// "50us", "20kHz". Does not look at ranges: that is the applet's. Throws UsageError.
Value parseValue(const client::Applet& applet, const Parameter& parameter, const std::string& text);

/// The applet's code; `value` is filled on success.
int readValue(client::Applet& applet, const Parameter& parameter, Value& value);
int writeValue(client::Applet& applet, const Parameter& parameter, const Value& value);

/// A number as people write it.
std::string numberInWords(const Value& value);
/// A value in words: "1024 pixel", "FG_ON (1)", "\"curve.lut\"".
std::string inWords(const Parameter& parameter, const Value& value);
Json toJson(const Value& value);
/// The name of the enumerator that the value is, or nothing.
std::string enumeratorOf(const Parameter& parameter, const Value& value);

}  // namespace quillon::cli
