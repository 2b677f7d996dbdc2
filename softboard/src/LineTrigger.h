/// @file
/// The line trigger with the camera behind it: ExSync, ExSync2, and the lines that they bring.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>

#include "softboard/softboard.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/CameraPort.h"
#include "softboard/src/Debouncer.h"
#include "softboard/src/ImageTrigger.h"
#include "softboard/src/ShaftEncoder.h"
#include "softboard/src/Stage.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. A design that lacks one of the parameters has no line trigger.
///
/// - A line trigger comes every ExsyncPeriod, first one period after ExSync was enabled, or with every
///   LineTrgDownscaler-th pulse from outside, the first of an image with the LineTrgPhase-th. The gated modes let it
///   through only while an image runs.
/// - A pulse from outside is an active edge of the selected input A, or, while the shaft encoder filter is on, what
///   that makes of A and B. Both inputs are debounced.
/// - ExSync is active for ExsyncExposure; a line trigger in that time is lost. ExSync2 is ExSync, Exsync2Delay later.
/// - When the exposure ends, the camera, if there is one, transfers the line in SensorWidth / Parallelism ticks. A line
///   that is still under way when the next one begins ends there.
class LineTrigger {
public:
    void bind(const Find& find, Switchboard& switchboard, ImageTrigger& image, CameraPort& port, const Stage& stage);

    void written(const Parameter& parameter);
    void inputChanged(unsigned input, bool level);

    /// When the next thing happens by itself; Never if nothing will.
    Tick next() const {
        return std::min(std::min(std::min(lineEnd_, exposureEnd_), std::min(nextExsync2_, nextCycle_)),
                        std::min(trackA_.next(), trackB_.next()));
    }
    /// Lets it happen; the switchboard's time is that tick already.
    void happen();

    /// The scene of a board without a belt begins anew with the next line.
    void restartScene() { lines_ = 0; }

private:
    struct Exsync2Edge {
        Tick tick;
        bool active;
        /// Of two at the same tick the end comes first.
        bool before(const Exsync2Edge& other) const {
            return tick != other.tick ? tick < other.tick : active < other.active;
        }
    };

    bool allFound() const;
    Tick period() const;
    void followGenerator();
    void scheduleCycle();
    void input(Debouncer& track, const Parameter* select, unsigned input, bool level);
    void connectTracks();
    void tracksChanged();
    void pulse();
    void trigger();
    void endExposure();
    void addExsync2Edge(Exsync2Edge edge);
    bool exsync2Ends(Tick now) const { return nextExsync2_ <= now && !exsync2Edges_.front().active; }
    void changeExsync2();
    bool inverted() const { return integerOf(polarity_) == 1; }
    void showExsync() { switchboard_->setLevel(SOFTBOARD_EXSYNC, exsync_ != inverted()); }
    void showExsync2() { switchboard_->setLevel(SOFTBOARD_EXSYNC2, exsync2_ != inverted()); }

    bool bound_ = false;  ///< the design has all the parameters
    Switchboard* switchboard_ = nullptr;
    ImageTrigger* image_ = nullptr;
    CameraPort* port_ = nullptr;
    const Stage* stage_ = nullptr;
    const Parameter* mode_ = nullptr;
    const Parameter* enable_ = nullptr;
    const Parameter* inputA_ = nullptr;
    const Parameter* inputB_ = nullptr;
    const Parameter* inputPolarity_ = nullptr;
    const Parameter* debouncing_ = nullptr;
    const Parameter* downscale_ = nullptr;
    const Parameter* phase_ = nullptr;
    const Parameter* period_ = nullptr;
    const Parameter* exposure_ = nullptr;
    const Parameter* polarity_ = nullptr;
    const Parameter* delay_ = nullptr;
    const Parameter* sensorWidth_ = nullptr;
    const Parameter* parallelism_ = nullptr;
    const Parameter* camera_ = nullptr;

    // What is due, each of a kind at most once, but the edges of ExSync2, which may lag several lines behind.
    Tick lineEnd_ = Never;
    Tick exposureEnd_ = Never;
    Tick nextCycle_ = Never;
    std::deque<Exsync2Edge> exsync2Edges_;  ///< in the order in which they come
    Tick nextExsync2_ = Never;              ///< the first of them

    Debouncer trackA_;
    Debouncer trackB_;
    bool activeA_ = false;
    ShaftEncoder encoder_;

    bool generating_ = false;
    Tick cycleStart_ = 0;
    bool exsync_ = false;
    bool exsync2_ = false;
    Tick exposureBegan_ = 0;
    double beltPosition_ = 0.0;        ///< when the exposure began, in nanometres
    std::int64_t lines_ = 0;           ///< that the camera has sent, whoever took them, since its scene began
    std::int64_t pulsesLeft_ = 0;      ///< input pulses to the next line trigger
    std::uint64_t imageOfPulses_ = 0;  ///< the image for which they are counted
};

}  // namespace softboard
