/// @file
/// What the tests of scenes share: lines to take, and their components to look at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "softboard/pixels/Line.h"
#include "softboard/pixels/Scene.h"

namespace softboard::scenes::testing {

inline constexpr std::int64_t Mm = 1'000'000;  ///< in nanometres

/// The components of a line, as numbers.
using Components = std::vector<unsigned>;

/// A line that was taken at this position.
pixels::Line lineAt(std::int64_t nanometres);

/// The line that the camera takes: what is not delivered is 0. Nothing may be written behind it.
Components take(pixels::Scene& scene, const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits);
/// So many pixels of 8 bits at this position.
Components take(pixels::Scene& scene, std::int64_t nanometres, std::uint32_t pixels);

/// Each grey as three components.
Components greys(const std::vector<unsigned>& values);

}  // namespace softboard::scenes::testing
