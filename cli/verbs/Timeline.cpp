#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <optional>

#include "cli/Answers.h"
#include "cli/Arguments.h"
#include "cli/Inputs.h"
#include "cli/Provenance.h"
#include "cli/Suggestions.h"
#include "cli/Units.h"
#include "cli/Verb.h"
#include "cli/Waves.h"

namespace quillon::cli {

namespace {

using client::SignalChange;
using Tick = std::int64_t;

constexpr double TicksPerMicrosecond = 125;
constexpr std::size_t MostChanges = 250000;
constexpr double Longest = 60e6;     // microseconds
constexpr unsigned FirstInput = 21;  // among the selects of the design
constexpr unsigned OutputCount = 11;

struct TimelineArguments {
    std::string time;
    std::string picture;
    std::vector<std::string> signals;
    std::vector<std::string> pulses;
};

/// A row of the timeline: what it shows, and what was recorded of it.
struct Row {
    std::string name;
    SignalChange::Kind kind;
    unsigned number;
    bool high = false;        ///< at the start
    std::vector<Tick> ticks;  ///< of its changes, from the start on
    bool isEvent() const { return kind == SignalChange::Kind::Event; }
};

std::string numbered(const char* name, unsigned number) {
    return name + std::to_string(number);
}

std::vector<Row> rowsOf(client::Applet& applet) {
    std::vector<Row> rows;
    for (unsigned input = 0; input < InputCount; ++input) {
        rows.push_back({inputName(input), SignalChange::Kind::Signal, FirstInput + input, false, {}});
    }
    const char* const signals[] = {"ExSync", "ExSync2", "Flash", "LVAL", "FVAL"};
    for (unsigned select = 1; const char* name : signals) {
        rows.push_back({name, SignalChange::Kind::Signal, select++, false, {}});
    }
    constexpr unsigned backOutputs = 9;  // with the camera trigger, which is the first
    for (unsigned output = 0; output < OutputCount; ++output) {
        rows.push_back({output == 0            ? "Camera trigger"
                        : output < backOutputs ? numbered("GPO ", output - 1)
                                               : numbered("Front GPO ", output - backOutputs),
                        SignalChange::Kind::Output,
                        output,
                        false,
                        {}});
    }
    for (const auto& [mask, name] : applet.events()) {
        unsigned bit = 0;
        while (mask >> bit > 1) {
            ++bit;
        }
        rows.push_back({name, SignalChange::Kind::Event, bit, false, {}});
    }
    return rows;
}

/// A name as it is compared: "GPI 0", "gpi0" and "GPI_0" are one.
std::string plain(std::string_view name) {
    std::string text;
    for (const char character : name) {
        if (character != ' ' && character != '_') {
            text += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        }
    }
    return text;
}

/// Whether `wanted` names the row: by its name, by the kind of connector ("GPO"), or as one of "events".
bool isNamed(const Row& row, const std::string& wanted) {
    const std::string name = plain(row.name);
    const std::string word = plain(wanted);
    if (row.isEvent()) {
        return name == word || word == "events";
    }
    const bool isConnector = word.ends_with("gpi") || word.ends_with("gpo");
    return name == word || (isConnector && name.starts_with(word));
}

void requireNamed(const std::vector<Row>& rows, const std::vector<std::string>& signals) {
    for (const std::string& wanted : signals) {
        if (std::ranges::none_of(rows, [&](const Row& row) { return isNamed(row, wanted); })) {
            std::vector<std::string> names{"events"};
            for (const Row& row : rows) {
                names.push_back(row.name);
            }
            throw UsageError("there is no signal \"" + wanted + "\"" + didYouMean(wanted, names));
        }
    }
}

/// Pulses that are put on an input: high for half of their period, of an odd one a tick less than low.
struct Pulses {
    unsigned input;
    Tick period;
    Tick next = 0;
    bool high = false;
};

Pulses parsePulses(const std::string& text, Tick now) {
    const auto assignment = splitAssignment(text);
    if (!assignment) {
        throw UsageError("\"" + text + "\": pulses are an input and their period, as \"GPI 0=50us\"");
    }
    const unsigned input = parseInput(assignment->first);
    const double ticks = std::round(parseQuantity(assignment->second, "\u00B5s") * TicksPerMicrosecond);
    if (!(ticks >= 2 && ticks <= Longest * TicksPerMicrosecond)) {
        throw UsageError("\"" + text +
                         "\": the period is at least 0.016 \u00B5s, two ticks of the board, and at most a minute");
    }
    const auto period = static_cast<Tick>(ticks);
    return {input, period, now + period - period / 2, false};
}

Tick tickOf(double microseconds) {
    return static_cast<Tick>(std::llround(microseconds * TicksPerMicrosecond));
}

/// Moves the board's clock on by whole ticks, whatever a number of microseconds is rounded to.
void advance(client::SoftBoard& board, Tick ticks) {
    constexpr double beyond = 1e-7;  // of a tick
    board.advanceSignals((static_cast<double>(ticks) + beyond) / TicksPerMicrosecond);
}

/// Lets the time pass, with the pulses in it. It stops when the recording is full.
void pass(client::SoftBoard& board, Tick begin, Tick end, std::vector<Pulses>& pulses) {
    constexpr Tick most = 1250000;  // 10 ms, then it looks
    for (Tick now = begin; now < end && board.lostChanges() == 0;) {
        Tick step = std::min(end, now + most);
        for (const Pulses& one : pulses) {
            step = std::min(step, one.next);
        }
        advance(board, step - now);
        now = step;
        for (Pulses& one : pulses) {
            if (one.next == now) {
                one.high = !one.high;
                one.next += one.high ? one.period / 2 : one.period - one.period / 2;
                board.setInput(one.input, one.high);
            }
        }
    }
}

/// Fills the rows with what was recorded from the tick `begin` on.
void fill(std::vector<Row>& rows, const client::SignalRecording& recording, client::SoftBoard& board, Tick begin) {
    for (Row& row : rows) {
        if (!row.isEvent()) {
            row.high = row.kind == SignalChange::Kind::Output ? board.output(row.number) : board.signal(row.number);
        }
    }
    std::map<std::pair<SignalChange::Kind, unsigned>, Row*> places;
    for (Row& row : rows) {
        places[{row.kind, row.number}] = &row;
    }
    for (const SignalChange& change : recording.changes) {
        const auto place = places.find({change.kind, change.number});
        if (place == places.end()) {
            continue;
        }
        Row& row = *place->second;
        if (row.ticks.empty() && !row.isEvent()) {
            row.high = !change.high;
        }
        row.ticks.push_back(static_cast<Tick>(change.tick) - begin);
    }
}

double microsecondsOf(Tick ticks) {
    return static_cast<double>(ticks) / TicksPerMicrosecond;
}

/// What a row does, as numbers.
struct Summary {
    std::size_t count = 0;         ///< of rising edges, or of events
    std::optional<Tick> shortest;  ///< from one to the next
    std::optional<Tick> longest;
    double rate = 0;  ///< in a second
    std::optional<Tick> shortestHigh;
    std::optional<Tick> longestHigh;
};

void widen(std::optional<Tick>& shortest, std::optional<Tick>& longest, Tick ticks) {
    shortest = std::min(shortest.value_or(ticks), ticks);
    longest = std::max(longest.value_or(ticks), ticks);
}

Summary summaryOf(const Row& row) {
    Summary summary;
    std::optional<Tick> first;
    std::optional<Tick> last;
    bool high = row.high;
    for (const Tick tick : row.ticks) {
        high = row.isEvent() || !high;
        if (!high) {
            if (last) {
                widen(summary.shortestHigh, summary.longestHigh, tick - *last);
            }
            continue;
        }
        if (last) {
            widen(summary.shortest, summary.longest, tick - *last);
        }
        first = first.value_or(tick);
        last = tick;
        ++summary.count;
    }
    if (summary.count > 1 && *last > *first) {
        summary.rate = static_cast<double>(summary.count - 1) * 1e6 / microsecondsOf(*last - *first);
    }
    return summary;
}

std::string span(Tick shortest, Tick longest) {
    return shortest == longest ? timeInWords(microsecondsOf(shortest))
                               : timeInWords(microsecondsOf(shortest)) + " to " + timeInWords(microsecondsOf(longest));
}

std::vector<std::string> wordsOf(const Row& row) {
    const Summary summary = summaryOf(row);
    const std::string thing = row.isEvent() ? " event" : " rising edge";
    return {row.name, std::to_string(summary.count) + thing + (summary.count == 1 ? "" : "s"),
            summary.shortest ? "every " + span(*summary.shortest, *summary.longest) : "",
            summary.rate > 0 ? rateInWords(summary.rate) + " Hz" : "",
            summary.shortestHigh ? "high for " + span(*summary.shortestHigh, *summary.longestHigh) : ""};
}

bool isShown(const Row& row, const std::vector<std::string>& signals) {
    return signals.empty() ? !row.ticks.empty()
                           : std::ranges::any_of(signals, [&](const auto& name) { return isNamed(row, name); });
}

/// Names of the rows that are so, behind `words`; nothing if there are none.
template <typename Condition>
void addNames(std::vector<std::string>& lines, const std::string& words, const std::vector<Row>& rows, Condition isSo) {
    std::string names;
    for (const Row& row : rows) {
        if (isSo(row)) {
            names += (names.empty() ? "" : ", ") + row.name;
        }
    }
    if (!names.empty()) {
        lines.push_back(words + names);
    }
}

/// What has no row, and why.
std::vector<std::string> restOf(const std::vector<Row>& rows, const std::vector<std::string>& signals) {
    std::vector<std::string> lines;
    if (std::ranges::all_of(rows, [](const Row& row) { return row.ticks.empty(); })) {
        lines.emplace_back("Nothing moves.");
    }
    const auto stands = [&](const Row& row, bool high) {
        return row.ticks.empty() && !row.isEvent() && row.high == high && !isShown(row, signals);
    };
    addNames(lines, "Always low: ", rows, [&](const Row& row) { return stands(row, false); });
    addNames(lines, "Always high: ", rows, [&](const Row& row) { return stands(row, true); });
    addNames(lines, "Not shown, but moving: ", rows,
             [&](const Row& row) { return !row.ticks.empty() && !isShown(row, signals); });
    return lines;
}

Waves wavesOf(const std::vector<Row>& rows, const std::vector<std::string>& signals, double microseconds) {
    const TimeUnit unit = timeUnitFor(microseconds);
    Waves waves{"", {unit.name, 0, microseconds / unit.microseconds}, {}, {}};
    for (const Row& row : rows) {
        if (!isShown(row, signals)) {
            continue;
        }
        Wave wave{row.name, row.high, {}, row.isEvent(), ""};
        for (const Tick tick : row.ticks) {
            wave.changes.push_back(microsecondsOf(tick) / unit.microseconds);
        }
        waves.rows.push_back(std::move(wave));
    }
    return waves;
}

/// Members "signals" and "events": of all rows, or of those that were asked for.
void addRows(Json& json, const std::vector<Row>& rows, const std::vector<std::string>& wanted) {
    Json signals = emptyList();
    Json events = emptyList();
    std::vector<std::pair<Tick, const Row*>> moments;
    for (const Row& row : rows) {
        if (!wanted.empty() && !isShown(row, wanted)) {
            continue;
        }
        if (row.isEvent()) {
            for (const Tick tick : row.ticks) {
                moments.emplace_back(tick, &row);
            }
            continue;
        }
        Json edges = emptyList();
        bool high = row.high;
        for (const Tick tick : row.ticks) {
            high = !high;
            Json edge = emptyList();
            append(edge, microsecondsOf(tick));
            append(edge, high ? 1 : 0);
            append(edges, std::move(edge));
        }
        append(signals, object({{"name", row.name}, {"level", row.high ? 1 : 0}, {"edges", std::move(edges)}}));
    }
    std::ranges::stable_sort(moments, {}, [](const auto& moment) { return moment.first; });
    for (const auto& [tick, row] : moments) {
        Json event = emptyList();
        append(event, microsecondsOf(tick));
        append(event, row->name);
        append(events, std::move(event));
    }
    put(json, "signals", std::move(signals));
    put(json, "events", std::move(events));
}

void print(Console& console, const Waves& waves, const std::vector<Row>& rows) {
    constexpr std::size_t usualWidth = 80;
    const std::size_t width = lineWidth();
    console.out << waves.title << '\n';
    for (const std::string& line : asText(waves, std::min<std::size_t>(width, width > 1000 ? usualWidth : width))) {
        console.out << line << '\n';
    }
    console.out << foldLines("# high, _ low, | an event, % more changes than a character can show", width) << "\n\n";
    Rows summaries;
    for (const Wave& wave : waves.rows) {
        summaries.push_back(wordsOf(*std::ranges::find(rows, wave.name, &Row::name)));
    }
    printRows(console.out, summaries);
    console.out << '\n';
    for (const std::string& caption : waves.captions) {
        console.out << foldLines(caption, width) << '\n';
    }
}

ExitStatus timeline(Session& session, Console& console, const TimelineArguments& arguments) {
    const double microseconds = parseTime(arguments.time);
    const Tick length = tickOf(microseconds);
    if (length < 1 || microseconds > Longest) {
        throw UsageError("\"" + arguments.time +
                         "\": a timeline is at least 0.008 \u00B5s long, a tick of the board, and at most 60 s");
    }
    std::vector<Row> rows = rowsOf(session.applet());
    requireNamed(rows, arguments.signals);
    client::SoftBoard& board = session.board();
    const Tick begin = tickOf(board.signalTime());
    std::vector<Pulses> pulses;
    for (const std::string& text : arguments.pulses) {
        pulses.push_back(parsePulses(text, begin));
        pulses.back().high = board.signal(FirstInput + pulses.back().input);
    }
    board.recordSignals(MostChanges);
    pass(board, begin, begin + length, pulses);
    const client::SignalRecording recording = board.recordedSignals();
    fill(rows, recording, board, begin);
    board.recordSignals(0);
    if (recording.lost > 0) {
        const Tick full = static_cast<Tick>(recording.changes.back().tick) - begin;
        throw RefusedError(timeInWords(microseconds) + " has more than the " + std::to_string(MostChanges) +
                           " changes that are recorded; " + timeInWords(microsecondsOf(full)) + " fit" +
                           (session.lasts() ? ". The board's time has passed all the same" : ""));
    }
    Waves waves = wavesOf(rows, arguments.signals, microsecondsOf(length));
    waves.title = "Signals of " + timeInWords(microsecondsOf(length)) + ", from " + timeInWords(microsecondsOf(begin)) +
                  " of the board's clock on";
    waves.captions = restOf(rows, arguments.signals);
    const std::vector<std::string> origin =
        provenance(session, {"FG_LINETRIGGERMODE", "FG_EXSYNCON", "FG_LINEPERIODE", "FG_LINEEXPOSURE",
                             "FG_IMGTRIGGERMODE", "FG_CAMERASIMULATOR_ENABLE"});
    waves.captions.insert(waves.captions.end(), origin.begin(), origin.end());
    if (!arguments.picture.empty()) {
        Waves picture = waves;
        for (std::size_t i = waves.rows.size(); i-- > 0;) {
            std::string line;
            for (const std::string& word : wordsOf(*std::ranges::find(rows, waves.rows[i].name, &Row::name))) {
                line +=
                    line.empty() || word.empty() ? word : (line.find(':') == std::string::npos ? ": " : ", ") + word;
            }
            picture.captions.insert(picture.captions.begin(), line);
        }
        writePicture(chartOf(picture), arguments.picture);
    }
    if (session.options().json) {
        console.jsonPerLine = true;  // it may be long
        Json json = object({{"configuration", origin.front()},
                            {"start", inMicroseconds(microsecondsOf(begin))},
                            {"length", inMicroseconds(microsecondsOf(length))}});
        addRows(json, rows, arguments.signals);
        printJson(console, json);
        return Done;
    }
    print(console, waves, rows);
    return Done;
}

}  // namespace

void addTimelineVerb(Verbs& verbs) {
    auto arguments = std::make_shared<TimelineArguments>();
    Verb verb = verbs.add(
        "timeline", "Let time pass on the board and draw what its signals do",
        "  quillon timeline 1ms\n"
        "  quillon timeline 5ms -o signals.png --mcf conveyor.mcf\n"
        "  quillon timeline 500us --signals ExSync LVAL GPO     these rows alone, moving or not\n"
        "  quillon timeline 1ms --pulses \"GPI 0=20kHz\"          with pulses on an input\n"
        "  quillon timeline 1ms --json                          every edge with its time\n"
        "\n"
        "Edges are recorded to the tick of 8 ns. Signals that do not move have no row, and are told below the\n"
        "drawing. --json has for each signal its level at the start and its edges as [time, level], and the\n"
        "events as [time, name]; times are microseconds since the start.",
        [arguments](Session& session, Console& console) { return timeline(session, console, *arguments); });
    verb.add("TIME", &arguments->time, "How much time passes, with its unit: 1ms").required();
    verb.add("-o,--output", &arguments->picture, "Draw a picture (.png)").shownAs("FILE");
    verb.add("--signals", &arguments->signals, "Show these: names of rows, GPI, GPO, events").shownAs("NAME");
    verb.add("--pulses", &arguments->pulses, "Put pulses on an input, as \"GPI 0=50us\"; can be given several times")
        .shownAs("INPUT=PERIOD")
        .oneWordEach();
}

}  // namespace quillon::cli
