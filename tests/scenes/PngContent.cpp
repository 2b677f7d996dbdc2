#include "tests/scenes/PngContent.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

namespace softboard::scenes::testing {

namespace {

void append(png_structp png, png_bytep data, png_size_t size) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), size);
}

int typeOf(PngColours colours) {
    switch (colours) {
        case PngColours::Grey: return PNG_COLOR_TYPE_GRAY;
        case PngColours::GreyAlpha: return PNG_COLOR_TYPE_GRAY_ALPHA;
        case PngColours::Rgb: return PNG_COLOR_TYPE_RGB;
        case PngColours::RgbAlpha: return PNG_COLOR_TYPE_RGB_ALPHA;
        case PngColours::Palette: return PNG_COLOR_TYPE_PALETTE;
    }
    return 0;
}

/// A row as the library takes it: one byte or two for a sample, packed by the library.
std::vector<png_byte> rowOf(const PngContent& content, std::size_t y) {
    const std::size_t samples = content.samples.size() / content.height;
    std::vector<png_byte> row;
    for (std::size_t i = y * samples; i < (y + 1) * samples; ++i) {
        if (content.bits == 16) {
            row.push_back(static_cast<png_byte>(content.samples[i] >> 8));
        }
        row.push_back(static_cast<png_byte>(content.samples[i]));
    }
    return row;
}

void setTransparency(png_structp png, png_infop info, const PngContent& content) {
    if (!content.paletteAlpha.empty()) {
        png_set_tRNS(png, info, content.paletteAlpha.data(), static_cast<int>(content.paletteAlpha.size()), nullptr);
    }
    if (!content.transparent.empty()) {
        png_color_16 colour{};
        colour.gray = content.transparent.front();
        if (content.transparent.size() == 3) {
            colour.red = content.transparent[0];
            colour.green = content.transparent[1];
            colour.blue = content.transparent[2];
        }
        png_set_tRNS(png, info, nullptr, 0, &colour);
    }
}

std::string bigEndian(std::uint32_t number) {
    std::string bytes(4, '\0');
    png_save_uint_32(reinterpret_cast<png_bytep>(bytes.data()), number);
    return bytes;
}

}  // namespace

std::string pngOf(const PngContent& content) {
    std::string file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png, info, content.width, content.height, content.bits, typeOf(content.colours),
                 content.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!content.palette.empty()) {
        std::vector<png_color> palette;
        for (const auto& [red, green, blue] : content.palette) {
            palette.push_back({red, green, blue});
        }
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    }
    setTransparency(png, info, content);
    png_write_info(png, info);
    png_set_packing(png);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t y = 0; y < content.height; ++y) {
            png_write_row(png, rowOf(content, y).data());
        }
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

std::string pngChunk(const std::string& type, const std::string& data) {
    const std::string checked = type + data;
    const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
    return bigEndian(static_cast<std::uint32_t>(data.size())) + checked + bigEndian(static_cast<std::uint32_t>(sum));
}

std::string pngHeader(std::uint32_t width, std::uint32_t height, int bits, int colourType) {
    const std::string rest = {static_cast<char>(bits), static_cast<char>(colourType), 0, 0, 0};
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", bigEndian(width) + bigEndian(height) + rest);
}

std::string pngData(const std::string& rows) {
    uLongf size = compressBound(rows.size());
    std::string data(size, '\0');
    EXPECT_EQ(compress(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
                       rows.size()),
              Z_OK);
    data.resize(size);
    return pngChunk("IDAT", data);
}

}  // namespace softboard::scenes::testing
