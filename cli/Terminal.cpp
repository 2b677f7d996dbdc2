#include "cli/Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <utility>

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

/// Lets a terminal's answer be read as it comes, and keeps it from the screen.
class RawInput {
public:
    explicit RawInput(int descriptor) : descriptor_(descriptor), changed_(tcgetattr(descriptor, &former_) == 0) {
        termios raw = former_;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        raw.c_cc[VMIN] = 0;
        raw.c_cc[VTIME] = 0;
        changed_ = changed_ && tcsetattr(descriptor, TCSANOW, &raw) == 0;
    }
    RawInput(const RawInput&) = delete;
    RawInput& operator=(const RawInput&) = delete;
    ~RawInput() {
        if (changed_) {
            tcsetattr(descriptor_, TCSANOW, &former_);
        }
    }
    bool isRaw() const { return changed_; }

private:
    int descriptor_;
    termios former_{};
    bool changed_;
};

/// What a terminal sends up to `end`, or until its time is over.
std::string readUpTo(int descriptor, char end, std::chrono::milliseconds patience) {
    const auto last = std::chrono::steady_clock::now() + patience;
    std::string answer;
    std::array<char, 64> bytes{};
    while (answer.find(end) == std::string::npos) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(last - std::chrono::steady_clock::now()).count();
        pollfd waiting{descriptor, POLLIN, 0};
        if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) <= 0) {
            break;
        }
        const ssize_t count = read(descriptor, bytes.data(), bytes.size());
        if (count <= 0) {
            break;
        }
        answer.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return answer;
}

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

constexpr std::size_t Gap = 2;  // blanks between columns

/// Bytes of the escape sequence that the text begins with, as "ESC [ 31 m".
std::size_t escapeLength(std::string_view text) {
    return text.starts_with("\033[") ? std::min(text.find('m'), text.size() - 1) + 1 : 0;
}

std::size_t leadingBlanks(std::string_view text) {
    return std::min(text.find_first_not_of(' '), text.size());
}

/// A text in lines of at most `width` characters, if its words are no longer. It keeps the blanks in front.
std::vector<std::string> fold(std::string_view text, std::size_t width) {
    const std::string indent(leadingBlanks(text), ' ');
    std::vector<std::string> lines;
    std::string line = indent;
    std::size_t begin = indent.size();
    bool isEmpty = true;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        const std::size_t next = std::min(text.find_first_not_of(' ', end), text.size());
        const std::string_view word = text.substr(begin, end - begin);
        if (!isEmpty && displayWidth(line) + displayWidth(word) > width) {
            line.erase(line.find_last_not_of(' ') + 1);
            lines.push_back(std::exchange(line, indent));
        }
        line += text.substr(begin, next - begin);
        isEmpty = false;
        begin = next;
    }
    line.erase(std::max(line.find_last_not_of(' ') + 1, indent.size()));
    lines.push_back(line);
    return lines;
}

/// The width that a cell needs at least.
std::size_t longestWord(std::string_view text) {
    std::size_t longest = 0;
    for (const std::string& line : fold(text, 0)) {
        longest = std::max(longest, displayWidth(line));
    }
    return longest;
}

using Widths = std::vector<std::size_t>;

std::size_t sumOf(const Widths& widths) {
    return std::accumulate(widths.begin(), widths.end(), std::size_t{0}) + Gap * (widths.size() - 1);
}

/// Takes from the widest columns what is too much; says whether their words allow it.
bool narrow(Widths& widths, const Widths& least, std::size_t room) {
    while (sumOf(widths) > room) {
        std::size_t widest = widths.size();
        for (std::size_t column = 0; column < widths.size(); ++column) {
            if (widths[column] > least[column] && (widest == widths.size() || widths[column] > widths[widest])) {
                widest = column;
            }
        }
        if (widest == widths.size()) {
            return false;
        }
        --widths[widest];
    }
    return true;
}

void printLine(std::ostream& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

void printInColumns(std::ostream& out, const std::vector<std::string>& row, const Widths& widths,
                    std::string_view indent) {
    std::vector<std::vector<std::string>> cells;
    std::size_t height = 1;
    for (std::size_t column = 0; column < row.size(); ++column) {
        cells.push_back(fold(row[column], widths[column]));
        height = std::max(height, cells.back().size());
    }
    for (std::size_t i = 0; i < height; ++i) {
        std::string line(indent);
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string text = i < cells[column].size() ? cells[column][i] : "";
            const std::size_t shown = displayWidth(text);
            line += text + std::string(widths[column] - std::min(widths[column], shown) + Gap, ' ');
        }
        printLine(out, line);
    }
}

/// The cells behind the first in lines of their own, as many in one as fit.
void printBelow(std::ostream& out, const std::vector<std::string>& row, std::string_view indent, std::size_t width) {
    std::string line;
    const auto begin = [&](const std::string& text) {
        std::vector<std::string> lines = fold(text, width);
        line = std::move(lines.back());
        lines.pop_back();
        for (const std::string& one : lines) {
            printLine(out, one);
        }
    };
    begin(std::string(indent) + (row.empty() ? "" : row.front()));
    const std::string below(leadingBlanks(line) + 2 * Gap, ' ');
    for (std::size_t column = 1; column < row.size(); ++column) {
        if (row[column].empty()) {
            continue;
        }
        if (displayWidth(line) + Gap + displayWidth(row[column]) <= width) {
            line += std::string(Gap, ' ') + row[column];
            continue;
        }
        printLine(out, line);
        begin(below + row[column]);
    }
    printLine(out, line);
}

}  // namespace

TerminalSize terminalSize(int descriptor) {
    winsize size{};
    const bool told = ioctl(descriptor, TIOCGWINSZ, &size) == 0;
    return {told && size.ws_col > 0 ? size.ws_col : 80U, told && size.ws_row > 0 ? size.ws_row : 24U};
}

bool drawsSixels(int descriptor, std::chrono::milliseconds patience) {
    // A process in the background would be stopped for changing the terminal.
    if (!takesEscapes(descriptor) || tcgetpgrp(descriptor) != getpgrp()) {
        return false;
    }
    const RawInput raw(descriptor);
    constexpr std::string_view request = "\033[c";
    if (!raw.isRaw() || write(descriptor, request.data(), request.size()) != static_cast<ssize_t>(request.size())) {
        return false;
    }
    // "ESC [ ? 62 ; 4 ; 22 c": the terminal's class, and behind it its attributes, of which 4 is sixel.
    const std::string answer = readUpTo(descriptor, 'c', patience);
    const std::size_t begin = answer.find("\033[?");
    const std::size_t end = answer.find('c', begin);
    if (begin == std::string::npos || end == std::string::npos) {
        return false;
    }
    const std::string attributes = answer.substr(begin, end - begin) + ";";
    return attributes.find(";4;") != std::string::npos;
}

bool takesEscapes(int descriptor) {
    return isatty(descriptor) == 1 && environment("TERM") != "dumb";
}

Painter::Painter(int descriptor) : coloured_(takesEscapes(descriptor) && environment("NO_COLOR").empty()) {}

std::string Painter::paint(Style style, std::string_view text) const {
    if (!coloured_ || style == Style::Plain) {
        return std::string(text);
    }
    return std::string(escape(style)) + std::string(text) + "\033[0m";
}

std::string visible(std::string text) {
    const auto isControl = [](char character) {
        return (character >= 0 && character < ' ' && character != '\n') || character == '\x7F';
    };
    std::ranges::replace_if(text, isControl, '?');
    return text;
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        if (const std::size_t length = escapeLength(text); length > 0) {
            text.remove_prefix(length);
            continue;
        }
        // Every byte but those that continue a character begins one.
        width += (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80 ? 1 : 0;
        text.remove_prefix(1);
    }
    return width;
}

std::size_t lineWidth() {
    const std::string_view told = environment("COLUMNS");
    std::size_t columns = 0;
    const auto [end, failure] = std::from_chars(told.data(), told.data() + told.size(), columns);
    if (failure == std::errc{} && end == told.data() + told.size() && columns > 0) {
        return columns;
    }
    return isatty(STDOUT_FILENO) == 1 ? terminalSize(STDOUT_FILENO).columns : std::numeric_limits<std::size_t>::max();
}

std::string foldLines(std::string_view text, std::size_t width) {
    if (width == std::numeric_limits<std::size_t>::max()) {
        return std::string(text);
    }
    std::string result;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        // The last column begins behind the last two blanks.
        const std::size_t blanks = line.find_last_not_of(' ') == std::string_view::npos ? 0 : line.rfind("  ") + 2;
        const std::size_t column = blanks < Gap || blanks + 24 > width ? leadingBlanks(line) : blanks;
        std::string head(line.substr(0, column));
        for (const std::string& part : fold(line.substr(column), width - std::min(width, column))) {
            result += head + part + "\n";
            head.assign(column, ' ');
        }
        if (end == std::string_view::npos) {
            result.pop_back();
            break;
        }
        text.remove_prefix(end + 1);
    }
    return result;
}

void printRows(std::ostream& out, const Rows& rows, std::string_view indent) {
    printRows(out, rows, indent, lineWidth());
}

void printRows(std::ostream& out, const Rows& rows, std::string_view indent, std::size_t width) {
    Widths widths;
    Widths least;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        least.resize(widths.size());
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], displayWidth(row[column]));
            least[column] = std::max(least[column], longestWord(row[column]));
        }
    }
    const bool fit = widths.empty() || narrow(widths, least, width - std::min(width, indent.size()));
    for (const auto& row : rows) {
        if (fit) {
            printInColumns(out, row, widths, indent);
        } else {
            printBelow(out, row, indent, width);
        }
    }
}

}  // namespace quillon::cli
