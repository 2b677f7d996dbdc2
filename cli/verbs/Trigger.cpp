#include <algorithm>
#include <cmath>

#include "cli/Answers.h"
#include "cli/Chart.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// What the trigger parameters hold.
class TriggerState {
public:
    explicit TriggerState(client::Applet& applet) : applet_(applet) {}

    std::string words(const std::string& name) {
        const Parameter parameter = findParameter(applet_, name);
        return inWords(parameter, read(parameter));
    }
    std::int64_t whole(const std::string& name) {
        const Json json = toJson(read(findParameter(applet_, name)));
        return json.get<std::int64_t>();
    }
    Json answer(const std::string& name) {
        const Parameter parameter = findParameter(applet_, name);
        Json json = object({{"name", name}});
        putValue(json, parameter, read(parameter));
        return json;
    }
    double real(const std::string& name) { return std::get<double>(read(findParameter(applet_, name))); }

private:
    Value read(const Parameter& parameter) {
        Value value;
        if (const int code = readValue(applet_, parameter, value); code != 0) {
            refuse("get of " + parameter.name + " " + inWords(explainGet(code)), explainGet(code));
        }
        return value;
    }

    client::Applet& applet_;
};

// Values of FG_LINETRIGGERMODE and FG_IMGTRIGGERMODE.
constexpr std::int64_t GrabberControlled = 1;
constexpr std::int64_t GrabberControlledGated = 6;
constexpr std::int64_t FreeRun = 0;
constexpr std::int64_t AsyncTriggerMultiframe = 8;

bool periodCounts(TriggerState& state) {
    const std::int64_t mode = state.whole("FG_LINETRIGGERMODE");
    return mode == GrabberControlled || mode == GrabberControlledGated;
}

std::string lineSentence(TriggerState& state) {
    const std::string exposure = state.words("FG_LINEEXPOSURE");
    if (periodCounts(state)) {
        return "A line every " + state.words("FG_LINEPERIODE") + " (" +
               client::readable(1e6 / state.real("FG_LINEPERIODE")) + " lines a second), exposed for " + exposure + ".";
    }
    const std::int64_t downscale = state.whole("FG_LINE_DOWNSCALE");
    const std::string pulses = downscale == 1 ? "each pulse" : "every " + std::to_string(downscale) + " pulses";
    return "A line on " + pulses + " at " + state.words("FG_LINETRIGGERINSRC") + ", exposed for " + exposure + ".";
}

std::string imageSentence(TriggerState& state) {
    const std::int64_t mode = state.whole("FG_IMGTRIGGERMODE");
    if (mode == FreeRun) {
        return "Images follow one another, each of " + std::to_string(state.whole("FG_HEIGHT")) + " lines.";
    }
    const std::int64_t lines = state.whole(mode == AsyncTriggerMultiframe ? "FG_IMGTRIGGER_ASYNC_HEIGHT" : "FG_HEIGHT");
    return "Images of " + std::to_string(lines) + " lines on " + state.words("FG_IMGTRIGGERINSRC") + ", delayed by " +
           state.words("FG_IMGTRIGGERGATEDELAY") + ".";
}

std::string encoderSentence(TriggerState& state) {
    return state.whole("FG_SHAFTENCODERON") == 0
               ? "The shaft encoder is off."
               : "The shaft encoder is on with " + state.words("FG_SHAFTENCODERMODE") + ", sources " +
                     state.words("FG_LINETRIGGERINSRC") + " and " + state.words("FG_SHAFTENCODERINSRC") + ".";
}

std::string flashSentence(TriggerState& state) {
    return state.whole("FG_FLASHON") == 0
               ? "The flash is off."
               : "The flash is on, " + state.words("FG_STROBEPULSEDELAY") + " after the image trigger.";
}

/// Values that contradict one another, though each is accepted by itself.
std::vector<std::string> warnings(TriggerState& state) {
    std::vector<std::string> list;
    const double period = state.real("FG_LINEPERIODE");
    if (periodCounts(state) && state.real("FG_LINEEXPOSURE") > period) {
        list.push_back("the exposure of " + state.words("FG_LINEEXPOSURE") + " is longer than the period of " +
                       state.words("FG_LINEPERIODE"));
    }
    if (state.real("FG_LINETRIGGERDELAY") > period) {
        list.push_back("the delay of " + state.words("FG_LINETRIGGERDELAY") + " is longer than the period of " +
                       state.words("FG_LINEPERIODE"));
    }
    if (state.whole("FG_EXSYNCON") == 0) {
        list.emplace_back("FG_EXSYNCON is off: the camera gets no line trigger");
    }
    if (state.whole("FG_SHAFTENCODERON") != 0) {
        if (periodCounts(state)) {
            list.push_back("the shaft encoder is on, but " + state.words("FG_LINETRIGGERMODE") +
                           " does not listen to it");
        }
        if (state.whole("FG_LINETRIGGERINSRC") == state.whole("FG_SHAFTENCODERINSRC")) {
            list.push_back("both sources of the shaft encoder are " + state.words("FG_LINETRIGGERINSRC"));
        }
    }
    if (state.whole("FG_LINE_DOWNSCALEINIT") > state.whole("FG_LINE_DOWNSCALE")) {
        list.push_back("the phase of " + state.words("FG_LINE_DOWNSCALEINIT") + " is larger than the downscale of " +
                       state.words("FG_LINE_DOWNSCALE"));
    }
    return list;
}

/// A pulse train on a level of its own: low at `level`, high above it, from `start`, `length` long, every `period`.
Curve pulses(const std::string& name, char mark, const Colour& colour, double level, double start, double length,
             double period, double end) {
    constexpr double high = 0.6;
    Curve curve{name, mark, colour, {{0.0, level}}};
    const auto add = [&](double time, double value) {
        curve.points.emplace_back(time, curve.points.back().second);
        curve.points.emplace_back(time, value);
    };
    double rise = start;
    while (rise < end) {
        add(rise, level + high);
        if (rise + length < end && length < period) {
            add(rise + length, level);
        }
        rise += period;
    }
    curve.points.emplace_back(end, curve.points.back().second);
    return curve;
}

/// Two and a half periods of the camera's signals on one time axis.
Chart timing(TriggerState& state) {
    const double period = state.real("FG_LINEPERIODE");
    const double exposure = state.real("FG_LINEEXPOSURE");
    const double delay = state.real("FG_LINETRIGGERDELAY");
    const double end = 2.5 * period;
    Chart chart{"Line trigger", {"\xC2\xB5s", 0, end}, {"", 0, 3}, {}, false};
    chart.curves = {pulses("ExSync2", '2', {0.8, 0.4, 0.0}, 0, delay, exposure, period, end),
                    pulses("ExSync", 'E', {0.1, 0.2, 0.8}, 1, 0, exposure, period, end),
                    pulses("Period", 'P', {0.4, 0.4, 0.4}, 2, 0, period / 2, period, end)};
    return chart;
}

/// One line of characters a signal: '#' while it is active, '_' while it is not.
std::vector<std::string> timingText(const Chart& chart) {
    constexpr std::size_t width = 64;
    std::vector<std::string> lines;
    for (auto curve = chart.curves.rbegin(); curve != chart.curves.rend(); ++curve) {
        const double low = std::floor(curve->points.front().second);
        std::string line = curve->name + std::string(9 - curve->name.size(), ' ');
        for (std::size_t column = 0; column < width; ++column) {
            const double time = chart.x.max * (static_cast<double>(column) + 0.5) / width;
            const auto behind = std::upper_bound(curve->points.begin(), curve->points.end(), time,
                                                 [](double wanted, const auto& point) { return wanted < point.first; });
            line += std::prev(behind)->second > low ? '#' : '_';
        }
        lines.push_back(line);
    }
    lines.push_back(std::string(9, ' ') + "0" +
                    std::string(width - 1 - displayWidth(client::readable(chart.x.max)) - 3, ' ') +
                    client::readable(chart.x.max) + " " + chart.x.label);
    return lines;
}

ExitStatus trigger(Session& session, Console& console, const std::string& picture) {
    TriggerState state(session.applet());
    const std::vector<std::string> sentences{
        "Line trigger mode " + state.words("FG_LINETRIGGERMODE") + ". " + lineSentence(state), encoderSentence(state),
        "Image trigger mode " + state.words("FG_IMGTRIGGERMODE") + ". " + imageSentence(state), flashSentence(state)};
    const std::vector<std::string> contradictions = warnings(state);
    const Chart chart = timing(state);
    if (!picture.empty()) {
        writePicture(chart, picture);
    }
    if (session.options().json) {
        printJson(console, object({{"sentences", sentences},
                                   {"warnings", contradictions},
                                   {"period", state.answer("FG_LINEPERIODE")},
                                   {"exposure", state.answer("FG_LINEEXPOSURE")},
                                   {"delay", state.answer("FG_LINETRIGGERDELAY")}}));
        return Done;
    }
    for (const std::string& sentence : sentences) {
        console.out << sentence << '\n';
    }
    if (periodCounts(state)) {
        console.out << '\n';
        for (const std::string& line : timingText(chart)) {
            console.out << line << '\n';
        }
    }
    for (const std::string& warning : contradictions) {
        console.out << console.outPainter.paint(Style::Bad, "warning:") << " " << warning << '\n';
    }
    return Done;
}

}  // namespace

void addTriggerVerb(Verbs& verbs) {
    auto picture = std::make_shared<std::string>();
    Verb verb =
        verbs.add("trigger", "Tell in words what the line and image trigger do, and draw the timing",
                  "  quillon trigger\n"
                  "  quillon trigger --mcf conveyor.mcf\n"
                  "  quillon trigger -o timing.png",
                  [picture](Session& session, Console& console) { return trigger(session, console, *picture); });
    verb.add("-o,--output", picture.get(), "Draw a picture (.png)").shownAs("FILE");
}

}  // namespace quillon::cli
