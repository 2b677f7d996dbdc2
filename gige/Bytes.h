/// @file
/// Numbers as they stand on the wire: big-endian.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillon::gige {

/// The number in the first sizeof(Number) bytes, of which there are so many.
template <std::unsigned_integral Number>
Number number(std::span<const std::byte> bytes) {
    std::uint64_t value = 0;
    for (const std::byte byte : bytes.first(sizeof(Number))) {
        value = value << 8 | std::to_integer<std::uint64_t>(byte);
    }
    return static_cast<Number>(value);
}

template <std::unsigned_integral Number>
void put(std::span<std::byte> bytes, Number value) {
    for (std::size_t i = sizeof(Number); i-- > 0; value = static_cast<Number>(std::uint64_t{value} >> 8)) {
        bytes[i] = static_cast<std::byte>(value);
    }
}

template <std::unsigned_integral Number>
void append(std::vector<std::byte>& bytes, Number value) {
    bytes.resize(bytes.size() + sizeof(Number));
    put(std::span(bytes).last(sizeof(Number)), value);
}

}  // namespace quillon::gige
