#include "cli/Refusals.h"

#include <array>
#include <type_traits>

#include "client/Errors.h"
#include "client/Text.h"
#include "support/Failure.h"

namespace quillon::cli {

namespace {

struct RangeReason {
    std::string_view name;
    std::string_view text;
};

constexpr std::array rangeReasons{
#define RANGE_REASON(name, text) RangeReason{#name, text},
#include "cli/RangeReasons.def"
#undef RANGE_REASON
};

// A step below this is the catalogue's way to say that a double takes any value.
constexpr double AnyStep = 1e-12;

template <typename Number>
std::string numberText(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        return shortest(number);
    } else {
        return std::to_string(number);
    }
}

template <typename Number>
std::string rangeText(const client::Range<Number>& range, const std::string& unit) {
    if (range.min == range.max) {
        // A read-out without a told range has no step either.
        return range.step == Number{0} ? "" : "only " + numberText(range.min);
    }
    std::string text = numberText(range.min) + " to " + numberText(range.max) + (unit.empty() ? "" : " " + unit);
    const bool tellsStep =
        std::is_floating_point_v<Number> ? static_cast<double>(range.step) > AnyStep : range.step > Number{1};
    return tellsStep ? text + " in steps of " + numberText(range.step) : text;
}

std::string enumeratorList(const client::ParameterRecord& record) {
    std::string list;
    for (const client::EnumEntry& entry : record.entries) {
        list += (list.empty() ? "" : ", ") + entry.name + " (" + std::to_string(entry.value) + ")";
    }
    return list;
}

Refusal explainCode(int code) {
    const CodeText text = client::codeText(code);
    return {code, std::string(text.name), std::string(text.sentence), "", ""};
}

bool isAboutTheValue(int code) {
    return code == ValueOutOfRange || code == ValueNotAligned || code == ValueNotInList;
}

}  // namespace

Refusal explainSet(const client::Applet& applet, const Parameter& parameter, int code) {
    Refusal refusal = explainCode(code);
    if (isAboutTheValue(code)) {
        Parameter now = parameter;
        const auto trees = applet.parameterInfo();
        const client::ParameterRecord* record = client::findRecord(trees, parameter.id);
        now.record = record != nullptr ? std::optional(*record) : std::nullopt;
        refusal.accepted = acceptedValues(now);
        refusal.reason = rangeReason(parameter.name);
    }
    return refusal;
}

Refusal explainGet(int code) {
    return explainCode(code);
}

std::string inWords(const Refusal& refusal) {
    std::string text = "was refused: " + client::describeCode(refusal.code) + ", " + refusal.meaning;
    if (!refusal.accepted.empty()) {
        text += "\n  accepted: " + refusal.accepted;
    }
    if (!refusal.reason.empty()) {
        text += "\n  because:  " + refusal.reason;
    }
    return text;
}

Json toJson(const Refusal& refusal) {
    Json json{{"code", refusal.code}, {"name", refusal.name}, {"meaning", refusal.meaning}};
    if (!refusal.accepted.empty()) {
        json["accepted"] = refusal.accepted;
    }
    if (!refusal.reason.empty()) {
        json["reason"] = refusal.reason;
    }
    return json;
}

std::string acceptedValues(const Parameter& parameter) {
    if (!parameter.record) {
        return "";
    }
    if (parameter.isEnumerated()) {
        return enumeratorList(*parameter.record);
    }
    const std::string unit = client::utf8(parameter.record->unit);
    const std::string range = std::visit(
        [&](const auto& held) -> std::string {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
                return "";
            } else {
                return rangeText(held, unit);
            }
        },
        parameter.record->range);
    const bool isField = parameter.kind == ParameterKind::Field;
    return isField ? std::to_string(parameter.record->fieldSize) + " entries of " + range : range;
}

std::string rangeReason(const std::string& name) {
    for (const RangeReason& row : rangeReasons) {
        if (row.name == name) {
            return std::string(row.text);
        }
    }
    return "";
}

}  // namespace quillon::cli
