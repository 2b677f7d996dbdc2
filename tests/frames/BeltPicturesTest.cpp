#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "softboard/scene.h"
#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr double Forever = std::numeric_limits<double>::infinity();
constexpr unsigned TrackA = 1;   // GPI, as FG_LINETRIGGERINSRC starts
constexpr unsigned TrackB = 2;   // as FG_SHAFTENCODERINSRC starts
constexpr unsigned Barrier = 0;  // as FG_IMGTRIGGERINSRC starts

/// A picture of 10 pixels a millimetre, whose rows are told by their grey: that of row n is n.
class BeltPictures : public AppletFrames {
protected:
    static constexpr int Width = 8;
    static constexpr int Height = 5;
    static constexpr int Rows = 250;

    void SetUp() override {
        AppletFrames::SetUp();
        file_ = (std::filesystem::path(testing::TempDir()) /
                 (std::string("belt_") + testing::UnitTest::GetInstance()->current_test_info()->name() + ".pgm"))
                    .string();
        std::string text = "P2 8 250 255\n";
        for (int row = 0; row < Rows; ++row) {
            for (int x = 0; x < Width; ++x) {
                text += std::to_string(row) + "\n";
            }
        }
        std::ofstream(file_) << text;
        ASSERT_EQ(softboard_scene_picture(device(), file_.c_str(), 0, 10.0), 0);
        useCamera(Width, Height);
        memory = memoryOf(256, 4096);
    }
    void TearDown() override {
        AppletFrames::TearDown();
        std::filesystem::remove(file_);
    }
    void belt(double countsPerMm, const std::vector<softboard_move>& moves) {
        ASSERT_EQ(softboard_belt(device(), TrackA, TrackB, countsPerMm, moves.data(), moves.size()), 0);
    }
    void triggerByEncoder(int filter) {
        set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);
        set(FG_SHAFTENCODERMODE, filter);
        set(FG_SHAFTENCODERON, FG_ON);
        set(FG_LINEEXPOSURE, 5.0);
    }
    /// The rows that the lines of all frames show, one behind the other.
    std::vector<int> rows() {
        std::vector<int> result;
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            const std::vector<int> pixels = blue(frame(memory, number));
            for (std::size_t at = 0; at < pixels.size(); at += Width) {
                result.push_back(pixels[at]);
            }
        }
        return result;
    }
    static std::vector<int> from(int first, int count) {
        std::vector<int> result(static_cast<std::size_t>(count));
        std::iota(result.begin(), result.end(), first);
        return result;
    }

    softboard_memory* memory = nullptr;

private:
    std::string file_;
};

TEST_F(BeltPictures, AreUndistortedAtAnySpeedWithTheEncoder) {
    triggerByEncoder(FILTER_X1);
    for (const double speed : {1.0, 100.0, 517.3, 3000.0}) {
        acquire(-1, memory);
        belt(10.0, {{Forever, speed}});
        pass(20.05 / speed * 1e6);  // 201 lines
        EXPECT_EQ(rows(), from(0, 200)) << speed;
        stop();
    }
}

TEST_F(BeltPictures, AreUndistortedWhileTheSpeedChanges) {
    triggerByEncoder(FILTER_X1);
    acquire(-1, memory);
    belt(10.0, {{1e3, 10.0}, {5e3, 300.0}, {9e3, 0.0}, {11e3, 2000.0}, {20e3, 77.7}, {Forever, 1234.5}});
    pass(30e3);
    const std::vector<int> seen = rows();
    ASSERT_GT(seen.size(), 150U);
    EXPECT_EQ(seen, from(0, static_cast<int>(seen.size())));
}

TEST_F(BeltPictures, HaveTheLinesOfTheFilter) {
    for (const auto& [filter, countsPerMm] : {std::pair{FILTER_X2, 5.0}, std::pair{FILTER_X4, 2.5}}) {
        triggerByEncoder(filter);
        acquire(-1, memory);
        belt(countsPerMm, {{Forever, 100.0}});
        pass(100.5e3);
        EXPECT_EQ(rows(), from(0, 100)) << filter;
        stop();
    }
}

TEST_F(BeltPictures, AreStretchedWithoutTheEncoder) {
    acquire(-1, memory);
    belt(10.0, {{Forever, 250.0}});  // half a row in each period of 200 µs, from the second half of row 0 on
    pass(200.0 * 25 + 50.0);
    EXPECT_THAT(rows(), ElementsAre(0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12));
    stop();
    acquire(-1, memory);
    belt(10.0, {{Forever, 0.0}});
    pass(200.0 * 11);
    EXPECT_THAT(rows(), Each(0));
    EXPECT_EQ(pictures(), 2);
}

TEST_F(BeltPictures, ShowEachPlaceOnceWithCompensation) {
    triggerByEncoder(FILTER_X1);
    acquire(-1, memory);
    belt(10.0, {{50.5e3, 100.0}, {70.5e3, -100.0}, {Forever, 100.0}});
    pass(60e3);
    EXPECT_GT(whole(FG_SHAFTENCODER_COMPENSATION_COUNT), 0U) << "while it runs back";
    pass(80e3);
    EXPECT_EQ(whole(FG_SHAFTENCODER_COMPENSATION_COUNT), 0U);
    EXPECT_EQ(rows(), from(0, 100));
}

TEST_F(BeltPictures, ShowAPlaceTwiceWithoutCompensation) {
    triggerByEncoder(FILTER_X1);
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_OFF);
    acquire(-1, memory);
    belt(10.0, {{50.5e3, 100.0}, {70.5e3, -100.0}, {Forever, 100.0}});
    pass(140e3);
    std::vector<int> expected = from(0, 51);  // to 5.05 mm, and again from 3.05 mm
    const std::vector<int> again = from(31, 69);
    expected.insert(expected.end(), again.begin(), again.end());
    EXPECT_EQ(rows(), expected);
}

TEST_F(BeltPictures, OfTheWayBackNeedNoDirection) {
    set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);  // track A alone
    set(FG_LINEEXPOSURE, 5.0);
    acquire(-1, memory);
    belt(10.0, {{10e3, 100.0}, {Forever, -100.0}});
    pass(20.9e3);
    const std::vector<int> seen = rows();
    ASSERT_EQ(seen.size(), 20U);
    EXPECT_THAT(std::vector<int>(seen.begin(), seen.begin() + 11), testing::ElementsAreArray(from(0, 11)));
    EXPECT_TRUE(std::is_sorted(seen.begin() + 11, seen.end(), std::greater<>()));
}

TEST_F(BeltPictures, BeginWithAPartInTheLightBarrier) {
    triggerByEncoder(FILTER_X1);
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, Height);
    acquire(-1, memory);
    belt(10.0, {{Forever, 100.0}});
    ASSERT_EQ(softboard_barrier(device(), Barrier, 2.05, 7.0, 1.0), 0);
    pass(180e3);
    std::vector<int> expected;
    for (const int first : {21, 91, 161}) {
        const std::vector<int> part = from(first, Height);
        expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_EQ(rows(), expected);
}

TEST_F(BeltPictures, MoveByARowWithEachLineWithoutABelt) {
    acquire(-1, memory);
    pass(200.0 * 26);
    EXPECT_EQ(rows(), from(0, 25));
    stop();
    acquire(-1, memory);
    pass(200.0 * 11);
    EXPECT_EQ(rows(), from(0, 10)) << "it begins anew with the acquisition";
}

TEST_F(BeltPictures, AreTheSameInManySteps) {
    const auto run = [&](int steps) {
        triggerByEncoder(FILTER_X4);
        set(FG_LINETRIGGERDEBOUNCING, 0.5);
        belt(7.7, {});  // the tracks are low
        pass(1000.0);
        set(FG_SHAFTENCODER_COMPENSATION_COUNT, 0);
        softboard_scene_light(device(), 4.0, 2.0, 0.0);
        acquire(-1, memory);
        belt(7.7, {{5e3, 100.0}, {7e3, -77.7}, {Forever, 321.0}});
        for (int step = 0; step < steps; ++step) {
            pass(30e3 / steps);
        }
        std::vector<std::vector<int>> all;
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            all.push_back(numbers(frame(memory, number)));
        }
        stop();
        return all;
    };
    const auto once = run(1);
    ASSERT_GT(once.size(), 20U);
    EXPECT_TRUE(run(1000) == once);
}

// ---- Light ----

/// A grey scene, so that a number tells how bright it is.
class LitPictures : public BeltPictures {
protected:
    void SetUp() override {
        BeltPictures::SetUp();
        ASSERT_EQ(softboard_scene_pattern(device(), "grey:100"), 0);
        acquire(-1, memory);
    }
    /// Of a frame of which no line has come yet: the grey of each line.
    std::vector<int> next() {
        pass(LineTime * (2 * Height + 1));
        const std::vector<int> pixels = blue(frame(memory, pictures()));
        std::vector<int> lines;
        for (std::size_t at = 0; at < pixels.size(); at += Width) {
            lines.push_back(pixels[at]);
        }
        return lines;
    }
};

TEST_F(LitPictures, AreAsBrightAsTheyAreExposed) {
    ASSERT_EQ(softboard_scene_light(device(), 20.0, 1.0, 0.0), 0);
    for (const auto& [exposure, grey] :
         {std::pair{20.0, 100}, std::pair{10.0, 50}, std::pair{40.0, 200}, std::pair{80.0, 255}}) {
        set(FG_LINEEXPOSURE, exposure);
        EXPECT_THAT(next(), Each(grey)) << exposure;
    }
    ASSERT_EQ(softboard_scene_light(device(), 0.0, 1.0, 0.0), 0);
    EXPECT_THAT(next(), Each(100)) << "the exposure does not matter any more";
}

TEST_F(LitPictures, AreBrighterInTheLineOfTheFlash) {
    ASSERT_EQ(softboard_scene_light(device(), 0.0, 2.0, 0.0), 0);
    EXPECT_THAT(next(), ElementsAre(200, 100, 100, 100, 100));
    set(FG_STROBEPULSEDELAY, 3);
    EXPECT_THAT(next(), ElementsAre(100, 100, 100, 200, 100));
    set(FG_FLASHON, FG_OFF);
    EXPECT_THAT(next(), Each(100));
}

TEST_F(LitPictures, HaveTheColourOfTheWhiteBalance) {
    set(FG_SCALINGFACTOR_RED, 0.5);
    set(FG_SCALINGFACTOR_BLUE, 2.0);
    next();
    const std::vector<int> pixels = numbers(frame(memory, pictures()));
    EXPECT_EQ(pixels[0], 200);
    EXPECT_EQ(pixels[1], 100);
    EXPECT_EQ(pixels[2], 50);
}

TEST_F(LitPictures, HaveTheNoiseOfTheirSeed) {
    ASSERT_EQ(softboard_scene_light(device(), 0.0, 1.0, 0.05), 0);
    const auto noisy = [&](std::uint64_t seed) {
        stop();
        softboard_scene_seed(device(), seed);
        acquire(1, memory);
        pass(LineTime * (Height + 1));
        return numbers(frame(memory, 1));
    };
    const std::vector<int> some = noisy(1);
    EXPECT_THAT(some, testing::Not(Each(100)));
    EXPECT_NE(noisy(2), some);
}

TEST_F(LitPictures, ChangeWithTheNextLine) {
    pass(LineTime * 2.5);
    softboard_scene_pattern(device(), "grey:7");
    pass(LineTime * 3);
    const std::vector<int> pixels = blue(frame(memory, 1));
    EXPECT_EQ(pixels[1 * Width], 100);
    EXPECT_EQ(pixels[2 * Width], 7);
}

TEST_F(LitPictures, AreDrawnByAFunction) {
    struct Seen {
        std::vector<double> positions;
        std::vector<double> exposures;
        std::vector<int> flashes;
    } seen;
    const auto draw = [](void* user, const softboard_line* about, std::uint16_t* rgb, std::uint32_t pixels) {
        auto& all = *static_cast<Seen*>(user);
        all.positions.push_back(about->position_mm);
        all.exposures.push_back(about->exposure_us);
        all.flashes.push_back(about->flash);
        for (std::uint32_t x = 0; x < pixels; ++x) {
            rgb[3 * x] = static_cast<std::uint16_t>(x << 8);
        }
        return all.positions.size() == 2 ? 1 : 0;
    };
    ASSERT_EQ(softboard_scene_callback(device(), draw, &seen), 0);
    stop();
    acquire(1, memory);
    belt(0.0, {{Forever, 1000.0}});
    pass(LineTime * (Height + 1));
    ASSERT_EQ(pictures(), 1);
    ASSERT_EQ(seen.positions.size(), static_cast<std::size_t>(Height));
    EXPECT_NEAR(seen.positions[1] - seen.positions[0], 0.2, 1e-9);
    EXPECT_THAT(seen.exposures, Each(testing::DoubleNear(19.0, 1e-9)));
    EXPECT_THAT(seen.flashes, ElementsAre(1, 0, 0, 0, 0));
    const std::vector<int> pixels = numbers(frame(memory, 1));
    EXPECT_EQ(pixels[7 * 3 + 2], 7);
    EXPECT_EQ(pixels[(Width + 7) * 3 + 2], 0) << "it has refused the second line";
}

TEST_F(LitPictures, RefuseWhatMakesNoSense) {
    EXPECT_EQ(softboard_scene_pattern(device(), "stripes"), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_pattern(device(), nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_pattern(device(), "grey:256"), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_picture(device(), nullptr, 0, 10.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_picture(device(), "/nowhere.png", 0, 10.0), SOFTBOARD_E_FILE);
    EXPECT_EQ(softboard_scene_callback(device(), nullptr, nullptr), SOFTBOARD_E_ARGUMENT);
    const double numbers[] = {-1.0, Forever, std::numeric_limits<double>::quiet_NaN()};
    for (const double number : numbers) {
        EXPECT_EQ(softboard_scene_picture(device(), "/nowhere.png", 0, number), SOFTBOARD_E_ARGUMENT) << number;
        EXPECT_EQ(softboard_scene_light(device(), number, 1.0, 0.0), SOFTBOARD_E_ARGUMENT) << number;
        EXPECT_EQ(softboard_scene_light(device(), 0.0, number, 0.0), SOFTBOARD_E_ARGUMENT) << number;
        EXPECT_EQ(softboard_scene_light(device(), 0.0, 1.0, number), SOFTBOARD_E_ARGUMENT) << number;
    }
    EXPECT_EQ(softboard_scene_seed(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_THAT(next(), Each(100));
}

}  // namespace
}  // namespace quillon::frames_test
