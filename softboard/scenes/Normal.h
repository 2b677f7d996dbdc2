/// @file
/// The normal distribution as a table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace softboard::scenes {

/// The normal distribution of mean 0 and deviation 1 in parts of one probability, each as its middle. One that is drawn
/// by a random word is normally distributed; none is farther from 0 than 4.4.
using NormalTable = std::array<float, std::size_t{1} << 16>;

const NormalTable& normalTable();

}  // namespace softboard::scenes
