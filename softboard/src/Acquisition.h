/// @file
/// An acquisition: which frames it takes, those that wait on the board, and what is counted of them.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

#include "softboard/softboard.h"
#include "softboard/src/BoundParameters.h"
#include "softboard/src/FrameAssembler.h"
#include "softboard/src/FrameMemory.h"
#include "softboard/src/Switchboard.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// A frame that the acquisition has taken and nobody has drawn yet.
struct WaitingFrame {
    AssembledFrame frame;
    std::uint64_t acquisition = 0;  ///< which one took it
    std::uint64_t image = 0;
    std::uint64_t lostBefore = 0;
};

/// Not locked; the board's lock guards it.
///
/// Without a memory a frame counts as soon as it ends. With one it waits on the board until it is drawn into its
/// buffer.
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
    std::size_t bytesWaiting() const { return bytesWaiting_; }
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
    void stop(int endedWith);
    /// True once after an acquisition has ended by itself.
    bool takeEndedByItself();

    /// Ends if no frame came for FG_TIMEOUT seconds.
    void checkTimeout(Tick now);

    // FrameTaker
    bool wantsLines() const override { return running_ && memory_ != nullptr && !complete(); }
    void take(AssembledFrame frame, Tick now) override;

    /// The picture count goes up by frames that nobody has assembled: without a memory only.
    void count(std::int64_t pictures);

    /// True if a frame waits and its buffer is free.
    bool canDraw() const { return running_ && !waiting_.empty() && memory_->hasRoom(); }
    WaitingFrame nextWaiting();
    /// So many bytes of that frame are in its buffer.
    void drawn(const WaitingFrame& frame, std::size_t bytes);

private:
    /// True if no further frame is taken: all that were asked for are there or on their way.
    bool complete() const;
    bool selected() const;
    std::uint64_t capacity() const;
    void transferred(std::size_t bytes);
    void showFillLevel();
    void lose(const AssembledFrame& frame);
    void endByCount();

    Switchboard* switchboard_ = nullptr;
    Parameter* dmaStatus_ = nullptr;
    Parameter* transferLength_ = nullptr;
    const Parameter* timeout_ = nullptr;
    const Parameter* period_ = nullptr;
    const Parameter* phase_ = nullptr;
    const Parameter* addressWidth_ = nullptr;
    const Parameter* dataWidth_ = nullptr;
    std::array<Parameter*, 3> fillLevels_{};
    Parameter* overflow_ = nullptr;

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
    std::deque<WaitingFrame> waiting_;
    bool drawing_ = false;
    std::size_t bytesWaiting_ = 0;
    std::uint64_t bytesTransferred_ = 0;
};

}  // namespace softboard
