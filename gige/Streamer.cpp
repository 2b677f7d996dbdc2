#include "gige/Streamer.h"

#include <unistd.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <string>
#include <utility>

#include "quillon/client/Errors.h"

namespace quillon::gige {
namespace {

constexpr std::size_t FramesKept = 6;
constexpr unsigned Buffers = 8;
constexpr std::uint32_t MostTimesAgain = 4;
constexpr std::size_t Colours = 3;

using Clock = std::chrono::steady_clock;

/// The format that a frame has on the wire: its components may have got other bits than those that the stream was
/// started with.
const PixelFormat& formatOf(const client::Frame& frame, const PixelFormat& wanted) {
    return formatThatFits(wanted, [&frame](const PixelFormat& format) { return format.bits == frame.bits(); });
}

/// The bytes of the lines, without what a frame that was cut off has behind them.
std::span<const std::byte> wholeLines(const client::Frame& frame) {
    const std::size_t bits = std::size_t{frame.width()} * frame.lines() * Colours * frame.bits();
    return frame.bytes().first((bits + 7) / 8);
}

/// How many packets of a frame are sent again for a request: no more than it has, and no more than four times as many
/// in all.
std::uint32_t grantedAgain(const SentFrame& frame, const ResendRequest& request) {
    const std::uint32_t packets = frame.packets();
    if (request.first > request.last || request.first >= packets) {
        return 0;
    }
    return std::min(
        {request.last - request.first + 1, packets - request.first, MostTimesAgain * packets - frame.again});
}

/// Throws client::Error for frames that would take the computer's memory from all others: those of the board and those
/// that are kept here take half of it at most.
void requireMemory(std::size_t frameSize) {
    const double all = static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    constexpr auto Frames = static_cast<double>(Buffers + FramesKept + 1);
    if (Frames * static_cast<double>(frameSize) > all / 2) {
        throw client::Error("frames of " + std::to_string(frameSize) + " bytes take more than half of the memory");
    }
}

}  // namespace

void convert(const client::Frame& frame, const PixelFormat& format, std::vector<std::byte>& bytes) {
    if (format.packed && !format.grey) {
        const std::span<const std::byte> lines = wholeLines(frame);
        bytes.assign(lines.begin(), lines.end());
        return;
    }
    const std::size_t values = std::size_t{frame.width()} * frame.lines() * (format.grey ? 1 : Colours);
    const std::size_t size = format.bits == 8 ? 1 : 2;
    bytes.resize(values * size);
    std::vector<std::uint16_t> line(frame.width() * Colours);
    std::byte* to = bytes.data();
    const auto add = [&](unsigned value) {
        *to++ = static_cast<std::byte>(value);
        if (size == 2) {
            *to++ = static_cast<std::byte>(value >> 8);
        }
    };
    for (std::uint32_t y = 0; y < frame.lines(); ++y) {
        frame.readLine(y, line);
        for (std::size_t at = 0; at < line.size(); at += Colours) {
            if (format.grey) {
                add((unsigned{line[at]} + line[at + 1] + line[at + 2]) / 3);
                continue;
            }
            for (std::size_t colour = 0; colour < Colours; ++colour) {
                add(line[at + (format.redFirst ? colour : Colours - 1 - colour)]);
            }
        }
    }
}

Streamer::Streamer(client::Applet& applet, client::SoftBoard& board, const Interface& interface, double bytesPerSecond)
    : applet_(applet), board_(board), sender_(interface, bytesPerSecond), resending_([this] { resendRun(); }) {}

Streamer::~Streamer() {
    stop();
    {
        const std::lock_guard guard(mutex_);
        leaving_ = true;
    }
    changed_.notify_all();
    resending_.join();
}

void Streamer::start(std::int64_t frames, const PixelFormat& format, const StreamSettings& settings) {
    stop();
    format_ = &format;
    settings_ = settings;
    memory_.reset();  // its room may be needed
    const std::size_t size = client::frameSize(applet_);
    requireMemory(size);
    memory_ = std::make_unique<client::FrameMemory>(board_, size, Buffers);
    memory_->setMode(client::MemoryMode::Hold);
    {
        const std::lock_guard guard(mutex_);
        statistics_ = {};
    }
    if (const int code = applet_.acquire(0, frames, 0, memory_->pointer()); code != 0) {
        throw client::CallError("Fg_AcquireEx", code);
    }
    stopping_ = false;
    running_ = true;
    sender_.open();
    try {
        thread_ = std::thread([this, frames] { run(frames); });
    } catch (...) {
        running_ = false;
        sender_.close();
        applet_.stopAcquire(0, memory_->pointer(), 0);
        throw;
    }
}

void Streamer::stop() {
    stopping_ = true;
    sender_.close();
    if (thread_.joinable()) {
        applet_.stopAcquire(0, memory_->pointer(), 0);
        thread_.join();
    }
    running_ = false;
    std::unique_lock lock(mutex_);
    sent_.clear();
    asked_.clear();
    // A frame that is being sent again gives up, and must not go on when the next stream has opened the sender.
    changed_.wait(lock, [this] { return !resendsNow_; });
}

void Streamer::run(std::int64_t frames) {
    try {
        sendFrames(frames);
    } catch (const std::exception& error) {  // memory is short, say: it can be started again
        const std::lock_guard guard(mutex_);
        statistics_.failure = error.what();
    }
    running_ = false;
}

void Streamer::sendFrames(std::int64_t frames) {
    constexpr unsigned Patience = 1;  // seconds
    arrived_ = Clock::now();
    std::uint64_t number = 1;
    while (!stopping_ && (frames < 0 || number <= static_cast<std::uint64_t>(frames))) {
        const std::int64_t last =
            applet_.lastPictureBlocking(static_cast<std::int64_t>(number), 0, Patience, memory_->pointer());
        if (last < static_cast<std::int64_t>(number)) {
            if (applet_.status(0, 0, 0, memory_->pointer()) != 1) {
                break;  // it has ended
            }
            continue;
        }
        if (const auto frame = memory_->frame(number)) {
            setPace(frame->bytes().size(), last > static_cast<std::int64_t>(number));
            send(*frame);
        }
        memory_->release(number++);
    }
}

/// A frame goes out in half the time that one takes to come, so that the receiver's socket does not overflow, and
/// faster if frames wait already.
void Streamer::setPace(std::size_t frameBytes, bool framesWait) {
    constexpr double Gentle = 30e6;  // bytes a second
    constexpr double Unlimited = std::numeric_limits<double>::max();
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - std::exchange(arrived_, now)).count();
    const double needed = 2.0 * static_cast<double>(frameBytes) / std::max(seconds, 1e-6);
    sender_.setPace(framesWait ? Unlimited : std::max(Gentle, needed));
}

/// The oldest of the kept frames gives its memory, once nobody sends it again.
std::shared_ptr<SentFrame> Streamer::emptyFrame() {
    const std::lock_guard guard(mutex_);
    if (sent_.size() < FramesKept || sent_.front().use_count() > 1) {
        return std::make_shared<SentFrame>();
    }
    auto frame = std::move(sent_.front());
    sent_.pop_front();
    return frame;
}

void Streamer::send(const client::Frame& frame) {
    const auto sent = emptyFrame();
    const PixelFormat& format = formatOf(frame, *format_);
    convert(frame, format, sent->bytes);
    sent->settings = settings_;
    sent->again = 0;
    if (sent->packets() > MostPacketNumber + 1) {
        const std::lock_guard guard(mutex_);
        ++statistics_.lost;  // it has grown since the start
        return;
    }
    id_ = static_cast<std::uint16_t>(id_ == 0xFFFF ? 1 : id_ + 1);
    sent->about = {id_, frame.description().lastTick, format.code, frame.width(), frame.lines(), 0, 0};
    {
        const std::lock_guard guard(mutex_);
        sent_.push_back(sent);
        while (sent_.size() > FramesKept) {
            sent_.pop_front();
        }
    }
    sender_.send(*sent, 0, sent->packets() - 1);
    const std::lock_guard guard(mutex_);
    ++statistics_.frames;
    statistics_.bytes += sent->bytes.size();
    statistics_.packets += sent->packets();
    statistics_.lost += frame.description().lostBefore;
}

// ---- Packets that got lost ----

void Streamer::resend(const ResendRequest& request) {
    constexpr std::size_t MostRequests = 1000;
    {
        const std::lock_guard guard(mutex_);
        if (asked_.size() >= MostRequests || std::ranges::find(asked_, request) != asked_.end()) {
            return;
        }
        asked_.push_back(request);
    }
    changed_.notify_all();
}

void Streamer::resendRun() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return leaving_ || !asked_.empty(); });
        if (leaving_) {
            return;
        }
        const ResendRequest request = asked_.front();
        asked_.pop_front();
        const auto frame = keptFrame(request.frame);
        const std::uint32_t granted = frame ? grantedAgain(*frame, request) : 0;
        if (granted == 0) {
            ++statistics_.gone;
            continue;
        }
        frame->again += granted;
        statistics_.resent += granted;
        statistics_.packets += granted;
        resendsNow_ = true;
        lock.unlock();
        sender_.send(*frame, request.first, request.first + granted - 1);
        lock.lock();
        resendsNow_ = false;
        changed_.notify_all();
    }
}

/// With the mutex held.
std::shared_ptr<SentFrame> Streamer::keptFrame(std::uint16_t id) const {
    const auto found = std::ranges::find_if(sent_, [&](const auto& frame) { return frame->about.id == id; });
    return found != sent_.end() ? *found : nullptr;
}

StreamStatistics Streamer::statistics() const {
    const std::lock_guard guard(mutex_);
    return statistics_;
}

}  // namespace quillon::gige
