#include "softboard/scenes/PictureScene.h"

#include <cstring>
#include <utility>

#include "softboard/pixels/Repeat.h"
#include "softboard/scenes/Raw.h"
#include "softboard/scenes/Rows.h"

namespace softboard::scenes {

namespace {

constexpr std::uint16_t fullScale(std::uint8_t value) {
    return widened(value);
}
constexpr std::uint16_t fullScale(std::uint16_t value) {
    return value;
}

std::vector<std::byte> converted(const Picture& picture, std::uint32_t bits) {
    std::vector<std::byte> pixels(rawBytes(std::size_t{picture.width} * picture.height, bits));
    withRaw(picture.bits, [&](auto from) {
        withRaw(bits, [&](auto to) {
            for (std::size_t i = 0; i < pixels.size() / sizeof to; ++i) {
                const std::uint16_t value = fullScale(loadRaw<decltype(from)>(picture.pixels.data(), i));
                storeRaw(pixels.data(), i, static_cast<decltype(to)>(value >> (16 - bits)));
            }
        });
    });
    return pixels;
}

}  // namespace

PictureScene::PictureScene(Picture picture, bool wrap, double pixelsPerMm)
    : picture_(std::move(picture)), wrap_(wrap), pixelsPerMm_(pixelsPerMm) {}

std::span<const std::byte> PictureScene::take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                              std::span<std::byte> memory) {
    std::int64_t row = rowAt(line.position, pixelsPerMm_);
    if (wrap_) {
        row = wrapped(row, picture_.height);
    } else if (row < 0 || row >= picture_.height) {
        return {};
    }
    const std::size_t rowBytes = rawBytes(picture_.width, bits);
    const std::size_t needed = rawBytes(pixels, bits);
    const std::span<const std::byte> found =
        pixelsFor(bits).subspan(static_cast<std::size_t>(row) * rowBytes, rowBytes);
    if (rowBytes >= needed) {
        return found.first(needed);
    }
    if (!wrap_) {
        return found;
    }
    std::memcpy(memory.data(), found.data(), rowBytes);
    pixels::repeat(memory.data(), rowBytes, needed);
    return memory.first(needed);
}

double PictureScene::nanometresPerRow() const {
    return NanometresPerMm / pixelsPerMm_;
}

std::span<const std::byte> PictureScene::pixelsFor(std::uint32_t bits) {
    if (bits == picture_.bits) {
        return picture_.pixels;
    }
    if (bits != bits_) {
        converted_ = converted(picture_, bits);
        bits_ = bits;
    }
    return converted_;
}

}  // namespace softboard::scenes
