#include "softboard/src/Acquisition.h"

#include <algorithm>
#include <string>
#include <utility>

#include "softboard/faults.h"
#include "softboard/softboard.h"

namespace softboard {

void Acquisition::bind(const Find& find, Switchboard& switchboard) {
    switchboard_ = &switchboard;
    dmaStatus_ = find("FG_DMASTATUS");
    transferLength_ = find("FG_TRANSFER_LEN");
    timeout_ = find("FG_TIMEOUT");
    period_ = find("Device1_Process0_ImageSelector_FG_IMG_SELECT_PERIOD_Divisor");
    phase_ = find("Device1_Process0_ImageSelector_FG_IMG_SELECT_PHASE_Number");
    for (std::size_t bank = 0; bank < fillLevels_.size(); ++bank) {
        fillLevels_[bank] = find("Device1_Process0_Buffer_0_DRAM_DRAM_A_" + std::to_string(bank) + "_FillLevel");
    }
    overflow_ = find("Device1_Process0_Overflow_OverflowOccurred");
    linkWidth_ = find("Device1_Process0_BoardStatus_PcieCurrentLinkWidth");
    lanes_ = integerOf(linkWidth_);
    buffer_.bind(find);
    open_ = {};
    waiting_.clear();
    stalledUntil_ = Never;
    lastFrame_ = 0;
    linkChanged(linkUp_, 0);
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
    faults_ = 0;
    lastMemory_ = memory;
    memory_ = std::move(memory);
    dmaStatus_->setInteger(1);
    if (overflow_ != nullptr) {
        overflow_->setInteger(0);
    }
    serve(now);
    if (wanted_ == 0) {
        endByCount(now);
    }
}

void Acquisition::stop(int endedWith, Tick now) {
    running_ = false;
    endedWith_ = endedWith;
    open_ = {};
    waiting_.clear();
    arrived_.reset();
    buffer_.clear(now);
    serve(now);
    show(now);
    dmaStatus_->setInteger(0);
    if (memory_ != nullptr) {
        memory_->endAcquisition();
        memory_.reset();
    }
}

void Acquisition::endByCount(Tick now) {
    stop(SOFTBOARD_E_ACQUISITION, now);
    endedByItself_ = true;
}

bool Acquisition::takeEndedByItself() {
    return std::exchange(endedByItself_, false);
}

void Acquisition::checkTimeout(Tick now) {
    if (running_ && now - lastFrame_ > ticksInSeconds(integerOf(timeout_))) {
        stop(SOFTBOARD_E_TIMEOUT, now);
        endedByItself_ = true;
    }
}

bool Acquisition::complete() const {
    const std::size_t onTheirWay = buffer_.frames() + (arrived_ ? 1 : 0) + (drawing_ ? 1 : 0);
    return wanted_ >= 0 && pictures_ + static_cast<std::int64_t>(onTheirWay) >= wanted_;
}

/// The selector's turn: of `period` frames it passes number `phase`.
bool Acquisition::selected() const {
    const auto period = static_cast<std::uint64_t>(std::max<std::int64_t>(integerOf(period_), 1));
    return (behindBuffer_ - 1) % period == static_cast<std::uint64_t>(integerOf(phase_));
}

// ---- Lines and frames come ----

bool Acquisition::beginFrame() {
    open_ = {};
    open_.wanted = running_ && memory_ != nullptr && !complete();
    if (open_.wanted) {
        frameFaults_.next([this](const FrameFault& fault) {
            ++faults_;
            open_.faulty = true;
            switch (fault.what) {
                case SOFTBOARD_FAULT_LOSE: open_.most = 0; break;
                case SOFTBOARD_FAULT_TRUNCATE:
                    open_.most = std::min(open_.most, static_cast<std::uint64_t>(fault.amount));
                    break;
                default: open_.stall = fault.amount; break;
            }
        });
    }
    return open_.wanted;
}

bool Acquisition::takeLine(std::size_t bytes, Tick now) {
    if (!open_.wanted || bytes == 0) {
        return true;  // without a format, or with its branch in the trash, nothing comes out of the path
    }
    const bool cutOff = ++open_.lines > open_.most;
    if (cutOff || !buffer_.fits(bytes, now)) {
        ++lostLines_;
        ++open_.linesLost;
        open_.cutOff = open_.cutOff || cutOff;
        if (!cutOff && !std::exchange(open_.overflows, true)) {
            overflow();
        }
        return false;
    }
    open_.overflows = false;
    if (!open_.entered) {
        enterFrame(now);
    }
    if (open_.selected) {
        buffer_.enter(bytes);
    }
    return true;
}

/// The first line of a frame has come through the buffer. What the selector leaves out takes no room.
void Acquisition::enterFrame(Tick now) {
    open_.entered = true;
    ++behindBuffer_;
    open_.selected = selected();
    if (open_.selected) {
        buffer_.beginFrame();
    }
    if (open_.stall) {
        stalledUntil_ = now + ticksOf(*open_.stall, 1);
        serve(now);
    }
}

void Acquisition::overflow() {
    if (overflow_ != nullptr) {
        overflow_->setInteger(1);
    }
    switchboard_->raise(OverflowEvent);
}

void Acquisition::take(AssembledFrame frame, Tick now) {
    checkTimeout(now);
    if (!running_ || (frame.bytes == 0 && open_.linesLost == 0)) {
        return;
    }
    ++images_;
    if (memory_ == nullptr) {
        countFrame(frame.bytes, now);
        return;
    }
    const OpenFrame open = std::exchange(open_, {});
    if (!open.wanted) {
        return;
    }
    if (!open.entered) {
        ++lostFrames_;
        ++lostBefore_;
        return;
    }
    if (open.selected) {
        frame.flags |= (open.faulty ? unsigned{SOFTBOARD_FRAME_FAULTY} : 0U) |
                       (open.cutOff ? unsigned{SOFTBOARD_FRAME_TRUNCATED} : 0U) |
                       (open.linesLost != 0 ? SOFTBOARD_FRAME_LINES_LOST | unsigned{SOFTBOARD_FRAME_SHORT} : 0U);
        waiting_.push_back({std::move(frame), number_, images_, std::exchange(lostBefore_, 0)});
        buffer_.endFrame();
        schedule();
    }
}

void Acquisition::drop(Tick now) {
    const OpenFrame open = std::exchange(open_, {});
    if (!open.wanted) {
        return;
    }
    ++images_;
    ++lostFrames_;
    ++lostBefore_;
    lostLines_ += open.lines - open.linesLost;
    if (open.entered && open.selected) {
        buffer_.dropLast(now);
        schedule();
    }
}

/// A frame of an acquisition without a memory.
void Acquisition::countFrame(std::size_t bytes, Tick now) {
    ++behindBuffer_;
    if (selected() && !complete()) {
        lastFrame_ = now;
        transferred(bytes);
        count(1, now);
    }
}

void Acquisition::count(std::int64_t pictures, Tick now) {
    if (!running_) {
        return;
    }
    pictures_ += pictures;
    if (wanted_ >= 0 && pictures_ >= wanted_) {
        pictures_ = wanted_;
        endByCount(now);
    }
}

// ---- Frames go to the host ----

void Acquisition::serve(Tick now) {
    const bool moves = running_ && memory_ != nullptr && linkUp_ && stalledUntil_ == Never;
    buffer_.serve(moves, moves && !arrived_ && !drawing_ && memory_->hasRoom(), now);
    schedule();
}

void Acquisition::happen(Tick now) {
    if (stalledUntil_ <= now) {
        endStall(now);
        return;
    }
    if (buffer_.happen(now)) {
        arrived_ = std::move(waiting_.front());
        waiting_.pop_front();
        ++through_;
        lastFrame_ = now;
    }
    serve(now);
}

WaitingFrame Acquisition::nextArrived() {
    drawing_ = true;
    WaitingFrame next = std::move(*arrived_);
    arrived_.reset();
    return next;
}

void Acquisition::drawn(const WaitingFrame& frame, std::size_t bytes, Tick now) {
    if (frame.acquisition != number_) {
        return;
    }
    drawing_ = false;
    transferred(bytes);
    if (!running_) {
        ++pictures_;  // it was stopped while this frame came
        return;
    }
    count(1, now);
    followHost(now);
}

void Acquisition::followHost(Tick now) {
    serve(now);
    while (next() <= now) {
        happen(now);
    }
}

void Acquisition::transferred(std::size_t bytes) {
    bytesTransferred_ += bytes;
    transferLength_->setInteger(static_cast<std::int64_t>(bytes));
}

void Acquisition::setDmaRate(double bytesPerSecond, Tick now) {
    buffer_.setRate(bytesPerSecond, now);
    schedule();
}

void Acquisition::endStall(Tick now) {
    stalledUntil_ = Never;
    serve(now);
}

void Acquisition::linkChanged(bool up, Tick now) {
    if (linkUp_ && !up) {
        lanes_ = integerOf(linkWidth_);
    }
    linkUp_ = up;
    if (linkWidth_ != nullptr) {
        linkWidth_->setInteger(up ? lanes_ : 0);
    }
    serve(now);
}

/// The banks fill evenly, each with a third of every line.
void Acquisition::show(Tick now) {
    const auto percent = static_cast<std::int64_t>(static_cast<double>(buffer_.bytes(now)) * 100.0 /
                                                   static_cast<double>(std::max<std::uint64_t>(buffer_.capacity(), 1)));
    for (Parameter* const level : fillLevels_) {
        if (level != nullptr) {
            level->setInteger(percent);
        }
    }
}

}  // namespace softboard
