#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include "softboard/scenes/PictureFile.h"
#include "softboard/scenes/Raw.h"

namespace softboard::scenes {

namespace {

struct Header {
    bool text = false;           ///< values are decimal numbers
    std::uint32_t channels = 0;  ///< 1: grey, 3: red, green, blue
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t maxval = 0;

    std::uint64_t values() const { return std::uint64_t{width} * height * channels; }
    std::uint32_t valueBytes() const { return maxval > 255 ? 2 : 1; }
};

bool isSpace(int c) {
    constexpr std::string_view Space = " \t\n\v\f\r";
    return c != PictureFile::End && Space.find(static_cast<char>(c)) != Space.npos;
}

bool isDigit(int c) {
    return c >= '0' && c <= '9';
}

/// Passes the rest of a comment, to the end of its line.
void skipComment(PictureFile& file) {
    int c = file.get();
    while (c != '\n' && c != '\r' && c != PictureFile::End) {
        c = file.get();
    }
}

void skipSpace(PictureFile& file) {
    for (int c = file.peek(); isSpace(c) || c == '#'; c = file.peek()) {
        if (file.get() == '#') {
            skipComment(file);
        }
    }
}

/// A decimal number behind white space and comments; what is greater than the greatest that there is counts as that.
std::uint32_t readNumber(PictureFile& file, const char* what) {
    constexpr std::uint64_t Greatest = std::numeric_limits<std::uint32_t>::max();
    skipSpace(file);
    if (file.peek() == PictureFile::End) {
        file.refuseEnd();
    }
    if (!isDigit(file.peek())) {
        file.refuse(std::string(what) + " of the PNM is no decimal number");
    }
    std::uint64_t number = 0;
    while (isDigit(file.peek())) {
        number = std::min<std::uint64_t>(number * 10 + static_cast<std::uint64_t>(file.get() - '0'), Greatest);
    }
    return static_cast<std::uint32_t>(number);
}

/// Up to the one white space or comment that ends it.
Header readHeader(PictureFile& file) {
    Header header;
    file.get();
    const int kind = file.get();
    header.text = kind == '2' || kind == '3';
    header.channels = kind == '2' || kind == '5' ? 1 : 3;
    header.width = readNumber(file, "the width");
    header.height = readNumber(file, "the height");
    header.maxval = readNumber(file, "the maxval");
    file.checkSize(header.width, header.height);
    if (header.maxval == 0 || header.maxval > 65535) {
        file.refuse("a maxval of " + std::to_string(header.maxval) + "; 1 to 65535 are possible");
    }
    const int end = file.get();
    if (end == '#') {
        skipComment(file);
    } else if (end == PictureFile::End) {
        file.refuseEnd();
    } else if (!isSpace(end)) {
        file.refuse("no white space behind the maxval of the PNM");
    }
    return header;
}

std::uint32_t readBytes(PictureFile& file, std::uint32_t count) {
    std::uint32_t value = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const int byte = file.get();
        if (byte == PictureFile::End) {
            file.refuseEnd();
        }
        value = value << 8 | static_cast<std::uint32_t>(byte);
    }
    return value;
}

/// Each value from 0 to maxval at full scale of a component.
template <typename Raw>
std::vector<Raw> scaleOf(std::uint32_t maxval) {
    constexpr std::uint32_t Full = std::numeric_limits<Raw>::max();
    std::vector<Raw> scale(maxval + 1);
    for (std::uint32_t value = 0; value <= maxval; ++value) {
        scale[value] = static_cast<Raw>((std::uint64_t{value} * Full + maxval / 2) / maxval);
    }
    return scale;
}

template <typename Raw>
void readPixels(PictureFile& file, const Header& header, Picture& picture) {
    const std::vector<Raw> scale = scaleOf<Raw>(header.maxval);
    const std::size_t copies = pixels::Colours / header.channels;
    for (std::uint64_t i = 0; i < header.values(); ++i) {
        const std::uint32_t value = header.text ? readNumber(file, "a value") : readBytes(file, header.valueBytes());
        if (value > header.maxval) {
            file.refuse("a value of " + std::to_string(value) + " where the maxval is " +
                        std::to_string(header.maxval));
        }
        for (std::size_t copy = 0; copy < copies; ++copy) {
            storeRaw(picture.pixels.data(), i * copies + copy, scale[value]);
        }
    }
}

}  // namespace

bool looksLikeNetPbm(std::span<const std::byte> bytes) {
    constexpr std::string_view Kinds = "2356";
    const auto at = [&](std::size_t i) { return std::to_integer<unsigned char>(bytes[i]); };
    return bytes.size() >= 3 && at(0) == 'P' && Kinds.find(static_cast<char>(at(1))) != Kinds.npos &&
           (isSpace(at(2)) || at(2) == '#');
}

Picture readNetPbm(PictureFile& file) {
    const Header header = readHeader(file);
    // In text a value has at least a digit, and white space in front of the next.
    const std::uint64_t least = header.text ? 2 * header.values() - 1 : header.values() * header.valueBytes();
    file.checkHolds(header.width, header.height, least);
    Picture picture = emptyPicture(header.width, header.height, 8 * header.valueBytes());
    withRaw(picture.bits, [&](auto raw) { readPixels<decltype(raw)>(file, header, picture); });
    return picture;
}

}  // namespace softboard::scenes
