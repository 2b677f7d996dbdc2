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
    /// Colour for a stream that is a terminal with more than plain text, unless NO_COLOR holds something.
    /// `descriptor`: 1 standard output, 2 standard error.
    explicit Painter(int descriptor);
    std::string paint(Style style, std::string_view text) const;

private:
    bool coloured_;
};

/// Whether a terminal is there that takes more than plain text: TERM is not "dumb".
bool takesEscapes(int descriptor);

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

/// Characters that a UTF-8 text shows, without what colours it.
std::size_t displayWidth(std::string_view text);

/// The text with "?" for what would move a terminal's cursor or worse: messages quote what a user or a file has given.
std::string visible(std::string text);

/// Characters that a line of standard output may have: what COLUMNS says, or the width of the terminal. Without either
/// the lines stay whole, as other programs want them.
std::size_t lineWidth();

/// The lines of a text of several, those that are longer than `width` broken at blanks; what goes on in another line
/// stands below the last column of the first.
std::string foldLines(std::string_view text, std::size_t width);

/// Rows of cells; all but the last column are padded to the widest cell. Where a line has less room the cells are
/// broken at blanks, and where that is not enough they stand one below the other.
using Rows = std::vector<std::vector<std::string>>;
void printRows(std::ostream& out, const Rows& rows, std::string_view indent = "");
void printRows(std::ostream& out, const Rows& rows, std::string_view indent, std::size_t width);

}  // namespace quillon::cli
