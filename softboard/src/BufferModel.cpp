#include "softboard/src/BufferModel.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace softboard {

void BufferModel::bind(const Find& find) {
    const std::string bank = "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_";
    addressWidth_ = find(bank + "RamAddressWidth");
    dataWidth_ = find(bank + "RamDataWidth");
    clear(0);
}

std::uint64_t BufferModel::capacity() const {
    constexpr std::uint64_t Banks = 3;
    constexpr std::int64_t MostAddressBits = 40;
    constexpr std::int64_t MostDataBits = 65536;
    if (addressWidth_ == nullptr || dataWidth_ == nullptr) {
        return ~std::uint64_t{0};
    }
    const std::int64_t addressBits = std::clamp<std::int64_t>(integerOf(addressWidth_), 0, MostAddressBits);
    const std::int64_t dataBits = std::clamp<std::int64_t>(integerOf(dataWidth_), 0, MostDataBits);
    return Banks * static_cast<std::uint64_t>(dataBits << addressBits) / 8;
}

void BufferModel::setRate(double bytesPerSecond, Tick now) {
    advance(now);
    bytesPerTick_ = bytesPerSecond / (TicksPerMicrosecond * 1e6);
}

void BufferModel::clear(Tick now) {
    frames_.clear();
    bytes_ = 0;
    taken_ = 0;
    partTaken_ = 0.0;
    at_ = now;
}

bool BufferModel::fits(std::size_t bytes, Tick now) {
    advance(now);
    return this->bytes(now) + bytes <= capacity();
}

void BufferModel::enter(std::size_t bytes) {
    frames_.back().bytes += bytes;
    bytes_ += bytes;
}

void BufferModel::dropLast(Tick now) {
    advance(now);
    bytes_ -= frames_.back().bytes;
    frames_.pop_back();
    if (taken_ == frames_.size()) {
        partTaken_ = 0.0;
    }
}

void BufferModel::serve(bool moves, bool hostReady, Tick now) {
    if (moves != moves_ || hostReady != hostReady_) {
        advance(now);
        moves_ = moves;
        hostReady_ = hostReady;
    }
}

Tick BufferModel::next() const {
    if (taken_ != 0 && hostReady_) {
        return at_;
    }
    if (!moves_ || taken_ == frames_.size() || !frames_[taken_].complete) {
        return Never;
    }
    constexpr double Longest = 1e18;  // ticks
    const double ticks = std::ceil((static_cast<double>(frames_[taken_].bytes) - partTaken_) / bytesPerTick_);
    return ticks < Longest ? at_ + static_cast<Tick>(ticks) : Never;
}

bool BufferModel::happen(Tick now) {
    if (taken_ == 0 || !hostReady_) {
        ++taken_;
        partTaken_ = 0.0;
        at_ = now;
    }
    if (!hostReady_) {
        return false;
    }
    --taken_;
    bytes_ -= frames_.front().bytes;
    frames_.pop_front();
    return true;
}

std::uint64_t BufferModel::bytes(Tick now) const {
    return bytes_ - (taken_ == 0 && hostReady_ ? static_cast<std::uint64_t>(takenAt(now)) : 0);
}

double BufferModel::takenAt(Tick now) const {
    if (!moves_ || taken_ == frames_.size() || now <= at_) {
        return partTaken_;
    }
    return std::min(partTaken_ + bytesPerTick_ * static_cast<double>(now - at_),
                    static_cast<double>(frames_[taken_].bytes));
}

void BufferModel::advance(Tick now) {
    partTaken_ = takenAt(now);
    at_ = std::max(at_, now);
}

}  // namespace softboard
