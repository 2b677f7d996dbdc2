/// @file
/// An acquisition: which frames it takes, those that wait on the board, and what is counted of them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

#include "softboard/softboard.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/BufferModel.h"
#include "softboard/src/FrameAssembler.h"
#include "softboard/src/FrameMemory.h"
#include "softboard/src/PathFaults.h"
#include "softboard/src/Switchboard.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// A frame that is on its way to the host.
struct WaitingFrame {
    AssembledFrame frame;
    std::uint64_t acquisition = 0;  ///< which one took it
    std::uint64_t image = 0;
    std::uint64_t lostBefore = 0;
};

/// Not locked; the board's lock guards it.
///
/// Without a memory a frame counts as soon as it ends. With one its lines wait in the board's memory until the DMA has
/// taken them, which it does while the link is up and no fault stalls it; then the frame is drawn into a buffer of the
/// host, when one is free and nothing else is being drawn.
class Acquisition final : public FrameTaker {
public:
    /// Takes up the parameters of a design and of the SDK that follow the frames.
    void bind(const Find& find, Switchboard& switchboard);

    bool running() const { return running_; }
    std::int64_t pictures() const { return pictures_; }
    /// Pictures asked for, -1 without end.
    std::int64_t wanted() const { return wanted_; }
    std::uint64_t lostFrames() const { return lostFrames_; }
    std::uint64_t lostLines() const { return lostLines_; }
    /// Planned faults that have struck since the start.
    std::uint64_t faults() const { return faults_; }
    std::uint64_t bytesWaiting(Tick now) const { return buffer_.bytes(now); }
    /// True if time alone brings no frame: the host has to release a buffer first.
    bool waitsForHost() const { return running_ && buffer_.waitsForHost(); }
    /// Bytes that went to the host since the board was opened.
    std::uint64_t bytesTransferred() const { return bytesTransferred_; }
    /// Null without a memory, and while no acquisition runs.
    const std::shared_ptr<softboard_memory>& memory() const { return memory_; }
    /// The one of the last acquisition; null if it had none, or it is closed.
    std::shared_ptr<softboard_memory> lastMemory() const { return lastMemory_.lock(); }
    /// What a wait for a frame that will not come answers: SOFTBOARD_E_ACQUISITION, or _TIMEOUT if no frame had come
    /// for FG_TIMEOUT seconds.
    int endedWith() const { return endedWith_; }

    void start(std::int64_t count, std::shared_ptr<softboard_memory> memory, Tick now);
    /// Ends at once; frames that wait are dropped.
    void stop(int endedWith, Tick now);
    /// True once after an acquisition has ended by itself.
    bool takeEndedByItself();

    /// Ends if no frame came for FG_TIMEOUT seconds.
    void checkTimeout(Tick now);

    // FrameTaker
    bool beginFrame() override;
    bool takeLine(std::size_t bytes, Tick now) override;
    void lineLost() override { lostLines_ += running_ ? 1U : 0U; }
    void faultStruck() override { faults_ += running_ ? 1U : 0U; }
    void take(AssembledFrame frame, Tick now) override;
    void drop(Tick now) override;
    void happen(Tick now) override;
    void linkChanged(bool up, Tick now) override;
    void show(Tick now) override;

    /// The picture count goes up by frames that nobody has assembled: without a memory only.
    void count(std::int64_t pictures, Tick now);

    /// True if a frame is to be drawn, into a buffer that is free.
    bool canDraw() const { return running_ && arrived_.has_value(); }
    WaitingFrame nextArrived();
    /// So many bytes of that frame are in its buffer.
    void drawn(const WaitingFrame& frame, std::size_t bytes, Tick now);
    /// A buffer may have become free: brings the frame that waits for it.
    void followHost(Tick now);

    void setDmaRate(double bytesPerSecond, Tick now);
    FrameFaults& frameFaults() { return frameFaults_; }
    /// A DMA that stands still goes on.
    void endStall(Tick now);

private:
    /// True if no further frame is taken: all that were asked for are there or on their way.
    bool complete() const;
    bool selected() const;
    void enterFrame(Tick now);
    void overflow();
    void serve(Tick now);
    void schedule() { next_ = std::min(buffer_.next(), stalledUntil_); }
    void transferred(std::size_t bytes);
    void countFrame(std::size_t bytes, Tick now);
    void endByCount(Tick now);

    Switchboard* switchboard_ = nullptr;
    Parameter* dmaStatus_ = nullptr;
    Parameter* transferLength_ = nullptr;
    const Parameter* timeout_ = nullptr;
    const Parameter* period_ = nullptr;
    const Parameter* phase_ = nullptr;
    std::array<Parameter*, 3> fillLevels_{};
    Parameter* overflow_ = nullptr;
    Parameter* linkWidth_ = nullptr;
    std::int64_t lanes_ = 0;  ///< of the link while it is up

    std::uint64_t number_ = 0;  ///< of acquisitions on this board
    bool running_ = false;
    bool endedByItself_ = false;
    int endedWith_ = SOFTBOARD_E_ACQUISITION;
    std::int64_t wanted_ = 0;
    std::int64_t pictures_ = 0;
    Tick lastFrame_ = 0;              ///< when the last frame was taken, or the start
    std::uint64_t images_ = 0;        ///< frames that ended since the start
    std::uint64_t behindBuffer_ = 0;  ///< of them, those that came to the image selector
    std::uint64_t lostFrames_ = 0;
    std::uint64_t lostLines_ = 0;
    std::uint64_t lostBefore_ = 0;  ///< lost since the last frame that was taken
    std::shared_ptr<softboard_memory> memory_;
    std::weak_ptr<softboard_memory> lastMemory_;
    std::uint64_t faults_ = 0;

    /// The frame whose lines come.
    struct OpenFrame {
        bool wanted = false;    ///< its lines are kept
        bool entered = false;   ///< a line of it has come to the image selector
        bool selected = false;  ///< which has let it through
        bool faulty = false;
        bool cutOff = false;                     ///< lines are missing at its end
        std::uint64_t most = ~std::uint64_t{0};  ///< lines that may come through
        std::optional<double> stall;             ///< of the DMA, in microseconds, when its first line has come
        std::uint64_t lines = 0;
        std::uint64_t linesLost = 0;
        bool overflows = false;  ///< its last line did not fit
    };
    OpenFrame open_;
    FrameFaults frameFaults_;
    BufferModel buffer_;
    std::deque<WaitingFrame> waiting_;     ///< complete frames in the buffer
    std::optional<WaitingFrame> arrived_;  ///< at the host, but for its pixels
    bool drawing_ = false;
    bool linkUp_ = true;
    Tick stalledUntil_ = Never;  ///< Never: the DMA is not stalled
    std::uint64_t bytesTransferred_ = 0;
};

}  // namespace softboard
