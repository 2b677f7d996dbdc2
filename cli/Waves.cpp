#include "cli/Waves.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/Terminal.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

constexpr double RowHeight = 0.6;       // of a level in its row
constexpr double PicturePoints = 4000;  // that can be told apart along the axis of a picture

constexpr std::array colours{Colour{0.1, 0.2, 0.8}, Colour{0.8, 0.4, 0.0}, Colour{0.1, 0.55, 0.1},
                             Colour{0.6, 0.1, 0.5}, Colour{0.3, 0.3, 0.3}, Colour{0.75, 0.1, 0.1}};

/// A character's share of the axis, with what happens in it.
struct Column {
    std::size_t changes = 0;
    bool atStart = false;
    bool inMiddle = false;
    bool shown = false;
};

/// Where a place on the axis lies, in columns from its start.
class Columns {
public:
    Columns(const Axis& axis, std::size_t width)
        : start_(axis.min), share_((axis.max - axis.min) / static_cast<double>(width)), last_(width - 1) {}

    double at(double x) const { return (x - start_) / share_; }
    /// What lies at the very end of the axis is in the last column.
    std::size_t holding(double x) const { return std::min(static_cast<std::size_t>(at(x)), last_); }

private:
    double start_;
    double share_;
    std::size_t last_;
};

std::vector<Column> columnsOf(const Wave& wave, const Columns& places, std::size_t width) {
    std::vector<Column> columns(width);
    std::size_t next = 0;
    bool level = wave.high;
    for (std::size_t i = 0; i < width; ++i) {
        Column& column = columns[i];
        const double middle = static_cast<double>(i) + 0.5;
        column.atStart = column.inMiddle = level;
        for (; next < wave.changes.size() && places.holding(wave.changes[next]) == i; ++next) {
            level = !level;
            column.inMiddle = places.at(wave.changes[next]) <= middle ? level : column.inMiddle;
            ++column.changes;
        }
        column.shown = column.changes == 2 ? !column.atStart : column.inMiddle;
    }
    return columns;
}

/// What the axis begins with is shown, however short it is; a pulse over the border of two columns that reaches the
/// middle of neither in the one that has more of it.
void showNarrowPulses(const Wave& wave, const Columns& places, std::vector<Column>& columns) {
    bool level = wave.high;
    if (columns.front().changes == 1) {
        columns.front().shown = level;
    }
    for (std::size_t i = 0; i + 1 < wave.changes.size(); ++i) {
        level = !level;
        const std::size_t first = places.holding(wave.changes[i]);
        if (places.holding(wave.changes[i + 1]) != first + 1) {
            continue;
        }
        if (columns[first].shown != level && columns[first + 1].shown != level) {
            const auto border = static_cast<double>(first + 1);
            const bool isMoreInFirst = border - places.at(wave.changes[i]) >= places.at(wave.changes[i + 1]) - border;
            columns[isMoreInFirst ? first : first + 1].shown = level;
        }
    }
}

/// Pulse after pulse, each in a character, would look like a level that stands.
bool isDense(const std::vector<Column>& columns, std::size_t i) {
    const bool besideMany =
        (i > 0 && columns[i - 1].changes >= 2) || (i + 1 < columns.size() && columns[i + 1].changes >= 2);
    return columns[i].changes > 2 || (columns[i].changes == 2 && besideMany);
}

Curve curveOf(const Wave& wave, const Axis& axis, double level, const Colour& colour) {
    const auto heightOf = [&](bool high) { return high ? level + RowHeight : level; };
    Curve curve{wave.name, '*', colour, {{axis.min, level}}, wave.note};
    if (!wave.note.empty()) {
        return curve;
    }
    curve.points = {{axis.min, heightOf(!wave.moments && wave.high)}};
    // What is nearer to an edge than any picture shows is left out, in pairs, so that the level stays right.
    const double invisible = (axis.max - axis.min) / PicturePoints;
    bool high = wave.high;
    for (std::size_t i = 0; i < wave.changes.size(); ++i) {
        const double change = wave.changes[i];
        const double last = curve.points.back().first;
        if (wave.moments) {
            if (i == 0 || change - last >= invisible) {
                curve.points.insert(curve.points.end(),
                                    {{change, level}, {change, level + RowHeight}, {change, level}});
            }
        } else if (i > 0 && i + 1 < wave.changes.size() && wave.changes[i + 1] - last < invisible) {
            ++i;
        } else {
            curve.points.emplace_back(change, heightOf(high));
            high = !high;
            curve.points.emplace_back(change, heightOf(high));
        }
    }
    curve.points.emplace_back(axis.max, curve.points.back().second);
    return curve;
}

/// The numbers of an axis, each above the column that it belongs to, as far as there is room.
std::string numbers(const Axis& axis, std::size_t width) {
    const std::string last = client::readable(axis.max) + (axis.label.empty() ? "" : " " + axis.label);
    const std::size_t room = width - std::min(width, displayWidth(last));
    std::string line;
    for (const double tick : ticks(axis, static_cast<int>(width / 12 + 1))) {
        const std::string number = client::readable(tick);
        const double place = (tick - axis.min) / (axis.max - axis.min) * static_cast<double>(width);
        const auto column = static_cast<std::size_t>(std::lround(place));
        if ((line.empty() || column > line.size() + 1) && column + number.size() + 2 <= room) {
            line += std::string(column - line.size(), ' ') + number;
        }
    }
    return line + std::string(room - std::min(room, line.size()), ' ') + last;
}

}  // namespace

std::string drawn(const Wave& wave, const Axis& axis, std::size_t width) {
    if (!wave.note.empty()) {
        return "(" + wave.note + ")";
    }
    const Columns places(axis, width);
    std::vector<Column> columns = columnsOf(wave, places, width);
    if (!wave.moments) {
        showNarrowPulses(wave, places, columns);
    }
    std::string line;
    for (std::size_t i = 0; i < width; ++i) {
        if (wave.moments) {
            line += columns[i].changes == 0 ? '.' : columns[i].changes == 1 ? '|' : '%';
        } else {
            line += isDense(columns, i) ? '%' : columns[i].shown ? '#' : '_';
        }
    }
    return line;
}

std::vector<std::string> asText(const Waves& waves, std::size_t width) {
    constexpr std::size_t gap = 2;
    constexpr std::size_t least = 16;
    std::size_t names = 0;
    for (const Wave& wave : waves.rows) {
        names = std::max(names, displayWidth(wave.name) + gap);
    }
    const std::size_t room = std::max(width - std::min(width, names), least);
    std::vector<std::string> lines;
    for (const Wave& wave : waves.rows) {
        lines.push_back(wave.name + std::string(names - displayWidth(wave.name), ' ') + drawn(wave, waves.axis, room));
    }
    lines.push_back(std::string(names, ' ') + numbers(waves.axis, room));
    return lines;
}

Chart chartOf(const Waves& waves) {
    const auto rows = static_cast<double>(waves.rows.size());
    Chart chart{waves.title, waves.axis, {"", 0, rows}, {}, false, waves.captions};
    for (std::size_t i = 0; i < waves.rows.size(); ++i) {
        const double level = rows - 1.0 - static_cast<double>(i) + (1.0 - RowHeight) / 2;
        chart.curves.push_back(curveOf(waves.rows[i], waves.axis, level, colours[i % colours.size()]));
    }
    return chart;
}

}  // namespace quillon::cli
