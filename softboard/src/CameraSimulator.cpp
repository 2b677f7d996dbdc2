#include "softboard/src/CameraSimulator.h"

#include <algorithm>
#include <string>

#include "softboard/pixels/Line.h"

namespace softboard {
namespace {

// What the design understands.
constexpr std::int64_t ByLineMode = 1;
constexpr std::int64_t FrameValve = 2;

}  // namespace

void CameraSimulator::bind(const Find& find, Switchboard& switchboard, CameraPort& port) {
    *this = CameraSimulator();
    switchboard_ = &switchboard;
    port_ = &port;
    const std::string unit = "Device1_Process0_CameraSimulator_";
    imageWidth_ = watched(find, unit + "Size_ImageWidth");
    lineGap_ = watched(find, unit + "LineGap_Number");
    imageHeight_ = watched(find, unit + "Size_ImageHeight");
    frameGap_ = watched(find, unit + "FrameGap_Number");
    mode_ = watched(find, unit + "ControlPixelClock_Mode");
    active_ = watched(find, unit + "PixelFrequency_ActivePixel_Number");
    sequence_ = watched(find, unit + "PixelFrequency_SequenceLength_ImageWidth");
    divisor_ = watched(find, unit + "PixelFrequency_RepeatPat_Divisor");
    freeRun_ = watched(find, unit + "TriggerValve_FreeRun_Select");
    valve_ = watched(find, unit + "TriggerValve_TriggerValve_Mode");
    bound_ = allFound();
    if (bound_) {
        timing_ = timing();
        restart();
    }
}

bool CameraSimulator::allFound() const {
    const auto parameters = {imageWidth_, lineGap_,  imageHeight_, frameGap_, mode_,
                             active_,     sequence_, divisor_,     freeRun_,  valve_};
    return std::none_of(parameters.begin(), parameters.end(), [](const Parameter* it) { return it == nullptr; });
}

CameraSimulator::Timing CameraSimulator::timing() const {
    Timing timing;
    timing.byLine = integerOf(mode_) == ByLineMode;
    timing.blocks = integerOf(imageWidth_);
    timing.sentBlocks = std::min(integerOf(lineGap_), timing.blocks);
    timing.lines = std::min(integerOf(imageHeight_), pixels::SimulatorFrameLines);
    timing.sentLines = std::min(integerOf(frameGap_), timing.lines);
    timing.sequence = std::max<std::int64_t>(integerOf(sequence_), 1);
    timing.active = std::min(integerOf(active_), timing.sequence);
    const std::int64_t room = timing.sequence / std::max<std::int64_t>(timing.active, 1);
    timing.divisor = std::clamp<std::int64_t>(integerOf(divisor_), 1, room);
    return timing;
}

Tick CameraSimulator::Timing::toBlock(std::int64_t block) const {
    return block / active * sequence + block % active * divisor;
}

Tick CameraSimulator::Timing::toLine(std::int64_t line) const {
    if (byLine) {
        return line * std::max(sequence / std::max<std::int64_t>(active, 1), blocks);
    }
    return toBlock(line * blocks);
}

Tick CameraSimulator::Timing::toLineEnd(std::int64_t line) const {
    return byLine ? toLine(line) + sentBlocks : toBlock(line * blocks + sentBlocks - 1) + 1;
}

void CameraSimulator::written(const Parameter& parameter) {
    if (!bound_) {
        return;
    }
    if (&parameter == freeRun_ || &parameter == valve_) {
        if (freeRun()) {
            if (next() == Never) {
                startRun();
            }
        } else if (integerOf(valve_) != FrameValve || line_ == 0) {
            nextLine_ = Never;
        }
    } else if (const Timing changed = timing(); changed != timing_) {
        follow(changed);
    }
}

/// The line that runs gets the new timing, even if the next should have begun by that.
void CameraSimulator::follow(const Timing& timing) {
    timing_ = timing;
    if (nextLine_ == Never || !timing_.sends()) {
        nextLine_ = Never;
        if (freeRun()) {
            startRun();
        }
        return;
    }
    if (line_ >= timing_.sentLines) {
        line_ = 0;
        ++frame_;
    }
    if (lastLine_ != Never) {
        runStart_ = lastLine_;
        lineOfRun_ = line_ != 0 ? 1 : 1 + timing_.lines - timing_.sentLines;
        nextLine_ = std::max(runStart_ + timing_.toLine(lineOfRun_), switchboard_->now() + 1);
    }
}

void CameraSimulator::restart() {
    nextLine_ = Never;
    lineEnd_ = Never;
    lastLine_ = Never;
    line_ = 0;
    frame_ = 0;
    if (bound_ && freeRun()) {
        startRun();
    }
}

void CameraSimulator::startRun() {
    if (connected() && timing_.sends()) {
        runStart_ = switchboard_->now();
        lineOfRun_ = 0;
        lastLine_ = Never;
        nextLine_ = runStart_;
    }
}

void CameraSimulator::cameraTriggerRose() {
    if (bound_ && !freeRun() && next() == Never) {
        startRun();
    }
}

void CameraSimulator::happen() {
    if (switchboard_->now() == lineEnd_) {
        lineEnd_ = Never;
        port_->endLine(LineSource::Simulator);
    } else {
        beginLine();
    }
}

void CameraSimulator::beginLine() {
    const Tick begun = nextLine_;
    const std::int64_t position = pixels::simulatorPosition(frame_, line_);
    lineEnd_ = begun + timing_.toLineEnd(lineOfRun_) - timing_.toLine(lineOfRun_);
    lastLine_ = begun;
    ++lineOfRun_;
    ++line_;
    const bool frameSent = line_ >= timing_.sentLines;
    if (frameSent) {
        line_ = 0;
        ++frame_;
        lineOfRun_ += timing_.lines - timing_.sentLines;
    }
    const bool goesOn = freeRun() || (integerOf(valve_) == FrameValve && !frameSent);
    nextLine_ = goesOn ? runStart_ + timing_.toLine(lineOfRun_) : Never;
    port_->beginLine(
        LineSource::Simulator,
        {.tick = switchboard_->now(), .position = position, .settings = 0, .exposure = 0, .flash = 0, .inverted = 0});
}

}  // namespace softboard
