/// @file
/// Collects the lines of a frame, and hands the frame on when it ends.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "softboard/pixels/Line.h"
#include "softboard/pixels/Settings.h"
#include "softboard/src/PixelSettings.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// A frame as the signals have decided it: everything but its pixels.
struct AssembledFrame {
    Tick firstTick = 0;
    Tick lastTick = 0;
    std::uint32_t flags = 0;                                        ///< softboard_frame_flags
    std::uint64_t lineCount = 0;                                    ///< without those that were lost
    std::size_t bytes = 0;                                          ///< of the whole picture
    std::vector<pixels::Line> lines;                                ///< empty if nobody will draw them
    std::vector<std::shared_ptr<const pixels::Settings>> settings;  ///< of the lines, in the order of their versions
};

/// Takes lines as they come, and frames when they end.
class FrameTaker {
public:
    FrameTaker() = default;
    FrameTaker(const FrameTaker&) = delete;
    FrameTaker& operator=(const FrameTaker&) = delete;
    virtual ~FrameTaker() = default;

    /// A frame begins. True if its lines have to be kept.
    virtual bool beginFrame() = 0;
    /// A line of that frame, with so many bytes, is complete. False if it is lost.
    virtual bool takeLine(std::size_t bytes, Tick now) = 0;
    /// A line has been lost in front of the path.
    virtual void lineLost() = 0;
    /// A planned fault has struck.
    virtual void faultStruck() = 0;
    /// The frame has ended.
    virtual void take(AssembledFrame frame, Tick now) = 0;
    /// The frame ends, and is lost.
    virtual void drop(Tick now) = 0;

    // What it does with frames by itself.
    /// When the next thing happens; Never if nothing will.
    Tick next() const { return next_; }
    virtual void happen(Tick now) = 0;
    /// The link to the host goes down or up.
    virtual void linkChanged(bool up, Tick now) = 0;
    /// Shows what goes by the time.
    virtual void show(Tick now) = 0;
    /// Frames that have come through.
    std::uint64_t through() const { return through_; }

protected:
    Tick next_ = Never;
    std::uint64_t through_ = 0;
};

/// Not locked; the board's lock guards it.
class FrameAssembler {
public:
    void bind(PixelSettings& settings, FrameTaker& taker);

    // The stream of the camera.
    void frameBegan();
    /// The version of the settings is filled in.
    void lineBegan(const pixels::Line& line);
    /// The line counts. One that has begun and never ends does not.
    void lineEnded(Tick now);
    /// A planned fault has befallen the path, and the frame that is under way.
    void faultStruck();
    /// One that has struck before befalls the frame that is under way.
    void frameSuffers();
    void lineLost() { taker_->lineLost(); }
    /// A frame without a line is none.
    void frameEnded(Tick now, std::uint32_t flags);
    /// The frame that has begun is not handed on.
    void forget() { collecting_ = false; }

    // What is injected in its place.
    /// While the stream is cut off, nothing of it comes in. A frame that has begun is lost.
    void cutOff(bool cutOff, Tick now);
    void beginInjected(std::shared_ptr<const pixels::Settings> settings);
    void injectLine(const pixels::Line& line, Tick now);
    void endInjected(Tick now);

private:
    void begin();
    void beginLine(const pixels::Line& line, const std::shared_ptr<const pixels::Settings>& settings);
    void endLine(Tick now);
    void end(Tick now, std::uint32_t flags);

    PixelSettings* settings_ = nullptr;
    FrameTaker* taker_ = nullptr;
    bool cutOff_ = false;
    std::shared_ptr<const pixels::Settings> injected_;
    bool collecting_ = false;
    bool keepsLines_ = false;
    AssembledFrame frame_;
    pixels::Line line_{};  ///< the one that is under way
};

}  // namespace softboard
