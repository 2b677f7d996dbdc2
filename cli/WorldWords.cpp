#include "cli/WorldWords.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "cli/Arguments.h"
#include "cli/Inputs.h"
#include "cli/Suggestions.h"
#include "cli/Units.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

/// What `parse` makes of a word; what it refuses is told with the option in front.
template <typename Parse>
auto parsed(const char* option, const std::string& word, const Parse& parse) {
    const std::string text = trimmed(word);
    try {
        return parse(text);
    } catch (const UsageError& error) {
        throw UsageError(std::string(option) + " " + text + ": " + error.what());
    }
}

std::vector<std::string> split(const std::string& text, char sign) {
    std::vector<std::string> parts(1);
    for (const char character : text) {
        if (character == sign) {
            parts.emplace_back();
        } else {
            parts.back() += character;
        }
    }
    return parts;
}

std::uint64_t parseCount(const std::string& text, const char* what, std::uint64_t least) {
    const auto number = parseWholeNumber(text);
    if (!number || number->negative || number->magnitude < least) {
        throw UsageError("\"" + text + "\" is no " + what + ": it is a whole number from " + std::to_string(least) +
                         " on");
    }
    return number->magnitude;
}

// A scene ----------------------------------------------------------------------------------------------------------

const std::vector<std::string> patterns{"bars", "ramp", "checker", "noise", "grey"};

bool isPicture(const std::string& word) {
    constexpr std::array suffixes{".PNG", ".PPM", ".PGM", ".PNM"};
    const std::string suffix = inCapitals(std::filesystem::path(word).extension().string());
    return std::ranges::find(suffixes, suffix) != suffixes.end();
}

ScenePattern parsePattern(const std::string& word) {
    constexpr std::uint64_t white = 255;
    const std::string kind = word.substr(0, word.find(':'));
    if (std::ranges::find(patterns, kind) == patterns.end()) {
        throw UsageError(
            "it is no scene: bars, ramp, checker, noise, noise:SEED, grey, grey:0 to grey:255, or a "
            "picture (.png, .ppm, .pgm, .pnm)" +
            didYouMean(kind, patterns));
    }
    if (kind.size() == word.size()) {
        return {word};
    }
    const std::string number = word.substr(kind.size() + 1);
    if (kind == "noise") {
        parseCount(number, "seed", 0);
    } else if (kind != "grey") {
        throw UsageError("nothing stands behind " + kind);
    } else if (parseCount(number, "grey", 0) > white) {
        throw UsageError("a grey is 0, black, to 255, white");
    }
    return {word};
}

double parseScale(const std::string& word) {
    const double scale = parseMeasure(word, Density);
    if (scale < 0.001 || scale > 1000) {
        throw UsageError("a millimetre has 0.001 to 1000 pixels of a picture");
    }
    return scale;
}

double parseWithin(const std::string& text, double least, double most) {
    const double number = parseQuantity(text, "");
    if (!(number >= least && number <= most)) {
        throw UsageError("it is " + client::readable(least) + " to " + client::readable(most));
    }
    return number;
}

void putLight(Illumination& illumination, const std::string& key, const std::string& value) {
    client::Light& light = illumination.light;
    if (key == "reference") {
        light.referenceUs = parseTime(value);
    } else if (key == "flash") {
        light.flashGain = parseWithin(value, 0, 1000);
    } else if (key == "noise") {
        light.noise = parseWithin(value, 0, 1);
    } else if (key == "seed") {
        illumination.seed = parseCount(value, "seed", 0);
    } else {
        const std::vector<std::string> keys{"reference", "flash", "noise", "seed"};
        throw UsageError("there are reference=20us, flash=2, noise=1% and seed=7" + didYouMean(key, keys));
    }
}

Illumination parseLight(const std::string& word) {
    Illumination illumination;
    for (const std::string& part : split(word, ',')) {
        const auto assignment = splitAssignment(part);
        if (!assignment) {
            throw UsageError("\"" + part + "\" has no value: it is written as reference=20us,flash=2,noise=1%,seed=7");
        }
        try {
            putLight(illumination, assignment->first, assignment->second);
        } catch (const UsageError& error) {
            throw UsageError("\"" + part + "\": " + error.what());
        }
    }
    return illumination;
}

// A belt -----------------------------------------------------------------------------------------------------------

std::vector<client::BeltMove> parseProfile(const std::string& word) {
    std::vector<client::BeltMove> moves;
    double until = 0;
    for (const std::string& step : split(word, ',')) {
        if (!moves.empty() && moves.back().untilUs == client::Forever) {
            throw UsageError("\"" + step + "\" never comes: a time ends the step before it, as 500mm/s:20ms");
        }
        const std::size_t colon = step.find(':');
        const double speed = parseMeasure(step.substr(0, colon), Speed);
        if (colon == std::string::npos) {
            moves.push_back({client::Forever, speed});
            continue;
        }
        const double time = parseTime(step.substr(colon + 1));
        if (time == 0) {
            throw UsageError("\"" + step + "\": a step lasts longer than no time");
        }
        until += time;
        moves.push_back({until, speed});
    }
    return moves;
}

/// What stands in front of "@", and the inputs behind it, separated by commas.
struct Placed {
    std::string text;
    std::vector<unsigned> inputs;
};

Placed parsePlace(const std::string& word, std::size_t mostInputs) {
    const std::size_t sign = word.find('@');
    Placed placed{word.substr(0, sign), {}};
    if (sign == std::string::npos) {
        return placed;
    }
    for (const std::string& input : split(word.substr(sign + 1), ',')) {
        placed.inputs.push_back(parseInput(input));
    }
    if (placed.inputs.size() > mostInputs) {
        throw UsageError("\"" + word.substr(sign) + "\" are more inputs than the " + std::to_string(mostInputs) +
                         " that it drives");
    }
    return placed;
}

BeltEncoder parseEncoder(const std::string& word) {
    constexpr double most = 100000;
    const Placed placed = parsePlace(word, 2);
    BeltEncoder encoder{parseMeasure(placed.text, Density), !placed.inputs.empty(), {}, {}};
    if (!(encoder.countsPerMm > 0 && encoder.countsPerMm <= most)) {
        throw UsageError("an encoder has more than 0 and at most 100000 counts in a millimetre");
    }
    if (encoder.isConnected) {
        encoder.a = placed.inputs.front();
    }
    if (placed.inputs.size() > 1) {
        encoder.b = placed.inputs.back();
    }
    return encoder;
}

BeltBarrier parseBarrier(const std::string& word) {
    const Placed placed = parsePlace(word, 1);
    const std::vector<std::string> ways = split(placed.text, ':');
    if (ways.size() != 2 && ways.size() != 3) {
        throw UsageError("it is written as FIRST:LENGTH or FIRST:LENGTH:PITCH, as 20mm:100mm:300mm");
    }
    BeltBarrier barrier{parseMeasure(ways[0], Way), parseMeasure(ways[1], Way),
                        ways.size() == 3 ? parseMeasure(ways[2], Way) : 0,
                        placed.inputs.empty() ? std::nullopt : std::optional(placed.inputs.front())};
    if (!(barrier.lengthMm > 0)) {
        throw UsageError("the length \"" + ways[1] + "\": a part is longer than 0mm");
    }
    if (ways.size() == 3 && !(barrier.pitchMm > barrier.lengthMm)) {
        throw UsageError("the pitch \"" + ways[2] + "\": parts come further apart than they are long");
    }
    return barrier;
}

// Faults -----------------------------------------------------------------------------------------------------------

std::uint64_t parseNth(const std::string& word) {
    return word == "every" ? 0 : parseCount(word, "number", 1);
}

Fault parseLineFault(std::uint64_t nth, const std::string& what) {
    using client::LineFault;
    constexpr std::array faults{std::pair("drop", LineFault::Drop), std::pair("repeat", LineFault::Repeat),
                                std::pair("invert", LineFault::Invert)};
    const auto found = std::ranges::find(faults, what, &std::pair<const char*, LineFault>::first);
    if (found == faults.end()) {
        throw UsageError("\"" + what + "\" befalls no line: drop, repeat and invert do");
    }
    return PlannedLineFault{nth, found->second};
}

Fault parseFrameFault(std::uint64_t nth, const std::string& what) {
    constexpr double longestStall = 60e6;
    if (what == "lose") {
        return PlannedFrameFault{nth, client::FrameFault::Lose, 0};
    }
    const auto assignment = splitAssignment(what);
    if (assignment && assignment->first == "truncate") {
        const std::uint64_t lines = parseCount(assignment->second, "number of lines", 1);
        return PlannedFrameFault{nth, client::FrameFault::Truncate, static_cast<double>(lines)};
    }
    if (assignment && assignment->first == "stall") {
        const double time = parseTime(assignment->second);
        if (!(time > 0 && time <= longestStall)) {
            throw UsageError("\"" + what + "\": the DMA stands still for a time, and at most for a minute");
        }
        return PlannedFrameFault{nth, client::FrameFault::Stall, time};
    }
    throw UsageError("\"" + what + "\" befalls no frame: lose, truncate=100 (lines that are left) and stall=5ms do");
}

/// Where "10ms-30ms" ends its first time; a hyphen may be the sign of an exponent.
std::size_t hyphenOf(const std::string& times) {
    std::size_t place = times.find('-');
    while (place != std::string::npos && place > 0 && (times[place - 1] == 'e' || times[place - 1] == 'E')) {
        place = times.find('-', place + 1);
    }
    return place;
}

Fault parseOutage(client::Outage outage, const std::string& times) {
    const std::size_t hyphen = hyphenOf(times);
    if (hyphen == std::string::npos) {
        throw UsageError("\"" + times + "\" is no time from one to another: 10ms-30ms, or 10ms- for one without end");
    }
    const double from = parseTime(times.substr(0, hyphen));
    const std::string end = times.substr(hyphen + 1);
    const double to = end.empty() ? client::Forever : parseTime(end);
    if (!(to > from)) {
        throw UsageError("\"" + times + "\" ends before it begins");
    }
    return PlannedOutage{outage, from, to};
}

Fault parseFault(const std::string& word) {
    const std::vector<std::string> parts = split(word, ':');
    if (parts.size() == 3 && parts[0] == "line") {
        return parseLineFault(parseNth(parts[1]), parts[2]);
    }
    if (parts.size() == 3 && parts[0] == "frame") {
        return parseFrameFault(parseNth(parts[1]), parts[2]);
    }
    if (parts.size() == 2 && (parts[0] == "camera" || parts[0] == "link")) {
        return parseOutage(parts[0] == "camera" ? client::Outage::Camera : client::Outage::Link, parts[1]);
    }
    throw UsageError(
        "faults are written as line:100:drop, line:every:invert, frame:3:lose, frame:3:truncate=100, "
        "frame:3:stall=5ms, camera:10ms-30ms, link:10ms-");
}

double parseDmaRate(const std::string& word) {
    if (word == "unlimited") {
        return client::Forever;
    }
    const double rate = parseMeasure(word, DataRate);
    if (!(rate > 0)) {
        throw UsageError("some bytes reach the host in a second; --fault link:0s- takes the link down");
    }
    return rate;
}

}  // namespace

void addSceneOptions(Verb& verb, SceneWords& words) {
    verb.add("--tile", &words.tile, "Repeat the picture in both directions; without it all is black around it");
    verb.add("--scale", &words.scale, "Rows of the picture in a millimetre of the belt: by default 10/mm")
        .shownAs("N/mm");
    verb.add("--light", &words.light,
             "reference=20us: the scene is as bright as the exposure is long against that; flash=2: times so much "
             "while the flash is active; noise=1% of full scale, seed=7 its seed; separated by commas")
        .shownAs("KEY=VALUE,...");
}

void addBeltOptions(Verb& verb, BeltWords& words) {
    verb.add("--encoder", &words.encoder,
             "Counts of the belt's encoder in a millimetre, and the inputs of its tracks A and B; by default those of "
             "FG_LINETRIGGERINSRC and FG_SHAFTENCODERINSRC")
        .shownAs("N/mm[@A[,B]]");
    verb.add("--barrier", &words.barriers,
             "A light barrier that a part on the belt reaches at FIRST, with its length, and the way from one part to "
             "the next; by default at the input of FG_IMGTRIGGERINSRC; repeatable")
        .shownAs("FIRST:LENGTH[:PITCH][@INPUT]")
        .oneWordEach();
}

void addFaultOptions(Verb& verb, FaultWords& words) {
    verb.add("--dma-rate", &words.dmaRate, "Bytes of pictures that reach the host in a second: 1GB/s, or unlimited")
        .shownAs("RATE");
}

Scene parseScene(const SceneWords& words) {
    Scene scene;
    const bool picture = isPicture(words.scene);
    if (!picture && (words.tile || !words.scale.empty())) {
        throw UsageError(std::string(words.tile ? "--tile" : "--scale") + " is for a picture, as " + words.name +
                         " part.png has it");
    }
    if (picture) {
        scene.content =
            ScenePicture{words.scene, words.tile,
                         words.scale.empty() ? ScenePicture{}.pixelsPerMm : parsed("--scale", words.scale, parseScale)};
    } else if (!words.scene.empty()) {
        scene.content = parsed(words.name, words.scene, parsePattern);
    }
    if (!words.light.empty()) {
        scene.illumination = parsed("--light", words.light, parseLight);
    }
    return scene;
}

Belt parseBelt(const BeltWords& words) {
    Belt belt;
    if (words.profile.empty() && !(words.encoder.empty() && words.barriers.empty())) {
        throw UsageError(std::string(words.encoder.empty() ? "--barrier" : "--encoder") + " needs a belt, as " +
                         words.name + " 500mm/s has it");
    }
    if (!words.profile.empty()) {
        belt.moves = parsed(words.name, words.profile, parseProfile);
    }
    if (!words.encoder.empty()) {
        belt.encoder = parsed("--encoder", words.encoder, parseEncoder);
    }
    for (const std::string& barrier : words.barriers) {
        belt.barriers.push_back(parsed("--barrier", barrier, parseBarrier));
    }
    return belt;
}

Faults parseFaults(const FaultWords& words) {
    Faults faults;
    for (const std::string& fault : words.faults) {
        faults.planned.push_back(parsed(words.name, fault, parseFault));
    }
    if (!words.dmaRate.empty()) {
        faults.bytesPerSecond = parsed("--dma-rate", words.dmaRate, parseDmaRate);
    }
    return faults;
}

void tellHints(Console& console, const std::vector<Hint>& hints, const char* set) {
    for (const Hint& hint : hints) {
        console.err << "hint: " << hint.text << "; " << set << hint.assignment << " would change that\n";
    }
}

}  // namespace quillon::cli
