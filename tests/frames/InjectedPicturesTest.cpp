/// @file
/// Pictures and pixels that are put into the path at the points that the design names, and files of every broken kind.

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

constexpr int CameraInput = 0;
constexpr int ImageOutput = 1;

class InjectedPictures : public Bench {
protected:
    void SetUp() override {
        Bench::SetUp();
        useCamera(4, 16);
        memory = memoryOf(16, 4 * 3 * 16 * 2);
        acquire(-1, memory);
    }
    void choose(int point) {
        set(FG_DEBUGSOURCE, point);
        set(FG_DEBUGINENABLE, FG_ON);
    }
    int insert(const std::string& file) {
        EXPECT_EQ(built.applet.setText(FG_DEBUGFILE, file), 0);
        return built.applet.setInt(FG_DEBUGINSERT, FG_APPLY);
    }
    void pixel(std::uint64_t red, std::uint64_t green, std::uint64_t blueValue) {
        const auto word = red | green << 16U | blueValue << 32U;
        ASSERT_EQ(built.applet.setInt64(FG_DEBUGWRITEPIXEL, static_cast<std::int64_t>(word)), 0);
    }
    bool ready() { return whole(FG_DEBUGREADY) == 1; }
};

const std::string twoRows = std::string("P6 4 2 255\n") +
                            "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c"
                            "\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1a\x1b\x1c";
const std::vector<int> twoRowsBlueFirst{3,  2,  1,  6,  5,  4,  9,  8,  7,  12, 11, 10,
                                        19, 18, 17, 22, 21, 20, 25, 24, 23, 28, 27, 26};

TEST_F(InjectedPictures, AreOneFrameAtEachPoint) {
    const TemporaryPicture file("two.ppm", twoRows);
    for (const int point : {CameraInput, ImageOutput}) {
        choose(point);
        EXPECT_TRUE(ready());
        EXPECT_EQ(insert(file.path()), 0);
        pass(50.0);
        ASSERT_EQ(pictures(), point + 1);
        const Frame image = frame(memory, point + 1);
        EXPECT_EQ(numbers(image), twoRowsBlueFirst);
        EXPECT_EQ(image.about.lines, 2U);
        EXPECT_NE(image.about.flags & SOFTBOARD_FRAME_INJECTED, 0U);
        EXPECT_TRUE(ready());
        set(FG_DEBUGINENABLE, FG_OFF);
    }
}

TEST_F(InjectedPictures, AreBusyUntilTheyAreThrough) {
    const TemporaryPicture file("two.ppm", twoRows);
    choose(CameraInput);
    EXPECT_EQ(insert(file.path()), 0);
    EXPECT_FALSE(ready());
    EXPECT_EQ(pictures(), 0);
    pass(50.0);
    EXPECT_TRUE(ready());
}

TEST_F(InjectedPictures, PassOnlyWhatLiesBehindTheirPoint) {
    const TemporaryPicture file("grey.pgm", greyRows(4, {100, 100}));
    set(FG_SCALINGFACTOR_BLUE, 0.5);
    choose(CameraInput);
    insert(file.path());
    pass(50.0);
    set(FG_DEBUGINENABLE, FG_OFF);
    choose(ImageOutput);
    insert(file.path());
    pass(50.0);
    ASSERT_EQ(pictures(), 2);
    EXPECT_EQ(numbers(frame(memory, 1))[0], 50);
    EXPECT_EQ(numbers(frame(memory, 1))[1], 100);
    EXPECT_EQ(numbers(frame(memory, 2))[0], 100);
}

TEST_F(InjectedPictures, StandInPlaceOfTheStream) {
    choose(CameraInput);
    pass(100.0 + 32 * LineTime);
    EXPECT_EQ(pictures(), 0);
    set(FG_DEBUGINENABLE, FG_OFF);
    pass(33 * LineTime);
    EXPECT_GE(pictures(), 1);
    EXPECT_EQ(frame(memory, pictures()).about.flags & SOFTBOARD_FRAME_INJECTED, 0U);
}

TEST_F(InjectedPictures, AreWrittenPixelByPixel) {
    choose(CameraInput);
    for (std::uint64_t row = 0; row < 2; ++row) {
        for (std::uint64_t x = 0; x < 4; ++x) {
            pixel((16 * row + x) << 8U, 0x4000, 0x8000);
        }
        set(FG_DEBUGWRITEFLAG, row == 0 ? FG_ENDOFLINE : FG_ENDOFFRAME);
    }
    pass(50.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(numbers(frame(memory, 1)), (std::vector<int>{128, 64, 0,  128, 64, 1,  128, 64, 2,  128, 64, 3,
                                                           128, 64, 16, 128, 64, 17, 128, 64, 18, 128, 64, 19}));
}

TEST_F(InjectedPictures, AreSeenByTheMonitor) {
    const TemporaryPicture file("two.ppm", twoRows);
    choose(ImageOutput);
    set(FG_DEBUGOUTENABLE, FG_ON);
    insert(file.path());
    pass(50.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(whole(FG_DEBUGOUTXPOS), 3U);
    EXPECT_EQ(whole(FG_DEBUGOUTYPOS), 1U);
    EXPECT_EQ(whole(FG_DEBUGOUTPIXEL), 0x1aU + 256U * 0x1b + 65536U * 0x1c);
}

TEST_F(InjectedPictures, AtTheMonitorTheCameraPassesToo) {
    pattern("ramp");
    set(FG_DEBUGSOURCE, ImageOutput);
    set(FG_DEBUGOUTENABLE, FG_ON);
    pass(100.0 + 16 * LineTime);
    ASSERT_EQ(pictures(), 1);
    const auto last = static_cast<std::uint32_t>(numbers(frame(memory, 1)).back());
    EXPECT_EQ(whole(FG_DEBUGOUTXPOS), 3U);
    EXPECT_EQ(whole(FG_DEBUGOUTYPOS), 15U);
    EXPECT_EQ(whole(FG_DEBUGOUTPIXEL), last * 0x10101U);
}

// Each file is refused with a message as a scene and at each point, and what runs goes on.

class BrokenFiles : public InjectedPictures {
protected:
    void refuse(const std::string& file) {
        pattern("grey:77");
        EXPECT_EQ(softboard_scene_picture(device(), file.c_str(), 0, 10.0), SOFTBOARD_E_FILE) << file;
        EXPECT_NE(message(), "") << file;
        pattern("grey:77");
        for (const int point : {CameraInput, ImageOutput}) {
            choose(point);
            const std::int64_t before = pictures();
            insert(file);
            EXPECT_TRUE(ready()) << file;
            EXPECT_NE(message(), "") << file;
            pass(50.0);
            EXPECT_EQ(pictures(), before) << file;
            set(FG_DEBUGINENABLE, FG_OFF);
        }
        const std::int64_t before = pictures();
        pass(34 * LineTime);
        ASSERT_GT(pictures(), before);
        EXPECT_EQ(rowsOf(frame(memory, pictures())), std::vector<int>(16, 77)) << "the scene before stays";
    }
    void refuseContent(const std::string& name, const std::string& content) {
        const TemporaryPicture file(name, content);
        refuse(file.path());
    }
};

TEST_F(BrokenFiles, ThatAreNotThere) {
    refuse("/nonexistent/picture.png");
}

TEST_F(BrokenFiles, ThatAreFolders) {
    refuse(testing::TempDir());
}

TEST_F(BrokenFiles, ThatNeverEnd) {
    refuse("/dev/zero");
}

TEST_F(BrokenFiles, ThatNobodyWritesTo) {
    const std::string fifo = testing::TempDir() + std::to_string(getpid()) + "_fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    refuse(fifo);
    unlink(fifo.c_str());
}

TEST_F(BrokenFiles, ThatAreEmpty) {
    refuseContent("empty.png", "");
}

TEST_F(BrokenFiles, ThatAreTorn) {
    refuseContent("torn.ppm", twoRows.substr(0, twoRows.size() - 1));
    refuseContent("torn.pgm", "P5 4");
    refuseContent("torn.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x04", 20));
}

TEST_F(BrokenFiles, OfNoPixels) {
    refuseContent("narrow.pgm", "P5 0 4 255\n");
    refuseContent("flat.pgm", "P5 4 0 255\n");
}

TEST_F(BrokenFiles, WithHeadersThatLie) {
    refuseContent("large.pgm", "P5 40000 40000 255\n1234");
    refuseContent("huge.pgm", "P5 99999999999999999999 4 255\n1234");
    refuseContent("negative.pgm", "P5 -4 4 255\n1234");
    refuseContent("depth.pgm", std::string("P5 4 1 65536\n") + "12345678");
    refuseContent("nodepth.pgm", "P5 4 1 0\n1234");
    refuseContent("value.pgm", "P2 4 1 255\n1 2 3 256\n");
    refuseContent("word.pgm", "P2 4 1 255\n1 2 x 4\n");
}

TEST_F(BrokenFiles, AreNotFramesWithoutAName) {
    refuse("");
}

TEST_F(BrokenFiles, LeaveAFrameUnderWay) {
    pattern("grey:10");
    pass(100.0 + 8 * LineTime);
    EXPECT_EQ(softboard_scene_picture(device(), "/nonexistent.png", 0, 1.0), SOFTBOARD_E_FILE);
    EXPECT_NE(message().find("/nonexistent.png"), std::string::npos) << message();
    pass(8 * LineTime);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(rowsOf(frame(memory, 1)), std::vector<int>(16, 10));
}

TEST_F(BrokenFiles, TellNothingBeforeTheFirst) {
    EXPECT_EQ(message(), "");
    std::array<char, 4> small{};
    EXPECT_EQ(softboard_scene_picture(device(), "/nonexistent.png", 0, 1.0), SOFTBOARD_E_FILE);
    EXPECT_EQ(softboard_last_message(device(), small.data(), small.size()), SOFTBOARD_E_RANGE);
}

}  // namespace
}  // namespace quillon::frames_test
