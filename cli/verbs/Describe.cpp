#include <algorithm>

#include "cli/Answers.h"
#include "cli/Refusals.h"
#include "cli/Trace.h"
#include "cli/Verb.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// Everything about one parameter that the applet tells, and what a look at the design shows.
struct Description {
    std::string text;
    std::string label;
    std::string access;
    std::string value;
    std::string accepted;
    std::string reason;
    Json answer;                         ///< value and bounds for other programs
    std::vector<std::string> readFrom;   ///< design parameters that a read reaches
    std::vector<std::string> writtenTo;  ///< design parameters that a write of the present value writes
    std::vector<std::string> consulted;  ///< design parameters that such a write reads, for limits
};

std::vector<std::string> namesOf(const std::vector<client::Access>& accesses, client::Direction direction) {
    std::vector<std::string> names;
    for (const client::Access& access : accesses) {
        if (access.direction == direction && std::find(names.begin(), names.end(), access.name) == names.end()) {
            names.push_back(access.name);
        }
    }
    return names;
}

bool isClosed(const Parameter& parameter) {
    return parameter.record && !parameter.record->writable;
}

std::string accessText(const client::SoftBoard& board, const Parameter& parameter) {
    if (isWriteOnly(board, parameter)) {
        return "can only be written";
    }
    const PublicParameter* known = findPublicParameter(parameter.id);
    if (known != nullptr && known->access == ParameterAccess::ReadOnly) {
        return "can only be read";
    }
    return !isClosed(parameter) ? "can be read and written"
                                : "can be read and written; shown as closed to writes in the present mode";
}

Description describe(Session& session, const Parameter& parameter) {
    client::Applet& applet = session.applet();
    Description description;
    description.text = client::utf8(applet.readDescription(parameter.name));
    description.label = parameter.record ? client::utf8(parameter.record->label) : "";
    description.access = accessText(session.board(), parameter);
    description.accepted = acceptedValues(applet, &session.board(), parameter);
    description.reason = client::rangeReason(parameter.name);
    Value value;
    int code = 0;
    if (!isWriteOnly(session.board(), parameter)) {
        const auto reads = traced(session.board(), [&] { code = readValue(applet, parameter, value); });
        description.readFrom = namesOf(reads, client::Direction::Read);
        description.value = code == 0 ? inWords(parameter, value) : client::describeCode(code);
    }
    putValue(description.answer, parameter, code == 0 ? value : Value());
    if (code != 0) {
        put(description.answer, "refused", toJson(explainGet(code)));
    }
    if (parameter.record) {
        putAccepted(description.answer, acceptedNow(applet, &session.board(), *parameter.record));
    }
    // A text names a file, and writing it would make or read that file.
    const PublicParameter* known = findPublicParameter(parameter.id);
    const bool writable = known != nullptr && known->access == ParameterAccess::ReadWrite;
    if (code == 0 && writable && parameter.kind != ParameterKind::String) {
        const auto accesses = traced(session.board(), [&] { writeValue(applet, parameter, value); });
        description.writtenTo = namesOf(accesses, client::Direction::Write);
        description.consulted = namesOf(accesses, client::Direction::Read);
    }
    return description;
}

std::string hexadecimal(int id) {
    std::ostringstream text;
    text << std::hex << id;
    return text.str();
}

void addRow(Rows& rows, const std::string& head, const std::string& text) {
    if (!text.empty()) {
        rows.push_back({head, text});
    }
}

void addRows(Rows& rows, const std::string& head, const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        rows.push_back({i == 0 ? head : "", texts[i]});
    }
}

std::vector<std::string> enumeratorTexts(client::Applet& applet, const Parameter& parameter) {
    std::vector<std::string> texts;
    if (parameter.isEnumerated()) {
        const client::ParameterRecord accepted = client::acceptedNow(applet, *parameter.record);
        for (const client::EnumEntry& entry : parameter.record->entries) {
            texts.push_back(entry.name + " (" + std::to_string(entry.value) + "), " + client::utf8(entry.label) +
                            (accepted.entry(entry.value) != nullptr ? "" : "; refused at present"));
        }
    }
    return texts;
}

void print(client::Applet& applet, const Parameter& parameter, const Description& description, Console& console) {
    console.out << console.outPainter.paint(Style::Strong, parameter.name) << '\n';
    Rows rows;
    addRow(rows, "Label", description.label);
    addRow(rows, "Description", description.text);
    addRow(rows, "Id", std::to_string(parameter.id) + " (0x" + hexadecimal(parameter.id) + ")");
    addRow(rows, "Access", description.access);
    addRow(rows, "Value", description.value);
    if (parameter.isEnumerated()) {
        addRows(rows, "Values", enumeratorTexts(applet, parameter));
    } else {
        addRow(rows, "Accepts", description.accepted);
    }
    addRow(rows, "Range follows", description.reason);
    addRows(rows, "Reads", description.readFrom);
    addRows(rows, "Writes", description.writtenTo);
    addRows(rows, "Reads for it", description.consulted);
    printRows(console.out, rows, "  ");
}

Json enumeratorsOf(const client::Applet& applet, const Parameter& parameter) {
    const client::ParameterRecord accepted = client::acceptedNow(applet, *parameter.record);
    Json list = emptyList();
    for (const client::EnumEntry& entry : parameter.record->entries) {
        append(list, object({{"value", entry.value},
                             {"enumerator", entry.name},
                             {"label", client::utf8(entry.label)},
                             {"accepted", accepted.entry(entry.value) != nullptr}}));
    }
    return list;
}

Json toJson(Session& session, const Parameter& parameter, const Description& description) {
    const std::string access = accessOf(session.board(), parameter);
    Json json = object({{"name", parameter.name},
                        {"id", parameter.id},
                        {"label", description.label},
                        {"description", description.text},
                        {"type", typeOf(parameter)},
                        {"access", access},
                        {"closed", access != "read" && isClosed(parameter)}});
    json.update(description.answer);
    if (!description.reason.empty()) {
        put(json, "reason", description.reason);
    }
    if (parameter.isEnumerated()) {
        put(json, "values", enumeratorsOf(session.applet(), parameter));
    }
    put(json, "reads", description.readFrom);
    put(json, "writes", description.writtenTo);
    put(json, "consults", description.consulted);
    return json;
}

ExitStatus describeAll(Session& session, Console& console, const std::vector<std::string>& names) {
    Json list = emptyList();
    for (const std::string& name : names) {
        const Parameter parameter = findParameter(session.applet(), name);
        const Description description = describe(session, parameter);
        append(list, toJson(session, parameter, description));
        if (!session.options().json) {
            print(session.applet(), parameter, description, console);
        }
    }
    if (session.options().json) {
        printJson(console, list);
    }
    return Done;
}

}  // namespace

void addDescribeVerb(Verbs& verbs) {
    auto names = std::make_shared<std::vector<std::string>>();
    Verb verb = verbs.add(
        "describe", "Tell everything about parameters: meaning, range and why, values, design parameters reached",
        "  quillon describe FG_XOFFSET\n"
        "  quillon describe FG_LINETRIGGERMODE --json",
        [names](Session& session, Console& console) { return describeAll(session, console, *names); });
    verb.add("NAME", names.get(), "Names or ids of parameters").required();
}

}  // namespace quillon::cli
