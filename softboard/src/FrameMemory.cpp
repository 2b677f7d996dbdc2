#include "softboard/src/FrameMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "softboard/softboard.h"

namespace softboard {

std::shared_ptr<softboard_memory> FrameMemory::make(IXdevice* board, std::size_t bufferSize, unsigned buffers,
                                                    const char* sharedName) {
    constexpr std::size_t Most = std::numeric_limits<std::ptrdiff_t>::max();
    if (bufferSize == 0 || buffers == 0 || bufferSize > Most / buffers) {
        return nullptr;
    }
    auto memory = std::make_shared<softboard_memory>(board, bufferSize, buffers);
    return memory->map(sharedName) ? memory : nullptr;
}

FrameMemory::FrameMemory(IXdevice* board, std::size_t bufferSize, unsigned buffers)
    : board_(board), bufferSize_(bufferSize), buffers_(buffers) {}

bool FrameMemory::map(const char* sharedName) {
    const std::size_t size = bufferSize_ * buffers_.size();
    int file = -1;
    if (sharedName != nullptr) {
        file = shm_open(sharedName, O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
        if (file < 0) {
            return false;
        }
        sharedName_ = sharedName;
        // Has the room set aside: a write into a page that is not to be had would end the process.
        if (posix_fallocate(file, 0, static_cast<off_t>(size)) != 0) {
            close(file);
            return false;
        }
    }
    void* const mapped =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, file >= 0 ? MAP_SHARED : MAP_PRIVATE | MAP_ANONYMOUS, file, 0);
    if (file >= 0) {
        close(file);
    }
    bytes_ = mapped != MAP_FAILED ? static_cast<std::byte*>(mapped) : nullptr;
    return bytes_ != nullptr;
}

FrameMemory::~FrameMemory() {
    if (bytes_ != nullptr) {
        munmap(bytes_, bufferSize_ * buffers_.size());
    }
    if (!sharedName_.empty()) {
        shm_unlink(sharedName_.c_str());
    }
}

int FrameMemory::setMode(int mode) {
    if (mode != SOFTBOARD_MEMORY_RING && mode != SOFTBOARD_MEMORY_HOLD) {
        return SOFTBOARD_E_ARGUMENT;
    }
    const std::lock_guard guard(mutex_);
    if (acquiring_) {
        return SOFTBOARD_E_ACQUISITION;
    }
    mode_ = mode;
    return SOFTBOARD_OK;
}

const FrameMemory::Buffer* FrameMemory::find(std::int64_t number) const {
    if (number < 1) {
        return nullptr;
    }
    const auto wanted = static_cast<std::uint64_t>(number);
    const Buffer& buffer = buffers_[static_cast<std::size_t>((wanted - 1) % buffers_.size())];
    return buffer.frame.number == wanted ? &buffer : nullptr;
}

const void* FrameMemory::data(std::int64_t number, softboard_frame* about) const {
    const std::lock_guard guard(mutex_);
    const Buffer* const buffer = find(number);
    if (buffer == nullptr) {
        return nullptr;
    }
    if (about != nullptr) {
        // An application that was built with a shorter description gets what it knows; without a size, all.
        const std::size_t known = about->size != 0 ? std::min<std::size_t>(about->size, sizeof *about) : sizeof *about;
        std::memcpy(about, &buffer->frame, known);
    }
    return bytes(buffer->frame.buffer);
}

int FrameMemory::release(std::int64_t number) {
    const std::lock_guard guard(mutex_);
    const Buffer* const buffer = find(number);
    if (buffer == nullptr || !buffer->held) {
        return SOFTBOARD_E_RANGE;
    }
    buffers_[buffer->frame.buffer].held = false;
    return SOFTBOARD_OK;
}

void FrameMemory::onFrame(FrameCame frameCame, void* user) {
    const std::lock_guard guard(mutex_);
    frameCame_ = frameCame;
    user_ = user;
}

bool FrameMemory::beginAcquisition() {
    const std::lock_guard guard(mutex_);
    if (acquiring_.exchange(true)) {
        return false;
    }
    ++acquisition_;
    frames_ = 0;
    buffers_.assign(buffers_.size(), Buffer());
    return true;
}

bool FrameMemory::hasRoom() const {
    const std::lock_guard guard(mutex_);
    return mode_ == SOFTBOARD_MEMORY_RING || !buffers_[nextIndex()].held;
}

std::span<std::byte> FrameMemory::nextBuffer() {
    const std::lock_guard guard(mutex_);
    drawnFor_ = acquisition_;
    buffers_[nextIndex()] = Buffer();
    return {bytes(nextIndex()), bufferSize_};
}

void FrameMemory::deliver(softboard_frame frame) {
    FrameCame frameCame = nullptr;
    void* user = nullptr;
    const std::byte* data = nullptr;
    {
        const std::lock_guard guard(mutex_);
        if (drawnFor_ != acquisition_) {
            return;
        }
        const std::size_t index = nextIndex();
        frame.size = sizeof frame;
        frame.number = ++frames_;
        frame.buffer = static_cast<std::uint32_t>(index);
        buffers_[index] = {frame, mode_ == SOFTBOARD_MEMORY_HOLD};
        frameCame = frameCame_;
        user = user_;
        data = bytes(index);
    }
    if (frameCame != nullptr) {
        frameCame(user, &frame, data);
    }
}

std::optional<softboard_frame> FrameMemory::description(std::int64_t number) const {
    const std::lock_guard guard(mutex_);
    const Buffer* const buffer = find(number);
    return buffer != nullptr ? std::optional(buffer->frame) : std::nullopt;
}

}  // namespace softboard
