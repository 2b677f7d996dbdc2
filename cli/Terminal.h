/// @file
/// Plain text for people: aligned columns, and colour where the output is a terminal.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::cli {

enum class Style { Plain, Strong, Faint, Good, Bad };

/// Dresses texts for one output stream.
class Painter {
public:
    /// Colour for a stream that is a terminal, unless NO_COLOR is set. `descriptor`: 1 standard output, 2 standard
    /// error.
    explicit Painter(int descriptor);
    std::string paint(Style style, std::string_view text) const;

private:
    bool coloured_;
};

/// Characters that a UTF-8 text shows.
std::size_t displayWidth(std::string_view text);

/// Rows of cells; all but the last column are padded to the widest cell.
using Rows = std::vector<std::vector<std::string>>;
void printRows(std::ostream& out, const Rows& rows, std::string_view indent = "");

}  // namespace quillon::cli
