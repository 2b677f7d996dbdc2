#include <algorithm>

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

std::string accessText(const Parameter& parameter) {
    const PublicParameter* known = findPublicParameter(parameter.id);
    if (known != nullptr && known->access == ParameterAccess::ReadOnly) {
        return "can only be read";
    }
    const bool openNow = !parameter.record || parameter.record->writable;
    return openNow ? "can be read and written"
                   : "can be read and written; shown as closed to writes in the present mode";
}

Description describe(Session& session, const Parameter& parameter) {
    client::Applet& applet = session.applet();
    Description description;
    description.text = client::utf8(applet.readDescription(parameter.name));
    description.label = parameter.record ? client::utf8(parameter.record->label) : "";
    description.access = accessText(parameter);
    description.accepted = acceptedValues(applet, &session.board(), parameter);
    description.reason = client::rangeReason(parameter.name);
    Value value;
    int code = 0;
    description.readFrom =
        namesOf(traced(session.board(), [&] { code = readValue(applet, parameter, value); }), client::Direction::Read);
    description.value = code == 0 ? inWords(parameter, value) : client::describeCode(code);
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

Json toJson(const Parameter& parameter, const Description& description) {
    Json json = object({{"name", parameter.name},
                        {"id", parameter.id},
                        {"label", description.label},
                        {"description", description.text},
                        {"access", description.access},
                        {"value", description.value},
                        {"accepted", description.accepted},
                        {"reason", description.reason},
                        {"reads", description.readFrom},
                        {"writes", description.writtenTo},
                        {"consults", description.consulted}});
    if (parameter.isEnumerated()) {
        for (const client::EnumEntry& entry : parameter.record->entries) {
            json["values"].push_back(
                object({{"name", entry.name}, {"value", entry.value}, {"label", client::utf8(entry.label)}}));
        }
    }
    return json;
}

ExitStatus describeAll(Session& session, Console& console, const std::vector<std::string>& names) {
    Json list = emptyList();
    for (const std::string& name : names) {
        const Parameter parameter = findParameter(session.applet(), name);
        const Description description = describe(session, parameter);
        append(list, toJson(parameter, description));
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
