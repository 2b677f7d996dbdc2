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
    std::uint32_t flags = 0;  ///< softboard_frame_flags
    std::uint64_t lineCount = 0;
    std::size_t bytes = 0;                                          ///< of the whole picture
    std::vector<pixels::Line> lines;                                ///< empty if nobody will draw them
    std::vector<std::shared_ptr<const pixels::Settings>> settings;  ///< of the lines, in the order of their versions
};

/// Takes frames when they end.
class FrameTaker {
public:
    FrameTaker() = default;
    FrameTaker(const FrameTaker&) = delete;
    FrameTaker& operator=(const FrameTaker&) = delete;
    virtual ~FrameTaker() = default;

    /// True if the lines of a frame that begins now have to be kept.
    virtual bool wantsLines() const = 0;
    virtual void take(AssembledFrame frame, Tick now) = 0;
};

/// Not locked; the board's lock guards it.
class FrameAssembler {
public:
    void bind(PixelSettings& settings, FrameTaker& taker);

    void frameBegan();
    void lineBegan(Tick now, std::int64_t position);
    /// The line counts. One that has begun and never ends does not.
    void lineEnded();
    /// A frame without a line is none.
    void frameEnded(Tick now, std::uint32_t flags);
    /// The frame that has begun is not handed on.
    void forget() { collecting_ = false; }
    /// Frames that have been handed on.
    std::uint64_t handedOn() const { return handedOn_; }

private:
    PixelSettings* settings_ = nullptr;
    FrameTaker* taker_ = nullptr;
    bool collecting_ = false;
    bool keepsLines_ = false;
    std::uint64_t handedOn_ = 0;
    AssembledFrame frame_;
    pixels::Line line_{};  ///< the one that is under way
};

}  // namespace softboard
