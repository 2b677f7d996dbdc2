#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "softboard/scene.h"
#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int CameraInput = 0;
constexpr int ImageOutput = 1;

/// Frames of eight pixels a line, and files to insert.
class DebugPoints : public AppletFrames {
protected:
    static constexpr int Width = 8;

    void SetUp() override {
        AppletFrames::SetUp();
        folder_ = std::filesystem::path(testing::TempDir()) /
                  (std::string("debug_points_") + testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder_);
        useCamera(Width, 3);
        memory = memoryOf(8, 10000);
        acquire(-1, memory);
    }
    void TearDown() override {
        AppletFrames::TearDown();
        std::filesystem::remove_all(folder_);
    }
    void select(int point) {
        set(FG_DEBUGSOURCE, point);
        set(FG_DEBUGINENABLE, FG_ON);
    }
    std::string file(const std::string& name, const std::string& content) {
        const std::string path = (folder_ / name).string();
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    /// A picture of two lines of eight pixels: red 10 x, green 100 + y, blue 7.
    std::string picture() {
        std::string text = "P3 8 2 255\n";
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < Width; ++x) {
                text += std::to_string(10 * x) + " " + std::to_string(100 + y) + " 7\n";
            }
        }
        return file("picture.ppm", text);
    }
    void insert(const std::string& name) {
        ASSERT_EQ(built.applet.setText(FG_DEBUGFILE, name.c_str()), 0);
        set(FG_DEBUGINSERT, FG_APPLY);
    }
    void write(std::uint64_t red, std::uint64_t green, std::uint64_t blue) {
        ASSERT_EQ(built.applet.setInt64(FG_DEBUGWRITEPIXEL, static_cast<std::int64_t>(red | green << 16 | blue << 32)),
                  0);
    }
    std::string message() {
        std::string text(1000, '\0');
        EXPECT_EQ(softboard_last_message(device(), text.data(), text.size()), 0);
        return text.c_str();
    }
    /// Of the frame's pixels of 8 bits, those of a line as blue, green, red.
    std::vector<int> line(std::int64_t number, std::size_t y) {
        const std::vector<int> all = numbers(frame(memory, number));
        const auto first = all.begin() + static_cast<std::ptrdiff_t>(y * Width * 3);
        return {first, first + Width * 3};
    }

    softboard_memory* memory = nullptr;

private:
    std::filesystem::path folder_;
};

TEST_F(DebugPoints, SendAPictureAsOneFrame) {
    select(CameraInput);
    insert(picture());
    EXPECT_EQ(whole(FG_DEBUGREADY), 0U);
    EXPECT_EQ(pictures(), 0);
    pass(10.0);
    EXPECT_EQ(whole(FG_DEBUGREADY), 1U);
    ASSERT_EQ(pictures(), 1);
    const softboard_frame about = frame(memory, 1).about;
    EXPECT_EQ(about.lines, 2U);
    EXPECT_EQ(about.width, 8U);
    EXPECT_EQ(about.flags, unsigned{SOFTBOARD_FRAME_INJECTED});
    EXPECT_THAT(line(1, 0), ElementsAre(7, 100, 0, 7, 100, 10, 7, 100, 20, 7, 100, 30, 7, 100, 40, 7, 100, 50, 7, 100,
                                        60, 7, 100, 70));
    EXPECT_EQ(line(1, 1)[1], 101);
}

TEST_F(DebugPoints, TakeTheStreamsPlace) {
    pass(LineTime * 4.5);
    EXPECT_EQ(pictures(), 1);
    select(CameraInput);
    const std::uint64_t lines = events("FG_START_OF_LINE_CAM_PORT_0");
    pass(LineTime * 9);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), lines);
    insert(picture());
    pass(10.0);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(frame(memory, 2).about.lost_before, 1U) << "the frame that was under way";
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), lines + 2);
    set(FG_DEBUGINENABLE, FG_OFF);
    pass(LineTime * 7);
    EXPECT_GE(pictures(), 3);
    EXPECT_EQ(frame(memory, pictures()).about.flags, 0U);
}

TEST_F(DebugPoints, OfTheCameraGoThroughTheWholePath) {
    set(FG_SCALINGFACTOR_RED, 0.5);
    set(FG_LUT_ENABLE, FG_ON);
    set(FG_PROCESSING_INVERT, FG_ON);
    select(CameraInput);
    insert(picture());
    pass(10.0);
    EXPECT_EQ(line(1, 0)[0], 255 - 7);
    EXPECT_EQ(line(1, 0)[7 * 3 + 2], 255 - 70 / 2);
}

TEST_F(DebugPoints, AtTheOutputPassTheFormatOnly) {
    set(FG_SCALINGFACTOR_RED, 0.5);
    set(FG_LUT_ENABLE, FG_ON);
    set(FG_PROCESSING_INVERT, FG_ON);
    select(ImageOutput);
    insert(picture());
    const std::uint64_t lines = events("FG_START_OF_LINE_CAM_PORT_0");
    pass(10.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(line(1, 0)[0], 7);
    EXPECT_EQ(line(1, 0)[7 * 3 + 2], 70);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), lines) << "the camera has not sent it";
}

TEST_F(DebugPoints, AtTheOutputLetTheCameraRunInFrontOfThem) {
    select(ImageOutput);
    const std::uint64_t lines = events("FG_START_OF_LINE_CAM_PORT_0");
    pass(LineTime * 6.5);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), lines + 6);
}

TEST_F(DebugPoints, SendSinglePixels) {
    select(CameraInput);
    for (std::uint64_t y = 1; y <= 2; ++y) {
        for (std::uint64_t x = 0; x < 3; ++x) {
            write(0x1000 * x, 0x2000 * y, 0xFFFF);
        }
        set(FG_DEBUGWRITEFLAG, FG_ENDOFLINE);
    }
    EXPECT_EQ(whole(FG_DEBUGREADY), 1U);
    set(FG_DEBUGWRITEFLAG, FG_ENDOFFRAME);
    EXPECT_EQ(whole(FG_DEBUGREADY), 0U);
    pass(10.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(frame(memory, 1).about.lines, 2U);
    EXPECT_THAT(line(1, 0),
                ElementsAre(255, 32, 0, 255, 32, 16, 255, 32, 32, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(line(1, 1)[1], 64);
}

TEST_F(DebugPoints, EndALineWithItsFrame) {
    select(ImageOutput);
    for (int x = 0; x < 12; ++x) {
        write(0xFF00, 0, 0);  // what is too much is left out
    }
    set(FG_DEBUGWRITEFLAG, FG_ENDOFFRAME);
    pass(10.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(frame(memory, 1).about.lines, 1U);
    EXPECT_THAT(line(1, 0), testing::Contains(255).Times(Width));
    set(FG_DEBUGWRITEFLAG, FG_ENDOFFRAME);  // without a pixel there is no frame
    pass(10.0);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(DebugPoints, TakeRawWords) {
    select(CameraInput);
    std::string words;
    for (int pixel = 0; pixel < 2 * Width; ++pixel) {
        for (const char high : {'\x01', '\x02', '\x03'}) {
            words += '\0';
            words += high;
        }
    }
    insert(file("words.raw", words));
    pass(10.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(frame(memory, 1).about.lines, 2U);
    EXPECT_EQ(line(1, 1)[0], 3);
    EXPECT_EQ(line(1, 1)[2], 1);
}

TEST_F(DebugPoints, TellOfAFileThatCannotBeReadAndLoseNothing) {
    select(CameraInput);
    const std::string torn = file("torn.ppm", "P6 8 2 255\n123");
    const std::string odd = file("odd.raw", "12345");
    const std::string empty = file("empty.raw", "");
    for (const std::string& name : {std::string("/nowhere/at/all.png"), torn, odd, empty, std::string("/")}) {
        insert(name);
        EXPECT_EQ(whole(FG_DEBUGREADY), 1U) << name;
        EXPECT_THAT(message(), HasSubstr("debug point \"Camera Input\": " + name)) << name;
    }
    insert("");
    EXPECT_EQ(message(), "debug point \"Camera Input\": no file is given");
    pass(1000.0);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 0);
    insert(picture());
    pass(10.0);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(DebugPoints, TellWhenTheyTakeNothing) {
    set(FG_DEBUGSOURCE, CameraInput);
    insert(picture());
    EXPECT_EQ(message(), "debug point \"Camera Input\": its input is switched off");
    set(FG_DEBUGINENABLE, FG_ON);
    insert(picture());
    insert(picture());
    EXPECT_EQ(message(), "debug point \"Camera Input\": a frame is still being inserted");
    pass(10.0);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(DebugPoints, GiveUpAFrameWhenTheyAreSwitchedOff) {
    select(CameraInput);
    insert(picture());
    pass(0.008);
    set(FG_DEBUGINENABLE, FG_OFF);
    EXPECT_EQ(whole(FG_DEBUGREADY), 1U);
    pass(10.0);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(DebugPoints, FitThePictureIntoTheLine) {
    select(CameraInput);
    insert(file("small.pgm", "P2 2 1 255\n200 201\n"));
    pass(10.0);
    EXPECT_THAT(line(1, 0),
                ElementsAre(200, 200, 200, 201, 201, 201, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    std::string wide = "P2 20 1 255\n";
    for (int x = 0; x < 20; ++x) {
        wide += std::to_string(x) + "\n";
    }
    insert(file("wide.pgm", wide));
    pass(10.0);
    EXPECT_EQ(frame(memory, 2).about.width, 8U);
    EXPECT_EQ(line(2, 0)[7 * 3], 7);
}

TEST_F(DebugPoints, ShowThePixelThatPasses) {
    select(ImageOutput);
    set(FG_DEBUGOUTENABLE, FG_ON);
    EXPECT_EQ(whole(FG_DEBUGOUTPIXEL), 0U);
    insert(picture());
    pass(10.0);
    EXPECT_EQ(whole(FG_DEBUGOUTXPOS), 7U);
    EXPECT_EQ(whole(FG_DEBUGOUTYPOS), 1U);
    EXPECT_EQ(whole(FG_DEBUGOUTPIXEL), 70U + 256U * 101U + 65536U * 7U);
    set(FG_DEBUGOUTENABLE, FG_OFF);
    insert(file("other.pgm", "P2 8 1 255\n9 9 9 9 9 9 9 9\n"));
    pass(10.0);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(whole(FG_DEBUGOUTYPOS), 1U) << "it is not watched";
}

TEST_F(DebugPoints, ShowThePixelOfTheCamerasFrames) {
    set(FG_DEBUGSOURCE, ImageOutput);
    set(FG_DEBUGOUTENABLE, FG_ON);
    for (const int format : {FG_COL24, FG_COL30, FG_COL36, FG_COL48}) {
        softboard_scene_pattern(device(), "grey:200");
        set(FG_FORMAT, format);
        pass(LineTime * 6);
        EXPECT_EQ(whole(FG_DEBUGOUTPIXEL), 200U * 0x010101U) << format;
        EXPECT_EQ(whole(FG_DEBUGOUTXPOS), 7U);
        EXPECT_EQ(whole(FG_DEBUGOUTYPOS), 2U);
    }
}

}  // namespace
}  // namespace quillon::frames_test
