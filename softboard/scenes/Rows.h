/// @file
/// Where a scene stands when a line is taken.
#pragma once

#include <cmath>
#include <cstdint>

namespace softboard::scenes {

inline constexpr double NanometresPerMm = 1e6;

/// The row that is in front of the camera while the belt stands at `position`, in nanometres; row 0 begins at 0. The
/// last thousandth of a row belongs to the next: a position that was cut to a whole nanometre is still in its row.
/// @param pixelsPerMm  along the belt, 0.001 to 1000
inline std::int64_t rowAt(std::int64_t position, double pixelsPerMm) {
    return static_cast<std::int64_t>(std::floor(static_cast<double>(position) * pixelsPerMm / NanometresPerMm + 1e-3));
}

/// `value` modulo `count`, 0 to `count` - 1 for negative values too.
constexpr std::int64_t wrapped(std::int64_t value, std::int64_t count) {
    const std::int64_t rest = value % count;
    return rest < 0 ? rest + count : rest;
}

}  // namespace softboard::scenes
