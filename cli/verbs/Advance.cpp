#include "cli/BoardTime.h"
#include "cli/Units.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

ExitStatus advanceTime(Session& session, Console& console, const std::string& time) {
    constexpr double most = 3600e6;
    const double microseconds = parseTime(time);
    if (microseconds > most) {
        throw UsageError("\"" + time + "\": at most an hour at once");
    }
    session.applet();  // puts the design on the board
    const TimeWatch watch(session.board());
    const bool whole = advance(session.board(), microseconds);
    if (session.options().json) {
        Json json = object({});
        put(json, watch);
        printJson(console, json);
    } else {
        print(console.out, watch);
    }
    session.tellIfLost();
    return whole ? Done : Refused;
}

}  // namespace

void addAdvanceVerb(Verbs& verbs) {
    auto time = std::make_shared<std::string>();
    Verb verb = verbs.add("advance", "Let time pass on the software board, and tell which events it brings",
                          "  advance 1ms                    in quillon shell or a script: the signals move\n"
                          "  advance 2s --json",
                          [time](Session& session, Console& console) { return advanceTime(session, console, *time); });
    verb.add("TIME", time.get(), "Time of the board with its unit: 20us, 1.5ms, 2s; up to an hour").required();
}

}  // namespace quillon::cli
