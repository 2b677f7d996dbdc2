/// @file
/// Pictures from files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <vector>

namespace softboard::scenes {

struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t bits = 8;         ///< of a component: 8 or 16
    std::vector<std::byte> pixels;  ///< row by row red, green, blue: bytes, or words of the computer
};

inline constexpr std::uint64_t MostPixels = std::uint64_t{1} << 27;  ///< of a picture

/// A file that is no picture which can be read whole. The message, for people, begins with its name.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether a file that begins with these bytes, 8 or more of them, is read as a picture: PNG, or PNM of the kinds P2,
/// P3, P5 and P6.
bool looksLikePicture(std::span<const std::byte> bytes);

/// Reads a file, by its content and not by its name. Nothing is read in part: where a file ends early or is damaged,
/// there is no picture. Throws PictureError.
///
/// Grey and palettes become red, green and blue. What has at most 8 bits in the file gets 8, all else 16: values of a
/// PNM are scaled from its maxval to full scale, to the nearest. What is transparent in a PNG lies over black; its
/// colour space is ignored, as are further pictures behind the first of a PNM.
Picture readPicture(const std::filesystem::path& file);

}  // namespace softboard::scenes
