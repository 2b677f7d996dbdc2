#include <algorithm>
#include <iomanip>

#include "cli/Answers.h"
#include "cli/BoardTime.h"
#include "cli/Looks.h"
#include "cli/Refusals.h"
#include "cli/Units.h"
#include "cli/Verb.h"

namespace quillon::cli {

namespace {

struct WatchArguments {
    std::vector<std::string> names;
    std::string every = "1s";
    unsigned times = 0;  ///< 0 is without end
};

/// One parameter that is watched.
struct Watched {
    Parameter parameter;
    std::string name;  ///< with the entries of a table that are meant
    int code = 0;      ///< of the last read
    Value value;       ///< none after a read that was refused
    std::string text;  ///< the value in words, or the code
    bool changed = false;
    std::size_t width = 0;
};

constexpr int timeWidth = 14;

std::vector<Watched> findAll(const client::Applet& applet, const std::vector<std::string>& names) {
    std::vector<Watched> watched;
    for (const std::string& name : names) {
        Watched one{.parameter = findParameter(applet, name), .name = "", .value = {}, .text = ""};
        one.name = one.parameter.name + (one.parameter.hasRun ? name.substr(name.find('[')) : "");
        one.width = one.name.size();
        watched.push_back(std::move(one));
    }
    return watched;
}

/// Reads a value anew; answers whether the applet gave one.
bool look(client::Applet& applet, Watched& one, bool first) {
    Value value;
    const int code = readValue(applet, one.parameter, value);
    if (code != 0) {
        value = Value();
    }
    one.changed = !first && (code != one.code || value != one.value);
    one.code = code;
    one.value = std::move(value);
    one.text = code == 0 ? inWords(one.parameter, one.value) : client::describeCode(code);
    return code == 0;
}

std::string inSeconds(double microseconds) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(6) << std::setw(timeWidth - 2) << microseconds / 1e6 << " s";
    return text.str();
}

/// A cell, as wide as what stood in its column so far.
std::string cell(const std::string& text, std::size_t& width) {
    width = std::max(width, displayWidth(text));
    return text + std::string(width - displayWidth(text), ' ');
}

void printHead(Console& console, std::vector<Watched>& watched) {
    std::string line = std::string(timeWidth - 4, ' ') + "time";
    for (Watched& one : watched) {
        line += "   " + cell(one.name, one.width);
    }
    console.out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
}

void print(Console& console, double time, std::vector<Watched>& watched) {
    std::string line = inSeconds(time);
    for (Watched& one : watched) {
        const std::string text = (one.changed ? "*" : " ") + one.text;
        std::size_t width = one.width + 1;
        const std::string padded = cell(text, width);
        one.width = width - 1;
        line += "  " + console.outPainter.paint(one.changed ? Style::Strong : Style::Plain, text) +
                padded.substr(text.size());
    }
    console.out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
}

Json sampleOf(double time, const std::vector<Watched>& watched) {
    Json values = emptyList();
    for (const Watched& one : watched) {
        Json entry = object({{"name", one.name}, {"id", one.parameter.id}});
        putValue(entry, one.parameter, one.value);
        put(entry, "changed", one.changed);
        if (one.code != 0) {
            put(entry, "refused", toJson(explainGet(one.code)));
        }
        append(values, entry);
    }
    return object({{"time", inMicroseconds(time)}, {"values", values}});
}

/// The microseconds from one look to the next.
double intervalOf(const std::string& text) {
    constexpr double longest = 3600e6;
    const double interval = parseTime(text);
    if (interval <= 0 || interval > longest) {
        throw UsageError("--every: \"" + text + "\" is not more than 0 and at most 3600 s");
    }
    return interval;
}

ExitStatus watch(Session& session, Console& console, const WatchArguments& arguments) {
    const double interval = intervalOf(arguments.every);
    console.jsonPerLine = true;
    client::Applet& applet = session.applet();
    client::SoftBoard& board = session.board();
    std::vector<Watched> watched = findAll(applet, arguments.names);
    if (!session.options().json) {
        printHead(console, watched);
    }
    bool complete = true;
    bool first = true;
    double time = board.signalTime();
    Looks looks(console.out, interval / 1e6, arguments.times);
    do {
        // Where nothing else has moved the board's clock, its time has passed as that of the day has.
        if (!first && !(board.signalTime() > time)) {
            advance(board, interval);
        }
        time = board.signalTime();
        for (Watched& one : watched) {
            complete = look(applet, one, first) && complete;
        }
        if (session.options().json) {
            printJson(console, sampleOf(time, watched));
        } else {
            print(console, time, watched);
        }
        first = false;
    } while (looks.next());
    return complete ? Done : Refused;
}

}  // namespace

void addWatchVerb(Verbs& verbs) {
    auto arguments = std::make_shared<WatchArguments>();
    Verb verb = verbs.add(
        "watch", "Read parameters again and again, with the board's time, and mark what has changed",
        "  quillon watch FG_SYSTEMMONITOR_FPGA_TEMPERATURE FG_FILLLEVEL\n"
        "                                                  every second, until interrupted\n"
        "  quillon watch FG_SIGNAL_ANALYZER_0_PULSE_COUNT --every 10ms --times 5\n"
        "  quillon watch FG_DIGIO_INPUT --json             one document a line\n"
        "\n"
        "The board's time passes meanwhile as that of the day does. A value that is another than at the look before\n"
        "has a * in front. Ctrl-C ends it, with status 0.",
        [arguments](Session& session, Console& console) { return watch(session, console, *arguments); });
    verb.add("NAME", &arguments->names, "Names or ids of parameters").required();
    verb.add("--every", &arguments->every, "Time between looks, with its unit; 1s if it is not given").shownAs("TIME");
    verb.add("--times", &arguments->times, "Number of looks; without end if it is not given")
        .shownAs("N")
        .within(1, 1000000000);
}

}  // namespace quillon::cli
