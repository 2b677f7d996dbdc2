#include "cli/Effects.h"
#include "cli/Trace.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct LoadArguments {
    std::filesystem::path file;
    bool trace = false;
};

ExitStatus load(Session& session, Console& console, const LoadArguments& arguments) {
    session.tellFindings(arguments.file);
    const Moment before = observe(session);
    const auto accesses = traced(session.board(), [&] { loadConfiguration(session.applet(), arguments.file); });
    session.configurationLoaded(arguments.file);
    const auto differing = changedValues(before, observe(session));
    if (session.options().json) {
        Json json = object({{"loaded", arguments.file.string()}, {"changed", toJson(differing)}});
        if (arguments.trace) {
            put(json, "accesses", toJson(accesses));
        }
        printJson(console, json);
        session.tellIfLost();
        return Done;
    }
    console.out << "loaded " << arguments.file.string() << ", " << differing.size() << " values changed\n";
    printRows(console.out, rowsOf(differing), "  ");
    if (arguments.trace) {
        printTrace(console.out, console.outPainter, accesses);
    }
    session.tellIfLost();
    return Done;
}

}  // namespace

void addLoadVerb(Verbs& verbs) {
    auto arguments = std::make_shared<LoadArguments>();
    Verb verb =
        verbs.add("load", "Load a configuration and tell what it changes",
                  "  quillon load conveyor.mcf\n"
                  "  quillon load conveyor.mcf --trace               with every access to the design\n"
                  "  quillon load conveyor.mcf --save merged.mcf     and save what came of it",
                  [arguments](Session& session, Console& console) { return load(session, console, *arguments); });
    verb.add("FILE", &arguments->file, "File to load (.mcf)").required();
    verb.add("--trace", &arguments->trace, "Print each access to the design, in order");
}

}  // namespace quillon::cli
