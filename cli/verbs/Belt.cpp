#include "cli/Answers.h"
#include "cli/Units.h"
#include "cli/Verb.h"
#include "cli/WorldWords.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

struct BeltArguments {
    BeltWords words;
    bool off = false;
};

void tell(Session& session, Console& console) {
    const double now = session.board().signalTime();
    const double position = session.board().beltPosition();
    const bool runs = session.belt().has_value();
    const double speed = runs ? session.belt()->speedAt(now) : 0;
    if (session.options().json) {
        printJson(console, object({{"belt", runs},
                                   {"position", quantity(position, "mm")},
                                   {"speed", quantity(speed, "mm/s")},
                                   {"time", inMicroseconds(now)}}));
    } else if (runs) {
        console.out << "the belt is at " << client::readable(position) << " mm and runs at " << client::readable(speed)
                    << " mm/s, at " << timeInWords(now) << " of the board's time\n";
    } else {
        console.out << "there is no belt: the scene moves by a pixel with every line\n";
    }
}

ExitStatus belt(Session& session, Console& console, const BeltArguments& arguments) {
    const Belt wanted = parseBelt(arguments.words);
    if (arguments.off && !wanted.moves.empty()) {
        throw UsageError("--off takes the belt away, and " + arguments.words.profile + " starts one");
    }
    const client::Applet& applet = session.applet();  // puts the design on the board
    if (arguments.off) {
        takeAway(session.board(), session.belt());
    }
    apply(session.board(), applet, wanted, session.belt());
    tell(session, console);
    if (!wanted.moves.empty()) {
        tellHints(console, hintsFor(applet, wanted), "set ");
        session.tellIfLost();
    }
    return Done;
}

}  // namespace

void addBeltVerb(Verbs& verbs) {
    auto arguments = std::make_shared<BeltArguments>();
    arguments->words.name = "belt";
    Verb verb = verbs.add(
        "belt", "Start a belt that moves the scene, with a shaft encoder and light barriers; or tell where it is",
        "  belt 500mm/s                                   in quillon shell or a script: at one speed\n"
        "  belt 500mm/s:20ms,0:5ms,-200mm/s:10ms,500mm/s  it stops, runs back, and on\n"
        "  belt 30m/min --encoder 10/mm --barrier 20mm:100mm:300mm\n"
        "  belt 500mm/s --encoder 10/mm@0,1 --barrier 20mm:100mm@front2\n"
        "  belt                                           where it is\n"
        "  belt --off                                     takes it away\n"
        "\n"
        "It begins at 0 mm, and moves with the board's time: while frames are grabbed, or with advance and wait.",
        [arguments](Session& session, Console& console) { return belt(session, console, *arguments); });
    verb.add(
        "PROFILE", &arguments->words.profile,
        "Speeds (mm/s, m/s, m/min), each with its time, separated by commas; the last may go on for ever. A negative "
        "one runs back");
    addBeltOptions(verb, arguments->words);
    verb.add("--off", &arguments->off, "Take the belt away");
}

}  // namespace quillon::cli
