#include "softboard/pixels/Scene.h"

#include <array>
#include <cstring>

#include "softboard/pixels/Settings.h"

namespace softboard::pixels {

std::uint16_t BarScene::component(std::uint32_t x, std::uint32_t pixels, std::size_t component) {
    // Bit c: the bar has component c.
    static constexpr std::array<unsigned, 8> Bars = {0b111, 0b011, 0b110, 0b010, 0b101, 0b001, 0b100, 0b000};
    const std::uint64_t eighths = std::uint64_t{x} * Bars.size();
    if ((Bars[static_cast<std::size_t>(eighths / pixels)] >> component & 1U) == 0) {
        return 0;
    }
    return static_cast<std::uint16_t>(65535 - eighths % pixels * 32768 / pixels);
}

std::span<const std::byte> BarScene::take(const Line& /*line*/, std::uint32_t pixels, std::uint32_t bits,
                                          std::span<std::byte> /*memory*/) {
    if (pixels != pixels_ || bits != bits_) {
        pixels_ = pixels;
        bits_ = bits;
        const std::size_t size = componentBytes(bits);
        line_.resize(std::size_t{pixels} * Colours * size);
        std::byte* to = line_.data();
        for (std::uint32_t x = 0; x < pixels; ++x) {
            for (std::size_t colour = 0; colour < Colours; ++colour, to += size) {
                const auto value = static_cast<std::uint16_t>(component(x, pixels, colour) >> (16 - bits));
                std::memcpy(to, &value, size);
            }
        }
    }
    return line_;
}

}  // namespace softboard::pixels
