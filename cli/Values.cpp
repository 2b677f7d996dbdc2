#include "cli/Values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"
#include "cli/Suggestions.h"
#include "cli/Units.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

UsageError noValue(const Parameter& parameter, const std::string& text, const std::string& reason) {
    return UsageError("\"" + text + "\" is no value for " + parameter.name + reason);
}

/// The 32 or 64 bits of a number; a number that they don't hold would reach the applet as another one.
Value wholeValue(const Parameter& parameter, const std::string& text, const WholeNumber& number) {
    const bool wide = parameter.kind == ParameterKind::Int64;
    if (!wide && number.magnitude > (number.negative ? 0x80000000ULL : 0xFFFFFFFFULL)) {
        throw noValue(parameter, text, ": the parameter has 32 bits");
    }
    return number.negative ? Value(static_cast<std::int64_t>(0 - number.magnitude)) : Value(number.magnitude);
}

std::vector<std::string> enumeratorNames(const Parameter& parameter) {
    std::vector<std::string> names;
    for (const client::EnumEntry& entry : parameter.record->entries) {
        names.push_back(entry.name);
    }
    return names;
}

std::string oneOf(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "; it is one of " : ", ") + name;
    }
    return list;
}

Value parseEnumerator(const client::Applet& applet, const Parameter& parameter, const std::string& text) {
    if (parameter.isEnumerated()) {
        for (const client::EnumEntry& entry : parameter.record->entries) {
            if (entry.name == text || client::utf8(entry.label) == text) {
                return static_cast<std::int64_t>(entry.value);
            }
        }
        const std::vector<std::string> names = enumeratorNames(parameter);
        throw noValue(parameter, text, didYouMean(text, names) + oneOf(names));
    }
    if (const auto constant = applet.library().constant(text); constant && !parameter.record) {
        return static_cast<std::int64_t>(*constant);
    }
    throw noValue(parameter, text, ": it takes a whole number, in decimal or with 0x in hexadecimal");
}

Value parseEntries(const Parameter& parameter, const std::string& text) {
    std::vector<std::uint32_t> entries;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const auto number = parseWholeNumber(trimmed(std::string_view(text).substr(begin, end - begin)));
        if (!number || number->negative || number->magnitude > std::numeric_limits<std::uint32_t>::max()) {
            throw noValue(parameter, text, ": it takes whole numbers separated by commas");
        }
        entries.push_back(static_cast<std::uint32_t>(number->magnitude));
        begin = end + 1;
    }
    if (parameter.hasRun && entries.size() != parameter.run.value().count) {
        throw noValue(parameter, text,
                      ": entries named: " + std::to_string(parameter.run->count) +
                          ", values given: " + std::to_string(entries.size()));
    }
    return entries;
}

template <typename Number>
Value widened(const Parameter& parameter, Number number) {
    return parameter.isUnsigned() ? Value(static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Number>>(number)))
                                  : Value(static_cast<std::int64_t>(number));
}

/// A read of the SDK may answer success without storing anything, as that of the DMA status does: then the number that
/// was there before is still there, whatever it was.
int readSdkNumber(client::Applet& applet, const Parameter& parameter, Value& value) {
    std::int32_t first = 0;
    std::int32_t second = -1;
    int code = applet.getInt(parameter.id, first);
    code = code == 0 ? applet.getInt(parameter.id, second) : code;
    value = first == 0 && second == -1 ? Value() : widened(parameter, first);
    return code;
}

int readEntries(client::Applet& applet, const Parameter& parameter, Value& value) {
    const Run run = parameter.run.value();
    std::vector<std::uint32_t> entries(std::min<std::uint32_t>(run.count, 1U << 20));
    const int code = applet.getField(parameter.id, entries, run.first);
    value = std::move(entries);
    return code;
}

std::uint64_t bitsOf(const Value& value) {
    return std::holds_alternative<std::int64_t>(value) ? static_cast<std::uint64_t>(std::get<std::int64_t>(value))
                                                       : std::get<std::uint64_t>(value);
}

std::string listOfEntries(const std::vector<std::uint32_t>& entries) {
    constexpr std::size_t shown = 16;
    std::string list;
    for (std::size_t i = 0; i < std::min(entries.size(), shown); ++i) {
        list += (list.empty() ? "" : ", ") + std::to_string(entries[i]);
    }
    return entries.size() <= shown
               ? list
               : list + ", ... " + std::to_string(entries.back()) + " (" + std::to_string(entries.size()) + " entries)";
}

}  // namespace

namespace {

/// A number in the parameter's unit.
double realValue(const Parameter& parameter, const std::string& text) {
    try {
        return parseQuantity(text, parameter.record ? client::readableUnit(parameter.record->unit) : "");
    } catch (const UsageError& error) {
        throw noValue(parameter, text, std::string(": ") + error.what());
    }
}

/// "2kHz", "1 s": the number must be whole where the parameter's is.
Value wholeQuantity(const Parameter& parameter, const std::string& text) {
    constexpr double most = 1e15;  // beyond it not every whole number is a double
    const double number = realValue(parameter, text);
    if (!(std::abs(number) <= most) || number != std::floor(number)) {
        throw noValue(parameter, text, ": it takes a whole number");
    }
    return wholeValue(parameter, text, {number < 0, static_cast<std::uint64_t>(std::abs(number))});
}

}  // namespace

Value parseValue(const client::Applet& applet, const Parameter& parameter, const std::string& text) {
    switch (parameter.kind) {
        case ParameterKind::String: return text;
        case ParameterKind::Field: return parseEntries(parameter, text);
        case ParameterKind::Double: return realValue(parameter, text);
        case ParameterKind::Int:
        case ParameterKind::Int64:
        case ParameterKind::Forwarded: break;
    }
    if (const auto number = parseWholeNumber(text)) {
        return wholeValue(parameter, text, *number);
    }
    return hasUnit(text) && !parameter.isEnumerated() ? wholeQuantity(parameter, text)
                                                      : parseEnumerator(applet, parameter, text);
}

int readValue(client::Applet& applet, const Parameter& parameter, Value& value) {
    switch (parameter.kind) {
        case ParameterKind::Forwarded: return readSdkNumber(applet, parameter, value);
        case ParameterKind::Field: return readEntries(applet, parameter, value);
        case ParameterKind::String: {
            std::string text;
            const int code = applet.getText(parameter.id, text);
            value = text;  // in whatever encoding a user or a file has given it
            return code;
        }
        case ParameterKind::Double: {
            double number = 0;
            const int code = applet.getDouble(parameter.id, number);
            value = number;
            return code;
        }
        case ParameterKind::Int64: {
            std::int64_t number = 0;
            const int code = applet.getInt64(parameter.id, number);
            value = widened(parameter, number);
            return code;
        }
        case ParameterKind::Int: break;
    }
    std::int32_t number = 0;
    const int code = applet.getInt(parameter.id, number);
    value = widened(parameter, number);
    return code;
}

int writeValue(client::Applet& applet, const Parameter& parameter, const Value& value) {
    switch (parameter.kind) {
        case ParameterKind::String: return applet.setText(parameter.id, std::get<std::string>(value));
        case ParameterKind::Double: return applet.setDouble(parameter.id, std::get<double>(value));
        case ParameterKind::Int64: return applet.setUnsigned64(parameter.id, bitsOf(value));
        case ParameterKind::Field:
            return applet.setField(parameter.id, std::get<std::vector<std::uint32_t>>(value),
                                   parameter.run.value().first);
        case ParameterKind::Int:
        case ParameterKind::Forwarded: break;
    }
    // The low 32 bits: parseValue() has seen to it that nothing else is set, but for a sign.
    return applet.setUnsigned(parameter.id, static_cast<std::uint32_t>(bitsOf(value)));
}

std::string enumeratorOf(const Parameter& parameter, const Value& value) {
    if (!parameter.isEnumerated() ||
        (!std::holds_alternative<std::int64_t>(value) && !std::holds_alternative<std::uint64_t>(value))) {
        return "";
    }
    const client::EnumEntry* entry = parameter.record->entry(static_cast<std::int32_t>(bitsOf(value)));
    return entry != nullptr ? entry->name : "";
}

std::string numberInWords(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*whole);
    }
    if (const auto* whole = std::get_if<std::uint64_t>(&value)) {
        return std::to_string(*whole);
    }
    return client::readable(std::get<double>(value));
}

std::string inWords(const Parameter& parameter, const Value& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        return "no value arrives";
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return "\"" + *text + "\"";
    }
    if (const auto* entries = std::get_if<std::vector<std::uint32_t>>(&value)) {
        return listOfEntries(*entries);
    }
    const std::string number = numberInWords(value);
    if (const std::string name = enumeratorOf(parameter, value); !name.empty()) {
        return name + " (" + number + ")";
    }
    const std::string unit = parameter.record ? client::readableUnit(parameter.record->unit) : "";
    return unit.empty() ? number : number + " " + unit;
}

Json toJson(const Value& value) {
    return std::visit(
        [](const auto& held) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
                return nullptr;
            } else {
                return held;
            }
        },
        value);
}

}  // namespace quillon::cli
