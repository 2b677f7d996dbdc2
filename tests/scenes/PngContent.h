/// @file
/// PNG files of all kinds, made in memory.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace softboard::scenes::testing {

enum class PngColours { Grey, GreyAlpha, Rgb, RgbAlpha, Palette };

struct PngContent {
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    int bits = 8;
    PngColours colours = PngColours::Rgb;
    std::vector<unsigned> samples = {};  ///< row by row, in the file's own channels
    bool interlaced = false;
    std::vector<std::array<std::uint8_t, 3>> palette = {};
    std::vector<std::uint8_t> paletteAlpha = {};  ///< of its first entries
    std::vector<std::uint16_t> transparent = {};  ///< the colour that stands for nothing: one value or three
};

std::string pngOf(const PngContent& content);

/// A chunk with its length and its check sum.
std::string pngChunk(const std::string& type, const std::string& data);
/// The signature and a header, of 8-bit grey unless told otherwise.
std::string pngHeader(std::uint32_t width, std::uint32_t height, int bits = 8, int colourType = 0);
/// An IDAT chunk with compressed rows.
std::string pngData(const std::string& rows);
inline std::string pngEnd() {
    return pngChunk("IEND", "");
}

}  // namespace softboard::scenes::testing
