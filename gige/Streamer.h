/// @file
/// The stream of a device: frames of the board as packets, paced, and again where they got lost.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <vector>

#include "gige/DeviceMemory.h"
#include "gige/Sockets.h"
#include "gige/StreamPackets.h"
#include "quillon/client/Applet.h"
#include "quillon/client/Frames.h"

namespace quillon::gige {

/// What has been sent since the acquisition started.
struct StreamStatistics {
    std::uint64_t frames = 0;
    std::uint64_t bytes = 0;    ///< of pictures
    std::uint64_t packets = 0;  ///< with those that were sent again
    std::uint64_t resent = 0;   ///< packets
    std::uint64_t gone = 0;     ///< packets that were asked for again too late
    std::uint64_t lost = 0;     ///< frames, on the board
};

/// Acquires frames on a thread of its own and sends them. A frame is kept until a few more have been sent.
class Streamer {
public:
    /// @param bytesPerSecond  at most so many leave
    Streamer(client::Applet& applet, client::SoftBoard& board, const Interface& interface, double bytesPerSecond);
    Streamer(const Streamer&) = delete;
    Streamer& operator=(const Streamer&) = delete;
    ~Streamer();

    std::uint16_t port() const { return socket_.port(); }

    /// Starts `frames` frames (-1: without end) in this format to there. Throws client::Error if it cannot.
    void start(std::int64_t frames, const PixelFormat& format, const StreamSettings& settings);
    void stop();
    bool running() const { return running_; }
    void resend(const ResendRequest& request);
    void sendTestPacket(const StreamSettings& settings, std::uint32_t size);
    StreamStatistics statistics() const;

private:
    struct SentFrame {
        StreamFrame about;
        std::vector<std::byte> bytes;
    };

    void run(std::int64_t frames);
    void send(const client::Frame& frame);
    std::shared_ptr<SentFrame> emptyFrame();
    void sendPackets(const SentFrame& frame, std::uint32_t first, std::uint32_t last);
    void setPace(bool framesWait);
    void pace(std::size_t bytes);

    client::Applet& applet_;
    client::SoftBoard& board_;
    Socket socket_;
    const double bytesPerSecond_;

    std::thread thread_;
    std::atomic<bool> running_ = false;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<client::FrameMemory> memory_;
    const PixelFormat* format_ = nullptr;
    StreamSettings settings_;
    Peer destination_;
    std::uint16_t id_ = 0;
    std::chrono::steady_clock::time_point arrived_;  ///< the last frame
    double pace_ = 0.0;                              ///< bytes a second
    std::chrono::steady_clock::time_point due_;      ///< the next packets

    mutable std::mutex mutex_;
    std::deque<std::shared_ptr<SentFrame>> sent_;
    StreamStatistics statistics_;
};

/// The picture of a frame as a format sends it, at the end of `bytes`.
void convert(const client::Frame& frame, const PixelFormat& format, std::vector<std::byte>& bytes);

}  // namespace quillon::gige
