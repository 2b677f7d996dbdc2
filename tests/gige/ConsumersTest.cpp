#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <regex>
#include <set>

#include "tests/gige/Programs.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

// ---- arv-tool ----

class ArvTool : public testing::Test {
protected:
    void SetUp() override { QUILLON_NEEDS("arv-tool-0.8", "aravis-tools-cli"); }
};

TEST_F(ArvTool, FindsTheDeviceByItsSerialNumber) {
    const Served served({"--serial", "LINE-7"});
    EXPECT_EQ(run("arv-tool-0.8").out, "Quillon-Quillon-LINE-7 (127.0.0.1)\n");
}

TEST_F(ArvTool, ListsAllParametersAndTheStandardNames) {
    const Served served;
    const std::string features = run("arv-tool-0.8 -a 127.0.0.1 features").out;
    const std::string parameters = run("$quillon list --json").out;
    const std::regex name("\"name\": \"(FG_[A-Z0-9_]+)\"");
    std::set<std::string> names;
    for (std::sregex_iterator at(parameters.begin(), parameters.end(), name), end; at != end; ++at) {
        names.insert((*at)[1]);
    }
    EXPECT_EQ(names.size(), 156U);
    // Fields, and numbers of kinds that the document has no node for.
    for (const char* const one : {"FG_DEBUGWRITEPIXEL", "FG_LUT_VALUE_RED", "FG_LUT_VALUE_GREEN", "FG_LUT_VALUE_BLUE",
                                  "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", "FG_SYSTEMMONITOR_FPGA_DNA"}) {
        EXPECT_EQ(names.erase(one), 1U) << one;
    }
    names.insert({"Width", "Height", "PixelFormat", "ExposureTime", "Gain", "AcquisitionStart", "AcquisitionFrameRate",
                  "TriggerMode", "TriggerSoftware", "DeviceRefusal", "UserSetLoad", "PayloadSize"});
    for (const std::string& one : names) {
        EXPECT_THAT(features, HasSubstr("'" + one + "'"));
    }
}

TEST_F(ArvTool, MovesAParameterByItsStandardName) {
    const Served served;
    EXPECT_THAT(control("Width=256 FG_WIDTH"), HasSubstr("FG_WIDTH = 256 "));
    EXPECT_THAT(control("FG_HEIGHT=77 Height"), HasSubstr("\nHeight = 77 "));
    EXPECT_THAT(control("ExposureTime=25.6 FG_LINEEXPOSURE"), HasSubstr("FG_LINEEXPOSURE = 25.6 "));
}

TEST_F(ArvTool, SetsChoicesAndTexts) {
    const Served served;
    EXPECT_THAT(control("PixelFormat=BGR12p PixelFormat FG_FORMAT"), HasSubstr("= BGR12p\nFG_FORMAT = FG_COL36\n"));
    EXPECT_THAT(control("FG_LUT_ENABLE=FG_ON FG_LUT_ENABLE"),
                HasSubstr("FG_LUT_ENABLE = FG_ON\nFG_LUT_ENABLE = FG_ON\n"));
    const Folder folder;
    const std::string file = folder / "table.lut";
    EXPECT_THAT(control("FG_LUT_SAVE_FILE=" + file + " FG_LUT_SAVE_FILE"),
                HasSubstr("FG_LUT_SAVE_FILE = " + file + "\n"));
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_THAT(control("DeviceUserID=left DeviceUserID"), HasSubstr("DeviceUserID = left\nDeviceUserID = left\n"));
}

TEST_F(ArvTool, TellsWhatIsRefused) {
    const Served served;
    const std::string told = control("Width=5 DeviceRefusalCode DeviceRefusal Width");
    EXPECT_THAT(told, HasSubstr("Width write error"));
    EXPECT_THAT(told, HasSubstr("DeviceRefusalCode = -7080 "));
    EXPECT_THAT(told, HasSubstr("DeviceRefusal = FG_WIDTH = 5 was refused: -7080 (ValueNotAligned)"));
    EXPECT_THAT(told, HasSubstr("Width = 1024 "));
    ASSERT_TRUE(becomes([&] { return served.state().contains("refusal"); }));
    EXPECT_THAT(served.state()["refusal"].get<std::string>(), HasSubstr("-7080"));
}

// ---- GStreamer ----

struct Settings {
    std::string name;
    std::vector<std::string> words;  ///< for both, serve and grab
};

class GStreamerPixels : public testing::TestWithParam<Settings> {
protected:
    void SetUp() override {
        QUILLON_NEEDS("gst-launch-1.0", "gstreamer1.0-tools");
        registry = "GST_REGISTRY=" + (folder / "registry").string() + " ";
        for (const auto& [element, package] :
             {std::pair("aravissrc", "libaravis-0.8-0"), std::pair("multifilesink", "gstreamer1.0-plugins-good")}) {
            if (run(registry + "gst-inspect-1.0 " + element).status != 0) {
                GTEST_SKIP() << element << " is missing: it is in Debian's package " << package;
            }
        }
    }

    Folder folder;
    std::string registry;
};

/// The values of a .ppm: red, green and blue of each pixel, behind a head of three lines.
std::string pixelsOf(const std::string& picture) {
    std::size_t at = 0;
    for (int line = 0; line < 3; ++line) {
        at = picture.find('\n', at) + 1;
    }
    return picture.substr(at);
}

TEST_P(GStreamerPixels, AreThoseOfAGrabbedFrame) {
    const Served served(GetParam().words);
    std::string grab = "$quillon grab -o " + (folder / "grabbed.ppm").string();
    for (const std::string& word : GetParam().words) {
        grab += " " + word;
    }
    ASSERT_EQ(run(grab).status, 0);
    const std::string grabbed = pixelsOf(cli::testing::contentOf(folder / "grabbed.ppm"));
    const Outcome launched =
        run(registry + "gst-launch-1.0 -q aravissrc camera-name=" + DeviceName +
            " num-buffers=3 ! video/x-raw,format=RGB ! multifilesink location=" + (folder / "frame%d").string());
    ASSERT_EQ(launched.status, 0) << launched.err;
    for (const char* const frame : {"frame0", "frame1", "frame2"}) {
        const std::string received = cli::testing::contentOf(folder / frame);
        ASSERT_EQ(received.size(), grabbed.size()) << frame;
        EXPECT_TRUE(received == grabbed) << frame;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Scenes, GStreamerPixels,
    testing::Values(
        Settings{"ColourBars", {"--scene", "bars"}},
        Settings{"ColourBarsOfAnotherSize",
                 {"--scene", "bars", "--set", "FG_WIDTH=516", "--set", "FG_HEIGHT=77", "--set", "FG_XOFFSET=256"}},
        Settings{"Simulator",
                 {"--set", "FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR", "--set", "FG_CAMERASIMULATOR_ROLL=FG_OFF",
                  "--set", "FG_WIDTH=640", "--set", "FG_HEIGHT=480", "--set", "FG_CAMERASIMULATOR_HEIGHT=480"}},
        Settings{"LookupTableThatInverts",
                 {"--scene", "bars", "--set", "FG_LUT_ENABLE=FG_ON", "--set", "FG_PROCESSING_INVERT=FG_ON"}}),
    [](const auto& each) { return each.param.name; });

// ---- Two that want to control ----

class TwoViewers : public testing::Test {
protected:
    void SetUp() override {
        QUILLON_NEEDS("arv-tool-0.8", "aravis-tools-cli");
        QUILLON_NEEDS("arv-camera-test-0.8", "aravis-tools-cli");
    }
};

TEST_F(TwoViewers, OnlyTheFirstOfThemSets) {
    const Served served;
    const Program first({"arv-camera-test-0.8"});
    ASSERT_TRUE(becomes([&] { return served.state().value("frames", 0) > 0; }));
    EXPECT_THAT(control("Width=64"), HasSubstr("Width write error"));
    EXPECT_THAT(control("Width"), HasSubstr("Width = 1024 "));
    EXPECT_TRUE(served.streams());
}

TEST_F(TwoViewers, TheSecondFollowsAFirstThatHasDied) {
    const Served served;
    const Program first({"arv-camera-test-0.8"});
    ASSERT_TRUE(becomes([&] { return served.state().value("frames", 0) > 0; }));
    first.signal(SIGKILL);
    EXPECT_TRUE(becomes([&] { return !served.controlled() && !served.streams(); }, 10s));
    EXPECT_THAT(control("Width=64 Width"), HasSubstr("Width = 64 "));
}

// ---- The end of the device ----

class EndOfService : public testing::TestWithParam<int> {};

TEST_P(EndOfService, IsASignalAway) {
    QUILLON_NEEDS("arv-camera-test-0.8", "aravis-tools-cli");
    Served served;
    const Program viewer({"arv-camera-test-0.8"});
    ASSERT_TRUE(becomes([&] { return served.state().value("frames", 0) > 0; }));
    served.program().signal(GetParam());
    EXPECT_EQ(served.program().wait(), 0);
    EXPECT_EQ(served.program().err(), "");
    for (const std::string& line : linesOf(served.program().out())) {
        EXPECT_TRUE(Json::parse(line).contains("streaming")) << line;
    }
    EXPECT_EQ(run("arv-tool-0.8").out, "") << "nobody answers";
}

INSTANTIATE_TEST_SUITE_P(Signals, EndOfService, testing::Values(SIGINT, SIGTERM),
                         [](const auto& each) { return each.param == SIGINT ? "CtrlC" : "Termination"; });

struct Wrong {
    std::string name;
    std::string words;
    int status;
    std::string told;
};

class WrongService : public testing::TestWithParam<Wrong> {};

TEST_P(WrongService, IsRefused) {
    const Served first;
    const Outcome outcome = run("$quillon serve gige " + GetParam().words);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().told));
    EXPECT_EQ(outcome.out, "");
}

INSTANTIATE_TEST_SUITE_P(Words, WrongService,
                         testing::Values(Wrong{"Interface", "--interface eth77", 1, "eth77"},
                                         Wrong{"PortThatIsTaken", "", 1, "3956"},
                                         Wrong{"SerialTooLong", "--serial 0123456789ABCDEF", 2, "1 to 15 characters"},
                                         Wrong{"SerialOfNothing", "--serial ''", 2, "--serial"},
                                         Wrong{"RateInWords", "--rate fast", 2, "--rate fast: it takes a number"},
                                         Wrong{"RateOfLength", "--rate 5m", 2, "--rate 5m: it takes a number"},
                                         Wrong{"RateOfNothing", "--rate 0", 2, "100kB/s to 100GB/s"},
                                         Wrong{"TimeInWords", "--for soon", 2, "--for soon: "},
                                         Wrong{"AnotherProtocol", "usb", 2, "usb"}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace quillon::gige
