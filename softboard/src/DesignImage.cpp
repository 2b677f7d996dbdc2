#include "softboard/src/DesignImage.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "softboard/src/DesignDescription.h"

namespace softboard {
namespace {

constexpr std::size_t HeaderSize = 64;
constexpr std::size_t CheckedHeaderSize = 36;
constexpr std::string_view Magic = "MSISQDSN";
constexpr std::uint32_t FormatVersion = 1;

template <class Number>
void store(std::uint8_t* at, Number number) {
    for (std::size_t byte = 0; byte < sizeof(Number); ++byte) {
        at[byte] = static_cast<std::uint8_t>(number >> (8 * byte));
    }
}

template <class Number>
Number load(const std::uint8_t* at) {
    Number number = 0;
    for (std::size_t byte = 0; byte < sizeof(Number); ++byte) {
        number = static_cast<Number>(number | static_cast<Number>(at[byte]) << (8 * byte));
    }
    return number;
}

std::uint32_t checksum(const std::uint8_t* data, std::size_t size) {
    return static_cast<std::uint32_t>(crc32_z(0, data, size));
}

}  // namespace

std::vector<std::uint8_t> packImage(std::string_view description, std::size_t size) {
    const auto design = parseDesign(description);
    const std::size_t needed = HeaderSize + description.size();
    if (size != 0 && size < needed) {
        throw DesignError("the description does not fit into " + std::to_string(size) + " bytes");
    }
    std::vector<std::uint8_t> image(std::max(size, needed));
    std::copy(Magic.begin(), Magic.end(), image.begin());
    store(&image[8], FormatVersion);
    store(&image[12], static_cast<std::uint32_t>(design->type));
    store(&image[16], static_cast<std::uint64_t>(image.size()));
    store(&image[24], static_cast<std::uint64_t>(description.size()));
    std::copy(description.begin(), description.end(), image.begin() + HeaderSize);
    // Filled like the bit stream of a real design: without runs, so that damage anywhere shows.
    std::uint32_t noise = 2463534242U;
    for (std::size_t at = needed; at < image.size(); ++at) {
        noise ^= noise << 13;
        noise ^= noise >> 17;
        noise ^= noise << 5;
        image[at] = static_cast<std::uint8_t>(noise);
    }
    store(&image[32], checksum(&image[HeaderSize], image.size() - HeaderSize));
    store(&image[36], checksum(image.data(), CheckedHeaderSize));
    return image;
}

std::optional<UnpackedImage> unpackImage(const void* data, std::size_t size) {
    if (data == nullptr || size < HeaderSize) {
        return std::nullopt;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    if (std::memcmp(bytes, Magic.data(), Magic.size()) != 0 || load<std::uint32_t>(bytes + 8) != FormatVersion ||
        load<std::uint32_t>(bytes + 36) != checksum(bytes, CheckedHeaderSize)) {
        return std::nullopt;
    }
    const auto length = load<std::uint64_t>(bytes + 24);
    if (load<std::uint64_t>(bytes + 16) != size || length > size - HeaderSize ||
        load<std::uint32_t>(bytes + 32) != checksum(bytes + HeaderSize, size - HeaderSize)) {
        return std::nullopt;
    }
    const auto* text = reinterpret_cast<const char*>(bytes + HeaderSize);
    return UnpackedImage{static_cast<std::int32_t>(load<std::uint32_t>(bytes + 12)),
                         {text, static_cast<std::size_t>(length)}};
}

}  // namespace softboard
