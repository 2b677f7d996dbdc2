/// @file
/// The line trigger with the camera behind it: ExSync, ExSync2, and the lines that they bring.
#pragma once

#include <cstdint>
#include <functional>
#include <queue>
#include <vector>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/ImageTrigger.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. A design that lacks one of the parameters has no line trigger.
///
/// - A line trigger comes every ExsyncPeriod, first one period after ExSync was enabled, or with every
/// LineTrgDownscaler-th
///   active edge of the selected input, the first of an image with the LineTrgPhase-th. The gated modes let it through
///   only while an image runs.
/// - ExSync is active for ExsyncExposure; a line trigger in that time is lost. ExSync2 is ExSync, Exsync2Delay later.
/// - When the exposure ends, the camera, if there is one, transfers the line in SensorWidth / Parallelism ticks. A line
///   that is still under way when the next one begins ends there.
class LineTrigger {
public:
    void bind(const Find& find, Switchboard& switchboard, ImageTrigger& image);

    void written(const Parameter& parameter);
    void inputChanged(unsigned input, bool level);
    /// Lets everything happen that is due by then; afterwards that is the switchboard's time.
    void run(Tick until);

private:
    /// In the order in which they happen if they are due at the same tick.
    enum class Action { EndLine, EndExposure, EndExsync2, Trigger, BeginExsync2 };
    struct Due {
        Tick tick;
        Action action;
        std::uint64_t number;  ///< of the line or generator start that it belongs to, so that it lapses with it
        bool operator>(const Due& other) const {
            return tick != other.tick ? tick > other.tick : action > other.action;
        }
    };

    bool allFound() const;
    Tick period() const;
    void happen(const Due& due);
    void followGenerator();
    void scheduleCycle();
    void trigger();
    void endExposure();
    void beginLine();
    void endLine();
    void showExsync();

    bool bound_ = false;  ///< the design has all the parameters
    Switchboard* switchboard_ = nullptr;
    ImageTrigger* image_ = nullptr;
    const Parameter* mode_ = nullptr;
    const Parameter* enable_ = nullptr;
    const Parameter* input_ = nullptr;
    const Parameter* inputPolarity_ = nullptr;
    const Parameter* downscale_ = nullptr;
    const Parameter* phase_ = nullptr;
    const Parameter* period_ = nullptr;
    const Parameter* exposure_ = nullptr;
    const Parameter* polarity_ = nullptr;
    const Parameter* delay_ = nullptr;
    const Parameter* sensorWidth_ = nullptr;
    const Parameter* parallelism_ = nullptr;
    const Parameter* camera_ = nullptr;

    std::priority_queue<Due, std::vector<Due>, std::greater<>> due_;
    bool generating_ = false;
    std::uint64_t generation_ = 0;
    Tick cycleStart_ = 0;
    bool exsync_ = false;
    bool exsync2_ = false;
    bool transferring_ = false;
    std::uint64_t line_ = 0;
    std::int64_t pulsesLeft_ = 0;      ///< input pulses to the next line trigger
    std::uint64_t imageOfPulses_ = 0;  ///< the image for which they are counted
};

}  // namespace softboard
