/// @file
/// The icon of the applet, drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace softboard {

/// Size of the icon's PNG file.
inline constexpr std::size_t IconFileSize = 4676;

/// The icon as a PNG file of exactly IconFileSize bytes. Throws std::runtime_error if the drawing does not fit.
std::vector<std::uint8_t> drawIcon();

}  // namespace softboard
