/// @file
/// The binary form of a design: a header, the description text, and filling up to a size.
///
/// All numbers are little-endian. The header has 64 bytes:
///
///     0  "MSISQDSN"                      24  length of the description text (64 bits)
///     8  format version, 1 (32 bits)     32  CRC-32 of all that follows the header (32 bits)
///    12  design type (32 bits)           36  CRC-32 of the bytes 0 to 35 (32 bits)
///    16  length of the image (64 bits)   40  zeros
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace softboard {

/// Size of the image that an applet carries.
inline constexpr std::size_t CarriedImageSize = 8255782;

/// Packs a description text. An image shorter than `size` is filled up with bytes that depend on nothing else; `size` 0
/// adds none. Throws DesignError if the description is unusable or does not fit.
std::vector<std::uint8_t> packImage(std::string_view description, std::size_t size);

/// What an undamaged image holds.
struct UnpackedImage {
    std::int32_t type = 0;
    std::string_view description;  ///< a part of the data
};

/// Nothing, if `data` is null, foreign, cut off, too long or damaged.
std::optional<UnpackedImage> unpackImage(const void* data, std::size_t size);

}  // namespace softboard
