#include "cli/Refusals.h"

#include "quillon/ErrorCode.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Errors.h"

namespace quillon::cli {

namespace {

Refusal explainCode(int code) {
    const CodeText text = client::codeText(code);
    return {code, std::string(text.name), std::string(text.sentence), "", ""};
}

}  // namespace

Refusal explainSet(const client::Applet& applet, const Parameter& parameter, int code) {
    Refusal refusal = explainCode(code);
    if (client::isAboutTheValue(code)) {
        Parameter now = parameter;
        const auto trees = applet.parameterInfo();
        const client::ParameterRecord* record = client::findRecord(trees, parameter.id);
        now.record = record != nullptr ? std::optional(*record) : std::nullopt;
        refusal.accepted = acceptedValues(now);
        refusal.reason = client::rangeReason(parameter.name);
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
    Json json = object({{"code", refusal.code}, {"name", refusal.name}, {"meaning", refusal.meaning}});
    if (!refusal.accepted.empty()) {
        put(json, "accepted", refusal.accepted);
    }
    if (!refusal.reason.empty()) {
        put(json, "reason", refusal.reason);
    }
    return json;
}

std::string acceptedValues(const Parameter& parameter) {
    return parameter.record ? client::acceptedValues(*parameter.record) : "";
}

}  // namespace quillon::cli
