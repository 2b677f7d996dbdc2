#include <gmock/gmock.h>
#include <png.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// `grab` of small pictures of the simulator, with these words behind it.
Outcome grabSmall(std::vector<std::string> words) {
    words.insert(words.begin(), {"grab", "--set", "FG_WIDTH=32", "--set", "FG_HEIGHT=16", "--set",
                                 "FG_LUT_ENABLE=FG_OFF", "--set", "FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR"});
    return quillon(words);
}

TEST(GrabVerb, SeveralFramesOfOneNameAreUsage) {
    const Outcome outcome = quillon({"grab", "-n", "2", "-o", "out.png"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("\"out.png\" is one name for 2 frames"));
}

TEST(GrabVerb, ANameThatIsNoPictureIsUsage) {
    const Outcome outcome = quillon({"grab", "-o", "out_%d.jpg"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("its name ends in .png, .ppm"));
    EXPECT_EQ(quillon({"grab", "-o", "out_%s.png"}).status, 2);
    EXPECT_EQ(quillon({"grab", "--histogram", "curve.jpg"}).status, 2);
}

TEST(GrabVerb, ARefusedValueEndsItBeforeAnythingIsGrabbed) {
    const Outcome outcome = quillon({"grab", "--set", "FG_HEIGHT=16", "--set", "FG_WIDTH=6"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("FG_WIDTH=6 was refused: -7080 (ValueNotAligned)"));
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(quillon({"grab", "--set", "FG_WIDTH"}).status, 2);
}

TEST(GrabVerb, UnknownWordsForItsOptionsAreUsage) {
    EXPECT_EQ(quillon({"grab", "--clock", "fast"}).status, 2);
    EXPECT_EQ(quillon({"grab", "--graphics", "ascii"}).status, 2);
    EXPECT_EQ(quillon({"grab", "-n", "0"}).status, 2);
    EXPECT_EQ(quillon({"grab", "--timeout", "0"}).status, 2);
}

TEST(GrabbedFrames, EachIsAFileOfItsNumber) {
    const Folder folder;
    const Outcome outcome = grabSmall({"-n", "3", "-o", folder / "out_%02d.png", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto json = outcome.json();
    EXPECT_EQ(json["frames"], 3);
    EXPECT_EQ(json["wanted"], 3);
    EXPECT_EQ(json["lost"], 0);
    EXPECT_EQ(json["bytes"], 3 * 32 * 16 * 3);
    EXPECT_GT(json["seconds"], 0);
    EXPECT_GT(json["rate"], 0);
    EXPECT_THAT(json["reasons"], IsEmpty());
    EXPECT_THAT(json["files"].get<std::vector<std::string>>(),
                ElementsAre(folder / "out_01.png", folder / "out_02.png", folder / "out_03.png"));
    png_image picture{};
    picture.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&picture, (folder / "out_03.png").c_str()), 0);
    EXPECT_EQ(picture.width, 32U);
    EXPECT_EQ(picture.height, 16U);
    png_image_free(&picture);
}

TEST(GrabbedFrames, ThePatternIsInTheFile) {
    const Folder folder;
    ASSERT_EQ(grabSmall({"-o", folder / "out.ppm", "--set", "FG_CAMERASIMULATOR_PATTERN=FG_HORIZONTAL"}).status, 0);
    const std::string content = contentOf(folder / "out.ppm");
    const std::string header = "P6\n32 16\n255\n";
    ASSERT_EQ(content.size(), header.size() + 32 * 16 * 3);
    EXPECT_THAT(content, StartsWith(header));
    const auto sample = [&](std::size_t x, std::size_t y, std::size_t c) {
        return static_cast<unsigned char>(content[header.size() + (y * 32 + x) * 3 + c]);
    };
    for (std::size_t x = 1; x < 32; ++x) {
        EXPECT_EQ(sample(x, 0, 0), sample(0, 0, 0) + x);
        EXPECT_EQ(sample(x, 15, 2), sample(x, 0, 0));
    }
}

TEST(GrabbedFrames, TheFormatDecidesWhatAFileHolds) {
    const Folder folder;
    ASSERT_EQ(grabSmall({"-o", folder / "out.raw", "--set", "FG_FORMAT=FG_COL30"}).status, 0);
    EXPECT_EQ(contentOf(folder / "out.raw").size(), 32U * 16 * 30 / 8);
    const auto json = nlohmann::json::parse(contentOf(folder / "out.json"));
    EXPECT_EQ(json["bits"], 10);
    EXPECT_EQ(json["number"], 1);
}

TEST(GrabbedFrames, StatisticsAreToldInWords) {
    const Outcome outcome = grabSmall({"-n", "2"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("^2 frames, 3072 bytes in [0-9.]+ ms, 0 lost; [0-9.]+ frames a second of "
                                           "the board's time\n$"));
    EXPECT_THAT(outcome.err, IsEmpty()) << "progress is for terminals";
}

TEST(GrabbedFrames, TheyAreShownAsHalfBlocks) {
    const Outcome outcome = grabSmall({"--show"});
    EXPECT_THAT(outcome.out, StartsWith("\033[38;2;"));
    EXPECT_THAT(outcome.out, HasSubstr("\xE2\x96\x80\033[0m\n1 frame, "));
    EXPECT_THAT(grabSmall({"--show", "--graphics", "sixel"}).out, StartsWith("\033Pq\"1;1;32;16"));
}

TEST(GrabbedFrames, JsonIsAloneOnStandardOutput) {
    const Outcome outcome = grabSmall({"--show", "--histogram", "--json"});
    EXPECT_EQ(outcome.json()["frames"], 1);
    EXPECT_THAT(outcome.err, StartsWith("\033[38;2;"));
    EXPECT_THAT(outcome.err, HasSubstr("\nred: "));
}

TEST(GrabbedFrames, TheHistogramIsTextOrAPicture) {
    const Folder folder;
    EXPECT_THAT(grabSmall({"--histogram"}).out, ContainsRegex("^red: [0-9.]+ % to [0-9.]+ %, mean [0-9.]+ %\n"));
    EXPECT_EQ(grabSmall({"--histogram", folder / "curve.png"}).status, 0);
    EXPECT_THAT(contentOf(folder / "curve.png"), StartsWith("\x89PNG"));
}

TEST(GrabbedFrames, TooFewAreToldWithWhatIsInTheirWay) {
    const Outcome outcome =
        grabSmall({"-n", "2", "--timeout", "1", "--set", "FG_IMGTRIGGERMODE=ASYNC_TRIGGER", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("quillon: frame 1 did not come"));
    EXPECT_THAT(outcome.err, HasSubstr("\n  FG_IMGTRIGGERMODE is ASYNC_TRIGGER: a frame waits for a trigger"));
    EXPECT_EQ(outcome.json()["frames"], 0);
    EXPECT_EQ(outcome.json()["reasons"].size(), 2U);
}

TEST(GrabbedFrames, AFolderThatIsMissingIsRefused) {
    const Outcome outcome = grabSmall({"-o", "/no/such/folder/out.png"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/folder/out.png cannot be written: No such file or directory"));
}

TEST(GrabbedFrames, TheDemonstrationLeavesItsPictures) {
    const Folder folder;
    const Outcome outcome = quillon({"demo", "--pictures", folder / "shots"}, folder.path());
    EXPECT_EQ(outcome.status, 0);
    for (const char* name : {"pattern.png", "white_balance_and_gamma.png", "region_of_interest.png"}) {
        EXPECT_THAT(contentOf(folder / "shots" / name), StartsWith("\x89PNG")) << name;
        EXPECT_THAT(outcome.out, HasSubstr("written: " + (folder / "shots" / name).string())) << name;
    }
    EXPECT_THAT(outcome.out, HasSubstr("\xE2\x96\x80\033[0m\n"));
}

TEST(GrabbedFrames, TheDemonstrationShowsWhatAnEncoderIsGoodFor) {
    const Folder folder;
    const Outcome outcome =
        quillon({"demo", "--example", QUILLON_EXAMPLES "/free_running_4k.mcf", "--pictures", folder.path()});
    EXPECT_EQ(outcome.status, 0);
    const std::string byEncoder = contentOf(folder / "conveyor_encoder.png");
    EXPECT_THAT(byEncoder, StartsWith("\x89PNG"));
    EXPECT_EQ(contentOf(folder / "conveyor_compensation_on.png"), byEncoder) << "whatever the belt does";
    EXPECT_NE(contentOf(folder / "conveyor_compensation_off.png"), byEncoder);
    EXPECT_NE(contentOf(folder / "conveyor_free_running.png"), byEncoder);
    EXPECT_THAT(outcome.out, HasSubstr("\xE2\x96\x80\033[0m    \033[38;2;")) << "side by side";
}

}  // namespace
}  // namespace quillon::cli::testing
