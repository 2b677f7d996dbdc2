#include "gige/PacketSender.h"

#include <sys/prctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>

namespace quillon::gige {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t MostPackets = 16;    ///< of a burst
constexpr std::uint32_t MostBytes = 36'000;  ///< of a burst: four packets of the largest size

std::uint32_t burstOf(const StreamSettings& settings) {
    return std::clamp(MostBytes / settings.packetSize, 1U, MostPackets);
}

iovec part(std::span<const std::byte> bytes) {
    return {const_cast<std::byte*>(bytes.data()), bytes.size()};
}

}  // namespace

PacketSender::PacketSender(const Interface& interface, double bytesPerSecond)
    : socket_(interface, 0, false), mostBytesPerSecond_(bytesPerSecond), pace_(bytesPerSecond) {
    const int size = 4 << 20;
    // As much as the system allows.
    static_cast<void>(setsockopt(socket_.descriptor(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size));
}

void PacketSender::open() {
    const std::lock_guard guard(mutex_);
    due_ = {};
    open_ = true;
}

void PacketSender::close() {
    {
        const std::lock_guard guard(mutex_);
        open_ = false;
    }
    closed_.notify_all();
}

void PacketSender::setPace(double bytesPerSecond) {
    pace_ = std::min(bytesPerSecond, mostBytesPerSecond_);
}

void PacketSender::send(const SentFrame& frame, std::uint32_t first, std::uint32_t last) {
    const std::uint32_t burst = burstOf(frame.settings);
    for (std::uint32_t at = first; at <= last; at += burst) {
        const std::uint32_t count = std::min(burst, last - at + 1);
        waitForTurn(frame.settings, count);
        if (!sendBurst(frame, at, count)) {
            return;
        }
    }
}

/// Packets leave no faster than at the pace, or than the controller's delay between packets says. What was missed by
/// more than the slack is not made up for.
void PacketSender::waitForTurn(const StreamSettings& settings, std::uint32_t packets) {
    constexpr std::chrono::microseconds Slack{100};
    const double seconds =
        packets * std::max(settings.packetSize / pace_.load(), static_cast<double>(settings.delay) / TicksPerSecond);
    std::unique_lock lock(mutex_);
    const Clock::time_point turn = std::max(due_, Clock::now() - Slack);
    due_ = turn + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    if (turn > Clock::now()) {
        // The usual 50 us of slack in a wait would be as long as a burst.
        thread_local const int exact = prctl(PR_SET_TIMERSLACK, 1UL);
        static_cast<void>(exact);
        closed_.wait_until(lock, turn, [this] { return !open_; });
    }
}

/// @return whether it is open
bool PacketSender::sendBurst(const SentFrame& frame, std::uint32_t first, std::uint32_t count) {
    const sockaddr_in to = socketAddress({frame.settings.address, frame.settings.port});
    const std::size_t payload = payloadOf(frame.settings.packetSize);
    const std::uint32_t trailerNumber = frame.packets() - 1;
    const auto leaderBytes = leader(frame.about);
    const auto trailerBytes = trailer(frame.about, trailerNumber);
    std::array<std::array<std::byte, StreamHeadSize>, MostPackets> heads{};
    std::array<std::array<iovec, 2>, MostPackets> parts{};
    std::array<mmsghdr, MostPackets> messages{};
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t packet = first + i;
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
    constexpr int MostTries = 50;
    const std::lock_guard guard(mutex_);
    // What does not get out is asked for again.
    std::uint32_t done = 0;
    for (int tries = 0; open_ && done < count && tries < MostTries; ++tries) {
        const int sent = sendmmsg(socket_.descriptor(), messages.data() + done, count - done, 0);
        if (sent > 0) {
            done += static_cast<std::uint32_t>(sent);
        } else if (errno == EAGAIN || errno == ENOBUFS) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        } else {
            break;
        }
    }
    return open_;
}

void PacketSender::sendTestPacket(const StreamSettings& settings, std::uint32_t size) {
    if (settings.address == 0 || settings.port == 0 || size <= NetworkHeads) {
        return;
    }
    const std::vector<std::byte> packet(size - NetworkHeads);
    socket_.send({settings.address, settings.port}, packet);
}

}  // namespace quillon::gige
