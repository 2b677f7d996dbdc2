/// @file
/// The board's own memory between the camera and the DMA: how full it is, and when a frame has left it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Not locked; the board's lock guards it.
///
/// Lines go in whole, or not at all if there is no room. The DMA takes bytes as they came, at its rate. While the host
/// has a buffer for the first frame, they leave at once; otherwise it takes them as far as it can, so that a frame that
/// has waited long enough leaves when the host has a buffer again.
class BufferModel {
public:
    void bind(const Find& find);

    /// Bytes that it holds.
    std::uint64_t capacity() const;
    /// Infinite: what is there leaves at once.
    void setRate(double bytesPerSecond, Tick now);

    /// Empties it.
    void clear(Tick now);
    /// A frame comes, behind the others.
    void beginFrame() { frames_.emplace_back(); }
    /// True if there is room for a line now.
    bool fits(std::size_t bytes, Tick now);
    /// A line that fits comes; it belongs to the last frame.
    void enter(std::size_t bytes);
    /// All of its lines have come.
    void endFrame() { frames_.back().complete = true; }
    /// The last frame is given up.
    void dropLast(Tick now);
    /// Frames that are here, in part at least.
    std::size_t frames() const { return frames_.size(); }

    /// Whether the DMA moves, and whether the host has a buffer for the first frame.
    void serve(bool moves, bool hostReady, Tick now);
    /// When the DMA has taken a frame; Never if that depends on something else.
    Tick next() const;
    /// Lets it happen. True if the first frame has left.
    bool happen(Tick now);
    /// True if the DMA has taken the first frame, and only the host's buffer is missing.
    bool waitsForHost() const { return taken_ != 0 && !hostReady_; }

    /// Bytes that are here.
    std::uint64_t bytes(Tick now) const;

private:
    struct Frame {
        std::uint64_t bytes = 0;
        bool complete = false;
    };

    /// How much the DMA has taken by then of the frame that it takes.
    double takenAt(Tick now) const;
    void advance(Tick now);

    const Parameter* addressWidth_ = nullptr;
    const Parameter* dataWidth_ = nullptr;
    double bytesPerTick_ = 28.8;  ///< 3.6e9 bytes/s: 8 lanes of 5.0 GT/s, payloads of 256 bytes
    bool moves_ = false;
    bool hostReady_ = false;
    std::deque<Frame> frames_;
    std::uint64_t bytes_ = 0;  ///< of all frames
    std::size_t taken_ = 0;    ///< frames that the DMA has taken whole
    double partTaken_ = 0.0;   ///< bytes of the next one, at tick at_
    Tick at_ = 0;
};

}  // namespace softboard
