#include "softboard/pixels/LastPixel.h"

namespace softboard::pixels {

std::optional<LastPixel> lastPixel(const Settings& settings, const Drawn& drawn, std::span<const std::byte> frame) {
    const std::size_t bytes = lineBytes(settings);
    if (drawn.lines == 0 || bytes == 0 || bytes > drawn.bytes) {
        return std::nullopt;
    }
    const std::uint32_t bits = settings.formatBits;
    const std::span<const std::byte> line = frame.subspan(drawn.bytes - bytes, bytes);
    LastPixel pixel{settings.xLength - 1, static_cast<std::uint32_t>(drawn.lines - 1), {}};
    for (std::size_t i = 0; i < Colours; ++i) {
        // A component lies in at most three bytes.
        const std::size_t first = (std::size_t{pixel.x} * Colours + i) * bits;
        std::uint32_t word = 0;
        for (std::size_t at = first / 8, shift = 0; at <= (first + bits - 1) / 8; ++at, shift += 8) {
            word |= std::to_integer<std::uint32_t>(line[at]) << shift;
        }
        const std::uint32_t value = word >> first % 8 & ((1U << bits) - 1);
        pixel.rgb[settings.redFirst ? i : Colours - 1 - i] = static_cast<std::uint8_t>(value >> (bits - 8));
    }
    return pixel;
}

}  // namespace softboard::pixels
