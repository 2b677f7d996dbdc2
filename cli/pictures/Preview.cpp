#include "cli/pictures/Preview.h"

#include <algorithm>
#include <cmath>

namespace quillon::cli {

namespace {

/// A small line is the mean of at most as many lines of the frame.
constexpr std::uint32_t MostLinesOfOne = 8;

/// Sums of the frame's pixels that each pixel of a small line stands for.
class LineOfSums {
public:
    LineOfSums(const client::Frame& frame, unsigned width)
        : frame_(frame), line_(std::size_t{3} * frame.width()), sums_(std::size_t{3} * width), counts_(width) {}

    void add(std::uint32_t y) {
        frame_.readLine(y, line_);
        const std::uint64_t width = counts_.size();
        for (std::uint64_t x = 0; x < frame_.width(); ++x) {
            const std::uint64_t place = x * width / frame_.width();
            for (std::uint64_t c = 0; c < 3; ++c) {
                sums_[3 * place + c] += line_[3 * x + c];
            }
            ++counts_[place];
        }
    }

    void takeMeans(std::vector<Thumbnail::Pixel>& pixels) {
        for (std::size_t x = 0; x < counts_.size(); ++x) {
            Thumbnail::Pixel pixel{};
            const std::uint64_t divisor = counts_[x] * frame_.largest();
            for (std::size_t c = 0; c < 3; ++c) {
                pixel[c] = static_cast<std::uint8_t>((sums_[3 * x + c] * 255 + divisor / 2) / divisor);
            }
            pixels.push_back(pixel);
        }
        std::ranges::fill(sums_, 0);
        std::ranges::fill(counts_, 0);
    }

private:
    const client::Frame& frame_;
    std::vector<std::uint16_t> line_;
    std::vector<std::uint64_t> sums_;
    std::vector<std::uint64_t> counts_;
};

std::string colour(const char* ground, const Thumbnail::Pixel& pixel) {
    return std::string("\033[") + ground + ";2;" + std::to_string(pixel[0]) + ";" + std::to_string(pixel[1]) + ";" +
           std::to_string(pixel[2]) + "m";
}

// The colours of sixel graphics: six shades of each component.
constexpr int Shades = 6;
constexpr int Colours = Shades * Shades * Shades;
constexpr unsigned BandHeight = 6;

int shadeOf(int value) {
    return (std::clamp(value, 0, 255) * (Shades - 1) + 127) / 255;
}

/// The number of each pixel's colour. What a shade lacks or has too much goes on to the right and to the line below.
std::vector<int> quantize(const Thumbnail& picture) {
    std::vector<int> numbers(picture.pixels.size());
    const std::size_t width = picture.width;
    // Sixteenths, with a place to spare on both sides.
    std::vector<std::array<int, 3>> here(width + 2);
    std::vector<std::array<int, 3>> below(width + 2);
    for (unsigned y = 0; y < picture.height; ++y) {
        for (unsigned x = 0; x < picture.width; ++x) {
            int number = 0;
            for (std::size_t c = 0; c < 3; ++c) {
                const int wanted = picture.at(x, y)[c] + here[x + 1][c] / 16;
                const int shade = shadeOf(wanted);
                const int missing = wanted - shade * 255 / (Shades - 1);
                here[x + 2][c] += missing * 7;
                below[x][c] += missing * 3;
                below[x + 1][c] += missing * 5;
                below[x + 2][c] += missing;
                number = number * Shades + shade;
            }
            numbers[y * width + x] = number;
        }
        std::swap(here, below);
        std::ranges::fill(below, std::array<int, 3>{});
    }
    return numbers;
}

std::string palette() {
    std::string text;
    for (int number = 0; number < Colours; ++number) {
        const auto percent = [](int shade) { return std::to_string(shade * 100 / (Shades - 1)); };
        text += "#" + std::to_string(number) + ";2;" + percent(number / (Shades * Shades)) + ";" +
                percent(number / Shades % Shades) + ";" + percent(number % Shades);
    }
    return text;
}

/// "!12~" stands for twelve of a character.
void appendRun(std::string& text, char sixel, std::size_t count) {
    if (count > 3) {
        text += "!" + std::to_string(count) + sixel;
    } else {
        text.append(count, sixel);
    }
}

/// Six lines from `top` on, in one colour: a character a column, bit 0 the uppermost pixel.
std::string bandIn(int number, const std::vector<int>& numbers, const Thumbnail& picture, unsigned top) {
    std::string text = "#" + std::to_string(number);
    char former = 0;
    std::size_t count = 0;
    for (unsigned x = 0; x < picture.width; ++x) {
        int bits = 0;
        for (unsigned row = 0; row < BandHeight && top + row < picture.height; ++row) {
            bits |= numbers[std::size_t{top + row} * picture.width + x] == number ? 1 << row : 0;
        }
        const char sixel = static_cast<char>('?' + bits);
        if (sixel != former) {
            appendRun(text, former, count);
            former = sixel;
            count = 0;
        }
        ++count;
    }
    appendRun(text, former, count);
    return text;
}

}  // namespace

Thumbnail shrink(const client::Frame& frame, unsigned mostAcross, unsigned mostDown) {
    if (frame.width() == 0 || frame.lines() == 0) {
        return {};
    }
    const double scale =
        std::min({1.0, mostAcross / static_cast<double>(frame.width()), mostDown / static_cast<double>(frame.lines())});
    const auto scaled = [scale](std::uint32_t size) {
        return static_cast<unsigned>(std::max(1L, std::lround(scale * size)));
    };
    Thumbnail picture{scaled(frame.width()), scaled(frame.lines()), {}};
    LineOfSums sums(frame, picture.width);
    for (std::uint64_t y = 0; y < picture.height; ++y) {
        const auto first = static_cast<std::uint32_t>(y * frame.lines() / picture.height);
        const auto end = static_cast<std::uint32_t>((y + 1) * frame.lines() / picture.height);
        const std::uint32_t step = (end - first + MostLinesOfOne - 1) / MostLinesOfOne;
        for (std::uint32_t line = first; line < end; line += step) {
            sums.add(line);
        }
        sums.takeMeans(picture.pixels);
    }
    return picture;
}

std::vector<std::string> asHalfBlocks(const Thumbnail& picture) {
    constexpr const char* upperHalf = "\xE2\x96\x80";
    std::vector<std::string> lines;
    for (unsigned y = 0; y < picture.height; y += 2) {
        std::string line;
        for (unsigned x = 0; x < picture.width; ++x) {
            if (x == 0 || picture.at(x, y) != picture.at(x - 1, y)) {
                line += colour("38", picture.at(x, y));
            }
            if (y + 1 < picture.height && (x == 0 || picture.at(x, y + 1) != picture.at(x - 1, y + 1))) {
                line += colour("48", picture.at(x, y + 1));
            }
            line += upperHalf;
        }
        lines.push_back(line + "\033[0m");
    }
    return lines;
}

std::string asSixels(const Thumbnail& picture) {
    const std::vector<int> numbers = quantize(picture);
    std::string text =
        "\033Pq\"1;1;" + std::to_string(picture.width) + ";" + std::to_string(picture.height) + palette();
    for (unsigned top = 0; top < picture.height; top += BandHeight) {
        const auto begin = numbers.begin() + static_cast<std::ptrdiff_t>(std::size_t{top} * picture.width);
        const auto end = numbers.begin() + static_cast<std::ptrdiff_t>(
                                               std::size_t{std::min(top + BandHeight, picture.height)} * picture.width);
        std::vector<int> used(begin, end);
        std::ranges::sort(used);
        used.erase(std::unique(used.begin(), used.end()), used.end());
        for (const int number : used) {
            text += bandIn(number, numbers, picture, top) + (number == used.back() ? "-" : "$");
        }
    }
    return text + "\033\\";
}

}  // namespace quillon::cli
