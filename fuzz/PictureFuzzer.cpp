/// @file
/// Reads a picture from any bytes: it is refused in words that begin with the file's name, or it is whole, and then a
/// scene shows it to any camera.
#include <zlib.h>

#include <string>
#include <utility>
#include <vector>

#include "fuzz/InputFile.h"
#include "softboard/pixels/Settings.h"
#include "softboard/scenes/Picture.h"
#include "softboard/scenes/PictureScene.h"

namespace {

namespace pixels = softboard::pixels;
namespace scenes = softboard::scenes;
using quillon::fuzz::expect;
using quillon::fuzz::InputFile;

void expectWhole(const scenes::Picture& picture) {
    const std::uint64_t count = std::uint64_t{picture.width} * picture.height;
    expect(count != 0 && count <= scenes::MostPixels);
    expect(picture.bits == 8 || picture.bits == 16);
    expect(picture.pixels.size() == count * pixels::Colours * picture.bits / 8);
}

/// Takes lines around the picture's first and last row.
void expectShown(scenes::Picture picture, bool wrap) {
    constexpr std::int64_t RowPitch = 1'000'000;
    constexpr std::uint32_t Pixels = 33;
    const std::int64_t end = picture.height * RowPitch;
    scenes::PictureScene scene(std::move(picture), wrap, 1.0);
    for (const std::uint32_t bits : {8U, 12U, 16U}) {
        std::vector<std::byte> memory(Pixels * pixels::Colours * pixels::componentBytes(bits));
        for (const std::int64_t position : {-RowPitch, std::int64_t{0}, end - RowPitch, end}) {
            const pixels::Line line{
                .tick = 0, .position = position, .settings = 0, .exposure = 0, .flash = 0, .inverted = 0};
            const std::span<const std::byte> taken = scene.take(line, Pixels, bits, memory);
            expect(taken.size() <= memory.size() && (!wrap || taken.size() == memory.size()));
        }
    }
}

void read(const std::vector<std::uint8_t>& bytes) {
    const InputFile file(".picture", bytes.data(), bytes.size());
    try {
        scenes::Picture picture = scenes::readPicture(file.name());
        expect(scenes::looksLikePicture(std::as_bytes(std::span(bytes))));
        expectWhole(picture);
        expectShown(picture, true);
        expectShown(std::move(picture), false);
    } catch (const scenes::PictureError& error) {
        expect(std::string(error.what()).rfind(std::string(file.name()) + ": ", 0) == 0);
    }
}

std::uint32_t numberAt(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

/// The same with the check sums of PNG chunks made right, which no change of bytes gets past otherwise.
std::vector<std::uint8_t> withCheckSums(std::vector<std::uint8_t> bytes) {
    constexpr std::size_t Signature = 8;
    constexpr std::size_t Number = 4;
    for (std::size_t chunk = Signature; chunk + 3 * Number <= bytes.size();) {
        const std::size_t length = numberAt(&bytes[chunk]);
        if (length > bytes.size() - chunk - 3 * Number) {
            break;
        }
        const auto sum =
            static_cast<std::uint32_t>(::crc32(0, &bytes[chunk + Number], static_cast<uInt>(Number + length)));
        chunk += 2 * Number + length;
        for (std::size_t i = 0; i < Number; ++i) {
            bytes[chunk++] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
        }
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<std::uint8_t> given(bytes, bytes + size);
    read(given);
    if (scenes::looksLikePicture(std::as_bytes(std::span(given))) && given.front() != 'P') {
        read(withCheckSums(given));
    }
    return 0;
}
