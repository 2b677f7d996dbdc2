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
        const auto record = applet.record(parameter.id);
        refusal.accepted = record ? client::acceptedValues(*record) : "";
        refusal.reason = client::rangeReason(parameter.name);
    }
    return refusal;
}

Refusal explainGet(int code) {
    return explainCode(code);
}

std::string inWords(const Refusal& refusal) {
    return client::describeRefusal(refusal.code, refusal.accepted, refusal.reason);
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
