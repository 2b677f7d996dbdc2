/// @file
/// Components as a camera delivers them: a byte for 8 bits, a word for more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "softboard/pixels/Settings.h"

namespace softboard::scenes {

/// Calls `use` with a 0 of the type that components of so many bits have.
template <typename Use>
void withRaw(std::uint32_t bits, const Use& use) {
    if (pixels::componentBytes(bits) == sizeof(std::uint8_t)) {
        use(std::uint8_t{0});
    } else {
        use(std::uint16_t{0});
    }
}

template <typename Raw>
Raw loadRaw(const std::byte* line, std::size_t component) {
    Raw value;
    std::memcpy(&value, line + component * sizeof value, sizeof value);
    return value;
}

template <typename Raw>
void storeRaw(std::byte* line, std::size_t component, Raw value) {
    std::memcpy(line + component * sizeof value, &value, sizeof value);
}

/// Bytes of a line.
constexpr std::size_t rawBytes(std::size_t pixels, std::uint32_t bits) {
    return pixels * pixels::Colours * pixels::componentBytes(bits);
}

/// A component of 8 bits at full scale of 16: 255 becomes 65535.
constexpr std::uint16_t widened(std::uint8_t value) {
    return static_cast<std::uint16_t>(value * 257);
}

}  // namespace softboard::scenes
