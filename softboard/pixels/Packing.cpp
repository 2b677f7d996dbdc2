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

/// Four pixels of a packed format, each in the low bits of a word, as one stream. The last eight bytes overlap those in
/// front of them: a group is no whole number of words, and nothing is written behind it.
template <std::uint32_t PixelBits>
void storeGroup(const std::array<std::uint64_t, PackedGroup>& pixels, std::byte* to) {
    constexpr std::uint32_t Second = PixelBits;
    constexpr std::uint32_t Third = 2 * PixelBits;
    constexpr std::uint32_t Fourth = 3 * PixelBits;
    static_assert(Second < 64 && Fourth > 64 && Fourth < 128);
    std::uint64_t low = pixels[0] | pixels[1] << Second;
    std::uint64_t middle = pixels[3] << (Fourth - 64);
    if constexpr (Third < 64) {
        low |= pixels[2] << Third;
        middle |= pixels[2] >> (64 - Third);
    } else {
        middle |= pixels[1] >> (64 - Second) | pixels[2] << (Third - 64);
    }
    const std::uint64_t high = pixels[3] >> (128 - Fourth);
    std::memcpy(to, &low, sizeof low);

    constexpr std::uint32_t Bytes = PixelBits * PackedGroup / 8;
    constexpr std::uint32_t LastWord = Bytes * 8 - 64;  // bits in front of it
    std::uint64_t last = 0;
    if constexpr (LastWord < 64) {
        last = low >> LastWord | middle << (64 - LastWord);
    } else {
        std::memcpy(to + sizeof low, &middle, sizeof middle);
        last = middle >> (LastWord - 64) | high << (128 - LastWord);
    }
    std::memcpy(to + Bytes - sizeof last, &last, sizeof last);
}

template <typename Entry>
void store(std::byte* to, Entry value) {
    std::memcpy(to, &value, sizeof value);
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
            store(to, entries0[raw(from + place0)]);
            store(to + sizeof(Entry), entries1[raw(from + place1)]);
            store(to + 2 * sizeof(Entry), entries2[raw(from + place2)]);
            from += Step;
            to += Colours * sizeof(Entry);
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
