#include "cli/pictures/Histogram.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr std::array names{"red", "green", "blue"};

// Bars in a terminal.
constexpr std::size_t Columns = 64;
constexpr std::size_t Rows = 4;
constexpr std::uint64_t Eighths = 8;
constexpr std::array<const char*, Eighths + 1> blocks{" ",
                                                      "\xE2\x96\x81",
                                                      "\xE2\x96\x82",
                                                      "\xE2\x96\x83",
                                                      "\xE2\x96\x84",
                                                      "\xE2\x96\x85",
                                                      "\xE2\x96\x86",
                                                      "\xE2\x96\x87",
                                                      "\xE2\x96\x88"};

/// "49.8 %"
std::string percent(double share) {
    return client::readable(std::round(share * 1000) / 10) + " %";
}

/// A colour's steps, several to a column.
std::array<std::uint64_t, Columns> columnsOf(const Histogram::Colour& colour) {
    std::array<std::uint64_t, Columns> columns{};
    for (std::size_t step = 0; step < Histogram::Steps; ++step) {
        columns[step * Columns / Histogram::Steps] += colour.counts[step];
    }
    return columns;
}

/// The bars' lines from the top down. A column that is not empty is at least an eighth of a line high.
std::vector<std::string> barsOf(const Histogram::Colour& colour) {
    const auto columns = columnsOf(colour);
    const double highest = static_cast<double>(std::max<std::uint64_t>(*std::ranges::max_element(columns), 1));
    std::vector<std::string> lines;
    for (std::uint64_t row = Rows; row-- > 0;) {
        std::string line = "  |";
        for (const std::uint64_t count : columns) {
            const auto height = static_cast<std::uint64_t>(
                std::ceil(static_cast<double>(count) / highest * static_cast<double>(Rows * Eighths)));
            line += blocks[std::clamp<std::uint64_t>(height, row * Eighths, (row + 1) * Eighths) - row * Eighths];
        }
        lines.push_back(line + "|");
    }
    return lines;
}

}  // namespace

void Histogram::add(const client::Frame& frame) {
    std::array<std::uint64_t, 3> sums{};
    std::array<std::uint16_t, 3> least{};
    std::array<std::uint16_t, 3> most{};
    least.fill(std::numeric_limits<std::uint16_t>::max());
    std::vector<std::uint16_t> line(std::size_t{3} * frame.width());
    for (std::uint32_t y = 0; y < frame.lines(); ++y) {
        frame.readLine(y, line);
        for (std::size_t i = 0; i < line.size(); i += 3) {
            for (std::size_t c = 0; c < 3; ++c) {
                const std::uint16_t value = line[i + c];
                ++colours_[c].counts[value >> (frame.bits() - 8)];
                sums[c] += value;
                least[c] = std::min(least[c], value);
                most[c] = std::max(most[c], value);
            }
        }
    }
    const std::uint64_t added = std::uint64_t{frame.width()} * frame.lines();
    pixels_ += added;
    for (std::size_t c = 0; c < 3 && added > 0; ++c) {
        const double largest = frame.largest();
        colours_[c].sum += static_cast<double>(sums[c]) / largest;
        colours_[c].least = std::min(colours_[c].least, least[c] / largest);
        colours_[c].most = std::max(colours_[c].most, most[c] / largest);
    }
}

double Histogram::mean(client::Component component) const {
    return pixels_ == 0 ? 0 : of(component).sum / static_cast<double>(pixels_);
}

std::vector<std::string> Histogram::asText() const {
    std::vector<std::string> lines;
    for (std::size_t c = 0; c < colours_.size(); ++c) {
        if (pixels_ == 0) {
            lines.push_back(std::string(names[c]) + ": no pixels");
            continue;
        }
        lines.push_back(std::string(names[c]) + ": " + percent(colours_[c].least) + " to " + percent(colours_[c].most) +
                        ", mean " + percent(mean(static_cast<client::Component>(c))));
        const auto bars = barsOf(colours_[c]);
        lines.insert(lines.end(), bars.begin(), bars.end());
    }
    return lines;
}

Chart Histogram::asChart() const {
    Chart chart{"Histogram", {"brightness in %", 0, 100}, {"pixels", 0, 1}, {}};
    constexpr std::array marks{'R', 'G', 'B'};
    constexpr std::array colours{cli::Colour{0.8, 0.1, 0.1}, cli::Colour{0.1, 0.6, 0.1}, cli::Colour{0.1, 0.2, 0.8}};
    for (std::size_t c = 0; c < colours_.size(); ++c) {
        Curve curve{names[c], marks[c], colours[c], {}};
        for (std::size_t step = 0; step < Steps; ++step) {
            const auto count = static_cast<double>(colours_[c].counts[step]);
            curve.points.emplace_back(100.0 * static_cast<double>(step) / (Steps - 1), count);
            chart.y.max = std::max(chart.y.max, count);
        }
        chart.curves.push_back(curve);
    }
    return chart;
}

}  // namespace quillon::cli
