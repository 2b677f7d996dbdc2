/// @file
/// The digital side of a board, all that moves with the simulated clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/CameraPort.h"
#include "softboard/src/CameraSimulator.h"
#include "softboard/src/DebugPoints.h"
#include "softboard/src/FrameAssembler.h"
#include "softboard/src/ImageTrigger.h"
#include "softboard/src/LineTrigger.h"
#include "softboard/src/Monitors.h"
#include "softboard/src/Outages.h"
#include "softboard/src/PixelSettings.h"
#include "softboard/src/SignalRecording.h"
#include "softboard/src/Stage.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. It holds pointers to its own members and stays where it is.
class Signals {
public:
    Signals() = default;
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// Takes up the parameters of a design, which have to stay in place until the next call, and the names of its
    /// events. It is time 0 again. Frames go to `taker` from now on.
    void bind(const Find& find, const std::vector<std::string>& events, FrameTaker& taker);

    /// The tick that lies so many microseconds ahead; what is left of a tick is kept for the next call.
    Tick ahead(double microseconds);
    /// Moves the time on to that tick, with all that happens meanwhile, or to the one at which a frame has come
    /// through: then it returns false. The time stands still otherwise.
    bool run(Tick until);
    /// To be called when the time has been moved on: shows what goes by it.
    void show();
    double time() const { return microsecondsOf(switchboard_.now()); }
    Tick now() const { return switchboard_.now(); }
    /// When the next thing happens by itself; Never if nothing will.
    Tick next() const;

    /// An acquisition starts: what is under way by itself begins anew, and no frame that has begun is handed on.
    void restartPath();
    PixelSettings& pixelSettings() { return pixelSettings_; }
    Stage& stage() { return stage_; }
    /// The scene or its light has changed: a line that begins from now on sees it.
    void stageChanged() { pixelSettings_.setScene(stage_.view()); }
    /// The inputs that a belt drives have these levels now; to be called after each change of the belt.
    void follow(const Belt::Edges& edges);
    LineFaults& lineFaults() { return port_.faults(); }
    Outages& outages() { return outages_; }
    DebugPoints& debugPoints() { return debug_; }
    /// What is gone by a plan is back.
    void endOutages();
    Switchboard& switchboard() { return switchboard_; }

    // Counts since the design was put on the board.
    std::uint64_t lines() const { return port_.lines(); }
    std::uint64_t frames() const { return image_.frames(); }
    std::uint64_t triggers() const { return image_.triggers(); }

    /// Gives an input a level, now.
    int setInput(unsigned input, bool level);
    int output(unsigned output, bool& level) const { return switchboard_.output(output, level); }
    /// The level of the signal with this number among the selects of the switchboard.
    int level(unsigned select, bool& level) const;
    int eventCount(std::string_view event, std::uint64_t& count) const;

    /// Begins a recording of `most` changes.
    void record(std::size_t most);
    /// The recording, with all that has changed by now.
    const SignalRecording& recording();

    /// To be told of every change of a watched parameter, after it.
    void written(const Parameter& parameter);

private:
    void record();
    void settle();
    void followSource();
    void happen();
    void runLines(Tick until);
    Tick nextBesideLines() const;
    void apply(const Outages::Change& change);
    void followInputs();
    void followOverflow();
    std::int64_t cameraSignals() const;
    void showCameraSignals(std::int64_t which);

    SignalRecording recording_;
    Switchboard switchboard_;
    PixelSettings pixelSettings_;
    FrameAssembler frames_;
    ImageTrigger image_;
    CameraPort port_;
    LineTrigger line_;
    CameraSimulator simulator_;
    DebugPoints debug_;
    Monitors monitors_;
    Stage stage_;
    Belt::Edges edges_;  ///< of the belt, while they are followed
    Outages outages_;
    FrameTaker* taker_ = nullptr;
    double begunTick_ = 0.0;    ///< the part of the next tick that has passed, 0 to 1
    bool sourceWaits_ = false;  ///< the other source is selected, and is connected when the frame has ended
    Parameter* inputs_ = nullptr;
    Parameter* cameraStatus_ = nullptr;
    std::int64_t shownSignals_ = 0;
    const Parameter* clear_ = nullptr;
    const Parameter* overflow_ = nullptr;
    bool overflowed_ = false;
};

}  // namespace softboard
