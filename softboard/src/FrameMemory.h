/// @file
/// Buffers that an acquisition fills with frames.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "softboard/frames.h"

namespace softboard {

/// Locks for itself: applications look into it while the board fills it.
class FrameMemory {
public:
    /// Null if a number is 0, the product overflows, or the memory is not to be had. See softboard_memory_open.
    static std::shared_ptr<softboard_memory> make(IXdevice* board, std::size_t bufferSize, unsigned buffers,
                                                  const char* sharedName);
    FrameMemory(IXdevice* board, std::size_t bufferSize, unsigned buffers);
    FrameMemory(const FrameMemory&) = delete;
    FrameMemory& operator=(const FrameMemory&) = delete;
    ~FrameMemory();

    IXdevice* board() const { return board_; }

    // An application's side.
    int setMode(int mode);
    const void* data(std::int64_t number, softboard_frame* about) const;
    int release(std::int64_t number);
    using FrameCame = void (*)(void* user, const softboard_frame* about, const void* data);
    void onFrame(FrameCame frameCame, void* user);

    // The board's side.
    /// Forgets all frames; the next is number 1. False if another acquisition fills the memory.
    bool beginAcquisition();
    void endAcquisition() { acquiring_ = false; }
    bool acquiring() const { return acquiring_; }
    /// True if the next frame has a buffer.
    bool hasRoom() const;
    /// The buffer of the next frame, which holds no frame from now on.
    std::span<std::byte> nextBuffer();
    /// The next frame is there: fills in its number, buffer and size, and calls the call-back. Nobody holds a lock. If
    /// another acquisition has begun since nextBuffer, it is none of that one's.
    void deliver(softboard_frame frame);
    std::optional<softboard_frame> description(std::int64_t number) const;

private:
    struct Buffer {
        softboard_frame frame{};  ///< number 0: none
        bool held = false;
    };

    bool map(const char* sharedName);
    const Buffer* find(std::int64_t number) const;
    std::size_t nextIndex() const { return static_cast<std::size_t>(frames_ % buffers_.size()); }
    std::byte* bytes(std::size_t index) const { return bytes_ + index * bufferSize_; }

    IXdevice* const board_;
    const std::size_t bufferSize_;
    std::byte* bytes_ = nullptr;
    std::string sharedName_;  ///< empty without a name
    std::atomic<bool> acquiring_ = false;
    mutable std::mutex mutex_;
    int mode_ = SOFTBOARD_MEMORY_RING;
    std::uint64_t frames_ = 0;  ///< that have come since the start of the acquisition
    std::vector<Buffer> buffers_;
    std::uint64_t acquisition_ = 0;  ///< that is the last one
    std::uint64_t drawnFor_ = 0;     ///< that the buffer is filled for
    FrameCame frameCame_ = nullptr;
    void* user_ = nullptr;
};

}  // namespace softboard

struct softboard_memory final : softboard::FrameMemory {
    using FrameMemory::FrameMemory;
};
