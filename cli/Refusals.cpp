#include "cli/Refusals.h"

#include <memory>
#include <optional>
#include <utility>

#include "cli/Answers.h"
#include "cli/ExitStatus.h"
#include "quillon/ErrorCode.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Errors.h"

namespace quillon::cli {

namespace {

Refusal explainCode(int code) {
    const CodeText text = client::codeText(code);
    return {code, std::string(text.name), std::string(text.sentence), "", "", "", ""};
}

/// The number that a value is, if it is one.
std::optional<double> numberOf(const Parameter& parameter, const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    if (const auto* whole = std::get_if<std::uint64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    const auto* real = std::get_if<double>(&value);
    return real != nullptr && parameter.kind == ParameterKind::Double ? std::optional(*real) : std::nullopt;
}

/// How many debug points the design on the board tells of, by one digit.
std::optional<std::uint64_t> debugPoints(const client::SoftBoard* board) {
    try {
        const std::string text = board != nullptr ? board->text("Device1_Process0_Debug_Entries") : "";
        const bool isCount = !text.empty() && text[0] >= '0' && text[0] <= '9';
        return isCount ? std::optional(static_cast<std::uint64_t>(text[0] - '0')) : std::nullopt;
    } catch (const client::CallError&) {
        return std::nullopt;
    }
}

/// The nearest value; nothing where the parameter is enumerated.
std::optional<Value> nearestTo(const Parameter& parameter, const client::ParameterRecord& accepted, double value) {
    const auto nearest = client::nearestAccepted(accepted, value);
    if (!nearest || accepted.kind == client::RecordKind::Enum) {
        return std::nullopt;
    }
    return parameter.kind == ParameterKind::Double ? Value(*nearest) : Value(static_cast<std::int64_t>(*nearest));
}

}  // namespace

client::ParameterRecord acceptedNow(const client::Applet& applet, const client::SoftBoard* board,
                                    const client::ParameterRecord& record) {
    return client::acceptedNow(applet, record, record.id == FG_DEBUGSOURCE ? debugPoints(board) : std::nullopt);
}

Refusal explainSet(const client::Applet& applet, const Parameter& parameter, const Value& value, int code,
                   const client::SoftBoard* board) {
    Refusal refusal = explainSet(applet, parameter, code);
    const auto number = numberOf(parameter, value);
    const auto record = number && client::isAboutTheValue(code) ? applet.record(parameter.id) : std::nullopt;
    if (record) {
        refusal.accepted = client::acceptedValues(acceptedNow(applet, board, *record));
        refusal.first = client::stepBefore(applet, parameter.id, *number);
        // A value that no state accepts is far from any; the range says enough then.
        if (!refusal.first.empty() || code == ValueNotAligned) {
            if (const auto nearest = nearestTo(parameter, client::acceptedNow(applet, *record), *number)) {
                refusal.nearest = inWords(parameter, *nearest);
                refusal.nearestValue = valueOf(parameter, *nearest);
            }
        }
    }
    return refusal;
}

Refusal explainSet(const client::Applet& applet, const Parameter& parameter, int code) {
    Refusal refusal = explainCode(code);
    if (client::isAboutTheValue(code)) {
        const auto record = applet.record(parameter.id);
        refusal.accepted = record ? client::acceptedValues(client::acceptedNow(applet, *record)) : "";
        refusal.reason = client::rangeReason(parameter.name);
    }
    return refusal;
}

Refusal explainGet(int code) {
    return explainCode(code);
}

std::string inWords(const Refusal& refusal) {
    return client::describeRefusal(refusal.code, refusal.accepted, refusal.reason) +
           (refusal.nearest.empty() ? "" : "\n  nearest:  " + refusal.nearest) +
           (refusal.first.empty() ? "" : "\n  first:    " + refusal.first);
}

Json toJson(const Refusal& refusal) {
    Json json = object({{"code", refusal.code}, {"name", refusal.name}, {"text", refusal.meaning}});
    if (!refusal.accepted.empty()) {
        put(json, "accepted", refusal.accepted);
    }
    if (!refusal.reason.empty()) {
        put(json, "reason", refusal.reason);
    }
    if (!refusal.nearest.empty()) {
        put(json, "nearest", refusal.nearestValue);
    }
    if (!refusal.first.empty()) {
        put(json, "first", refusal.first);
    }
    return json;
}

void refuse(const std::string& text, Refusal refusal) {
    throw RefusedError(text, std::make_shared<const Refusal>(std::move(refusal)));
}

std::string acceptedValues(const client::Applet& applet, const client::SoftBoard* board, const Parameter& parameter) {
    return parameter.record ? client::acceptedValues(acceptedNow(applet, board, *parameter.record)) : "";
}

}  // namespace quillon::cli
