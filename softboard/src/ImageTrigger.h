/// @file
/// The image trigger: how the camera's lines become images, the busy flag and the flash.
#pragma once

#include <cstdint>

#include "softboard/pixels/Line.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/Debouncer.h"
#include "softboard/src/FrameAssembler.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. A design that lacks one of the parameters has no images.
///
/// An image is YLength lines long. Behind the start it leaves out YOffset lines, and the gate delay if it was
/// triggered; after every ImageHeight lines one frame ends and the next begins.
/// - Free run: image follows image.
/// - Triggered: an image begins with a rising edge of the trigger, and the busy flag is 1 until it has ended. Triggers
///   are ignored in that time.
/// - Gated: so, but an image ends at the latest with the line in which the gate closes; with MaxGatedHeight 1 only
/// then.
class ImageTrigger {
public:
    void bind(const Find& find, Switchboard& switchboard, FrameAssembler& frames);

    /// True while lines belong to an image: always in free run, otherwise from the trigger to the end.
    bool running() const { return running_; }
    /// Rises with every image that begins.
    std::uint64_t imageNumber() const { return imageNumber_; }
    /// True from the start of a frame's first line to the end of its last: FVAL.
    bool inFrame() const { return inFrame_; }
    /// True while the unit hears its trigger active, behind the debouncing.
    bool triggerActive() const { return bound_ && triggerLevel(); }
    /// Images that a trigger has begun, and frames that have ended, since the design was put on the board.
    std::uint64_t triggers() const { return triggers_; }
    std::uint64_t frames() const { return frames_; }

    /// An image that ends and begins by itself begins anew.
    void restartFreeRun();

    void written(const Parameter& parameter);
    void inputChanged(unsigned input, bool level);
    /// When the next thing happens by itself; Never if nothing will.
    Tick next() const { return debouncer_.next(); }
    /// Lets it happen; the switchboard's time is that tick already.
    void happen();

    // From the camera: exposures begin and end, lines are transferred.
    void exposureStarted();
    void exposureEnded();
    void lineStarted(const pixels::Line& line);
    void lineEnded();
    /// True while the flash is active.
    bool flashes() const { return flash_; }
    /// A planned fault has befallen a line; it may have been lost by it.
    void faultStruck(bool lost);
    /// What has struck befalls the frame that is under way, too.
    void frameSuffers() { assembler_->frameSuffers(); }

private:
    bool allFound() const;
    bool triggerLevel() const;
    bool inputLevel() const;
    void followTrigger();
    void changeMode();
    void trigger();
    void closeGate();
    void beginImage();
    void endImage(unsigned flags);
    void endFrame(unsigned flags);
    void showFlash();

    bool bound_ = false;  ///< the design has all the parameters
    Switchboard* switchboard_ = nullptr;
    FrameAssembler* assembler_ = nullptr;
    Parameter* busy_ = nullptr;
    const Parameter* mode_ = nullptr;
    const Parameter* enable_ = nullptr;
    const Parameter* source_ = nullptr;
    const Parameter* input_ = nullptr;
    const Parameter* polarity_ = nullptr;
    const Parameter* debouncing_ = nullptr;
    const Parameter* delay_ = nullptr;
    const Parameter* softwareLevel_ = nullptr;
    const Parameter* softwarePulse_ = nullptr;
    const Parameter* yOffset_ = nullptr;
    const Parameter* yLength_ = nullptr;
    const Parameter* maxGatedHeight_ = nullptr;
    const Parameter* imageHeight_ = nullptr;
    const Parameter* flashEnable_ = nullptr;
    const Parameter* flashDelay_ = nullptr;
    const Parameter* flashPolarity_ = nullptr;

    std::int64_t modeInForce_ = 0;
    Debouncer debouncer_;  ///< of the input that is selected
    bool triggerHigh_ = false;
    bool running_ = false;
    bool closing_ = false;  ///< the gate has closed within the line that is being transferred
    bool flash_ = false;
    bool inFrame_ = false;
    std::uint64_t imageNumber_ = 0;
    std::uint64_t triggers_ = 0;
    std::uint64_t frames_ = 0;
    // Since the image began:
    std::int64_t exposures_ = 0;
    std::int64_t lines_ = 0;       ///< with those left out
    std::int64_t imageLines_ = 0;  ///< without them
    std::int64_t frameLines_ = 0;
};

}  // namespace softboard
