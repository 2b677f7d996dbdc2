/// @file
/// Plain text for people: aligned columns, and colour where the output is a terminal.
#pragma once

#include <chrono>
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

/// Characters that fit into a terminal.
struct TerminalSize {
    unsigned columns;
    unsigned rows;
};
/// 80 x 24 where the descriptor is no terminal, or one that does not tell.
TerminalSize terminalSize(int descriptor);

/// Whether a terminal draws sixel graphics, by its own word: it is asked for its attributes and has `patience` to
/// answer. `descriptor` is open for reading and writing; what waits there to be read is lost. No for anything but a
/// terminal that this process has in the foreground.
bool drawsSixels(int descriptor, std::chrono::milliseconds patience);

/// Characters that a UTF-8 text shows.
std::size_t displayWidth(std::string_view text);

/// Rows of cells; all but the last column are padded to the widest cell.
using Rows = std::vector<std::vector<std::string>>;
void printRows(std::ostream& out, const Rows& rows, std::string_view indent = "");

}  // namespace quillon::cli
