#include "cli/Answers.h"
#include "cli/Refusals.h"
#include "cli/Trace.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct GetArguments {
    std::vector<std::string> names;
    bool trace = false;
};

/// Reads one parameter, prints it or adds it to `list`, and says whether the applet answered.
bool getOne(Session& session, Console& console, const Parameter& parameter, bool trace, Json& list) {
    Value value;
    int code = 0;
    const auto accesses = traced(session.board(), [&] { code = readValue(session.applet(), parameter, value); });
    Json entry = object({{"name", parameter.name}, {"id", parameter.id}});
    putValue(entry, parameter, code == 0 ? value : Value());
    if (code != 0) {
        put(entry, "refused", toJson(explainGet(code)));
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " get of " << parameter.name << " "
                    << inWords(explainGet(code)) << '\n';
    }
    if (trace) {
        put(entry, "accesses", toJson(accesses));
    }
    append(list, entry);
    if (!session.options().json) {
        if (code == 0) {
            console.out << parameter.name << " = " << inWords(parameter, value) << '\n';
        }
        if (trace) {
            printTrace(console.out, console.outPainter, accesses);
        }
    }
    return code == 0;
}

ExitStatus get(Session& session, Console& console, const GetArguments& arguments) {
    std::vector<Parameter> parameters;
    for (const std::string& name : arguments.names) {
        parameters.push_back(findParameter(session.applet(), name));
    }
    Json list = emptyList();
    bool allAnswered = true;
    for (const Parameter& parameter : parameters) {
        allAnswered = getOne(session, console, parameter, arguments.trace, list) && allAnswered;
    }
    if (session.options().json) {
        printJson(console, list);
    }
    return allAnswered ? Done : Refused;
}

}  // namespace

void addGetVerb(Verbs& verbs) {
    auto arguments = std::make_shared<GetArguments>();
    Verb verb =
        verbs.add("get", "Read parameters",
                  "  quillon get FG_WIDTH FG_HEIGHT             by name\n"
                  "  quillon get 100 0x64                       by id, decimal or hexadecimal\n"
                  "  quillon get FG_LUT_VALUE_RED[0..7]         entries of a lookup table\n"
                  "  quillon get FG_FILLLEVEL --trace           with the design accesses behind it",
                  [arguments](Session& session, Console& console) { return get(session, console, *arguments); });
    verb.add("NAME", &arguments->names, "Names or ids of parameters").required();
    verb.add("--trace", &arguments->trace, "Print each access to the design, in order");
}

}  // namespace quillon::cli
