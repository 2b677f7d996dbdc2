#pragma once

#include <array>
#include <cstdint>

namespace quillon {

/// What a camera pixel format code stands for.
struct PixelFormatBits {
    std::uint32_t bitsPerComponent = 0;  ///< 0 for a code that is not known
    bool colour = false;

    /// Three components where the format has colour.
    constexpr std::uint32_t bitsPerPixel() const { return bitsPerComponent * (colour ? 3U : 1U); }
};

/// Decodes a camera pixel format code. The table is that of all designs; this one accepts the RGB codes from 1025 to
/// 1029 only.
constexpr PixelFormatBits pixelFormatBits(std::uint32_t code) {
    constexpr std::array<std::uint32_t, 5> bits = {8, 10, 12, 14, 16};
    struct Row {
        std::uint32_t first, last;
        bool colour;
    };
    constexpr std::array<Row, 7> rows = {{{257, 261, false},
                                          {785, 788, false},
                                          {801, 804, false},
                                          {817, 820, false},
                                          {833, 836, false},
                                          {1025, 1029, true},
                                          {1281, 1285, true}}};
    for (const Row& row : rows) {
        if (code >= row.first && code <= row.last) {
            return {bits[code - row.first], row.colour};
        }
    }
    return {};
}

}  // namespace quillon
