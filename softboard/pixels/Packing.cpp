#include "softboard/pixels/Packing.h"

#include <bit>
#include <cstring>
#include <type_traits>

namespace softboard::pixels {

namespace {

static_assert(std::endian::native == std::endian::little, "words of a line are stored as they are");

/// A raw component as it lies in memory. Cameras of 10, 12 and 14 bits deliver words, and only they need the mask: an
/// index has to stay in the table whatever a scene delivers.
template <typename Raw, bool Masked>
class RawComponent {
public:
    static constexpr std::ptrdiff_t Size = sizeof(Raw);
    explicit RawComponent(std::uint32_t bits) : mask_((1U << bits) - 1) {}

    std::size_t operator()(const std::byte* from) const {
        Raw value;
        std::memcpy(&value, from, sizeof value);
        if constexpr (Masked) {
            return value & mask_;
        } else {
            return value;
        }
    }

private:
    std::uint32_t mask_;
};

/// Four pixels of a packed format, given as words of one pixel each, as one stream.
template <std::uint32_t PixelBits>
void storeGroup(const std::array<std::uint64_t, PackedGroup>& pixels, std::byte* to) {
    constexpr std::size_t Bytes = PixelBits * PackedGroup / 8;
    std::array<std::uint64_t, 3> stream{};
    std::uint32_t place = 0;
#pragma GCC unroll 4
    for (std::size_t i = 0; i < PackedGroup; ++i, place += PixelBits) {
        stream[place / 64] |= pixels[i] << place % 64;
        if (place % 64 + PixelBits > 64) {
            stream[place / 64 + 1] |= pixels[i] >> (64 - place % 64);
        }
    }
    std::memcpy(to, stream.data(), Bytes);
}

template <typename Raw, bool Masked, std::uint32_t FormatBits, bool Backwards>
void drawPixels(const std::byte* from, std::size_t count, const Channels& channels, std::byte* to) {
    using Entry = std::conditional_t<FormatBits == 8, std::uint8_t, std::uint16_t>;
    const RawComponent<Raw, Masked> raw(channels.bits);
    constexpr std::ptrdiff_t Component = RawComponent<Raw, Masked>::Size;
    constexpr std::ptrdiff_t Step = (Backwards ? -1 : 1) * Component * static_cast<std::ptrdiff_t>(Colours);
    const auto* const entries0 = static_cast<const Entry*>(channels.entries[0]);
    const auto* const entries1 = static_cast<const Entry*>(channels.entries[1]);
    const auto* const entries2 = static_cast<const Entry*>(channels.entries[2]);
    const auto place0 = static_cast<std::ptrdiff_t>(channels.component[0]) * Component;
    const auto place1 = static_cast<std::ptrdiff_t>(channels.component[1]) * Component;
    const auto place2 = static_cast<std::ptrdiff_t>(channels.component[2]) * Component;

    if constexpr (isPacked(FormatBits)) {
        for (std::size_t group = 0; group < count / PackedGroup; ++group) {
            std::array<std::uint64_t, PackedGroup> pixels;
#pragma GCC unroll 4
            for (std::uint64_t& pixel : pixels) {
                pixel = std::uint64_t{entries0[raw(from + place0)]} |
                        std::uint64_t{entries1[raw(from + place1)]} << FormatBits |
                        std::uint64_t{entries2[raw(from + place2)]} << 2 * FormatBits;
                from += Step;
            }
            storeGroup<Colours * FormatBits>(pixels, to);
            to += Colours * FormatBits * PackedGroup / 8;
        }
    } else {
#pragma GCC unroll 4
        for (std::size_t i = 0; i < count; ++i) {
            const std::array<Entry, Colours> pixel = {entries0[raw(from + place0)], entries1[raw(from + place1)],
                                                      entries2[raw(from + place2)]};
            std::memcpy(to, pixel.data(), sizeof pixel);
            from += Step;
            to += sizeof pixel;
        }
    }
}

template <typename Raw, bool Masked, bool Backwards>
DrawPixels drawPixelsInFormat(std::uint32_t formatBits) {
    switch (formatBits) {
        case 8: return drawPixels<Raw, Masked, 8, Backwards>;
        case 10: return drawPixels<Raw, Masked, 10, Backwards>;
        case 12: return drawPixels<Raw, Masked, 12, Backwards>;
        case 14: return drawPixels<Raw, Masked, 14, Backwards>;
        default: return drawPixels<Raw, Masked, 16, Backwards>;
    }
}

template <bool Backwards>
DrawPixels drawPixelsInDirection(std::uint32_t bits, std::uint32_t formatBits) {
    switch (bits) {
        case 8: return drawPixelsInFormat<std::uint8_t, false, Backwards>(formatBits);
        case 16: return drawPixelsInFormat<std::uint16_t, false, Backwards>(formatBits);
        default: return drawPixelsInFormat<std::uint16_t, true, Backwards>(formatBits);
    }
}

}  // namespace

DrawPixels drawPixelsFor(std::uint32_t bits, std::uint32_t formatBits, bool backwards) {
    return backwards ? drawPixelsInDirection<true>(bits, formatBits) : drawPixelsInDirection<false>(bits, formatBits);
}

}  // namespace softboard::pixels
