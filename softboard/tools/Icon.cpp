#include "softboard/tools/Icon.h"

#include <png.h>

#include <array>
#include <stdexcept>

namespace softboard {
namespace {

constexpr int Side = 48;

struct Pixel {
    std::uint8_t red, green, blue, alpha;
};

/// A dark round plate with the lines of a line-scan image running in from the left, in the sensor's three colours.
Pixel pixelAt(int x, int y) {
    const double centre = (Side - 1) / 2.0;
    const double distance = (x - centre) * (x - centre) + (y - centre) * (y - centre);
    if (distance > centre * centre) {
        return {0, 0, 0, 0};
    }
    if (distance > (centre - 2.0) * (centre - 2.0)) {
        return {200, 206, 214, 255};
    }
    const int line = y / 4;
    const bool onLine = y % 4 < 2 && line >= 3 && line <= 8 && x >= 8 && x < 16 + 4 * line;
    if (!onLine) {
        return {28, 36, 48, 255};
    }
    switch (line % 3) {
        case 0: return {226, 74, 66, 255};
        case 1: return {84, 190, 92, 255};
        default: return {72, 134, 232, 255};
    }
}

std::vector<std::uint8_t> drawing() {
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < Side; ++y) {
        for (int x = 0; x < Side; ++x) {
            const Pixel pixel = pixelAt(x, y);
            pixels.insert(pixels.end(), {pixel.red, pixel.green, pixel.blue, pixel.alpha});
        }
    }
    return pixels;
}

void append(png_structp png, png_bytep data, png_size_t size) {
    auto& file = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    file.insert(file.end(), data, data + size);
}

[[noreturn]] void stop(png_structp, png_const_charp message) {
    throw std::runtime_error(message);
}

void flushNothing(png_structp) {}

/// Ends the library's structures however the drawing ends.
struct Writer {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, stop, nullptr);
    png_infop info = png_create_info_struct(png);
    ~Writer() { png_destroy_write_struct(&png, &info); }
};

/// The drawing as a PNG file, with a private chunk "quPd" of `filling` bytes at the end, or without the chunk if
/// `filling` is negative.
std::vector<std::uint8_t> encode(long filling) {
    std::vector<std::uint8_t> file;
    std::vector<std::uint8_t> pixels = drawing();
    Writer writer;
    png_set_write_fn(writer.png, &file, append, flushNothing);
    png_set_IHDR(writer.png, writer.info, Side, Side, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(writer.png, writer.info);
    for (std::size_t row = 0; row < Side; ++row) {
        png_write_row(writer.png, &pixels[row * Side * 4]);
    }
    if (filling >= 0) {
        const std::array<png_byte, 5> name = {'q', 'u', 'P', 'd', 0};
        const std::vector<png_byte> zeros(static_cast<std::size_t>(filling) + 1);
        png_write_chunk(writer.png, name.data(), zeros.data(), static_cast<png_size_t>(filling));
    }
    png_write_end(writer.png, writer.info);
    return file;
}

}  // namespace

std::vector<std::uint8_t> drawIcon() {
    constexpr long chunkOverhead = 12;  // length, name and checksum of a chunk
    const auto plain = static_cast<long>(encode(-1).size());
    const long filling = static_cast<long>(IconFileSize) - plain - chunkOverhead;
    if (filling < 0) {
        throw std::runtime_error("the icon's drawing takes more than " + std::to_string(IconFileSize) + " bytes");
    }
    return encode(filling);
}

}  // namespace softboard
