/// @file
/// Tells who waits for a long answer that it is under way.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "gige/ControlChannel.h"

namespace quillon::gige {

/// While a request is at work, its sender is told after a while, and then again and again, that the answer will come:
/// it would otherwise ask once more, and then give up.
class PendingTeller {
public:
    using Send = std::function<void(const Peer& to, std::span<const std::byte> packet)>;

    /// @param send      called from a thread of its own
    /// @param patience  after so long it tells for the first time, and so often then
    explicit PendingTeller(Send send, std::chrono::milliseconds patience = std::chrono::milliseconds(150));
    PendingTeller(const PendingTeller&) = delete;
    PendingTeller& operator=(const PendingTeller&) = delete;
    ~PendingTeller();

    /// A datagram is at work; nobody is told of one that wants no answer, or never gets one.
    void begin(const Peer& sender, std::span<const std::byte> datagram);
    /// It has been answered, or will not be. Nothing is sent after that.
    void end();

private:
    void run();

    Send send_;
    std::chrono::milliseconds patience_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool leaving_ = false;
    Peer sender_;
    std::vector<std::byte> packet_;  ///< that tells it; empty: there is nothing to tell
    std::chrono::steady_clock::time_point due_;
    std::thread thread_;
};

}  // namespace quillon::gige
