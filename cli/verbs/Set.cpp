#include "cli/Arguments.h"
#include "cli/Assignments.h"
#include "cli/Refusals.h"
#include "cli/Trace.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct SetArguments {
    std::vector<std::string> assignments;
    std::vector<std::string> faults;
    bool trace = false;
};

/// "NAME=VALUE" words, or a NAME followed by its VALUE.
std::vector<std::pair<std::string, std::string>> splitWords(const std::vector<std::string>& words) {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (auto assignment = splitAssignment(words[i])) {
            pairs.push_back(std::move(*assignment));
        } else if (i + 1 < words.size() && !splitAssignment(words[i + 1])) {
            pairs.emplace_back(trimmed(words[i]), trimmed(words[i + 1]));
            ++i;
        } else {
            throw UsageError("\"" + trimmed(words[i]) + "\" has no value: a parameter is set as NAME=VALUE");
        }
    }
    return pairs;
}

void planFaults(client::SoftBoard& board, const std::vector<std::string>& faults) {
    for (const std::string& fault : faults) {
        const auto parts = splitAssignment(fault);
        const auto code = parts ? parseWholeNumber(parts->second) : std::nullopt;
        if (!code || code->magnitude > 0x7FFFFFFF) {
            throw UsageError("\"" + fault + "\": a fault is written as DESIGN_PARAMETER=CODE");
        }
        const auto magnitude = static_cast<std::int64_t>(code->magnitude);
        board.planFault(parts->first, client::Direction::Write, 1, code->negative ? -magnitude : magnitude);
    }
}

/// What the applet holds after a set, for the one who set it: enough for all but texts and tables.
std::string valueNow(Session& session, const Assignment& assignment) {
    Value now;
    const bool readable = readValue(session.applet(), assignment.parameter, now) == 0;
    return inWords(assignment.parameter, readable ? now : assignment.value);
}

/// Writes one value, prints what came of it or adds it to `list`, and says whether it was accepted.
bool setOne(Session& session, Console& console, const Assignment& assignment, bool trace, Json& list) {
    const Parameter& parameter = assignment.parameter;
    int code = 0;
    const auto accesses =
        traced(session.board(), [&] { code = writeValue(session.applet(), parameter, assignment.value); });
    Json entry = object(
        {{"name", parameter.name}, {"id", parameter.id}, {"value", toJson(assignment.value)}, {"accepted", code == 0}});
    if (code != 0) {
        const Refusal refusal = explainSet(session.applet(), parameter, assignment.value, code, &session.board());
        put(entry, "refused", toJson(refusal));
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << parameter.name << "="
                    << assignment.text << " " << inWords(refusal) << '\n';
    } else if (!session.options().json) {
        console.out << parameter.name << " = " << valueNow(session, assignment) << '\n';
    }
    if (trace) {
        put(entry, "accesses", toJson(accesses));
        if (!session.options().json) {
            printTrace(console.out, console.outPainter, accesses);
        }
    }
    append(list, entry);
    return code == 0;
}

ExitStatus set(Session& session, Console& console, const SetArguments& arguments) {
    const auto pairs = splitWords(arguments.assignments);
    std::vector<Assignment> assignments;
    for (const auto& [name, text] : pairs) {
        assignments.push_back(parseAssignment(session.applet(), name, text));
    }
    planFaults(session.board(), arguments.faults);
    Json list = emptyList();
    bool accepted = true;
    // A value may rest on the one before it, so the first refusal ends the command.
    for (std::size_t i = 0; accepted && i < assignments.size(); ++i) {
        accepted = setOne(session, console, assignments[i], arguments.trace, list);
        if (!accepted && i + 1 < assignments.size()) {
            console.err << "  not tried: " << assignments.size() - i - 1 << " more behind it\n";
        }
    }
    if (session.options().json) {
        printJson(console.out, list);
    }
    return accepted ? Done : Refused;
}

}  // namespace

void addSetVerb(Verbs& verbs) {
    auto arguments = std::make_shared<SetArguments>();
    Verb verb =
        verbs.add("set", "Write parameters, one after the other; the first refused value ends it",
                  "  quillon set FG_WIDTH=2048 FG_HEIGHT=512             numbers, decimal or with 0x\n"
                  "  quillon set FG_WIDTH=2048 --trace                   with every access to the design\n"
                  "  quillon set FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT   an enumerator by its name\n"
                  "  quillon set FG_DIGIO_OUTPUT -1                      a negative number is a value\n"
                  "  quillon set FG_LUT_VALUE_RED[0]=0,4,8,12            entries of a lookup table\n"
                  "  quillon set FG_HEIGHT=2048 --trace --fault Device1_Process0_Buffer_0_XLength=-5\n"
                  "                                                      what a failing design does to a write",
                  [arguments](Session& session, Console& console) { return set(session, console, *arguments); });
    verb.add("NAME=VALUE", &arguments->assignments, "Parameters, by name or id, and their new values").required();
    verb.add("--trace", &arguments->trace, "Print each access to the design, in order");
    verb.add("--fault", &arguments->faults, "Let the next write of a design parameter fail with a code")
        .shownAs("NAME=CODE")
        .oneWordEach();
}

}  // namespace quillon::cli
