/// @file
/// The timing of the camera simulator: when its lines come.
#pragma once

#include <cstdint>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/CameraPort.h"
#include "softboard/src/Switchboard.h"

namespace softboard {

/// Not locked; the board's lock guards it. A design that lacks one of the parameters has no simulator.
///
/// A line is Size_ImageWidth blocks of 32 pixels, of which the first LineGap_Number are sent and the others are gap; a
/// frame is Size_ImageHeight lines, of which the first FrameGap_Number are sent. (The names of the parameters do not
/// match.) With ControlPixelClock_Mode 0, ActivePixel_Number of every SequenceLength cycles of 8 ns move a block, one
/// in RepeatPat_Divisor; with 1, so many lines start in each sequence, and the blocks of a line follow each other at
/// once.
///
/// It runs while the port is connected to it: by itself (TriggerValve_FreeRun_Select 1), or a rising edge of the camera
/// trigger lets one line (TriggerValve_Mode 1) or one frame (2) through. Edges that come while it sends are lost.
class CameraSimulator {
public:
    void bind(const Find& find, Switchboard& switchboard, CameraPort& port);

    void written(const Parameter& parameter);
    void cameraTriggerRose();
    /// Begins with the first line of frame 0, now or with the next trigger, if it is connected; stops otherwise.
    void restart();

    /// When the next thing happens by itself; Never if nothing will.
    Tick next() const { return nextLine_ < lineEnd_ ? nextLine_ : lineEnd_; }
    /// Lets it happen; the switchboard's time is that tick already.
    void happen();

private:
    struct Timing {
        bool byLine = false;
        std::int64_t blocks = 0;
        std::int64_t sentBlocks = 0;
        std::int64_t lines = 0;
        std::int64_t sentLines = 0;
        std::int64_t sequence = 0;
        std::int64_t active = 0;
        std::int64_t divisor = 0;
        bool operator==(const Timing&) const = default;
        bool sends() const { return sentBlocks > 0 && sentLines > 0 && (byLine || active > 0); }
        /// Cycles from the start of the first of a run of lines to the start of the block so many blocks later.
        Tick toBlock(std::int64_t block) const;
        Tick toLine(std::int64_t line) const;
        Tick toLineEnd(std::int64_t line) const;
    };

    bool allFound() const;
    Timing timing() const;
    bool connected() const { return port_->connected() == LineSource::Simulator; }
    bool freeRun() const { return integerOf(freeRun_) == 1; }
    void follow(const Timing& timing);
    void startRun();
    void beginLine();

    bool bound_ = false;  ///< the design has all the parameters
    Switchboard* switchboard_ = nullptr;
    CameraPort* port_ = nullptr;
    const Parameter* imageWidth_ = nullptr;
    const Parameter* lineGap_ = nullptr;
    const Parameter* imageHeight_ = nullptr;
    const Parameter* frameGap_ = nullptr;
    const Parameter* mode_ = nullptr;
    const Parameter* active_ = nullptr;
    const Parameter* sequence_ = nullptr;
    const Parameter* divisor_ = nullptr;
    const Parameter* freeRun_ = nullptr;
    const Parameter* valve_ = nullptr;

    Timing timing_;
    // A run of lines is counted from the tick at which its first begins.
    Tick runStart_ = 0;
    std::int64_t lineOfRun_ = 0;  ///< the one that comes next, with those that are gap
    Tick lastLine_ = Never;       ///< when the last one began; Never before the first
    Tick nextLine_ = Never;
    Tick lineEnd_ = Never;
    std::int64_t line_ = 0;  ///< of the frame, the one that comes next
    std::int64_t frame_ = 0;
};

}  // namespace softboard
