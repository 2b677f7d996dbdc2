/// @file
/// Bytes that repeat themselves.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace softboard::pixels {

/// Repeats the first `size` bytes until there are `all`.
inline void repeat(std::byte* bytes, std::size_t size, std::size_t all) {
    while (size < all) {
        const std::size_t more = std::min(size, all - size);
        std::memcpy(bytes + size, bytes, more);
        size += more;
    }
}

}  // namespace softboard::pixels
