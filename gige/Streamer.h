/// @file
/// The stream of a device: frames of the board as packets, paced, and again where they got lost.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "gige/DeviceMemory.h"
#include "gige/PacketSender.h"
#include "gige/Sockets.h"
#include "quillon/client/Applet.h"
#include "quillon/client/Frames.h"

namespace quillon::gige {

/// What has been sent since the acquisition started.
struct StreamStatistics {
    std::uint64_t frames = 0;
    std::uint64_t bytes = 0;    ///< of pictures
    std::uint64_t packets = 0;  ///< with those that were sent again
    std::uint64_t resent = 0;   ///< packets
    std::uint64_t gone = 0;     ///< requests for packets that came too late, or too often
    std::uint64_t lost = 0;     ///< frames, on the board or too large for a stream
    std::string failure;        ///< what ended the stream before its time; empty: nothing
};

/// Acquires frames on a thread of its own and sends them; another one sends packets again. A frame is kept until a few
/// more have been sent, or the stream is stopped.
///
/// What is sent again is bounded, however much is asked for: four times each frame, at the pace of the stream.
class Streamer {
public:
    /// @param bytesPerSecond  at most so many leave
    Streamer(client::Applet& applet, client::SoftBoard& board, const Interface& interface, double bytesPerSecond);
    Streamer(const Streamer&) = delete;
    Streamer& operator=(const Streamer&) = delete;
    ~Streamer();

    std::uint16_t port() const { return sender_.port(); }

    /// Starts `frames` frames (-1: without end) in this format to there. Throws client::Error if it cannot.
    void start(std::int64_t frames, const PixelFormat& format, const StreamSettings& settings);
    /// When it returns, no more packets leave.
    void stop();
    bool running() const { return running_; }
    /// Asks for packets again. Of more requests than can be kept the last ones are forgotten.
    void resend(const ResendRequest& request);
    void sendTestPacket(const StreamSettings& settings, std::uint32_t size) { sender_.sendTestPacket(settings, size); }
    StreamStatistics statistics() const;

private:
    void run(std::int64_t frames);
    void sendFrames(std::int64_t frames);
    void setPace(std::size_t frameBytes, bool framesWait);
    void send(const client::Frame& frame);
    std::shared_ptr<SentFrame> emptyFrame();
    void resendRun();
    std::shared_ptr<SentFrame> keptFrame(std::uint16_t id) const;

    client::Applet& applet_;
    client::SoftBoard& board_;
    PacketSender sender_;

    std::thread thread_;
    std::atomic<bool> running_ = false;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<client::FrameMemory> memory_;
    const PixelFormat* format_ = nullptr;
    StreamSettings settings_;
    std::uint16_t id_ = 0;
    std::chrono::steady_clock::time_point arrived_;  ///< the last frame

    mutable std::mutex mutex_;
    std::deque<std::shared_ptr<SentFrame>> sent_;
    StreamStatistics statistics_;
    std::condition_variable changed_;
    std::deque<ResendRequest> asked_;
    bool resendsNow_ = false;
    bool leaving_ = false;
    std::thread resending_;
};

/// The picture of a frame as a format sends it.
void convert(const client::Frame& frame, const PixelFormat& format, std::vector<std::byte>& bytes);

}  // namespace quillon::gige
