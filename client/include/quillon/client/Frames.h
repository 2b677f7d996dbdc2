/// @file
/// Pictures: their bytes, what is known of them, and how they come.
///
///     SoftBoard board("build/lib/softboard");
///     Applet applet(library, board);
///     FrameMemory memory(board, frameSize(applet), 4);
///     for (const Frame& frame : Acquisition(applet, memory, 10)) {
///         std::cout << frame.component(0, 0, Component::Red) << '\n';
///     }
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "quillon/client/Applet.h"
#include "quillon/client/Export.h"
#include "quillon/client/SoftBoard.h"

struct softboard_memory;

namespace quillon::client {

/// What a pixel consists of.
enum class Component : unsigned { Red, Green, Blue };

/// What may be said of a frame, as bits of FrameDescription::flags.
enum class FrameFlag : std::uint32_t {
    Short = 1,      ///< it has fewer lines than the image height
    GateEnded = 2,  ///< its image ended because the gate fell
    Truncated = 4,  ///< the buffer is smaller than the frame: its end is missing
    LinesLost = 8,  ///< lines of it did not fit into the board's own memory, or a fault took them
    Injected = 16,  ///< it came in through a debug point
    RedFirst = 32,  ///< a pixel's first component is red
    Mixed = 64,     ///< width, bits or order changed within it: they are told of its first line
    Faulty = 128    ///< a planned fault has befallen it, or a line of it
};

/// What is known of a frame beside its bytes. A tick is 8 ns of the board's clock.
struct QUILLON_CLIENT_API FrameDescription {
    std::uint64_t number = 0;      ///< 1, 2, 3 ... since the start of the acquisition, without gaps
    std::uint64_t image = 0;       ///< the same among the frames that the trigger made: gaps are frames that were left
                                   ///< out or lost
    std::uint64_t firstTick = 0;   ///< when its first line was there
    std::uint64_t lastTick = 0;    ///< when its last line was there
    std::uint64_t lostBefore = 0;  ///< frames that were lost between the frame before and this one
    std::uint32_t width = 0;       ///< pixels of a line
    std::uint32_t lines = 0;       ///< complete lines
    std::uint32_t bits = 0;        ///< of a component: 8, 10, 12, 14 or 16
    std::uint32_t flags = 0;       ///< FrameFlag
    std::uint32_t buffer = 0;      ///< index of its buffer
    std::uint32_t settings = 0;    ///< version of the settings that its first line was drawn with

    bool has(FrameFlag flag) const { return (flags & static_cast<std::uint32_t>(flag)) != 0; }
    /// The flags by their names: "short", "gate ended", "truncated", "lines lost", "injected", "red first", "mixed",
    /// "faulty".
    std::vector<std::string> flagNames() const;
};

/// A picture that lies in memory of somebody else, who keeps it there as long as the frame is looked at.
///
/// The bytes are one stream of bits, from the lowest bit of the first byte on: blue, green and red of the first pixel,
/// or red, green and blue where the flag RedFirst says so, then those of the next; lines follow each other without a
/// gap.
class QUILLON_CLIENT_API Frame {
public:
    /// Throws ValueError for a number of bits that no format has, and for fewer bytes than the lines take.
    Frame(const FrameDescription& description, std::span<const std::byte> bytes);

    const FrameDescription& description() const { return description_; }
    std::uint32_t width() const { return description_.width; }
    std::uint32_t lines() const { return description_.lines; }
    std::uint32_t bits() const { return description_.bits; }
    /// The largest value of a component: 255 for 8 bits.
    std::uint32_t largest() const { return (1U << bits()) - 1; }
    /// The frame as it lies in memory.
    std::span<const std::byte> bytes() const { return bytes_; }

    /// A component of the pixel in column `x` of line `y`, both from 0. Throws ValueError outside the picture.
    std::uint16_t component(std::uint32_t x, std::uint32_t y, Component component) const;
    /// Line `y` from 0: red, green and blue of each pixel in turn. Throws ValueError outside the picture and for a
    /// `line` that has not three elements a pixel.
    void readLine(std::uint32_t y, std::span<std::uint16_t> line) const;

private:
    std::uint16_t at(std::uint64_t component) const;
    /// Where the colour lies within its pixel.
    std::uint64_t place(Component component) const;

    FrameDescription description_;
    std::span<const std::byte> bytes_;
};

/// The bytes of a frame as the applet is set now: FG_WIDTH times FG_HEIGHT pixels in the FG_FORMAT. Throws what
/// Applet::get throws.
QUILLON_CLIENT_API std::size_t frameSize(const Applet& applet);

/// How a memory is filled again when all its buffers hold frames.
enum class MemoryMode {
    Ring = 0,  ///< the oldest frame is overwritten
    Hold = 1,  ///< only buffers that were released are filled; frames wait on the board until then
};

/// Buffers for the frames of a software board, filled with zeros at first.
class QUILLON_CLIENT_API FrameMemory {
public:
    /// Throws Error if a number is 0 or memory is short.
    FrameMemory(const SoftBoard& board, std::size_t bufferSize, unsigned buffers);

    /// What Fg_AcquireEx takes.
    void* pointer() const { return memory_.get(); }
    /// A new memory is a ring. Throws CallError while an acquisition runs.
    void setMode(MemoryMode mode);
    /// Frame `number` (from 1) of the acquisition that runs or ran last; nothing if it has not come yet or is gone. In
    /// a ring its bytes may change at any time; in hold mode they stay until it is released.
    std::optional<Frame> frame(std::uint64_t number) const;
    /// Lets the frame's buffer be filled again (hold mode). Throws CallError if the frame is not held.
    void release(std::uint64_t number);

private:
    struct Close {
        std::shared_ptr<const SoftBoardLibrary::Loaded> loaded;
        void operator()(softboard_memory* memory) const;
    };

    std::shared_ptr<const SoftBoardLibrary::Loaded> loaded_;
    std::unique_ptr<softboard_memory, Close> memory_;
    std::size_t bufferSize_;
};

/// A frame did not come: the time was over, or the acquisition has ended.
class QUILLON_CLIENT_API FrameError : public CallError {
public:
    FrameError(std::uint64_t frameNumber, unsigned timeout, int answeredCode);
    /// Whether the time was over; the acquisition may go on then.
    bool timedOut() const;
    std::uint64_t number;  ///< of the frame that was waited for
};

/// An acquisition from its start to its stop, frame by frame. A frame is held in its buffer until the next one is asked
/// for. Applet and memory must outlive it; one acquisition runs at a time.
class QUILLON_CLIENT_API Acquisition {
public:
    /// Starts an acquisition of `count` frames (-1: without end) and sets the memory to hold. `timeout` is how many
    /// seconds each frame is waited for. Throws CallError if it does not start.
    Acquisition(Applet& applet, FrameMemory& memory, std::int64_t count, unsigned timeout = 5);
    Acquisition(const Acquisition&) = delete;
    Acquisition& operator=(const Acquisition&) = delete;
    /// Stops it, if it still runs.
    ~Acquisition();

    /// Waits for the next frame and lets go of the one before; null when `count` frames have come. Throws FrameError.
    const Frame* next();
    /// Frames that were lost since the start.
    std::uint64_t lost() const;
    /// Lines that were lost since the start, those of lost frames among them.
    std::uint64_t lostLines() const;
    /// Bytes on the board, on their way to the host.
    std::uint64_t bytesWaiting() const;
    /// Planned faults of lines and frames that have struck since the start.
    std::uint64_t faults() const;

    /// Steps from frame to frame with next().
    class Iterator {
    public:
        using value_type = Frame;
        using difference_type = std::ptrdiff_t;

        explicit Iterator(Acquisition& acquisition) : acquisition_(&acquisition), frame_(acquisition.next()) {}
        const Frame& operator*() const { return *frame_; }
        const Frame* operator->() const { return frame_; }
        Iterator& operator++() {
            frame_ = acquisition_->next();
            return *this;
        }
        void operator++(int) { ++*this; }
        bool operator==(std::default_sentinel_t) const { return frame_ == nullptr; }

    private:
        Acquisition* acquisition_;
        const Frame* frame_;
    };
    /// To be called once: it waits for the first frame.
    Iterator begin() { return Iterator(*this); }
    std::default_sentinel_t end() const { return {}; }

private:
    void release();
    std::uint64_t status(unsigned number) const;

    Applet& applet_;
    FrameMemory& memory_;
    std::int64_t count_;
    unsigned timeout_;
    std::uint64_t number_ = 0;  ///< of the latest frame
    std::optional<Frame> frame_;
};

}  // namespace quillon::client
