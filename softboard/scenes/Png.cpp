#include <png.h>

#include <algorithm>
#include <bit>
#include <new>
#include <string_view>

#include "softboard/scenes/PictureFile.h"
#include "softboard/scenes/Raw.h"

namespace softboard::scenes {

namespace {

[[noreturn]] void stop(png_structp png, png_const_charp message) {
    static_cast<PictureFile*>(png_get_error_ptr(png))->refuse(std::string("a damaged PNG: ") + message);
}

void sayNothing(png_structp, png_const_charp) {}

void readBytes(png_structp png, png_bytep data, png_size_t size) {
    static_cast<PictureFile*>(png_get_io_ptr(png))->read(std::as_writable_bytes(std::span(data, size)));
}

/// Ends the library's structures however the reading ends.
struct Reader {
    explicit Reader(PictureFile& file) : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &file, stop, sayNothing)) {
        if (png == nullptr) {
            throw std::bad_alloc();
        }
        info = png_create_info_struct(png);
        png_set_read_fn(png, &file, readBytes);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }

    png_structp png;
    png_infop info = nullptr;
};

/// Refuses sizes that the library would refuse with fewer words. The header is the first chunk; the library refuses a
/// file in which it is not.
void checkHeader(const PictureFile& file) {
    constexpr std::size_t TypePlace = 12;
    constexpr std::string_view Type = "IHDR";
    const std::span<const std::byte> head = file.ahead();
    const auto* const type = reinterpret_cast<png_const_bytep>(head.data()) + TypePlace;
    if (head.size() >= TypePlace + 12 && std::equal(Type.begin(), Type.end(), type)) {
        file.checkSize(png_get_uint_32(type + 4), png_get_uint_32(type + 8));
    }
}

/// Refuses a size for which the file is too short, whatever the picture: deflate makes at most 1032 bytes from one.
void checkLength(const PictureFile& file, const Reader& reader) {
    constexpr std::uint64_t MostFromByte = 1032;
    const std::uint32_t height = png_get_image_height(reader.png, reader.info);
    const std::uint64_t bytes = std::uint64_t{png_get_rowbytes(reader.png, reader.info)} * height;
    file.checkHolds(png_get_image_width(reader.png, reader.info), height, (bytes + MostFromByte - 1) / MostFromByte);
}

/// Rows become red, green and blue, 8 bits or words of the computer.
void askForColours(const Reader& reader) {
    png_set_expand(reader.png);
    png_set_gray_to_rgb(reader.png);
    const bool alpha = (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0;
    if (alpha || png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0) {
        const png_color_16 black{};
        png_set_background(reader.png, &black, PNG_BACKGROUND_GAMMA_SCREEN, 0, 1.0);
    }
    if constexpr (std::endian::native == std::endian::little) {
        png_set_swap(reader.png);
    }
}

}  // namespace

bool looksLikePng(std::span<const std::byte> bytes) {
    constexpr std::size_t SignatureBytes = 8;
    return bytes.size() >= SignatureBytes &&
           png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, SignatureBytes) == 0;
}

Picture readPng(PictureFile& file) {
    checkHeader(file);
    const Reader reader(file);
    png_set_user_limits(reader.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_crc_action(reader.png, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    // Texts, times and colour spaces are passed over.
    png_set_keep_unknown_chunks(reader.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(reader.png, reader.info);
    checkLength(file, reader);
    askForColours(reader);
    const int passes = png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);

    Picture picture =
        emptyPicture(png_get_image_width(reader.png, reader.info), png_get_image_height(reader.png, reader.info),
                     png_get_bit_depth(reader.png, reader.info));
    const std::size_t rowBytes = rawBytes(picture.width, picture.bits);
    if (png_get_rowbytes(reader.png, reader.info) != rowBytes) {
        file.refuse("a PNG of unknown colours");
    }
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t y = 0; y < picture.height; ++y) {
            png_read_row(reader.png, reinterpret_cast<png_bytep>(picture.pixels.data() + y * rowBytes), nullptr);
        }
    }
    png_read_end(reader.png, nullptr);
    return picture;
}

}  // namespace softboard::scenes
