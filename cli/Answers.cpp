#include "cli/Answers.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

using client::RegisterAccess;

constexpr std::string_view RegisterPrefix = "DRA_";

// A step below this is the catalogue's way to say that a number takes any value.
constexpr double AnyStep = 1e-12;

RegisterAccess registerAccess(const client::SoftBoard& board, const Parameter& parameter) {
    try {
        return board.registerAccess(parameter.name.substr(RegisterPrefix.size()));
    } catch (const client::CallError&) {
        return RegisterAccess::ReadWrite;  // a loader that names registers otherwise than the design
    }
}

bool isRegister(const Parameter& parameter) {
    return parameter.id > FG_REGISTER_IDS && parameter.id <= FG_SDK_IDS && parameter.name.starts_with(RegisterPrefix);
}

template <typename Number>
void putRange(Json& json, const client::Range<Number>& range) {
    const auto putFinite = [&](const char* name, Number number) {
        if (std::isfinite(static_cast<double>(number))) {
            put(json, name, number);
        }
    };
    if (range.min > range.max) {
        return;  // nothing is accepted
    }
    putFinite("min", range.min);
    putFinite("max", range.max);
    if (static_cast<double>(range.step) > AnyStep) {
        putFinite("step", range.step);
    }
}

}  // namespace

const char* accessOf(const client::SoftBoard& board, const Parameter& parameter) {
    if (isRegister(parameter)) {
        switch (registerAccess(board, parameter)) {
            case RegisterAccess::Read: return "read";
            case RegisterAccess::Write: return "write";
            case RegisterAccess::ReadWrite: return "read-write";
        }
    }
    const PublicParameter* known = findPublicParameter(parameter.id);
    const bool writable = known != nullptr ? known->access == ParameterAccess::ReadWrite
                                           : !parameter.record || parameter.record->writable;
    return writable ? "read-write" : "read";
}

bool isWriteOnly(const client::SoftBoard& board, const Parameter& parameter) {
    return isRegister(parameter) && registerAccess(board, parameter) == RegisterAccess::Write;
}

const char* typeOf(const Parameter& parameter) {
    if (parameter.isEnumerated()) {
        return "enumeration";
    }
    switch (parameter.kind) {
        case ParameterKind::Double: return "real";
        case ParameterKind::String: return "text";
        case ParameterKind::Field: return "table";
        case ParameterKind::Int:
        case ParameterKind::Int64:
        case ParameterKind::Forwarded: break;
    }
    return "integer";
}

void putValue(Json& json, const Parameter& parameter, const Value& value) {
    const auto* entries = std::get_if<std::vector<std::uint32_t>>(&value);
    const bool isWhole = entries != nullptr && !parameter.hasRun;
    if (parameter.hasRun) {
        put(json, "index", parameter.run.value().first);
    }
    put(json, "value", isWhole ? Json(nullptr) : toJson(value));
    if (isWhole) {
        put(json, "table", inShort(*entries));
    }
    if (const std::string unit = parameter.record ? client::readableUnit(parameter.record->unit) : ""; !unit.empty()) {
        put(json, "unit", unit);
    }
    if (const std::string enumerator = enumeratorOf(parameter, value); !enumerator.empty()) {
        put(json, "enumerator", enumerator);
    }
}

Json valueOf(const Parameter& parameter, const Value& value) {
    Json json = object({});
    putValue(json, parameter, value);
    return json;
}

Json quantity(const Json& number, const std::string& unit) {
    return object({{"value", number}, {"unit", unit}});
}

Json inMicroseconds(double time) {
    return quantity(time, "\u00B5s");
}

Json inShort(const std::vector<std::uint32_t>& entries) {
    Json json = object({{"entries", entries.size()}});
    if (!entries.empty()) {
        const auto [smallest, largest] = std::ranges::minmax(entries);
        put(json, "firstEntry", entries.front());
        put(json, "lastEntry", entries.back());
        put(json, "smallest", smallest);
        put(json, "largest", largest);
    }
    return json;
}

void putAccepted(Json& json, const client::ParameterRecord& record) {
    const std::string accepted = client::acceptedValues(record);
    if (accepted.empty()) {
        return;
    }
    put(json, "accepted", accepted);
    std::visit(
        [&](const auto& range) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(range)>, std::monostate>) {
                putRange(json, range);
            }
        },
        record.range);
}

}  // namespace quillon::cli
