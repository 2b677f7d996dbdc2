#include <png.h>

#include <vector>

#include "cli/ExitStatus.h"
#include "cli/pictures/Formats.h"

namespace quillon::cli {

namespace {

[[noreturn]] void stop(png_structp png, png_const_charp message) {
    const auto& file = *static_cast<const PartFile*>(png_get_error_ptr(png));
    throw RefusedError(file.file().string() + " cannot be written: " + message);
}

void append(png_structp png, png_bytep data, png_size_t size) {
    static_cast<PartFile*>(png_get_io_ptr(png))->write(std::as_bytes(std::span(data, size)));
}

void flushNothing(png_structp) {}

void sayNothing(png_structp, png_const_charp) {}

/// Ends the library's structures however the writing ends.
struct Writer {
    explicit Writer(PartFile& file) : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &file, stop, sayNothing)) {
        info = png_create_info_struct(png);
        png_set_write_fn(png, &file, append, flushNothing);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }

    png_structp png;
    png_infop info = nullptr;
};

}  // namespace

void writePng(const client::Frame& frame, PartFile& file) {
    const bool wide = frame.bits() > 8;
    const Writer writer(file);
    png_set_user_limits(writer.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    // Pictures are many and large: higher levels take several times as long for a few percent of the size.
    png_set_compression_level(writer.png, 1);
    png_set_filter(writer.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_IHDR(writer.png, writer.info, frame.width(), frame.lines(), wide ? 16 : 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(writer.png, writer.info);
    std::vector<std::uint16_t> line(std::size_t{3} * frame.width());
    std::vector<png_byte> row;
    for (std::uint32_t y = 0; y < frame.lines(); ++y) {
        frame.readLine(y, line);
        row.clear();
        for (const std::uint16_t value : line) {
            const std::uint16_t shown = spread(value, frame.bits());
            if (wide) {
                row.push_back(static_cast<png_byte>(shown >> 8));
            }
            row.push_back(static_cast<png_byte>(shown & 0xFF));
        }
        png_write_row(writer.png, row.data());
    }
    png_write_end(writer.png, writer.info);
}

}  // namespace quillon::cli
