#include <cmath>

#include "cli/Answers.h"
#include "cli/Verb.h"
#include "cli/WorldWords.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

struct FaultArguments {
    FaultWords words;
    bool clear = false;
};

Json answer(const Faults& faults, bool cleared) {
    Json planned = emptyList();
    for (const Fault& fault : faults.planned) {
        append(planned, inWords(fault));
    }
    Json json = object({{"cleared", cleared}, {"planned", planned}});
    if (faults.bytesPerSecond) {
        const double rate = *faults.bytesPerSecond;
        put(json, "dmaRate", quantity(std::isfinite(rate) ? Json(rate) : Json(nullptr), "B/s"));
    }
    return json;
}

void tell(std::ostream& out, const Faults& faults, bool cleared) {
    if (cleared) {
        out << "what was planned is forgotten, and what lasted has ended\n";
    }
    for (const Fault& fault : faults.planned) {
        out << "planned: " << inWords(fault) << '\n';
    }
    if (faults.bytesPerSecond) {
        const double rate = *faults.bytesPerSecond;
        out << (std::isfinite(rate) ? "at most " + client::readable(rate) + " bytes" : "any number of bytes")
            << " reach the host in a second\n";
    }
}

ExitStatus plan(Session& session, Console& console, const FaultArguments& arguments) {
    const Faults faults = parseFaults(arguments.words);
    if (faults.planned.empty() && !faults.bytesPerSecond && !arguments.clear) {
        throw UsageError("a fault is missing, as fault line:100:drop; --help tells all");
    }
    session.applet();  // puts the design on the board
    if (arguments.clear) {
        session.board().clearFaults();
    }
    apply(session.board(), faults);
    if (session.options().json) {
        printJson(console, answer(faults, arguments.clear));
    } else {
        tell(console.out, faults, arguments.clear);
    }
    session.tellIfLost();
    return Done;
}

}  // namespace

void addFaultVerb(Verbs& verbs) {
    auto arguments = std::make_shared<FaultArguments>();
    arguments->words.name = "fault";
    Verb verb = verbs.add(
        "fault", "Plan what goes wrong with lines and frames, the camera and the link to the host",
        "  fault line:100:drop line:every:invert    in quillon shell or a script: the 100th line from now, and all\n"
        "  fault frame:3:lose frame:4:truncate=100  lost on its way; only its first 100 lines arrive\n"
        "  fault frame:3:stall=5ms                  the DMA stands still\n"
        "  fault camera:10ms-30ms link:50ms-        gone for a time of the board's from now on, and for good\n"
        "  fault --dma-rate 100MB/s                 a host that does not follow\n"
        "  fault --clear",
        [arguments](Session& session, Console& console) { return plan(session, console, *arguments); });
    verb.add(
        "FAULT", &arguments->words.faults,
        "line:N:drop, line:N:repeat, line:N:invert, frame:N:lose, frame:N:truncate=LINES, frame:N:stall=TIME, with "
        "\"every\" for all; camera:FROM-TO, link:FROM-TO, without a TO for good");
    addFaultOptions(verb, arguments->words);
    verb.add("--clear", &arguments->clear, "Forget what is planned, and end what lasts, first");
}

}  // namespace quillon::cli
