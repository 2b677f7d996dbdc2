#include "gige/PendingTeller.h"

#include <utility>

namespace quillon::gige {
namespace {

/// How long the sender shall wait from each of these words on.
constexpr std::uint16_t Promise = 1000;  // ms

}  // namespace

PendingTeller::PendingTeller(Send send, std::chrono::milliseconds patience)
    : send_(std::move(send)), patience_(patience), thread_([this] { run(); }) {}

PendingTeller::~PendingTeller() {
    {
        const std::lock_guard guard(mutex_);
        leaving_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void PendingTeller::begin(const Peer& sender, std::span<const std::byte> datagram) {
    const auto request = parseRequest(datagram);
    if (!request || !request->acknowledge || request->command == static_cast<std::uint16_t>(Command::PacketResend)) {
        return;
    }
    const std::lock_guard guard(mutex_);
    sender_ = sender;
    packet_ = pending(*request, Promise);
    due_ = std::chrono::steady_clock::now() + patience_;
}

void PendingTeller::end() {
    const std::lock_guard guard(mutex_);
    packet_.clear();
}

/// Looks up several times within the patience, so that a request that is answered at once wakes nobody.
void PendingTeller::run() {
    constexpr int LooksPerPatience = 4;
    std::unique_lock lock(mutex_);
    while (!changed_.wait_for(lock, patience_ / LooksPerPatience, [this] { return leaving_; })) {
        const auto now = std::chrono::steady_clock::now();
        if (!packet_.empty() && now >= due_) {
            send_(sender_, packet_);
            due_ = now + patience_;
        }
    }
}

}  // namespace quillon::gige
