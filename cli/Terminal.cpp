#include "cli/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace quillon::cli {

namespace {

std::string_view escape(Style style) {
    switch (style) {
        case Style::Plain: return "";
        case Style::Strong: return "\033[1m";
        case Style::Faint: return "\033[2m";
        case Style::Good: return "\033[32m";
        case Style::Bad: return "\033[31m";
    }
    return "";
}

}  // namespace

Painter::Painter(int descriptor) : coloured_(isatty(descriptor) == 1 && std::getenv("NO_COLOR") == nullptr) {}

std::string Painter::paint(Style style, std::string_view text) const {
    if (!coloured_ || style == Style::Plain) {
        return std::string(text);
    }
    return std::string(escape(style)) + std::string(text) + "\033[0m";
}

std::size_t displayWidth(std::string_view text) {
    // Every byte but those that continue a character begins one.
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

void printRows(std::ostream& out, const Rows& rows, std::string_view indent) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], displayWidth(row[column]));
        }
    }
    for (const auto& row : rows) {
        std::string line(indent);
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column];
            if (column + 1 < row.size()) {
                line.append(widths[column] - displayWidth(row[column]) + 2, ' ');
            }
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

}  // namespace quillon::cli
