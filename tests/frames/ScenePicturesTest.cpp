/// @file
/// Scenes and their light, in the frames that a host gets.

#include <array>
#include <cmath>
#include <mutex>
#include <numeric>
#include <set>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

class ScenePictures : public Bench {
protected:
    /// Frames of `height` lines; without a belt each line is the next row.
    void take(int width, int height) {
        useCamera(width, height);
        memory = memoryOf(16, static_cast<std::size_t>(width) * 3 * 2 * static_cast<std::size_t>(height));
        acquire(-1, memory);
        pass(100.0 + height * LineTime);
    }
    void show(const std::string& file, bool wrap) {
        ASSERT_EQ(softboard_scene_picture(device(), file.c_str(), wrap ? 1 : 0, 10.0), 0) << message();
    }
    void light(double reference, double flash, double noise) {
        ASSERT_EQ(softboard_scene_light(device(), reference, flash, noise), 0) << message();
    }
    std::vector<int> pixels(std::int64_t number = 1) { return numbers(frame(memory, number)); }
};

TEST_F(ScenePictures, OfARampRiseToTheRightAndAlongTheBelt) {
    pattern("ramp");
    take(4, 2);
    const int first = pixels().front();
    std::vector<int> expected;
    for (const int value : {0, 1, 2, 3, 1, 2, 3, 4}) {
        expected.insert(expected.end(), 3, first + value);
    }
    EXPECT_EQ(pixels(), expected);
}

TEST_F(ScenePictures, OfAnEvenGrey) {
    pattern("grey:37");
    take(8, 2);
    EXPECT_EQ(pixels(), std::vector<int>(8 * 2 * 3, 37));
}

TEST_F(ScenePictures, OfGreyAreHalfBrightWithoutANumber) {
    pattern("grey");
    take(8, 1);
    EXPECT_EQ(pixels(), std::vector<int>(8 * 3, 128));
}

TEST_F(ScenePictures, OfACheckerChangeEach32Pixels) {
    pattern("checker");
    take(128, 128);
    const std::vector<int> shown = blue(frame(memory, 1));
    const auto at = [&](int x, int y) { return shown[static_cast<std::size_t>(y * 128 + x)]; };
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 128; ++x) {
            ASSERT_TRUE(at(x, y) == 0 || at(x, y) == 255);
            if (x >= 32) {
                ASSERT_NE(at(x, y), at(x - 32, y));
            }
            if (y >= 32) {
                ASSERT_NE(at(x, y), at(x, y - 32));
            }
        }
    }
}

TEST_F(ScenePictures, OfEightBarsByDefault) {
    take(64, 1);
    const std::vector<int> shown = pixels();
    std::set<std::vector<bool>> colours;
    for (std::size_t bar = 0; bar < 8; ++bar) {
        std::vector<bool> colour;
        for (std::size_t component = 0; component < 3; ++component) {
            colour.push_back(shown[8 * bar * 3 + component] != 0);
            for (std::size_t x = 1; x < 8; ++x) {
                EXPECT_EQ(shown[(8 * bar + x) * 3 + component] != 0, colour.back()) << bar << ", " << x;
            }
        }
        colours.insert(colour);
    }
    EXPECT_EQ(colours.size(), 8U);
}

TEST_F(ScenePictures, OfNoiseAreThoseOfTheirSeed) {
    const auto taken = [&](const char* text) {
        pattern(text);
        take(64, 8);
        const std::vector<int> shown = pixels();
        stop();
        closeMemories();
        return shown;
    };
    const std::vector<int> one = taken("noise:7");
    EXPECT_NE(one, taken("noise:8"));
    const double mean =
        static_cast<double>(std::accumulate(one.begin(), one.end(), 0)) / static_cast<double>(one.size());
    EXPECT_NEAR(mean, 127.5, 10.0);
}

TEST_F(ScenePictures, OfAFileAreItsRowsAndColumns) {
    const TemporaryPicture file("colours.ppm", std::string("P6 4 2 255\n") +
                                                   "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c"
                                                   "\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1a\x1b\x1c");
    show(file.path(), true);
    belt(0.0, profile({{Forever, 0.0}}));
    take(4, 2);  // the belt stands at 0: the first row again and again; blue comes first
    EXPECT_EQ(pixels(),
              (std::vector<int>{3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10, 3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10}));
}

TEST_F(ScenePictures, OfAFileAreTiledOrBlackAroundIt) {
    const TemporaryPicture file("small.pgm", std::string("P5 2 1 255\n") + "\x40\x80");
    belt(0.0, profile({{Forever, 0.0}}));
    show(file.path(), true);
    take(8, 1);
    EXPECT_EQ(blue(frame(memory, 1)), (std::vector<int>{64, 128, 64, 128, 64, 128, 64, 128}));
    show(file.path(), false);
    pass(LineTime);
    EXPECT_EQ(blue(frame(memory, 2)), (std::vector<int>{64, 128, 0, 0, 0, 0, 0, 0}));
    const softboard_move back{Forever, -10.0};
    ASSERT_EQ(softboard_belt(device(), SOFTBOARD_NO_INPUT, SOFTBOARD_NO_INPUT, 0.0, &back, 1), 0);
    pass(1e5);
    EXPECT_EQ(blue(frame(memory, pictures())), std::vector<int>(8, 0));
}

TEST_F(ScenePictures, OfAFileHaveItsPixelsInAMillimetre) {
    const TemporaryPicture file("rows.pgm", greyRows(8, fromTo(100, 199)));
    ASSERT_EQ(softboard_scene_picture(device(), file.path().c_str(), 0, 2.0), 0);
    belt(0.0, profile({{1e6 * 10.25, 1.0}, {Forever, 0.0}}));  // 10.25 mm: row 20
    pass(11e6);
    take(8, 1);
    EXPECT_EQ(blue(frame(memory, 1)), std::vector<int>(8, 120));
}

TEST_F(ScenePictures, OfAFileOf16BitsKeepThem) {
    const TemporaryPicture file("deep.pgm", std::string("P5 4 1 65535\n") + "\x12\x34\x56\x78\x9a\xbc\xde\xf0");
    set(FG_PIXELFORMAT, RGB16);
    set(FG_FORMAT, FG_COL48);
    belt(0.0, profile({{Forever, 0.0}}));
    show(file.path(), false);
    take(4, 1);
    std::vector<int> expected;
    for (const auto& [low, high] : {std::pair{0x34, 0x12}, {0x78, 0x56}, {0xbc, 0x9a}, {0xf0, 0xde}}) {
        for (int colour = 0; colour < 3; ++colour) {
            expected.push_back(low);
            expected.push_back(high);
        }
    }
    EXPECT_EQ(pixels(), expected);
}

TEST_F(ScenePictures, AreAsBrightAsTheExposure) {
    pattern("grey:100");
    light(20.0, 1.0, 0.0);
    set(FG_LINEEXPOSURE, 20.0);
    take(8, 1);
    EXPECT_EQ(pixels(1), std::vector<int>(24, 100));
    const std::array<std::pair<double, int>, 4> told{{{10.0, 50}, {40.0, 200}, {60.0, 255}, {2.0, 10}}};
    for (const auto& [exposure, brightness] : told) {
        set(FG_LINEEXPOSURE, exposure);
        pass(2 * LineTime);
        EXPECT_EQ(pixels(pictures()), std::vector<int>(24, brightness)) << exposure;
    }
    light(0.0, 1.0, 0.0);
    pass(2 * LineTime);
    EXPECT_EQ(pixels(pictures()), std::vector<int>(24, 100));
}

TEST_F(ScenePictures, AreBrighterInTheLineOfTheFlash) {
    pattern("grey:100");
    light(0.0, 2.0, 0.0);
    set(FG_FLASHON, FG_ON);
    take(8, 4);
    pass(4 * LineTime);
    EXPECT_EQ(rowsOf(frame(memory, 2)), (std::vector<int>{200, 100, 100, 100}));
}

TEST_F(ScenePictures, ShowTheWhiteBalance) {
    pattern("grey:100");
    set(FG_SCALINGFACTOR_RED, 0.5);
    set(FG_SCALINGFACTOR_GREEN, 1.0);
    set(FG_SCALINGFACTOR_BLUE, 2.0);
    take(4, 1);
    EXPECT_EQ(pixels(), (std::vector<int>{200, 100, 50, 200, 100, 50, 200, 100, 50, 200, 100, 50}));
}

TEST_F(ScenePictures, HaveNoiseOfItsDeviation) {
    pattern("grey:128");
    light(0.0, 1.0, 0.05);
    take(1024, 4);
    const std::vector<int> shown = pixels();
    double mean = 0.0;
    for (const int value : shown) {
        mean += value / static_cast<double>(shown.size());
    }
    double variance = 0.0;
    for (const int value : shown) {
        variance += (value - mean) * (value - mean) / static_cast<double>(shown.size());
    }
    EXPECT_NEAR(mean, 128.0, 1.0);
    EXPECT_NEAR(std::sqrt(variance), 0.05 * 256, 0.5);
}

TEST_F(ScenePictures, ChangeBetweenLines) {
    pattern("grey:10");
    useCamera(Width, 4);
    memory = memoryOf(2, Width * 3 * 4);
    acquire(-1, memory);
    pass(100.0 + 2 * LineTime);
    pattern("grey:20");
    pass(LineTime);
    EXPECT_EQ(softboard_scene_picture(device(), "/nonexistent.png", 0, 10.0), SOFTBOARD_E_FILE);
    EXPECT_NE(message(), "");
    pass(LineTime);
    EXPECT_EQ(rowsOf(frame(memory, 1)), (std::vector<int>{10, 10, 20, 20}));
}

struct Asked {
    std::mutex mutex;
    std::vector<softboard_line> lines;
    std::vector<std::uint32_t> widths;
    int answer = 0;
};

int drawGreen(void* user, const softboard_line* about, std::uint16_t* rgb, std::uint32_t pixels) {
    auto& asked = *static_cast<Asked*>(user);
    const std::lock_guard lock(asked.mutex);
    asked.lines.push_back(*about);
    asked.widths.push_back(pixels);
    for (std::uint32_t x = 0; x < pixels; ++x) {
        rgb[3 * x + 1] = static_cast<std::uint16_t>(0x1100 * (x + 1));
    }
    return asked.answer;
}

TEST_F(ScenePictures, AreDrawnByAFunction) {
    Asked asked;
    ASSERT_EQ(softboard_scene_callback(device(), drawGreen, &asked), 0);
    set(FG_LINEEXPOSURE, 20.0);
    set(FG_FLASHON, FG_OFF);
    belt(0.0, profile({{Forever, 10.0}}));
    take(4, 3);
    std::vector<int> shown = pixels();
    shown.resize(12);
    EXPECT_EQ(shown, (std::vector<int>{0, 17, 0, 0, 34, 0, 0, 51, 0, 0, 68, 0}));
    ASSERT_EQ(asked.lines.size(), 3U);
    const Frame image = frame(memory, 1);
    EXPECT_EQ(asked.lines[0].tick, image.about.first_tick);
    EXPECT_EQ(asked.lines[2].tick, image.about.last_tick);
    EXPECT_EQ(asked.widths[0], 4U);
    for (std::size_t line = 0; line < 3; ++line) {
        EXPECT_EQ(asked.lines[line].exposure_us, 20.0);
        EXPECT_EQ(asked.lines[line].flash, 0);
        // 10 mm/s are 0.01 um in a microsecond; the exposure began 20 us before the tick that is told
        EXPECT_NEAR(asked.lines[line].position_mm, (static_cast<double>(asked.lines[line].tick) * Tick - 20.0) * 1e-5,
                    1e-6);
    }
    asked.answer = 1;
    set(FG_FLASHON, FG_ON);
    pass(3 * LineTime);
    EXPECT_EQ(asked.lines[3].flash, 1);
    EXPECT_EQ(asked.lines[4].flash, 0);
    EXPECT_EQ(pixels(2), std::vector<int>(36, 0));
    pattern("grey");
    EXPECT_EQ(softboard_scene_callback(device(), nullptr, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(ScenePictures, StayWithAnotherDesign) {
    pattern("grey:55");
    belt(0.0, profile({{Forever, 100.0}}));
    pass(1e5);
    built.applet.close();
    const client::Applet again(built.library, built.board);
    EXPECT_EQ(position(), 0.0) << "the belt begins anew";
    pass(1e4);
    EXPECT_NEAR(position(), 1.0, 1e-5);
}

}  // namespace
}  // namespace quillon::frames_test
