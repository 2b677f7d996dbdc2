/// @file
/// The pixel formats of a stream, by their public names.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "quillon/Vocabulary.h"

namespace quillon::gige {

struct PixelFormat {
    std::string_view name;
    std::uint32_t code;
    int format;     ///< FG_FORMAT, whose frames it is made of
    bool redFirst;  ///< or grey
    bool grey;      ///< the mean of the three components
    bool packed;    ///< frames are sent as they lie in memory; otherwise a component has a word of its own
    unsigned bits;  ///< of a component
};

// clang-format off
inline constexpr std::array<PixelFormat, 19> PixelFormats = {{
    {"Mono8",  0x01080001, FG_COL24, true,  true,  true,  8},
    {"Mono10", 0x01100003, FG_COL30, true,  true,  false, 10},
    {"Mono12", 0x01100005, FG_COL36, true,  true,  false, 12},
    {"Mono14", 0x01100025, FG_COL42, true,  true,  false, 14},
    {"Mono16", 0x01100007, FG_COL48, true,  true,  true,  16},
    {"RGB8",   0x02180014, FG_COL24, true,  false, true,  8},
    {"BGR8",   0x02180015, FG_COL24, false, false, true,  8},
    {"RGB10",  0x02300018, FG_COL30, true,  false, false, 10},
    {"BGR10",  0x02300019, FG_COL30, false, false, false, 10},
    {"RGB10p", 0x021E005C, FG_COL30, true,  false, true,  10},
    {"BGR10p", 0x021E0048, FG_COL30, false, false, true,  10},
    {"RGB12",  0x0230001A, FG_COL36, true,  false, false, 12},
    {"BGR12",  0x0230001B, FG_COL36, false, false, false, 12},
    {"RGB12p", 0x0224005D, FG_COL36, true,  false, true,  12},
    {"BGR12p", 0x02240049, FG_COL36, false, false, true,  12},
    {"RGB14",  0x0230005E, FG_COL42, true,  false, false, 14},
    {"BGR14",  0x0230004A, FG_COL42, false, false, false, 14},
    {"RGB16",  0x02300033, FG_COL48, true,  false, true,  16},
    {"BGR16",  0x0230004B, FG_COL48, false, false, true,  16},
}};
// clang-format on

/// Null for a code that is none of these.
const PixelFormat* pixelFormatOf(std::uint32_t code);

/// The format that was wanted, if it fits; otherwise the first coloured one of the same order that does, if any.
template <class Fits>
const PixelFormat& formatThatFits(const PixelFormat& wanted, Fits fits) {
    if (fits(wanted)) {
        return wanted;
    }
    for (const PixelFormat& other : PixelFormats) {
        if (fits(other) && other.redFirst == wanted.redFirst && !other.grey) {
            return other;
        }
    }
    return wanted;
}

}  // namespace quillon::gige
