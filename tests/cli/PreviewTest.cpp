#include "cli/pictures/Preview.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>

#include "tests/cli/PackedFrame.h"

namespace quillon::cli {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::PackedFrame;
using testing::Pixel;

Thumbnail::Pixel pixel(int red, int green, int blue) {
    return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
}

TEST(Thumbnail, APixelIsTheMeanOfThoseThatItStandsFor) {
    const PackedFrame frame(4, 2, 8, [](unsigned x, unsigned y) { return Pixel{10 * x, 100 * y, x < 2 ? 0U : 255U}; });
    const Thumbnail small = shrink(frame, 2, 10);
    EXPECT_EQ(small.width, 2U);
    EXPECT_EQ(small.height, 1U);
    EXPECT_THAT(small.pixels, ElementsAre(pixel(5, 50, 0), pixel(25, 50, 255)));
}

TEST(Thumbnail, AFrameThatFitsStaysAsItIs) {
    const PackedFrame frame(2, 2, 16, [](unsigned x, unsigned y) { return Pixel{65535 * x, 65535 * y, 32768}; });
    const Thumbnail small = shrink(frame, 100, 100);
    EXPECT_EQ(small.height, 2U);
    EXPECT_THAT(small.pixels,
                ElementsAre(pixel(0, 0, 128), pixel(255, 0, 128), pixel(0, 255, 128), pixel(255, 255, 128)));
}

TEST(Thumbnail, ProportionsAreKeptWhicheverBoundIsNear) {
    const PackedFrame frame(400, 100, 8, [](unsigned, unsigned) { return Pixel{1, 2, 3}; });
    const Thumbnail across = shrink(frame, 80, 1000);
    EXPECT_EQ(across.width, 80U);
    EXPECT_EQ(across.height, 20U);
    const Thumbnail down = shrink(frame, 1000, 10);
    EXPECT_EQ(down.width, 40U);
    EXPECT_EQ(down.height, 10U);
    const Thumbnail flat = shrink(frame, 2, 10);
    EXPECT_EQ(flat.height, 1U);
    EXPECT_THAT(flat.pixels, ElementsAre(pixel(1, 2, 3), pixel(1, 2, 3)));
}

TEST(Thumbnail, AFrameWithoutLinesIsEmpty) {
    const PackedFrame frame(4, 0, 8, [](unsigned, unsigned) { return Pixel{}; });
    EXPECT_THAT(shrink(frame, 80, 24).pixels, IsEmpty());
    EXPECT_THAT(asHalfBlocks(shrink(frame, 80, 24)), IsEmpty());
}

TEST(HalfBlocks, ACharacterIsTwoPixels) {
    const Thumbnail picture{1, 2, {pixel(1, 2, 3), pixel(4, 5, 6)}};
    EXPECT_THAT(asHalfBlocks(picture), ElementsAre("\033[38;2;1;2;3m\033[48;2;4;5;6m\xE2\x96\x80\033[0m"));
}

TEST(HalfBlocks, AnOddLastLineHasNoLowerHalf) {
    const Thumbnail picture{1, 1, {pixel(1, 2, 3)}};
    EXPECT_THAT(asHalfBlocks(picture), ElementsAre("\033[38;2;1;2;3m\xE2\x96\x80\033[0m"));
}

TEST(HalfBlocks, AColourIsSetWhereItChanges) {
    const Thumbnail picture{
        3, 2, {pixel(9, 9, 9), pixel(9, 9, 9), pixel(8, 8, 8), pixel(7, 7, 7), pixel(6, 6, 6), pixel(6, 6, 6)}};
    EXPECT_THAT(asHalfBlocks(picture), ElementsAre("\033[38;2;9;9;9m\033[48;2;7;7;7m\xE2\x96\x80"
                                                   "\033[48;2;6;6;6m\xE2\x96\x80"
                                                   "\033[38;2;8;8;8m\xE2\x96\x80\033[0m"));
}

/// What a terminal makes of sixel graphics.
class SixelScreen {
public:
    explicit SixelScreen(const std::string& text) : text_(text) {
        EXPECT_EQ(text_.substr(0, 3), "\033Pq");
        EXPECT_EQ(text_.substr(text_.size() - 2), "\033\\");
        for (place_ = 3; place_ < text_.size() - 2;) {
            const char what = text_[place_++];
            switch (what) {
                case '"': size_ = numbers(); break;
                case '#': selectColour(numbers()); break;
                case '!': {
                    const int count = numbers().at(0);
                    draw(text_[place_++], count);
                    break;
                }
                case '$': x_ = 0; break;
                case '-': x_ = 0, top_ += 6; break;
                default: draw(what, 1);
            }
        }
    }

    std::vector<int> size() const { return size_; }
    std::size_t drawn() const { return pixels_.size(); }
    Pixel at(int x, int y) const { return colours_.at(pixels_.at({x, y})); }

private:
    std::vector<int> numbers() {
        std::vector<int> list;
        do {
            char* end = nullptr;
            list.push_back(static_cast<int>(std::strtol(&text_[place_], &end, 10)));
            place_ = static_cast<std::size_t>(end - text_.data());
        } while (text_[place_] == ';' && ++place_ != 0);
        return list;
    }
    void selectColour(const std::vector<int>& numbers) {
        colour_ = numbers.at(0);
        if (numbers.size() == 5) {
            colours_[colour_] = {static_cast<unsigned>(numbers[2]), static_cast<unsigned>(numbers[3]),
                                 static_cast<unsigned>(numbers[4])};
        }
    }
    void draw(char sixel, int count) {
        EXPECT_GE(sixel, '?');
        EXPECT_LE(sixel, '~');
        for (; count > 0; --count, ++x_) {
            for (int row = 0; row < 6; ++row) {
                if (((sixel - '?') >> row & 1) != 0) {
                    pixels_[{x_, top_ + row}] = colour_;
                }
            }
        }
    }

    std::string text_;
    std::size_t place_ = 0;
    std::vector<int> size_;
    std::map<int, Pixel> colours_;
    std::map<std::pair<int, int>, int> pixels_;
    int colour_ = 0;
    int x_ = 0;
    int top_ = 0;
};

TEST(Sixels, EachPixelIsDrawnInItsColour) {
    const Thumbnail picture{2, 7, std::vector<Thumbnail::Pixel>(14, pixel(255, 0, 51))};
    const SixelScreen screen(asSixels(picture));
    EXPECT_THAT(screen.size(), ElementsAre(1, 1, 2, 7));
    EXPECT_EQ(screen.drawn(), 14U);
    EXPECT_EQ(screen.at(0, 0), (Pixel{100, 0, 20}));
    EXPECT_EQ(screen.at(1, 6), (Pixel{100, 0, 20}));
}

TEST(Sixels, PixelsStandWhereTheyBelong) {
    Thumbnail picture{9, 13, std::vector<Thumbnail::Pixel>(9 * 13, pixel(0, 0, 0))};
    picture.pixels[0] = pixel(255, 0, 0);
    picture.pixels[12 * 9 + 8] = pixel(0, 0, 255);
    const SixelScreen screen(asSixels(picture));
    EXPECT_EQ(screen.drawn(), 9U * 13);
    EXPECT_EQ(screen.at(0, 0), (Pixel{100, 0, 0}));
    EXPECT_EQ(screen.at(1, 0), (Pixel{0, 0, 0}));
    EXPECT_EQ(screen.at(8, 12), (Pixel{0, 0, 100}));
}

TEST(Sixels, AGreyBetweenTheShadesIsRightOnTheMean) {
    const Thumbnail picture{60, 60, std::vector<Thumbnail::Pixel>(3600, pixel(120, 70, 200))};
    const SixelScreen screen(asSixels(picture));
    std::array<double, 3> sums{};
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x) {
            for (std::size_t c = 0; c < 3; ++c) {
                sums[c] += screen.at(x, y)[c];
            }
        }
    }
    EXPECT_NEAR(sums[0] / 3600, 120 / 2.55, 0.5);
    EXPECT_NEAR(sums[1] / 3600, 70 / 2.55, 0.5);
    EXPECT_NEAR(sums[2] / 3600, 200 / 2.55, 0.5);
}

}  // namespace
}  // namespace quillon::cli
