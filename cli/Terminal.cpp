#include "cli/Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

}  // namespace

TerminalSize terminalSize(int descriptor) {
    winsize size{};
    const bool told = ioctl(descriptor, TIOCGWINSZ, &size) == 0;
    return {told && size.ws_col > 0 ? size.ws_col : 80U, told && size.ws_row > 0 ? size.ws_row : 24U};
}

bool drawsSixels(int descriptor, std::chrono::milliseconds patience) {
    // A process in the background would be stopped for changing the terminal.
    if (isatty(descriptor) == 0 || tcgetpgrp(descriptor) != getpgrp()) {
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
