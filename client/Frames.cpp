#include "quillon/client/Frames.h"

#include <array>
#include <utility>

#include "quillon/client/Errors.h"

namespace quillon::client {

namespace {

constexpr std::uint64_t Components = 3;

std::uint64_t byteAt(std::span<const std::byte> bytes, std::uint64_t place) {
    return place < bytes.size() ? std::to_integer<std::uint64_t>(bytes[place]) : 0;
}

/// Whether the lines lie within `size` bytes, told without an overflow.
bool fits(const FrameDescription& frame, std::size_t size) {
    const std::uint64_t pixels = std::uint64_t{frame.width} * frame.lines;
    const std::uint64_t pixelBits = Components * frame.bits;
    // Eight pixels are whole bytes in every format.
    const std::uint64_t rest = pixels % 8 * pixelBits;
    return pixels / 8 <= size / pixelBits && (pixels / 8 * pixelBits) + (rest + 7) / 8 <= size;
}

}  // namespace

std::vector<std::string> FrameDescription::flagNames() const {
    constexpr std::array names{
        std::pair(FrameFlag::Short, "short"),         std::pair(FrameFlag::GateEnded, "gate ended"),
        std::pair(FrameFlag::Truncated, "truncated"), std::pair(FrameFlag::LinesLost, "lines lost"),
        std::pair(FrameFlag::Injected, "injected"),   std::pair(FrameFlag::RedFirst, "red first"),
        std::pair(FrameFlag::Mixed, "mixed"),         std::pair(FrameFlag::Faulty, "faulty")};
    std::vector<std::string> words;
    for (const auto& [flag, name] : names) {
        if (has(flag)) {
            words.emplace_back(name);
        }
    }
    return words;
}

Frame::Frame(const FrameDescription& description, std::span<const std::byte> bytes)
    : description_(description), bytes_(bytes) {
    if (bits() != 8 && bits() != 10 && bits() != 12 && bits() != 14 && bits() != 16) {
        throw ValueError("a frame has components of 8, 10, 12, 14 or 16 bits, not of " + std::to_string(bits()));
    }
    if (!fits(description, bytes.size())) {
        throw ValueError(std::to_string(bytes.size()) + " bytes do not hold " + std::to_string(lines()) + " lines of " +
                         std::to_string(width()) + " pixels with components of " + std::to_string(bits()) + " bits");
    }
}

std::uint16_t Frame::at(std::uint64_t component) const {
    const std::uint64_t bit = component * bits();
    const std::uint64_t place = bit / 8;
    // Sixteen bits that begin within a byte end in the third at the latest.
    const std::uint64_t window =
        byteAt(bytes_, place) | byteAt(bytes_, place + 1) << 8 | byteAt(bytes_, place + 2) << 16;
    return static_cast<std::uint16_t>(window >> bit % 8 & largest());
}

std::uint64_t Frame::place(Component component) const {
    const auto index = static_cast<std::uint64_t>(component);
    return description_.has(FrameFlag::RedFirst) ? index : Components - 1 - index;
}

std::uint16_t Frame::component(std::uint32_t x, std::uint32_t y, Component component) const {
    if (x >= width() || y >= lines()) {
        throw ValueError("there is no pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") in a picture of " +
                         std::to_string(width()) + " x " + std::to_string(lines()));
    }
    const std::uint64_t pixel = std::uint64_t{y} * width() + x;
    return at(pixel * Components + place(component));
}

void Frame::readLine(std::uint32_t y, std::span<std::uint16_t> line) const {
    if (y >= lines() || line.size() != Components * width()) {
        throw ValueError("line " + std::to_string(y) + " of a picture of " + std::to_string(width()) + " x " +
                         std::to_string(lines()) + " does not go into " + std::to_string(line.size()) + " values");
    }
    const std::uint64_t first = std::uint64_t{y} * width() * Components;
    const std::array places{place(Component::Red), place(Component::Green), place(Component::Blue)};
    for (std::size_t i = 0; i < line.size(); i += Components) {
        for (std::size_t colour = 0; colour < Components; ++colour) {
            const std::uint64_t component = first + i + places[colour];
            line[i + colour] = bits() == 8 ? std::to_integer<std::uint16_t>(bytes_[component]) : at(component);
        }
    }
}

}  // namespace quillon::client
