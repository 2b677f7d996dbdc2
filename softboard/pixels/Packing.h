/// @file
/// Components into a line's stream of bits, which fills each byte from its low bit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "softboard/pixels/Settings.h"

namespace softboard::pixels {

/// One component after the other, in any format.
class BitWriter {
public:
    explicit BitWriter(std::byte* to) : to_(to) {}

    void put(std::uint16_t value, std::uint32_t bits) {
        stream_ |= std::uint32_t{value} << filled_;
        for (filled_ += bits; filled_ >= 8; filled_ -= 8) {
            *to_++ = static_cast<std::byte>(stream_);
            stream_ >>= 8;
        }
    }
    /// Fills the last byte with bits of 0.
    void end() {
        if (filled_ != 0) {
            *to_ = static_cast<std::byte>(stream_);
        }
    }

private:
    std::byte* to_;
    std::uint32_t stream_ = 0;
    std::uint32_t filled_ = 0;  ///< bits in the stream
};

/// What a line's camera pixels go through. All arrays are in the order of the components in the frame.
struct Channels {
    std::array<std::size_t, Colours> component;  ///< of the camera
    std::array<const void*, Colours> entries;    ///< of a fused table
    std::uint32_t bits;                          ///< of a raw component
};

/// Draws `count` pixels, the first of which is at `from`, into exactly the bytes that they fill. `count` is a multiple
/// of PackedGroup where the format is packed.
using DrawPixels = void (*)(const std::byte* from, std::size_t count, const Channels& channels, std::byte* to);

inline constexpr std::size_t PackedGroup = 4;  ///< pixels that fill whole bytes in every format

/// Whether a pixel's components fill whole bytes.
constexpr bool isPacked(std::uint32_t formatBits) {
    return formatBits % 8 != 0;
}

/// @param backwards  the pixels follow each other to the left in memory
DrawPixels drawPixelsFor(std::uint32_t bits, std::uint32_t formatBits, bool backwards);

}  // namespace softboard::pixels
