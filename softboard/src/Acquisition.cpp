#include "softboard/src/Acquisition.h"

#include <algorithm>
#include <string>
#include <utility>

#include "softboard/softboard.h"

namespace softboard {

void Acquisition::bind(const Find& find, Switchboard& switchboard) {
    switchboard_ = &switchboard;
    dmaStatus_ = find("FG_DMASTATUS");
    transferLength_ = find("FG_TRANSFER_LEN");
    timeout_ = find("FG_TIMEOUT");
    period_ = find("Device1_Process0_ImageSelector_FG_IMG_SELECT_PERIOD_Divisor");
    phase_ = find("Device1_Process0_ImageSelector_FG_IMG_SELECT_PHASE_Number");
    const std::string memory = "Device1_Process0_Buffer_0_DRAM_DRAM_A_";
    addressWidth_ = find(memory + "0_RamAddressWidth");
    dataWidth_ = find(memory + "0_RamDataWidth");
    for (std::size_t bank = 0; bank < fillLevels_.size(); ++bank) {
        fillLevels_[bank] = find(memory + std::to_string(bank) + "_FillLevel");
    }
    overflow_ = find("Device1_Process0_Overflow_OverflowOccurred");
}

void Acquisition::start(std::int64_t count, std::shared_ptr<softboard_memory> memory, Tick now) {
    ++number_;
    running_ = true;
    drawing_ = false;
    endedByItself_ = false;
    endedWith_ = SOFTBOARD_E_ACQUISITION;
    wanted_ = count;
    pictures_ = 0;
    lastFrame_ = now;
    images_ = 0;
    behindBuffer_ = 0;
    lostFrames_ = 0;
    lostLines_ = 0;
    lostBefore_ = 0;
    lastMemory_ = memory;
    memory_ = std::move(memory);
    dmaStatus_->setInteger(1);
    if (overflow_ != nullptr) {
        overflow_->setInteger(0);
    }
    if (wanted_ == 0) {
        endByCount();
    }
}

void Acquisition::stop(int endedWith) {
    running_ = false;
    endedWith_ = endedWith;
    waiting_.clear();
    bytesWaiting_ = 0;
    showFillLevel();
    dmaStatus_->setInteger(0);
    if (memory_ != nullptr) {
        memory_->endAcquisition();
        memory_.reset();
    }
}

void Acquisition::endByCount() {
    stop(SOFTBOARD_E_ACQUISITION);
    endedByItself_ = true;
}

bool Acquisition::takeEndedByItself() {
    return std::exchange(endedByItself_, false);
}

void Acquisition::checkTimeout(Tick now) {
    if (running_ && now - lastFrame_ > ticksInSeconds(integerOf(timeout_))) {
        stop(SOFTBOARD_E_TIMEOUT);
        endedByItself_ = true;
    }
}

bool Acquisition::complete() const {
    const auto onTheirWay = static_cast<std::int64_t>(waiting_.size()) + (drawing_ ? 1 : 0);
    return wanted_ >= 0 && pictures_ + onTheirWay >= wanted_;
}

/// The selector's turn: of `period` frames it passes number `phase`.
bool Acquisition::selected() const {
    const auto period = static_cast<std::uint64_t>(std::max<std::int64_t>(integerOf(period_), 1));
    return (behindBuffer_ - 1) % period == static_cast<std::uint64_t>(integerOf(phase_));
}

/// Bytes of the board's own memory.
std::uint64_t Acquisition::capacity() const {
    constexpr std::uint64_t Banks = 3;
    constexpr std::int64_t MostAddressBits = 40;
    if (addressWidth_ == nullptr || dataWidth_ == nullptr) {
        return ~std::uint64_t{0};
    }
    const std::int64_t addressBits = std::clamp<std::int64_t>(integerOf(addressWidth_), 0, MostAddressBits);
    return Banks * static_cast<std::uint64_t>(std::max<std::int64_t>(integerOf(dataWidth_), 0) << addressBits) / 8;
}

void Acquisition::take(AssembledFrame frame, Tick now) {
    checkTimeout(now);
    if (!running_ || frame.bytes == 0) {
        return;  // without a format, or with its branch in the trash, nothing comes out of the path
    }
    ++images_;
    if (memory_ != nullptr && bytesWaiting_ + frame.bytes > capacity()) {
        lose(frame);
        return;
    }
    ++behindBuffer_;
    if (!selected() || complete()) {
        return;
    }
    lastFrame_ = now;
    if (memory_ == nullptr) {
        transferred(frame.bytes);
        count(1);
        return;
    }
    bytesWaiting_ += frame.bytes;
    showFillLevel();
    waiting_.push_back({std::move(frame), number_, images_, std::exchange(lostBefore_, 0)});
}

void Acquisition::lose(const AssembledFrame& frame) {
    ++lostFrames_;
    ++lostBefore_;
    lostLines_ += frame.lineCount;
    if (overflow_ != nullptr) {
        overflow_->setInteger(1);
    }
    switchboard_->raise(OverflowEvent);
}

void Acquisition::count(std::int64_t pictures) {
    if (!running_) {
        return;
    }
    pictures_ += pictures;
    if (wanted_ >= 0 && pictures_ >= wanted_) {
        pictures_ = wanted_;
        endByCount();
    }
}

WaitingFrame Acquisition::nextWaiting() {
    WaitingFrame next = std::move(waiting_.front());
    waiting_.pop_front();
    drawing_ = true;
    return next;
}

void Acquisition::drawn(const WaitingFrame& frame, std::size_t bytes) {
    if (frame.acquisition != number_) {
        return;
    }
    drawing_ = false;
    transferred(bytes);
    if (!running_) {
        ++pictures_;  // it was stopped while this frame came
        return;
    }
    bytesWaiting_ -= frame.frame.bytes;
    showFillLevel();
    count(1);
}

void Acquisition::transferred(std::size_t bytes) {
    bytesTransferred_ += bytes;
    transferLength_->setInteger(static_cast<std::int64_t>(bytes));
}

/// The banks fill evenly, each with a third of every line.
void Acquisition::showFillLevel() {
    const auto percent = static_cast<std::int64_t>(static_cast<double>(bytesWaiting_) * 100.0 /
                                                   static_cast<double>(std::max<std::uint64_t>(capacity(), 1)));
    for (Parameter* const level : fillLevels_) {
        if (level != nullptr) {
            level->setInteger(percent);
        }
    }
}

}  // namespace softboard
