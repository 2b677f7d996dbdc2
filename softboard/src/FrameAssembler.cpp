#include "softboard/src/FrameAssembler.h"

#include <utility>

#include "softboard/frames.h"

namespace softboard {

void FrameAssembler::bind(PixelSettings& settings, FrameTaker& taker) {
    *this = FrameAssembler();
    settings_ = &settings;
    taker_ = &taker;
}

// ---- The stream ----

void FrameAssembler::frameBegan() {
    if (!cutOff_) {
        begin();
    }
}

void FrameAssembler::lineBegan(const pixels::Line& line) {
    if (!cutOff_) {
        beginLine(line, settings_->current());
    }
}

void FrameAssembler::lineEnded(Tick now) {
    if (!cutOff_) {
        endLine(now);
    }
}

void FrameAssembler::frameEnded(Tick now, std::uint32_t flags) {
    if (!cutOff_) {
        end(now, flags);
    }
}

// ---- What is injected ----

void FrameAssembler::cutOff(bool cutOff, Tick now) {
    if (cutOff != cutOff_ && std::exchange(collecting_, false)) {
        taker_->drop(now);
    }
    cutOff_ = cutOff;
}

void FrameAssembler::beginInjected(std::shared_ptr<const pixels::Settings> settings) {
    injected_ = std::move(settings);
    begin();
}

void FrameAssembler::injectLine(const pixels::Line& line, Tick now) {
    beginLine(line, injected_);
    endLine(now);
}

void FrameAssembler::endInjected(Tick now) {
    end(now, SOFTBOARD_FRAME_INJECTED);
}

// ---- Both ----

void FrameAssembler::begin() {
    frame_ = {};
    collecting_ = true;
    keepsLines_ = taker_->beginFrame();
}

void FrameAssembler::beginLine(const pixels::Line& line, const std::shared_ptr<const pixels::Settings>& settings) {
    line_ = line;
    line_.settings = settings->version;
    if (keepsLines_ && (frame_.settings.empty() || frame_.settings.back() != settings)) {
        frame_.settings.push_back(settings);
    }
}

void FrameAssembler::endLine(Tick now) {
    if (!collecting_) {
        return;
    }
    const std::size_t bytes = keepsLines_ ? pixels::lineBytes(*frame_.settings.back()) : 0;
    if (keepsLines_ && !taker_->takeLine(bytes, now)) {
        return;
    }
    if (frame_.lineCount++ == 0) {
        frame_.firstTick = line_.tick;
    }
    frame_.lastTick = line_.tick;
    if (keepsLines_) {
        frame_.lines.push_back(line_);
        frame_.bytes += bytes;
    }
}

void FrameAssembler::end(Tick now, std::uint32_t flags) {
    if (!std::exchange(collecting_, false)) {
        return;
    }
    if (!keepsLines_) {
        frame_.bytes = frame_.lineCount * pixels::lineBytes(*settings_->current());
    }
    frame_.flags |= flags;
    taker_->take(std::move(frame_), now);
}

void FrameAssembler::faultStruck() {
    taker_->faultStruck();
    frameSuffers();
}

void FrameAssembler::frameSuffers() {
    if (collecting_) {
        frame_.flags |= SOFTBOARD_FRAME_FAULTY;
    }
}

}  // namespace softboard
