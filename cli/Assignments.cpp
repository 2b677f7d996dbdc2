#include "cli/Assignments.h"

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"
#include "cli/Refusals.h"

namespace quillon::cli {

Assignment parseAssignment(const client::Applet& applet, const std::string& name, const std::string& text) {
    Parameter parameter = findParameter(applet, name);
    Value value = parseValue(applet, parameter, text);
    if (const auto* entries = std::get_if<std::vector<std::uint32_t>>(&value);
        entries != nullptr && parameter.run && !parameter.hasRun) {
        parameter.run->count = static_cast<std::uint32_t>(entries->size());  // as many as there are, from the first
        parameter.hasRun = true;
    }
    return {std::move(parameter), std::move(value), text};
}

void assign(client::Applet& applet, const std::vector<std::string>& words) {
    std::vector<Assignment> assignments;
    for (const std::string& word : words) {
        const auto parts = splitAssignment(word);
        if (!parts) {
            throw UsageError("\"" + trimmed(word) + "\" has no value: a parameter is set as NAME=VALUE");
        }
        assignments.push_back(parseAssignment(applet, parts->first, parts->second));
    }
    for (const Assignment& assignment : assignments) {
        if (const int code = writeValue(applet, assignment.parameter, assignment.value); code != 0) {
            const Refusal refusal = explainSet(applet, assignment.parameter, assignment.value, code);
            refuse(assignment.parameter.name + "=" + assignment.text + " " + inWords(refusal), refusal);
        }
    }
}

}  // namespace quillon::cli
