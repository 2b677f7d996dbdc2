#include "cli/Arguments.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

constexpr std::string_view Prefix = "DRA_";

std::string hexadecimal(std::uint64_t number) {
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

std::string withPrefix(const std::string& name) {
    return name.starts_with(Prefix) || parseWholeNumber(name) ? name : std::string(Prefix) + name;
}

/// All registers by position, or those that are named.
std::vector<Parameter> wantedRegisters(client::Applet& applet, const std::vector<std::string>& names) {
    std::vector<Parameter> registers;
    if (names.empty()) {
        for (const std::string& name : parameterNames(applet)) {
            if (name.starts_with(Prefix)) {
                registers.push_back(findParameter(applet, name));
            }
        }
    }
    for (const std::string& name : names) {
        registers.push_back(findParameter(applet, withPrefix(name)));
    }
    return registers;
}

struct RegisterLine {
    std::vector<std::string> cells;
    Json json;
};

RegisterLine readRegister(client::Applet& applet, const Parameter& parameter) {
    std::uint64_t value = 0;
    const int code = applet.getUnsigned64(parameter.id, value);
    const std::string name = parameter.name.substr(parameter.name.starts_with(Prefix) ? Prefix.size() : 0);
    const bool writable = parameter.record && parameter.record->writable;
    Json json = object(
        {{"name", name}, {"number", parameter.id - FG_REGISTER_IDS}, {"id", parameter.id}, {"writable", writable}});
    if (code == 0) {
        put(json, "value", value);
    } else {
        put(json, "value", nullptr);
        put(json, "refused", toJson(explainGet(code)));
    }
    return {{std::to_string(parameter.id - FG_REGISTER_IDS), name,
             code == 0 ? hexadecimal(value) : client::describeCode(code), writable ? "writable" : ""},
            json};
}

ExitStatus writeRegister(Session& session, Console& console, const std::string& name, const std::string& text) {
    const Parameter parameter = findParameter(session.applet(), withPrefix(name));
    const Value value = parseValue(session.applet(), parameter, text);
    const int code = writeValue(session.applet(), parameter, value);
    if (code != 0) {
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " register " << name << "=" << text << " "
                    << inWords(explainSet(session.applet(), parameter, code)) << '\n';
    }
    return code == 0 ? Done : Refused;
}

ExitStatus showRegisters(Session& session, Console& console, const std::vector<std::string>& words) {
    session.enableDirectRegisterAccess();
    std::vector<std::string> names;
    for (const std::string& word : words) {
        const auto assignment = splitAssignment(word);
        names.push_back(assignment ? assignment->first : word);
        if (assignment && writeRegister(session, console, assignment->first, assignment->second) != Done) {
            return Refused;
        }
    }
    Rows rows;
    Json list = emptyList();
    bool refused = false;
    for (const Parameter& parameter : wantedRegisters(session.applet(), names)) {
        RegisterLine line = readRegister(session.applet(), parameter);
        refused = refused || line.json.contains("refused");
        rows.push_back(std::move(line.cells));
        append(list, std::move(line.json));
    }
    if (session.options().json) {
        printJson(console, list);
    } else {
        printRows(console.out, rows);
    }
    // Among all registers some can only be written; only one that was asked for by name is missed.
    return refused && !words.empty() ? Refused : Done;
}

}  // namespace

void addRegistersVerb(Verbs& verbs) {
    auto words = std::make_shared<std::vector<std::string>>();
    Verb verb =
        verbs.add("registers", "Read and write registers of the design directly",
                  "  quillon registers                      all registers: number, name, value\n"
                  "  quillon registers Control              one of them\n"
                  "  quillon registers Control=0x10         write it, then read it",
                  [words](Session& session, Console& console) { return showRegisters(session, console, *words); });
    verb.add("NAME[=VALUE]", words.get(), "Registers by name, or by id above 1000000; with a value to write it first");
}

}  // namespace quillon::cli
