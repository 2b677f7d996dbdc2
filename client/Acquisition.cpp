#include <algorithm>

#include "client/SoftBoardFunctions.h"
#include "quillon/client/Frames.h"
#include "quillon/quillon.h"

namespace quillon::client {

static_assert(static_cast<int>(MemoryMode::Ring) == SOFTBOARD_MEMORY_RING &&
              static_cast<int>(MemoryMode::Hold) == SOFTBOARD_MEMORY_HOLD);
static_assert(static_cast<int>(FrameFlag::Short) == SOFTBOARD_FRAME_SHORT &&
              static_cast<int>(FrameFlag::GateEnded) == SOFTBOARD_FRAME_GATE_ENDED &&
              static_cast<int>(FrameFlag::Truncated) == SOFTBOARD_FRAME_TRUNCATED &&
              static_cast<int>(FrameFlag::LinesLost) == SOFTBOARD_FRAME_LINES_LOST &&
              static_cast<int>(FrameFlag::Injected) == SOFTBOARD_FRAME_INJECTED &&
              static_cast<int>(FrameFlag::RedFirst) == SOFTBOARD_FRAME_RED_FIRST &&
              static_cast<int>(FrameFlag::Mixed) == SOFTBOARD_FRAME_MIXED &&
              static_cast<int>(FrameFlag::Faulty) == SOFTBOARD_FRAME_FAULTY);

namespace {

std::uint32_t wholeLines(const FrameDescription& frame, std::uint64_t bytes) {
    constexpr std::uint64_t Components = 3;
    const std::uint64_t bits = std::max<std::uint64_t>(Components * frame.width * frame.bits, 1);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(bytes * 8 / bits, frame.lines));
}

constexpr unsigned Dma = 0;

std::size_t bitsOfPixel(const Applet& applet) {
    switch (const int format = applet.readInt("FG_FORMAT")) {
        case FG_COL24: return 24;
        case FG_COL30: return 30;
        case FG_COL36: return 36;
        case FG_COL42: return 42;
        case FG_COL48: return 48;
        default: throw Error("FG_FORMAT is " + std::to_string(format) + ", which is no format of pictures");
    }
}

std::string inWords(std::uint64_t number, unsigned timeout, int code) {
    const std::string frame = "frame " + std::to_string(number) + " did not come";
    return (code == SOFTBOARD_E_TIMEOUT ? frame + " within " + std::to_string(timeout) + " s" : frame) + ": " +
           describeCode(code) + ", " + std::string(codeText(code).sentence);
}

}  // namespace

std::size_t frameSize(const Applet& applet) {
    const auto size = [&applet](const char* parameter) { return applet.get<std::size_t>(parameter); };
    // Widths are multiples of four, and four pixels are whole bytes in every format.
    return size("FG_WIDTH") * size("FG_HEIGHT") * bitsOfPixel(applet) / 8;
}

void FrameMemory::Close::operator()(softboard_memory* memory) const {
    loaded->memory_close(memory);
}

FrameMemory::FrameMemory(const SoftBoard& board, std::size_t bufferSize, unsigned buffers)
    : loaded_(board.library_.loaded_),
      memory_(loaded_->memory_open(board.device(), bufferSize, buffers, nullptr), Close{loaded_}),
      bufferSize_(bufferSize) {
    if (memory_ == nullptr) {
        throw Error("there is no memory for " + std::to_string(buffers) + " frames of " + std::to_string(bufferSize) +
                    " bytes");
    }
}

void FrameMemory::setMode(MemoryMode mode) {
    expectOk("memory_mode", loaded_->memory_mode(memory_.get(), static_cast<int>(mode)));
}

std::optional<Frame> FrameMemory::frame(std::uint64_t number) const {
    softboard_frame about{};
    about.size = sizeof about;
    const void* const data = loaded_->memory_data(memory_.get(), static_cast<std::int64_t>(number), &about);
    if (data == nullptr) {
        return std::nullopt;
    }
    FrameDescription description{about.number,      about.image,  about.first_tick, about.last_tick,
                                 about.lost_before, about.width,  about.lines,      about.bits,
                                 about.flags,       about.buffer, about.settings};
    const std::uint64_t size = std::min<std::uint64_t>(about.bytes, bufferSize_);
    if (description.has(FrameFlag::Mixed)) {
        // Lines that are shorter than the first leave less than the lines of one length that a Frame has.
        description.lines = std::min(description.lines, wholeLines(description, size));
    }
    return Frame(description, std::span(static_cast<const std::byte*>(data), size));
}

void FrameMemory::release(std::uint64_t number) {
    expectOk("memory_release", loaded_->memory_release(memory_.get(), static_cast<std::int64_t>(number)));
}

FrameError::FrameError(std::uint64_t frameNumber, unsigned timeout, int answeredCode)
    : CallError(inWords(frameNumber, timeout, answeredCode), answeredCode, Whole{}), number(frameNumber) {}

bool FrameError::timedOut() const {
    return code == SOFTBOARD_E_TIMEOUT;
}

Acquisition::Acquisition(Applet& applet, FrameMemory& memory, std::int64_t count, unsigned timeout)
    : applet_(applet), memory_(memory), count_(count), timeout_(timeout) {
    memory_.setMode(MemoryMode::Hold);
    if (const int code = applet_.acquire(Dma, count, 0, memory_.pointer()); code != 0) {
        throw CallError("Fg_AcquireEx", code);
    }
}

Acquisition::~Acquisition() {
    // After the last frame it has stopped by itself, and the answer tells so.
    applet_.stopAcquire(Dma, memory_.pointer(), 0);
}

void Acquisition::release() {
    if (frame_) {
        frame_.reset();
        memory_.release(number_);
    }
}

const Frame* Acquisition::next() {
    release();
    if (count_ >= 0 && number_ == static_cast<std::uint64_t>(count_)) {
        return nullptr;
    }
    const std::uint64_t wanted = number_ + 1;
    const std::int64_t last =
        applet_.lastPictureBlocking(static_cast<std::int64_t>(wanted), Dma, timeout_, memory_.pointer());
    if (last < 0) {
        throw FrameError(wanted, timeout_, static_cast<int>(last));
    }
    frame_ = memory_.frame(wanted);
    if (!frame_) {
        throw FrameError(wanted, timeout_, SOFTBOARD_E_RANGE);
    }
    number_ = wanted;
    return &*frame_;
}

std::uint64_t Acquisition::status(unsigned number) const {
    const std::int64_t count = applet_.status(number, 0, Dma, memory_.pointer());
    if (count < 0) {
        throw CallError("Fg_getStatusEx", static_cast<int>(count));
    }
    return static_cast<std::uint64_t>(count);
}

std::uint64_t Acquisition::lost() const {
    return status(SOFTBOARD_STATUS_LOST_FRAMES);
}

std::uint64_t Acquisition::lostLines() const {
    return status(SOFTBOARD_STATUS_LOST_LINES);
}

std::uint64_t Acquisition::bytesWaiting() const {
    return status(SOFTBOARD_STATUS_BYTES_WAITING);
}

std::uint64_t Acquisition::faults() const {
    return status(SOFTBOARD_STATUS_FAULTS);
}

}  // namespace quillon::client
