#include "softboard/src/FrameAssembler.h"

#include <utility>

namespace softboard {

void FrameAssembler::bind(PixelSettings& settings, FrameTaker& taker) {
    *this = FrameAssembler();
    settings_ = &settings;
    taker_ = &taker;
}

void FrameAssembler::frameBegan() {
    frame_ = {};
    collecting_ = true;
    keepsLines_ = taker_->wantsLines();
}

void FrameAssembler::lineBegan(Tick now, std::int64_t position) {
    line_.tick = now;
    if (!keepsLines_) {
        return;
    }
    const auto& settings = settings_->current();
    line_.position = position;
    line_.settings = settings->version;
    if (frame_.settings.empty() || frame_.settings.back() != settings) {
        frame_.settings.push_back(settings);
    }
}

void FrameAssembler::lineEnded() {
    if (frame_.lineCount++ == 0) {
        frame_.firstTick = line_.tick;
    }
    frame_.lastTick = line_.tick;
    if (keepsLines_) {
        frame_.lines.push_back(line_);
        frame_.bytes += pixels::lineBytes(*frame_.settings.back());
    }
}

void FrameAssembler::frameEnded(Tick now, std::uint32_t flags) {
    if (!std::exchange(collecting_, false) || frame_.lineCount == 0) {
        return;
    }
    if (!keepsLines_) {
        frame_.bytes = frame_.lineCount * pixels::lineBytes(*settings_->current());
    }
    frame_.flags = flags;
    ++handedOn_;
    taker_->take(std::move(frame_), now);
}

}  // namespace softboard
