/// @file
/// Frames as packets on their way out: in small bursts, and no faster than a pace.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "gige/DeviceMemory.h"
#include "gige/Sockets.h"
#include "gige/StreamPackets.h"

namespace quillon::gige {

/// A frame as it is sent, and to where.
struct SentFrame {
    StreamFrame about;
    std::vector<std::byte> bytes;
    StreamSettings settings;
    std::uint32_t again = 0;  ///< packets of it that were sent again

    std::uint32_t packets() const { return static_cast<std::uint32_t>(packetsOf(bytes.size(), settings.packetSize)); }
};

/// Any thread may send; all packets together keep the pace.
///
/// A viewer's socket holds 208 KiB where nobody has asked for more, which are a dozen large packets: what goes out at
/// once has to be little, or most of it is lost.
class PacketSender {
public:
    /// @param bytesPerSecond  at most so many leave
    PacketSender(const Interface& interface, double bytesPerSecond);

    std::uint16_t port() const { return socket_.port(); }

    /// Until it is opened nothing leaves, nor once close() has returned. Who waits for a turn then gives up.
    void open();
    void close();
    /// Bytes a second from now on, if that is less than the most.
    void setPace(double bytesPerSecond);
    /// Sends the packets `first` to `last` of a frame, of which there are so many. Returns when they have left, or when
    /// it is closed.
    void send(const SentFrame& frame, std::uint32_t first, std::uint32_t last);
    /// Sends one packet of zeros of that size, heads included.
    void sendTestPacket(const StreamSettings& settings, std::uint32_t size);

private:
    void waitForTurn(const StreamSettings& settings, std::uint32_t packets);
    bool sendBurst(const SentFrame& frame, std::uint32_t first, std::uint32_t count);

    Socket socket_;
    const double mostBytesPerSecond_;
    std::atomic<double> pace_;
    std::mutex mutex_;
    std::condition_variable closed_;
    bool open_ = false;
    std::chrono::steady_clock::time_point due_;  ///< the next burst
};

}  // namespace quillon::gige
