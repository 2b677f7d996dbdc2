#include <algorithm>

#include "cli/BoardTime.h"
#include "cli/Suggestions.h"
#include "cli/Units.h"
#include "cli/Verb.h"
#include "quillon/PublicEvents.h"

namespace quillon::cli {

namespace {

struct WaitArguments {
    std::string event;
    std::string within = "1s";
};

std::string designNameOf(const std::string& event) {
    const auto found = std::ranges::find(PublicEvents, event, &PublicEvent::publicName);
    if (found != PublicEvents.end()) {
        return found->designName;
    }
    std::vector<std::string> names;
    for (const PublicEvent& known : PublicEvents) {
        names.emplace_back(known.publicName);
    }
    throw UsageError("there is no event \"" + event + "\"" + didYouMean(event, names));
}

ExitStatus wait(Session& session, Console& console, const WaitArguments& arguments) {
    constexpr double most = 60e6;  // what a board is asked for at once
    const std::string design = designNameOf(arguments.event);
    const double within = parseTime(arguments.within);
    if (within > most) {
        throw UsageError("--within " + arguments.within + ": at most a minute");
    }
    session.applet();
    const TimeWatch watch(session.board());
    const bool came = session.board().advanceToEvent(design, within);
    if (session.options().json) {
        Json json = object({{"event", arguments.event}, {"came", came}});
        put(json, watch);
        printJson(console, json);
    } else {
        print(console.out, watch);
    }
    if (!came) {
        console.err << console.errPainter.paint(Style::Bad, "quillon:") << " " << arguments.event
                    << " did not come within " << timeInWords(within) << " of the board's time\n";
    }
    session.tellIfLost();
    return came ? Done : Refused;
}

}  // namespace

void addWaitVerb(Verbs& verbs) {
    auto arguments = std::make_shared<WaitArguments>();
    Verb verb =
        verbs.add("wait", "Let time pass on the software board up to the tick of an event",
                  "  wait FG_END_OF_FRAME_CAM_PORT_0               in quillon shell or a script\n"
                  "  wait FG_TRIGGER_INPUT0_RISING --within 10ms   exit status 1 where it does not come",
                  [arguments](Session& session, Console& console) { return wait(session, console, *arguments); });
    verb.add("EVENT", &arguments->event, "Event by its public name; quillon events lists them").required();
    verb.add("--within", &arguments->within, "Time of the board to wait at most, up to a minute; by default 1s")
        .shownAs("TIME");
}

}  // namespace quillon::cli
