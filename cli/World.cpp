#include "cli/World.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "cli/ExitStatus.h"
#include "cli/Inputs.h"
#include "cli/Refusals.h"
#include "cli/Units.h"
#include "quillon/client/Text.h"
#include "quillon/quillon.h"

namespace quillon::cli {

namespace {

/// What the board refuses is told of `what`, in the board's own words where it has such; they name a file themselves.
void carryOut(client::SoftBoard& board, const std::string& what, const std::function<void()>& call) {
    try {
        call();
    } catch (const client::CallError& error) {
        const std::string message = board.lastMessage();
        refuse((what.empty() ? "" : what + ": ") + (message.empty() ? error.what() : message), explainGet(error.code));
    }
}

std::string mm(double way) {
    return client::readable(way) + "mm";
}

/// The input that a trigger parameter has selected; nothing for the software trigger.
std::optional<unsigned> selectedInput(const client::Applet& applet, const char* parameter) {
    const int source = applet.readInt(parameter);
    if (source == TRGINSOFTWARE) {
        return std::nullopt;
    }
    const bool isFront = source >= TRGINSRC_FRONT_GPI_0;
    return static_cast<unsigned>(isFront ? source - TRGINSRC_FRONT_GPI_0 : source) + (isFront ? FirstFrontInput : 0);
}

std::string sourceOf(unsigned input) {
    return input < FirstFrontInput ? "TRGINSRC_GPI_" + std::to_string(input)
                                   : "TRGINSRC_FRONT_GPI_" + std::to_string(input - FirstFrontInput);
}

/// What drives which input.
using Wiring = std::vector<std::pair<unsigned, std::string>>;

void connect(Wiring& wiring, std::optional<unsigned> input, const std::string& what) {
    if (!input) {
        return;
    }
    const auto other = std::ranges::find(wiring, *input, &std::pair<unsigned, std::string>::first);
    if (other != wiring.end()) {
        throw UsageError(what + " is at " + inputName(*input) + ", where " + other->second +
                         " is: another one is named with @, as @GPI 3");
    }
    wiring.emplace_back(*input, what);
}

client::Encoder connectedEncoder(const client::Applet& applet, const BeltEncoder& encoder) {
    if (encoder.isConnected) {
        return {encoder.countsPerMm, encoder.a, encoder.b};
    }
    return {encoder.countsPerMm, selectedInput(applet, "FG_LINETRIGGERINSRC"),
            selectedInput(applet, "FG_SHAFTENCODERINSRC")};
}

unsigned connectedInput(const client::Applet& applet, const BeltBarrier& barrier) {
    const auto input = barrier.input ? barrier.input : selectedInput(applet, "FG_IMGTRIGGERINSRC");
    if (!input) {
        throw UsageError(
            "FG_IMGTRIGGERINSRC is TRGINSOFTWARE, which is no input that a light barrier is at: one is "
            "named with @, as @GPI 2");
    }
    return *input;
}

bool isOneOf(int value, std::initializer_list<int> values) {
    return std::ranges::find(values, value) != values.end();
}

std::string nameAndValue(const client::Applet& applet, const char* parameter) {
    return std::string(parameter) + " is " + applet.enumerator(parameter);
}

bool runsBack(const Belt& belt) {
    return std::ranges::any_of(belt.moves, [](const client::BeltMove& move) { return move.mmPerSecond < 0; });
}

/// A parameter that selects another input than `input`.
void hintAtInput(const client::Applet& applet, const char* parameter, std::optional<unsigned> input,
                 const std::string& what, std::vector<Hint>& hints) {
    if (input && selectedInput(applet, parameter) != input) {
        hints.push_back({nameAndValue(applet, parameter) + ", and " + what + " is at " + inputName(*input),
                         std::string(parameter) + "=" + sourceOf(*input)});
    }
}

void hintAtEncoder(const client::Applet& applet, const Belt& belt, std::vector<Hint>& hints) {
    const int mode = applet.readInt("FG_LINETRIGGERMODE");
    if (!isOneOf(mode, {ASYNC_TRIGGER, ASYNC_GATED})) {
        hints.push_back(
            {nameAndValue(applet, "FG_LINETRIGGERMODE") + ": lines come with the period, and not with the encoder",
             std::string("FG_LINETRIGGERMODE=") +
                 (mode == GRABBER_CONTROLLED_GATED ? "ASYNC_GATED" : "ASYNC_TRIGGER")});
    }
    hintAtInput(applet, "FG_LINETRIGGERINSRC", belt.encoder->a, "track A of the encoder", hints);
    const bool needsBoth = belt.encoder->b || runsBack(belt);
    if (needsBoth && applet.readInt("FG_SHAFTENCODERON") == FG_OFF) {
        hints.push_back({nameAndValue(applet, "FG_SHAFTENCODERON") +
                             ": track B is not heard, and a belt that runs back makes lines as one that runs forward",
                         "FG_SHAFTENCODERON=FG_ON"});
    }
    hintAtInput(applet, "FG_SHAFTENCODERINSRC", belt.encoder->b, "track B of the encoder", hints);
}

void hintAtBarriers(const client::Applet& applet, const Belt& belt, std::vector<Hint>& hints) {
    const std::string unheard = ": no image waits for the light barrier";
    if (applet.readInt("FG_IMGTRIGGERMODE") == FREE_RUN) {
        hints.push_back({nameAndValue(applet, "FG_IMGTRIGGERMODE") + unheard, "FG_IMGTRIGGERMODE=ASYNC_TRIGGER"});
    }
    if (applet.readInt("FG_IMGTRIGGERON") == FG_OFF) {
        hints.push_back({nameAndValue(applet, "FG_IMGTRIGGERON") + unheard, "FG_IMGTRIGGERON=FG_ON"});
    }
    if (belt.barriers.size() == 1) {
        hintAtInput(applet, "FG_IMGTRIGGERINSRC", belt.barriers.front().input, "the light barrier", hints);
    }
}

std::string inWords(const client::LineFault fault) {
    switch (fault) {
        case client::LineFault::Drop: return "does not arrive";
        case client::LineFault::Repeat: return "arrives twice";
        case client::LineFault::Invert: break;
    }
    return "has its bits inverted";
}

std::string inWords(const PlannedFrameFault& fault) {
    switch (fault.fault) {
        case client::FrameFault::Lose: return "is lost";
        case client::FrameFault::Truncate: return "keeps " + client::readable(fault.amount) + " lines";
        case client::FrameFault::Stall: break;
    }
    return "meets a DMA that stands still for " + timeInWords(fault.amount);
}

std::string numbered(const std::string& what, std::uint64_t nth) {
    return nth == 0 ? "every " + what : what + " " + std::to_string(nth);
}

void plan(client::SoftBoard& board, const Fault& fault) {
    if (const auto* line = std::get_if<PlannedLineFault>(&fault)) {
        board.planLineFault(line->nth, line->fault);
    } else if (const auto* frame = std::get_if<PlannedFrameFault>(&fault)) {
        board.planFrameFault(frame->nth, frame->fault, frame->amount);
    } else {
        const auto& outage = std::get<PlannedOutage>(fault);
        board.planOutage(outage.outage, outage.fromUs, outage.toUs - outage.fromUs);
    }
}

}  // namespace

double RunningBelt::speedAt(double microseconds) const {
    const double passed = microseconds - sinceUs;
    const auto move = std::ranges::find_if(moves, [&](const client::BeltMove& one) { return passed < one.untilUs; });
    return move != moves.end() ? move->mmPerSecond : 0;
}

void apply(client::SoftBoard& board, const Scene& scene) {
    if (const auto* pattern = std::get_if<ScenePattern>(&scene.content)) {
        carryOut(board, pattern->text, [&] { board.scenePattern(pattern->text); });
    } else if (const auto* picture = std::get_if<ScenePicture>(&scene.content)) {
        carryOut(board, "", [&] { board.scenePicture(picture->file, picture->tiled, picture->pixelsPerMm); });
    }
    if (scene.illumination) {
        carryOut(board, "the light", [&] {
            board.light(scene.illumination->light);
            board.sceneSeed(scene.illumination->seed);
        });
    }
}

void apply(client::SoftBoard& board, const Faults& faults) {
    for (const Fault& fault : faults.planned) {
        carryOut(board, inWords(fault), [&] { plan(board, fault); });
    }
    if (faults.bytesPerSecond) {
        carryOut(board, "the data rate", [&] { board.setDmaRate(*faults.bytesPerSecond); });
    }
}

void apply(client::SoftBoard& board, const client::Applet& applet, const Belt& belt,
           std::optional<RunningBelt>& running) {
    if (belt.moves.empty()) {
        return;
    }
    const client::Encoder encoder = belt.encoder ? connectedEncoder(applet, *belt.encoder) : client::Encoder{};
    Wiring wiring;
    connect(wiring, encoder.a, "track A of the encoder");
    connect(wiring, encoder.b, "track B of the encoder");
    std::vector<unsigned> inputs;
    for (const BeltBarrier& barrier : belt.barriers) {
        inputs.push_back(connectedInput(applet, barrier));
        connect(wiring, inputs.back(), "the light barrier");
    }
    takeAway(board, running);
    carryOut(board, "the belt", [&] { board.belt(belt.moves, encoder); });
    running = RunningBelt{belt.moves, encoder.countsPerMm, inputs, board.signalTime()};
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const BeltBarrier& barrier = belt.barriers[i];
        carryOut(board, "the light barrier " + mm(barrier.firstMm) + ":" + mm(barrier.lengthMm),
                 [&] { board.barrier(inputs[i], barrier.firstMm, barrier.pitchMm, barrier.lengthMm); });
    }
}

void takeAway(client::SoftBoard& board, std::optional<RunningBelt>& running) {
    board.belt({});
    for (const unsigned input : running ? running->barriers : std::vector<unsigned>()) {
        board.barrier(input, 0, 0, 0);
    }
    running.reset();
}

std::vector<Hint> hintsFor(const client::Applet& applet, const Scene& scene) {
    std::vector<Hint> hints;
    if (!scene.isEmpty() && applet.readInt("FG_CAMERASIMULATOR_ENABLE") == FG_CAMERASIMULATOR) {
        hints.push_back(
            {nameAndValue(applet, "FG_CAMERASIMULATOR_ENABLE") + ": the simulator's pattern comes, and not the scene",
             "FG_CAMERASIMULATOR_ENABLE=FG_CAMPORT"});
    }
    if (scene.illumination && scene.illumination->light.flashGain != 1 && applet.readInt("FG_FLASHON") == FG_OFF) {
        hints.push_back({nameAndValue(applet, "FG_FLASHON") + ": the flash is never active", "FG_FLASHON=FG_ON"});
    }
    return hints;
}

std::vector<Hint> hintsFor(const client::Applet& applet, const Belt& belt) {
    std::vector<Hint> hints;
    if (belt.encoder) {
        hintAtEncoder(applet, belt, hints);
    }
    if (!belt.barriers.empty()) {
        hintAtBarriers(applet, belt, hints);
    }
    return hints;
}

std::string inWords(const Fault& fault) {
    if (const auto* line = std::get_if<PlannedLineFault>(&fault)) {
        return numbered("line", line->nth) + " " + inWords(line->fault);
    }
    if (const auto* frame = std::get_if<PlannedFrameFault>(&fault)) {
        return numbered("frame", frame->nth) + " " + inWords(*frame);
    }
    const auto& outage = std::get<PlannedOutage>(fault);
    return std::string(outage.outage == client::Outage::Camera ? "the camera" : "the link") + " is gone from " +
           timeInWords(outage.fromUs) + (outage.toUs == client::Forever ? " on" : " to " + timeInWords(outage.toUs));
}

}  // namespace quillon::cli
