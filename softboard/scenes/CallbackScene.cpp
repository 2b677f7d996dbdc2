#include "softboard/scenes/CallbackScene.h"

#include "softboard/scenes/Raw.h"
#include "softboard/scenes/Rows.h"

namespace softboard::scenes {

namespace {

softboard_line described(const pixels::Line& line) {
    constexpr double TicksInMicrosecond = 125;
    return {.size = sizeof(softboard_line),
            .tick = static_cast<std::uint64_t>(line.tick),
            .position_mm = static_cast<double>(line.position) / NanometresPerMm,
            .exposure_us = line.exposure / TicksInMicrosecond,
            .flash = line.flash != 0 ? 1 : 0};
}

}  // namespace

std::span<const std::byte> CallbackScene::take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                               std::span<std::byte> memory) {
    rgb_.assign(std::size_t{pixels} * pixels::Colours, 0);
    const softboard_line about = described(line);
    if (function_(user_, &about, rgb_.data(), pixels) != 0) {
        return {};
    }
    if (bits == 16) {
        return std::as_bytes(std::span(rgb_));
    }
    withRaw(bits, [&](auto raw) {
        for (std::size_t i = 0; i < rgb_.size(); ++i) {
            storeRaw(memory.data(), i, static_cast<decltype(raw)>(rgb_[i] >> (16 - bits)));
        }
    });
    return memory.first(rawBytes(pixels, bits));
}

}  // namespace softboard::scenes
