#include "gige/Streamer.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

namespace quillon::gige {
namespace {

constexpr std::size_t FramesKept = 6;
constexpr unsigned Buffers = 8;
constexpr std::uint32_t Burst = 16;  ///< packets that go out at once

using Clock = std::chrono::steady_clock;

}  // namespace

void convert(const client::Frame& frame, const PixelFormat& format, std::vector<std::byte>& bytes) {
    if (format.packed && !format.grey) {
        bytes.assign(frame.bytes().begin(), frame.bytes().end());
        return;
    }
    constexpr std::size_t Colours = 3;
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
    : applet_(applet), board_(board), socket_(interface, 0, false), bytesPerSecond_(bytesPerSecond) {
    const int size = 4 << 20;
    // As much as the system allows.
    static_cast<void>(setsockopt(socket_.descriptor(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size));
}

Streamer::~Streamer() {
    stop();
}

void Streamer::start(std::int64_t frames, const PixelFormat& format, const StreamSettings& settings) {
    stop();
    format_ = &format;
    settings_ = settings;
    destination_ = {settings.address, settings.port};
    memory_ = std::make_unique<client::FrameMemory>(board_, client::frameSize(applet_), Buffers);
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
    thread_ = std::thread([this, frames] { run(frames); });
}

void Streamer::stop() {
    stopping_ = true;
    if (thread_.joinable()) {
        applet_.stopAcquire(0, memory_->pointer(), 0);
        thread_.join();
    }
    running_ = false;
}

void Streamer::run(std::int64_t frames) {
    constexpr unsigned Patience = 1;  // seconds
    arrived_ = due_ = Clock::now();
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
        setPace(last > static_cast<std::int64_t>(number));
        if (const auto frame = memory_->frame(number)) {
            send(*frame);
        }
        memory_->release(number++);
    }
    running_ = false;
}

/// A frame goes out in half the time that one takes to come, so that the receiver's socket does not overflow, and
/// faster if frames wait already.
void Streamer::setPace(bool framesWait) {
    constexpr double Gentle = 100e6;  // bytes a second
    const Clock::time_point now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - std::exchange(arrived_, now)).count();
    const double needed = 2.0 * static_cast<double>(client::frameSize(applet_)) / std::max(seconds, 1e-6);
    pace_ = framesWait ? bytesPerSecond_ : std::min(std::max(Gentle, needed), bytesPerSecond_);
}

/// The oldest of the kept frames gives its memory, once nobody sends it again.
std::shared_ptr<Streamer::SentFrame> Streamer::emptyFrame() {
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
    convert(frame, *format_, sent->bytes);
    id_ = static_cast<std::uint16_t>(id_ == 0xFFFF ? 1 : id_ + 1);
    sent->about = {id_, frame.description().lastTick, format_->code, frame.width(), frame.lines(), 0, 0};
    const std::size_t packets = packetsOf(sent->bytes.size(), settings_.packetSize);
    {
        const std::lock_guard guard(mutex_);
        sent_.push_back(sent);
        while (sent_.size() > FramesKept) {
            sent_.pop_front();
        }
    }
    for (std::uint32_t first = 0; first < packets && !stopping_; first += Burst) {
        const auto last = static_cast<std::uint32_t>(std::min<std::size_t>(first + Burst, packets) - 1);
        sendPackets(*sent, first, last);
        pace((last - first + 1) * settings_.packetSize);
    }
    const std::lock_guard guard(mutex_);
    ++statistics_.frames;
    statistics_.bytes += sent->bytes.size();
    statistics_.packets += packets;
    statistics_.lost += frame.description().lostBefore;
}

void Streamer::sendPackets(const SentFrame& frame, std::uint32_t first, std::uint32_t last) {
    const sockaddr_in to = socketAddress(destination_);
    const std::size_t payload = payloadOf(settings_.packetSize);
    const auto trailerNumber = static_cast<std::uint32_t>(packetsOf(frame.bytes.size(), settings_.packetSize) - 1);
    std::array<std::array<std::byte, StreamHeadSize>, Burst> heads{};
    const auto leaderBytes = leader(frame.about);
    const auto trailerBytes = trailer(frame.about, trailerNumber);
    std::array<std::array<iovec, 2>, Burst> parts{};
    std::array<mmsghdr, Burst> messages{};
    const std::size_t count = std::min<std::size_t>(last - first + 1, Burst);
    const auto part = [](std::span<const std::byte> bytes) {
        return iovec{const_cast<std::byte*>(bytes.data()), bytes.size()};
    };
    for (std::size_t i = 0; i < count; ++i) {
        const auto packet = static_cast<std::uint32_t>(first + i);
        std::size_t used = 1;
        if (packet == 0) {
            parts[i][0] = part(leaderBytes);
        } else if (packet == trailerNumber) {
            parts[i][0] = part(trailerBytes);
        } else {
            const std::size_t at = (packet - 1) * payload;
            heads[i] = payloadHead(frame.about, packet);
            parts[i][0] = part(heads[i]);
            parts[i][1] = part(std::span(frame.bytes).subspan(at, std::min(payload, frame.bytes.size() - at)));
            used = 2;
        }
        msghdr& head = messages[i].msg_hdr;
        head.msg_name = const_cast<sockaddr_in*>(&to);
        head.msg_namelen = sizeof to;
        head.msg_iov = parts[i].data();
        head.msg_iovlen = used;
    }
    for (std::size_t done = 0; done < count && !stopping_;) {
        const int sent = sendmmsg(socket_.descriptor(), messages.data() + done, static_cast<unsigned>(count - done), 0);
        if (sent > 0) {
            done += static_cast<std::size_t>(sent);
        } else if (errno == EAGAIN || errno == ENOBUFS) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        } else {
            return;  // nobody hears: the heartbeat will tell
        }
    }
}

/// Packets leave no faster than at the pace, or than the controller's delay between packets says.
void Streamer::pace(std::size_t bytes) {
    const auto packets = static_cast<double>(bytes) / settings_.packetSize;
    const double seconds =
        std::max(static_cast<double>(bytes) / pace_, packets * static_cast<double>(settings_.delay) / TicksPerSecond);
    const Clock::time_point now = Clock::now();
    due_ = std::max(due_, now - std::chrono::milliseconds(1)) +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    if (due_ > now + std::chrono::microseconds(50)) {
        std::this_thread::sleep_until(due_);
    }
}

void Streamer::resend(const ResendRequest& request) {
    std::shared_ptr<SentFrame> frame;
    {
        const std::lock_guard guard(mutex_);
        const auto found =
            std::find_if(sent_.begin(), sent_.end(), [&](const auto& it) { return it->about.id == request.frame; });
        if (found == sent_.end() || request.first > request.last) {
            ++statistics_.gone;
            return;
        }
        frame = *found;
    }
    const auto last = static_cast<std::uint32_t>(packetsOf(frame->bytes.size(), settings_.packetSize) - 1);
    // No more than the frame itself, whatever is asked for.
    for (std::uint32_t first = request.first; first <= std::min(request.last, last); first += Burst) {
        const std::uint32_t end = std::min({first + std::uint32_t{Burst} - 1, request.last, last});
        sendPackets(*frame, first, end);
        const std::lock_guard guard(mutex_);
        statistics_.resent += end - first + 1;
        statistics_.packets += end - first + 1;
    }
}

void Streamer::sendTestPacket(const StreamSettings& settings, std::uint32_t size) {
    if (settings.address == 0 || settings.port == 0 || size <= NetworkHeads) {
        return;
    }
    const std::vector<std::byte> packet(size - NetworkHeads);
    socket_.send({settings.address, settings.port}, packet);
}

StreamStatistics Streamer::statistics() const {
    const std::lock_guard guard(mutex_);
    return statistics_;
}

}  // namespace quillon::gige
