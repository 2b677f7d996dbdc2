/// @file
/// Levels over time: a row each, on one axis, as characters and as a picture.
#pragma once

#include <string>
#include <vector>

#include "cli/Chart.h"
#include "cli/Units.h"

namespace quillon::cli {

/// What one row shows.
struct Wave {
    std::string name;
    bool high = false;            ///< the level at the start of the axis
    std::vector<double> changes;  ///< where the level changes, by rising x
    bool moments = false;         ///< the changes are moments, each by itself, and there is no level
    std::string note;             ///< words in place of levels that nobody knows
};

/// Rows on an axis, from the top to the bottom, with what there is to say of them.
struct Waves {
    std::string title;
    Axis axis;
    std::vector<Wave> rows;
    std::vector<std::string> captions;
};

/// A row in so many characters: '#' high, '_' low, '%' for more changes than a character can show; of moments '|' is
/// one and '.' none. A pulse that is shorter than a character is shown all the same.
std::string drawn(const Wave& wave, const Axis& axis, std::size_t width);
/// The rows and the axis below them, none longer than `width`, without title and captions.
std::vector<std::string> asText(const Waves& waves, std::size_t width);
/// The same as a chart, which can be written as a picture.
Chart chartOf(const Waves& waves);

}  // namespace quillon::cli
