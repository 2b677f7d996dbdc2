/// @file
/// Random numbers without a state: each follows from a key and its place, in whatever order and how often it is asked
/// for.
#pragma once

#include <cstddef>
#include <cstdint>

namespace softboard::scenes {

inline constexpr std::uint64_t GoldenRatio = 0x9E3779B97F4A7C15;  ///< in 2^-64

/// A number in which each bit hangs on all bits of `value`: the output function of SplitMix64.
constexpr std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
    value = (value ^ value >> 27) * 0x94D049BB133111EB;
    return value ^ value >> 31;
}

/// The key of a line: of its row or its tick.
constexpr std::uint64_t lineKey(std::uint64_t seed, std::int64_t line) {
    return mixed(mixed(seed + GoldenRatio) + static_cast<std::uint64_t>(line) * GoldenRatio);
}

/// Calls `use(i, word)` with each i from 0 to `count` - 1 and a random 16-bit word.
/// @return a key that goes on behind these, if `count` is a multiple of 4
template <typename Use>
std::uint64_t forRandomWords(std::uint64_t key, std::size_t count, const Use& use) {
    constexpr std::size_t Words = 4;  // in a random number
    std::uint64_t random = 0;
    const std::size_t whole = count - count % Words;
    for (std::size_t i = 0; i < whole; i += Words) {
        random = mixed(key += GoldenRatio);
        use(i, static_cast<std::uint16_t>(random));
        use(i + 1, static_cast<std::uint16_t>(random >> 16));
        use(i + 2, static_cast<std::uint16_t>(random >> 32));
        use(i + 3, static_cast<std::uint16_t>(random >> 48));
    }
    random = mixed(key + GoldenRatio);
    for (std::size_t i = whole; i < count; ++i, random >>= 16) {
        use(i, static_cast<std::uint16_t>(random));
    }
    return key;
}

}  // namespace softboard::scenes
