#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "cli/Answers.h"
#include "cli/BoardTime.h"
#include "cli/Provenance.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"
#include "cli/Waves.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr double tick = 0.008;  // microseconds, of the design's clock

/// A time of which the design may have another value than the applet remembers: a load remembers one that another
/// parameter keeps from the design.
struct Timing {
    const char* parameter;
    const char* design;
};
constexpr Timing periodTiming{"FG_LINEPERIODE", "Device1_Process0_Trigger_Trigger_ExsyncPeriod"};
constexpr Timing exposureTiming{"FG_LINEEXPOSURE", "Device1_Process0_Trigger_Trigger_ExsyncExposure"};
constexpr Timing delayTiming{"FG_LINETRIGGERDELAY", "Device1_Process0_Trigger_Trigger_Exsync2Delay"};

/// What the trigger parameters hold.
class TriggerState {
public:
    TriggerState(client::Applet& applet, client::SoftBoard& board) : applet_(applet), board_(board) {}

    std::string words(const std::string& name) {
        const Parameter parameter = findParameter(applet_, name);
        return inWords(parameter, read(parameter));
    }
    std::int64_t whole(const std::string& name) {
        const Json json = toJson(read(findParameter(applet_, name)));
        return json.get<std::int64_t>();
    }
    double real(const std::string& name) { return std::get<double>(read(findParameter(applet_, name))); }
    /// Microseconds that the design runs with.
    double timing(const Timing& timing) { return board_.real(timing.design); }
    bool isOn(const std::string& name) { return whole(name) == FG_ON; }
    bool isLow(const std::string& name) { return whole(name) == FG_LOW; }

private:
    Value read(const Parameter& parameter) {
        Value value;
        if (const int code = readValue(applet_, parameter, value); code != 0) {
            refuse("get of " + parameter.name + " " + inWords(explainGet(code)), explainGet(code));
        }
        return value;
    }

    client::Applet& applet_;
    client::SoftBoard& board_;
};

/// The generator of the lines that stand in for a camera's, as the design runs it. Times are microseconds.
struct Simulator {
    bool isUsed = false;
    std::int64_t trigger = SIMULATION_FREE_RUN;
    double period = 0;   ///< of lines that follow one another
    double sending = 0;  ///< of a line
    std::int64_t sentLines = 0;
    std::int64_t frameLines = 0;  ///< with those of the gap
    bool sends = false;

    bool runsFreely() const { return isUsed && sends && trigger == SIMULATION_FREE_RUN; }
};

Simulator simulatorOf(client::SoftBoard& board, TriggerState& state) {
    const auto design = [&](const char* name) {
        return std::max<std::int64_t>(board.integer(std::string("Device1_Process0_CameraSimulator_") + name), 0);
    };
    Simulator simulator;
    simulator.isUsed = state.whole("FG_CAMERASIMULATOR_ENABLE") == FG_CAMERASIMULATOR;
    simulator.trigger = state.whole("FG_CAMERASIMULATOR_TRIGGER_MODE");
    const bool byLine = design("ControlPixelClock_Mode") == 1;
    const auto blocks = static_cast<double>(design("Size_ImageWidth"));
    const double sent = std::min(static_cast<double>(design("LineGap_Number")), blocks);
    const auto sequence =
        static_cast<double>(std::max<std::int64_t>(design("PixelFrequency_SequenceLength_ImageWidth"), 1));
    const double active = std::min(static_cast<double>(design("PixelFrequency_ActivePixel_Number")), sequence);
    simulator.frameLines = design("Size_ImageHeight");
    simulator.sentLines = std::min(design("FrameGap_Number"), simulator.frameLines);
    simulator.sends = sent > 0 && simulator.sentLines > 0 && (byLine || active > 0);
    const double slowdown = byLine ? 1.0 : sequence / std::max(active, 1.0);
    simulator.period =
        tick * (byLine ? std::max(std::floor(sequence / std::max(active, 1.0)), blocks) : blocks * slowdown);
    simulator.sending = tick * sent * slowdown;
    return simulator;
}

std::string counted(std::int64_t number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

/// "1st", "2nd", "3rd", "11th"
std::string ordinal(std::int64_t number) {
    const std::int64_t last = number % 10;
    const bool isTeen = number / 10 % 10 == 1;
    return std::to_string(number) + (isTeen || last == 0 || last > 3 ? "th"
                                     : last == 1                     ? "st"
                                     : last == 2                     ? "nd"
                                                                     : "rd");
}

std::string rate(double period) {
    return rateInWords(1e6 / period) + " lines a second";
}

/// An input of the trigger unit as the connector is labelled.
std::string inputName(std::int64_t source) {
    if (source == TRGINSOFTWARE) {
        return "the software trigger";
    }
    return source >= TRGINSRC_FRONT_GPI_0 ? "front GPI " + std::to_string(source - TRGINSRC_FRONT_GPI_0)
                                          : "GPI " + std::to_string(source);
}

bool generatesLines(TriggerState& state) {
    const std::int64_t mode = state.whole("FG_LINETRIGGERMODE");
    return mode == GRABBER_CONTROLLED || mode == GRABBER_CONTROLLED_GATED;
}

bool isGated(TriggerState& state) {
    const std::int64_t mode = state.whole("FG_LINETRIGGERMODE");
    return mode == GRABBER_CONTROLLED_GATED || mode == ASYNC_GATED;
}

bool imagesFollow(TriggerState& state) {
    return state.whole("FG_IMGTRIGGERMODE") == FREE_RUN;
}

/// A period that begins within an exposure brings no line.
std::int64_t periodsOfLine(TriggerState& state) {
    constexpr double noise = 1e-9;
    const double share = state.timing(exposureTiming) / state.timing(periodTiming);
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(std::ceil(share - noise)));
}

double linePeriod(TriggerState& state) {
    return state.timing(periodTiming) * static_cast<double>(periodsOfLine(state));
}

/// Counts of the shaft encoder in one period of its tracks.
std::int64_t countsOfPeriod(TriggerState& state) {
    const std::int64_t filter = state.whole("FG_SHAFTENCODERMODE");
    return filter == FILTER_X4 ? 4 : filter == FILTER_X2 ? 2 : 1;
}

/// What the external line trigger counts: "pulse at GPI 1", "count of the shaft encoder at GPI 1 and GPI 2".
std::string countedThing(TriggerState& state, std::int64_t number) {
    const std::string plural = number == 1 ? "" : "s";
    const std::string source = inputName(state.whole("FG_LINETRIGGERINSRC"));
    if (state.isOn("FG_SHAFTENCODERON")) {
        return "count" + plural + " of the shaft encoder at " + source + " and " +
               inputName(state.whole("FG_SHAFTENCODERINSRC"));
    }
    const bool falling = state.whole("FG_LINETRIGGERINPOLARITY") == HIGH_ON_ZERO_LOW;
    return "pulse" + plural + " at " + source + " (" + (falling ? "falling" : "rising") + " edge)";
}

std::string externalSentence(TriggerState& state) {
    const std::int64_t downscale = state.whole("FG_LINE_DOWNSCALE");
    const std::int64_t phase = state.whole("FG_LINE_DOWNSCALEINIT");
    std::string text = downscale == 1
                           ? "line for each " + countedThing(state, 1)
                           : "line for every " + std::to_string(downscale) + " " + countedThing(state, downscale) +
                                 ", downscaled by " + std::to_string(downscale);
    if (downscale != 1 || phase != 1) {
        text += ", the first of an image with the " + ordinal(phase);
    }
    return text;
}

std::string lineSentence(TriggerState& state) {
    const bool isOn = state.isOn("FG_EXSYNCON");
    const std::string article =
        isGated(state) ? (isOn ? "While an image runs, a " : "while an image runs, a ") : (isOn ? "A " : "a ");
    const std::string exposed = ", exposed for " + timeInWords(state.timing(exposureTiming));
    const std::string off = isOn ? "" : "ExSync is off. Switched on it would bring: ";
    if (!generatesLines(state)) {
        return off + article + externalSentence(state) + exposed + ". Its period is that of what comes in.";
    }
    const double period = linePeriod(state);
    const std::int64_t periods = periodsOfLine(state);
    const std::string lost = periods == 1 ? ""
                                          : ", as only each " + ordinal(periods) + " period of " +
                                                timeInWords(state.timing(periodTiming)) + " begins outside an exposure";
    return off + article + "line every " + timeInWords(period) + " (" + rate(period) + ")" + exposed + lost + ".";
}

std::string sourceSentence(TriggerState& state, const Simulator& simulator) {
    if (!simulator.isUsed) {
        return "The lines are those of the camera.";
    }
    if (!simulator.sends) {
        return "The lines are those of the camera simulator, which sends none with these settings.";
    }
    const std::string every = "every " + timeInWords(simulator.period) + " (" + rate(simulator.period) + ")";
    const std::string start = "The lines are those of the camera simulator: ";
    switch (state.whole("FG_CAMERASIMULATOR_TRIGGER_MODE")) {
        case RISING_EDGE_TRIGGERS_LINE:
            return start + "one with each rising edge of the camera trigger, sent in " +
                   timeInWords(simulator.sending) + ".";
        case RISING_EDGE_TRIGGERS_FRAME:
            return start + "a frame of " + counted(simulator.sentLines, "line") +
                   " with a rising edge of the camera trigger, a line " + every + ".";
        default: return start + "one " + every + " by its own clock, whatever ExSync does.";
    }
}

std::string encoderSentence(TriggerState& state) {
    if (!state.isOn("FG_SHAFTENCODERON")) {
        return "The shaft encoder is off.";
    }
    const std::int64_t counts = countsOfPeriod(state);
    const bool compensates = state.isOn("FG_SHAFTENCODER_COMPENSATION_ENABLE");
    return "The shaft encoder is on: track A at " + inputName(state.whole("FG_LINETRIGGERINSRC")) + ", track B at " +
           inputName(state.whole("FG_SHAFTENCODERINSRC")) + ", " +
           (state.whole("FG_SHAFTENCODERLEADING") == SOURCE_A ? "A" : "B") + " leads forwards, filter x" +
           std::to_string(counts) + " (" + counted(counts, "count") + " a period), compensation " +
           (compensates ? "on." : "off.");
}

/// Lines that go by before those of an image, and those of the image; none where only its gate ends it.
struct ImageLines {
    std::int64_t before = 0;
    std::optional<std::int64_t> most;
};

ImageLines imageLines(TriggerState& state) {
    const std::int64_t mode = state.whole("FG_IMGTRIGGERMODE");
    ImageLines lines;
    lines.before = state.whole("FG_YOFFSET") + (mode == FREE_RUN ? 0 : state.whole("FG_IMGTRIGGERGATEDELAY"));
    if (mode != ASYNC_GATED_MULTIFRAME) {
        lines.most = state.whole(mode == ASYNC_TRIGGER_MULTIFRAME ? "FG_IMGTRIGGER_ASYNC_HEIGHT" : "FG_HEIGHT");
    }
    return lines;
}

/// Microseconds from line to line, where that is fixed.
std::optional<double> fixedPeriod(TriggerState& state, const Simulator& simulator) {
    if (simulator.isUsed) {
        return simulator.runsFreely() && simulator.sentLines == simulator.frameLines ? std::optional(simulator.period)
                                                                                     : std::nullopt;
    }
    return generatesLines(state) && state.isOn("FG_EXSYNCON") ? std::optional(linePeriod(state)) : std::nullopt;
}

std::string imageSentence(TriggerState& state, const Simulator& simulator) {
    const std::int64_t mode = state.whole("FG_IMGTRIGGERMODE");
    const std::int64_t source = state.whole("FG_IMGTRIGGERINSRC");
    const ImageLines lines = imageLines(state);
    const bool low = state.whole("FG_IMGTRIGGERINPOLARITY") == HIGH_ON_ZERO_LOW && source != TRGINSOFTWARE;
    const std::string after =
        lines.before == 0 ? "" : ", after " + counted(lines.before, "line") + " that are left out";
    const std::string frames = " in frames of " + counted(state.whole("FG_HEIGHT"), "line");
    const std::string height = counted(lines.most.value_or(0), "line");
    const std::string gate = inputName(source) + " is " + (low ? "low" : "high");
    switch (mode) {
        case FREE_RUN: {
            const auto period = fixedPeriod(state, simulator);
            const double image = period.value_or(0) * static_cast<double>(lines.before + *lines.most);
            return "Images follow one another, each of " + height + after +
                   (period ? ", one every " + timeInWords(image) : "") + ".";
        }
        case ASYNC_TRIGGER:
        case ASYNC_TRIGGER_MULTIFRAME:
            return std::string(source == TRGINSOFTWARE ? "A pulse of "
                               : low                   ? "A falling edge at "
                                                       : "A rising edge at ") +
                   inputName(source) + " begins an image of " + height +
                   (mode == ASYNC_TRIGGER_MULTIFRAME ? frames : "") + after + ".";
        case ASYNC_GATED: return "An image runs while " + gate + ", for at most " + height + after + ".";
        default: return "An image runs as long as " + gate + "," + frames + after + ".";
    }
}

std::string flashSentence(TriggerState& state) {
    if (!state.isOn("FG_FLASHON")) {
        return "The flash is off.";
    }
    return "The flash is on with the " + ordinal(state.whole("FG_STROBEPULSEDELAY") + 1) + " exposure of an image.";
}

/// A signal of the trigger unit as people call it; empty for one that it does not make.
std::string signalName(std::int64_t source) {
    switch (source) {
        case FG_SIGNAL_CAM0_EXSYNC: return "ExSync";
        case FG_SIGNAL_CAM0_EXSYNC2: return "ExSync2";
        case FG_SIGNAL_CAM0_FLASH: return "Flash";
        default: return "";
    }
}

std::string cameraTriggerSentence(TriggerState& state) {
    const std::int64_t source = state.whole("FG_TRIGGERCAMERA_SOURCE");
    if (source == GND || source == VCC) {
        return std::string("The camera trigger is always ") + (source == VCC ? "high." : "low.");
    }
    const std::string name = signalName(source);
    return "The camera trigger carries " + (name.empty() ? state.words("FG_TRIGGERCAMERA_SOURCE") : name) +
           (state.isLow("FG_TRIGGERCAMERA_POLARITY") ? ", inverted." : ".");
}

/// Values that contradict one another, though each is accepted by itself.
std::vector<std::string> warnings(TriggerState& state, const Simulator& simulator) {
    std::vector<std::string> list;
    for (const Timing& timing : {periodTiming, exposureTiming, delayTiming}) {
        if (std::abs(state.real(timing.parameter) - state.timing(timing)) > tick / 2) {
            list.push_back(std::string(timing.parameter) + " reads " + state.words(timing.parameter) +
                           ", but the design runs with " + timeInWords(state.timing(timing)) +
                           ": a load remembers a value that the design does not get");
        }
    }
    const double period = state.real("FG_LINEPERIODE");
    if (generatesLines(state) && state.real("FG_LINEEXPOSURE") > period) {
        list.push_back("the exposure of " + state.words("FG_LINEEXPOSURE") + " is longer than the period of " +
                       state.words("FG_LINEPERIODE"));
    }
    if (generatesLines(state) && state.real("FG_LINETRIGGERDELAY") > period) {
        list.push_back("the delay of " + state.words("FG_LINETRIGGERDELAY") + " is longer than the period of " +
                       state.words("FG_LINEPERIODE"));
    }
    if (!state.isOn("FG_EXSYNCON")) {
        list.emplace_back("FG_EXSYNCON is off: the camera gets no line trigger");
    }
    if (!imagesFollow(state) && !state.isOn("FG_IMGTRIGGERON")) {
        list.emplace_back("FG_IMGTRIGGERON is off: no image begins");
    }
    if (state.isOn("FG_SHAFTENCODERON")) {
        if (generatesLines(state)) {
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
    const ImageLines lines = imageLines(state);
    if (!simulator.isUsed && state.isOn("FG_FLASHON") && lines.most &&
        state.whole("FG_STROBEPULSEDELAY") >= lines.before + *lines.most) {
        list.push_back("the flash never comes: an image is over before its " +
                       ordinal(state.whole("FG_STROBEPULSEDELAY") + 1) + " exposure");
    }
    return list;
}

/// Pulses on one signal, by rising start.
struct Pulses {
    std::vector<double> starts;
    double length = 0;
};

/// The signal's levels from 0 to `end`. Pulses that overlap are one; what is inverted is high between them.
Wave waveOf(const std::string& name, const Pulses& pulses, bool inverted, double end) {
    Wave wave{name, inverted, {}, false, ""};
    double over = -1;
    for (const double start : pulses.starts) {
        if (start >= end) {
            break;
        }
        if (start <= 0) {
            wave.high = !inverted;
        } else if (start > over) {
            wave.changes.push_back(start);
        } else {
            wave.changes.pop_back();
        }
        over = start + pulses.length;
        wave.changes.push_back(over);
    }
    std::erase_if(wave.changes, [&](double change) { return change > end; });
    return wave;
}

Wave noteOf(const std::string& name, const std::string& note) {
    return {name, false, {}, false, note};
}

std::string lowActive(const std::string& name, bool low) {
    return low ? name + " (low active)" : name;
}

/// The rows of a drawing that begins with the first exposure of an image.
class Drawing {
public:
    Drawing(TriggerState& state, const Simulator& simulator) : state_(state), simulator_(simulator) {
        if (generatesLines(state)) {
            placeGeneratedLines();
        } else {
            placeExternalLines();
        }
        // A gated line trigger ends with the image, and without an image trigger it never begins.
        const ImageLines lines = imageLines(state);
        const bool isHeard = imagesFollow(state) || state.isOn("FG_IMGTRIGGERON");
        if (!state.isOn("FG_EXSYNCON") || (isGated(state) && !isHeard)) {
            exsync_.starts.clear();
        } else if (isGated(state) && !imagesFollow(state) && lines.most && !simulator.isUsed) {
            const auto most = static_cast<std::size_t>(lines.before + *lines.most);
            exsync_.starts.resize(std::min(exsync_.starts.size(), most));
        }
    }

    Waves waves() {
        Waves waves{
            hasTime_ ? "Line trigger, from the first exposure of an image" : "Line trigger, from the start of an image",
            axis_,
            {},
            {}};
        waves.rows.push_back(noteOf("Image trigger", imageTriggerNote()));
        waves.rows.insert(waves.rows.end(), inputs_.begin(), inputs_.end());
        waves.rows.push_back(row("ExSync", exsync_, state_.isLow("FG_EXSYNCPOLARITY")));
        waves.rows.push_back(row("ExSync2", delayed(), state_.isLow("FG_EXSYNCPOLARITY")));
        waves.rows.push_back(row("Flash", flash(), state_.isLow("FG_FLASH_POLARITY")));
        addCameraTrigger(waves.rows);
        if (simulator_.isUsed) {
            waves.rows.push_back(simulatorLines());
        }
        return waves;
    }

private:
    Wave row(const std::string& name, const Pulses& pulses, bool inverted) const {
        return waveOf(lowActive(name, inverted), pulses, inverted, axis_.max);
    }

    void placeGeneratedLines() {
        constexpr double shown = 2.5;  // lines
        const double period = linePeriod(state_);
        constexpr double most = 1000;  // of the one within the other
        const double other = simulator_.runsFreely() ? simulator_.period : period;
        const double end = shown * std::min(std::max(period, other), most * std::min(period, other));
        unit_ = timeUnitFor(end);
        axis_ = {unit_.name, 0, end / unit_.microseconds};
        exsync_.length = onAxis(state_.timing(exposureTiming));
        delay_ = onAxis(state_.timing(delayTiming));
        for (std::size_t line = 0; static_cast<double>(line) * period < end; ++line) {
            exsync_.starts.push_back(onAxis(static_cast<double>(line) * period));
        }
    }

    /// Pulse 1, 2, 3 ... of the input stands at 1, 2, 3 ...: when they come nobody knows.
    void placeExternalLines() {
        constexpr double shortPulse = 0.3;
        constexpr double shownDelay = 0.15;
        const std::int64_t downscale = state_.whole("FG_LINE_DOWNSCALE");
        const std::int64_t phase = state_.whole("FG_LINE_DOWNSCALEINIT");
        const std::int64_t last = std::max<std::int64_t>(phase + 2 * downscale, 4);
        const bool encoder = state_.isOn("FG_SHAFTENCODERON");
        hasTime_ = false;
        axis_ = {std::string(encoder ? "counts" : "pulses") + ", not to scale in time", 0,
                 static_cast<double>(last + 1)};
        for (std::int64_t pulse = phase; pulse <= last; pulse += downscale) {
            exsync_.starts.push_back(static_cast<double>(pulse));
        }
        exsync_.length = shortPulse * static_cast<double>(std::max<std::int64_t>(1, downscale / 8));
        delay_ = state_.timing(delayTiming) > 0 ? shownDelay * static_cast<double>(downscale) : 0;
        const bool low = state_.whole("FG_LINETRIGGERINPOLARITY") == HIGH_ON_ZERO_LOW;
        Pulses pulses{{}, 0.5};
        if (!encoder) {
            for (std::int64_t pulse = 1; pulse <= last; ++pulse) {
                pulses.starts.push_back(static_cast<double>(pulse));
            }
            inputs_ = {waveOf(lowActive(inputName(state_.whole("FG_LINETRIGGERINSRC")), low), pulses, low, axis_.max)};
            return;
        }
        // The leading track rises with a count; the other one follows a quarter of a period later.
        const auto period = static_cast<double>(countsOfPeriod(state_));
        pulses.length = period / 2;
        for (double start = 1; start < axis_.max; start += period) {
            pulses.starts.push_back(start);
        }
        Pulses behind = pulses;
        for (double& start : behind.starts) {
            start += period / 4;
        }
        const bool leads = state_.whole("FG_SHAFTENCODERLEADING") == SOURCE_A;
        const std::string a = "A, " + inputName(state_.whole("FG_LINETRIGGERINSRC"));
        const std::string b = "B, " + inputName(state_.whole("FG_SHAFTENCODERINSRC"));
        inputs_ = {waveOf(a, leads ? pulses : behind, false, axis_.max),
                   waveOf(b, leads ? behind : pulses, false, axis_.max)};
    }

    double onAxis(double microseconds) const { return microseconds / unit_.microseconds; }

    Pulses delayed() const {
        Pulses pulses = exsync_;
        for (double& start : pulses.starts) {
            start += delay_;
        }
        return pulses;
    }

    /// One exposure of each image.
    Pulses flash() const {
        Pulses pulses{{}, exsync_.length};
        if (!state_.isOn("FG_FLASHON") || (!imagesFollow(state_) && !state_.isOn("FG_IMGTRIGGERON"))) {
            return pulses;
        }
        const ImageLines lines = imageLines(state_);
        const auto first = static_cast<std::size_t>(state_.whole("FG_STROBEPULSEDELAY"));
        const bool again = imagesFollow(state_) && !simulator_.isUsed;
        const auto image = static_cast<std::size_t>(lines.before + lines.most.value_or(0));
        if (!simulator_.isUsed && lines.most && first >= image) {
            return pulses;
        }
        for (std::size_t line = first; line < exsync_.starts.size(); line += image) {
            pulses.starts.push_back(exsync_.starts[line]);
            if (!again) {
                break;
            }
        }
        return pulses;
    }

    void addCameraTrigger(std::vector<Wave>& rows) {
        const std::int64_t source = state_.whole("FG_TRIGGERCAMERA_SOURCE");
        const bool inverted = state_.isLow("FG_TRIGGERCAMERA_POLARITY");
        const std::string name = "Camera trigger";
        if (source == GND || source == VCC) {
            rows.push_back({name, source == VCC, {}, false, ""});
            return;
        }
        if (signalName(source).empty()) {
            rows.push_back(
                noteOf(name, "follows " + state_.words("FG_TRIGGERCAMERA_SOURCE") + (inverted ? ", inverted" : "")));
            return;
        }
        const Pulses pulses = source == FG_SIGNAL_CAM0_FLASH    ? flash()
                              : source == FG_SIGNAL_CAM0_EXSYNC ? exsync_
                                                                : delayed();
        const bool lowPulses =
            inverted != state_.isLow(source == FG_SIGNAL_CAM0_FLASH ? "FG_FLASH_POLARITY" : "FG_EXSYNCPOLARITY");
        rows.push_back(row(name, pulses, lowPulses));
        for (const double start : pulses.starts) {
            cameraTriggerRises_.push_back(lowPulses ? start + pulses.length : start);
        }
        cameraTriggerIsKnown_ = true;
    }

    /// When the simulator sends; to be asked when the camera trigger is known.
    Wave simulatorLines() const {
        const std::string name = "Simulator line";
        if (!simulator_.sends) {
            return noteOf(name, "it sends none");
        }
        if (simulator_.runsFreely()) {
            return hasTime_ ? waveOf(name, freeLines(), false, axis_.max)
                            : noteOf(name, "every " + timeInWords(simulator_.period) + ", by its own clock");
        }
        if (!hasTime_ || !cameraTriggerIsKnown_) {
            return noteOf(name, "with rising edges of the camera trigger");
        }
        return waveOf(name, triggeredLines(), false, axis_.max);
    }

    Pulses freeLines() const {
        Pulses pulses{{}, onAxis(simulator_.sending)};
        const double period = onAxis(simulator_.period);
        for (std::int64_t line = 0; static_cast<double>(line) * period < axis_.max; ++line) {
            if (line % simulator_.frameLines < simulator_.sentLines) {
                pulses.starts.push_back(static_cast<double>(line) * period);
            }
        }
        return pulses;
    }

    /// Edges that come while it sends are lost.
    Pulses triggeredLines() const {
        Pulses pulses{{}, onAxis(simulator_.sending)};
        const bool frame = simulator_.trigger == RISING_EDGE_TRIGGERS_FRAME;
        const std::int64_t lines = frame ? simulator_.sentLines : 1;
        double over = 0;
        for (const double rise : cameraTriggerRises_) {
            if (rise < over) {
                continue;
            }
            for (std::int64_t line = 0; line < lines; ++line) {
                const double start = rise + static_cast<double>(line) * onAxis(simulator_.period);
                if (start >= axis_.max) {
                    return pulses;
                }
                pulses.starts.push_back(start);
                over = start + pulses.length;
            }
        }
        return pulses;
    }

    std::string imageTriggerNote() {
        if (imagesFollow(state_)) {
            return "free run: none is waited for";
        }
        if (!state_.isOn("FG_IMGTRIGGERON")) {
            return "off";
        }
        const std::int64_t mode = state_.whole("FG_IMGTRIGGERMODE");
        const std::int64_t source = state_.whole("FG_IMGTRIGGERINSRC");
        const bool low = state_.whole("FG_IMGTRIGGERINPOLARITY") == HIGH_ON_ZERO_LOW && source != TRGINSOFTWARE;
        const bool gate = mode == ASYNC_GATED || mode == ASYNC_GATED_MULTIFRAME;
        const std::string edge = source == TRGINSOFTWARE ? "pulse" : low ? "falling edge" : "rising edge";
        return (gate ? std::string(low ? "low" : "high") + " level of " : edge + " of ") + inputName(source) +
               ", at any time before";
    }

    TriggerState& state_;
    const Simulator& simulator_;
    TimeUnit unit_{"", 1};
    Axis axis_{"", 0, 1};
    bool hasTime_ = true;  ///< else only the order of things is known
    Pulses exsync_;
    double delay_ = 0;
    std::vector<Wave> inputs_;
    std::vector<double> cameraTriggerRises_;
    bool cameraTriggerIsKnown_ = false;
};

/// The parameters that the drawing hangs on, in the mode that they have.
std::vector<std::string> namesOf(TriggerState& state, const Simulator& simulator) {
    std::vector<std::string> names{"FG_LINETRIGGERMODE", "FG_EXSYNCON"};
    const auto add = [&](std::initializer_list<const char*> more) {
        names.insert(names.end(), more.begin(), more.end());
    };
    if (generatesLines(state)) {
        add({"FG_LINEPERIODE"});
    } else {
        add({"FG_LINETRIGGERINSRC", "FG_LINETRIGGERINPOLARITY", "FG_LINE_DOWNSCALE", "FG_LINE_DOWNSCALEINIT",
             "FG_SHAFTENCODERON"});
        if (state.isOn("FG_SHAFTENCODERON")) {
            add({"FG_SHAFTENCODERMODE", "FG_SHAFTENCODERINSRC", "FG_SHAFTENCODERLEADING"});
        }
    }
    add({"FG_LINEEXPOSURE", "FG_LINETRIGGERDELAY", "FG_EXSYNCPOLARITY", "FG_IMGTRIGGERMODE"});
    if (!imagesFollow(state)) {
        add({"FG_IMGTRIGGERON", "FG_IMGTRIGGERINSRC", "FG_IMGTRIGGERINPOLARITY", "FG_IMGTRIGGERGATEDELAY"});
    }
    if (state.whole("FG_IMGTRIGGERMODE") == ASYNC_TRIGGER_MULTIFRAME) {
        add({"FG_IMGTRIGGER_ASYNC_HEIGHT"});
    }
    add({"FG_HEIGHT", "FG_YOFFSET", "FG_FLASHON", "FG_STROBEPULSEDELAY", "FG_FLASH_POLARITY", "FG_TRIGGERCAMERA_SOURCE",
         "FG_TRIGGERCAMERA_POLARITY", "FG_CAMERASIMULATOR_ENABLE"});
    if (simulator.isUsed) {
        add({"FG_CAMERASIMULATOR_TRIGGER_MODE", "FG_CAMERASIMULATOR_SELECT_MODE", "FG_CAMERASIMULATOR_WIDTH"});
    }
    return names;
}

Json toJson(const Waves& waves) {
    Json rows = emptyList();
    for (const Wave& wave : waves.rows) {
        append(rows, wave.note.empty() ? object({{"name", wave.name}, {"high", wave.high}, {"changes", wave.changes}})
                                       : object({{"name", wave.name}, {"note", wave.note}}));
    }
    return object({{"unit", waves.axis.label}, {"end", waves.axis.max}, {"rows", rows}});
}

/// What time has brought so far; empty where none has passed.
std::string presentSentence(const client::SoftBoard& board) {
    struct Level {
        const char* name;
        client::Signal signal;
    };
    constexpr std::array levels{Level{"ExSync", client::Signal::Exsync}, Level{"ExSync2", client::Signal::Exsync2},
                                Level{"Flash", client::Signal::Flash}, Level{"LVAL", client::Signal::LineValid},
                                Level{"FVAL", client::Signal::FrameValid}};
    const double now = board.signalTime();
    if (now == 0) {
        return "";
    }
    const auto begun = [&](const std::string& event, const std::string& word) {
        const std::uint64_t count = eventCount(board, event);
        return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
    };
    std::string text = "Now, at " + timeInWords(now) + " of the board's time: ";
    for (const Level& level : levels) {
        text += std::string(level.name) + (board.signal(level.signal) ? " high, " : " low, ");
    }
    return text + "and " + begun("FG_START_OF_LINE_CAM_PORT_0", "line") + " of " +
           begun("FG_START_OF_FRAME_CAM_PORT_0", "frame") + " have begun.";
}

ExitStatus trigger(Session& session, Console& console, const std::string& picture) {
    TriggerState state(session.applet(), session.board());
    const Simulator simulator = simulatorOf(session.board(), state);
    std::vector<std::string> sentences{
        "Line trigger mode " + state.words("FG_LINETRIGGERMODE") + ". " + lineSentence(state),
        sourceSentence(state, simulator),
        encoderSentence(state),
        "Image trigger mode " + state.words("FG_IMGTRIGGERMODE") + ". " + imageSentence(state, simulator),
        flashSentence(state),
        cameraTriggerSentence(state)};
    if (const std::string present = presentSentence(session.board()); !present.empty()) {
        sentences.push_back(present);
    }
    const std::vector<std::string> contradictions = warnings(state, simulator);
    const std::vector<std::string> origin = provenance(session, namesOf(state, simulator));
    Waves waves = Drawing(state, simulator).waves();
    waves.captions = sentences;
    for (const std::string& warning : contradictions) {
        waves.captions.push_back("warning: " + warning);
    }
    waves.captions.insert(waves.captions.end(), origin.begin(), origin.end());
    if (!picture.empty()) {
        writePicture(chartOf(waves), picture);
    }
    if (session.options().json) {
        Json json = object({{"configuration", origin.front()}, {"sentences", sentences}, {"warnings", contradictions}});
        if (generatesLines(state)) {
            put(json, "period", inMicroseconds(linePeriod(state)));
        }
        put(json, "exposure", inMicroseconds(state.timing(exposureTiming)));
        put(json, "delay", inMicroseconds(state.timing(delayTiming)));
        put(json, "drawing", toJson(waves));
        printJson(console, json);
        return Done;
    }
    constexpr std::size_t usualWidth = 80;
    const std::size_t width = lineWidth();
    const auto print = [&](const std::string& text) { console.out << foldLines(text, width) << '\n'; };
    for (const std::string& sentence : sentences) {
        print(sentence);
    }
    console.out << "\n" << waves.title << "\n";
    for (const std::string& line : asText(waves, std::min(width, usualWidth))) {
        console.out << line << '\n';
    }
    console.out << '\n';
    for (const std::string& line : origin) {
        print(line);
    }
    for (const std::string& warning : contradictions) {
        console.out << console.outPainter.paint(Style::Bad, "warning:") << " " << warning << '\n';
    }
    return Done;
}

}  // namespace

void addTriggerVerb(Verbs& verbs) {
    auto picture = std::make_shared<std::string>();
    Verb verb = verbs.add(
        "trigger", "Tell in words what the line and image trigger do, and draw the timing",
        "  quillon trigger\n"
        "  quillon trigger --mcf conveyor.mcf\n"
        "  quillon trigger -o timing.png\n"
        "\n"
        "# is a high level and _ a low one. Where lines come with pulses of an input, the axis counts the\n"
        "pulses: when they come is not known. --json has the levels of each row under drawing: whether it is\n"
        "high at first, and where it changes.",
        [picture](Session& session, Console& console) { return trigger(session, console, *picture); });
    verb.add("-o,--output", picture.get(), "Draw a picture (.png)").shownAs("FILE");
}

}  // namespace quillon::cli
