/// @file
/// What a monitor behind the image path sees.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "softboard/pixels/Line.h"
#include "softboard/pixels/Settings.h"

namespace softboard::pixels {

/// The last pixel of a frame.
struct LastPixel {
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    std::array<std::uint8_t, Colours> rgb{};  ///< the top 8 bits of each component
};

/// Of what was drawn into `frame`, whose last line has these settings; nothing if it has no pixel.
std::optional<LastPixel> lastPixel(const Settings& settings, const Drawn& drawn, std::span<const std::byte> frame);

}  // namespace softboard::pixels
