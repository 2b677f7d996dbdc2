#include <algorithm>
#include <iterator>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/Assignments.h"
#include "cli/Effects.h"
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

/// "FG_WIDTH", "FG_LUT_VALUE_RED[7]", "FG_LUT_VALUE_RED[0..3]".
std::string nameWithEntries(const Parameter& parameter) {
    if (!parameter.run) {
        return parameter.name;
    }
    const Run run = *parameter.run;
    const std::string last = run.count == 1 ? "" : ".." + std::to_string(std::uint64_t{run.first} + run.count - 1);
    return parameter.name + "[" + std::to_string(run.first) + last + "]";
}

/// What came of one value: what is held now, and what else changed.
struct Result {
    int code = 0;
    Value held;            ///< none where it cannot be read
    bool differs = false;  ///< the applet keeps another number than was asked for
    std::vector<Change> values;
    std::vector<Change> limits;
    std::vector<std::string> notes;
    std::vector<client::Access> accesses;
};

bool isNumber(const Parameter& parameter) {
    return parameter.kind == ParameterKind::Int || parameter.kind == ParameterKind::Int64 ||
           parameter.kind == ParameterKind::Double;
}

/// The applet looks at the first entry of a run alone.
std::string entriesBeyondTheTable(const Parameter& parameter, const Value& held) {
    constexpr std::uint32_t largest = 65535;
    if (const auto* entries = std::get_if<std::vector<std::uint32_t>>(&held)) {
        for (std::size_t i = 0; i < entries->size(); ++i) {
            if ((*entries)[i] > largest) {
                return "entry " + std::to_string(parameter.run.value().first + i) + " is " +
                       std::to_string((*entries)[i]) +
                       ", more than 65535: the applet looks at the first of a run alone";
            }
        }
    }
    return "";
}

void note(std::vector<std::string>& notes, const std::string& text) {
    if (!text.empty()) {
        notes.push_back(text);
    }
}

/// Writes one value and sees what came of it; `now` is the state before, and then behind it.
Result carryOut(Session& session, const Assignment& assignment, Moment& now) {
    client::Applet& applet = session.applet();
    const Parameter& parameter = assignment.parameter;
    Result result;
    result.accesses = traced(session.board(), [&] { result.code = writeValue(applet, parameter, assignment.value); });
    if (isWriteOnly(session.board(), parameter) || readValue(applet, parameter, result.held) != 0) {
        result.held = Value();
    }
    const bool readable = !std::holds_alternative<std::monostate>(result.held);
    result.differs =
        readable && isNumber(parameter) && inWords(parameter, result.held) != inWords(parameter, assignment.value);
    Moment after = observe(session);
    const auto isOther = [&](const Change& change) { return change.name != parameter.name; };
    std::ranges::copy_if(changedValues(now, after), std::back_inserter(result.values), isOther);
    std::ranges::copy_if(movedLimits(now, after), std::back_inserter(result.limits), isOther);
    note(result.notes, lostMirroring(now, after));
    note(result.notes, result.code == 0 ? entriesBeyondTheTable(parameter, result.held) : "");
    now = std::move(after);
    return result;
}

Json entryOf(const Assignment& assignment, const Result& result, bool trace) {
    const Parameter& parameter = assignment.parameter;
    Json entry = object({{"name", parameter.name}, {"id", parameter.id}});
    putValue(entry, parameter, result.held);
    if (result.code != 0 || result.differs) {
        put(entry, "asked", valueOf(parameter, assignment.value));
    }
    put(entry, "accepted", result.code == 0);
    if (!result.values.empty()) {
        put(entry, "changed", toJson(result.values));
    }
    if (!result.limits.empty()) {
        put(entry, "limits", toJson(result.limits));
    }
    if (!result.notes.empty()) {
        put(entry, "notes", result.notes);
    }
    if (trace) {
        put(entry, "accesses", toJson(result.accesses));
    }
    return entry;
}

void print(Console& console, const Assignment& assignment, const Result& result) {
    const Parameter& parameter = assignment.parameter;
    const bool readable = !std::holds_alternative<std::monostate>(result.held);
    if (result.code == 0) {
        console.out << nameWithEntries(parameter) << " = "
                    << inWords(parameter, readable ? result.held : assignment.value)
                    << (result.differs ? ", asked for " + inWords(parameter, assignment.value) : "") << '\n';
    }
    Rows rows = rowsOf(result.values);
    for (const Change& change : result.limits) {
        rows.push_back({change.name + " accepts", change.before, "->", change.after});
    }
    printRows(console.out, rows, "  ");
    for (const std::string& text : result.notes) {
        console.out << "  " << text << '\n';
    }
}

/// Writes one value, prints what came of it or adds it to `list`, and says whether it was accepted.
bool setOne(Session& session, Console& console, const Assignment& assignment, bool trace, Moment& now, Json& list) {
    const Parameter& parameter = assignment.parameter;
    const Result result = carryOut(session, assignment, now);
    Json entry = entryOf(assignment, result, trace);
    if (result.code != 0) {
        const Refusal refusal =
            explainSet(session.applet(), parameter, assignment.value, result.code, &session.board());
        put(entry, "refused", toJson(refusal));
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << nameWithEntries(parameter) << "="
                    << assignment.text << " " << inWords(refusal) << '\n';
    }
    if (!session.options().json) {
        print(console, assignment, result);
        if (trace) {
            printTrace(console.out, console.outPainter, result.accesses);
        }
    }
    append(list, entry);
    return result.code == 0;
}

ExitStatus set(Session& session, Console& console, const SetArguments& arguments) {
    const auto pairs = splitWords(arguments.assignments);
    std::vector<Assignment> assignments;
    assignments.reserve(pairs.size());
    for (const auto& [name, text] : pairs) {
        assignments.push_back(parseAssignment(session.applet(), name, text));
    }
    planFaults(session.board(), arguments.faults);
    Json list = emptyList();
    Moment now = observe(session);
    bool accepted = true;
    // A value may rest on the one before it, so the first refusal ends the command.
    for (std::size_t i = 0; accepted && i < assignments.size(); ++i) {
        accepted = setOne(session, console, assignments[i], arguments.trace, now, list);
        if (!accepted && i + 1 < assignments.size()) {
            console.err << "  not tried: " << assignments.size() - i - 1 << " more behind it\n";
        }
    }
    if (session.options().json) {
        printJson(console, list);
    }
    if (!arguments.faults.empty()) {
        session.board().clearFaults();
    }
    if (accepted) {
        session.tellIfLost();
    }
    return accepted ? Done : Refused;
}

}  // namespace

void addSetVerb(Verbs& verbs) {
    auto arguments = std::make_shared<SetArguments>();
    Verb verb =
        verbs.add("set", "Write parameters, one after the other; the first refused value ends it",
                  "  quillon set FG_WIDTH=2048 FG_HEIGHT=512             numbers, decimal or with 0x\n"
                  "  quillon set FG_LINEPERIODE=20kHz FG_LINEEXPOSURE=40us   numbers with a unit\n"
                  "  quillon set FG_WIDTH=2048 --trace                   with every access to the design\n"
                  "  quillon set FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT   an enumerator by its name\n"
                  "  quillon set FG_DIGIO_OUTPUT -1                      a negative number is a value\n"
                  "  quillon set FG_LUT_VALUE_RED[0..3]=0,4,8,12         entries of a lookup table\n"
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
