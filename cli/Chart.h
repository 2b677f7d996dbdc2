/// @file
/// Curves for people: as characters in a terminal, and as a picture with axes.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace quillon::cli {

struct Colour {
    double red;
    double green;
    double blue;
};

/// A line through points, by rising x.
struct Curve {
    std::string name;
    char mark;  ///< what draws it in a terminal
    Colour colour;
    std::vector<std::pair<double, double>> points;
    std::string note{};  ///< words at the only point, in place of a line
};

struct Axis {
    std::string label;
    double min;
    double max;
};

struct Chart {
    std::string title;
    Axis x;
    Axis y;
    std::vector<Curve> curves;  ///< a later one is drawn over an earlier one
    bool yTicks = true;  ///< numbers at the y axis; without them the curves are rows, and their names stand there
    std::vector<std::string> captions{};  ///< sentences below the picture
};

/// The chart as lines of characters, with the axes' bounds at its edges and no captions.
std::vector<std::string> asText(const Chart& chart, std::size_t width, std::size_t height);

/// The chart as a PNG file; throws RefusedError if the file cannot be written.
void writePicture(const Chart& chart, const std::filesystem::path& file);

/// Numbers between the bounds of an axis at which it is worth a mark: 1, 2 or 5 times a power of ten apart.
std::vector<double> ticks(const Axis& axis, int most);

}  // namespace quillon::cli
