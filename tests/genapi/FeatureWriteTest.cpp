// Every writable feature is written through the consumer at its bounds, in between, and at each of its entries. A
// second board gets the same values by direct calls: the answers and all that the design saw have to be the same.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "client/testing/BuiltApplet.h"
#include "tests/genapi/Features.h"

namespace quillon::genapi {
namespace {

using client::testing::BuiltApplet;
using testing::ElementsAre;

/// A folder for the files that a write saves, gone at the end.
class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "quillon-genapi-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        path = name;
    }
    ~Folder() { std::filesystem::remove_all(path); }

    std::filesystem::path path;
};

/// Two boards in the state after start-up: one driven by the consumer, one by direct calls.
class Pair {
public:
    Pair() { clear(); }

    void writeNumbers(const Feature& feature, const std::vector<std::int64_t>& values) {
        for (const std::int64_t value : values) {
            const bool isInteger = feature.nodeClass == NodeClass::Integer;
            compare(
                feature, std::to_string(value),
                isInteger ? consumer.writeInteger(feature.name, value) : consumer.writeEnumeration(feature.name, value),
                direct.applet.setInt(feature.id(), static_cast<std::int32_t>(value)));
        }
    }

    void writeFloats(const Feature& feature, const std::vector<double>& values) {
        for (const double value : values) {
            compare(feature, std::to_string(value), consumer.writeFloat(feature.name, value),
                    direct.applet.setDouble(feature.id(), value));
        }
    }

    void writeTexts(const Feature& feature, const std::vector<std::string>& values) {
        for (const std::string& value : values) {
            compare(feature, value, consumer.writeString(feature.name, value),
                    direct.applet.setText(feature.id(), value));
        }
    }

    BuiltApplet driven;
    BuiltApplet direct;
    Consumer consumer{driven.applet};
    std::vector<std::string> refusals;  ///< "NAME = VALUE ! CODE"
    int writes = 0;                     ///< how many values were written
    std::size_t accesses = 0;           ///< how often that reached the design

private:
    void compare(const Feature& feature, const std::string& value, const Outcome& outcome, int code) {
        EXPECT_EQ(outcome, code == 0 ? Done : refusedByApplet(code)) << value << ": " << outcome.message;
        EXPECT_EQ(driven.board.accesses(), direct.board.accesses()) << value;
        EXPECT_EQ(driven.applet.lastError(), direct.applet.lastError()) << value;
        if (code != 0) {
            refusals.push_back(feature.name + " = " + value + " ! " + std::to_string(code));
        }
        ++writes;
        accesses += direct.board.accesses().size();
        clear();
    }

    void clear() {
        driven.board.clearTranscript();
        direct.board.clearTranscript();
    }
};

/// Both bounds as the consumer tells them, and the step next to their middle. The one bound below 0 it does not
/// understand.
std::vector<std::int64_t> integersOf(const Consumer& consumer, const Feature& feature) {
    const std::int64_t min = feature.name == "FG_DIGIO_OUTPUT" ? -1 : consumer.integerMin(feature.name);
    const std::int64_t max = consumer.integerMax(feature.name);
    const std::int64_t step = consumer.integerStep(feature.name);
    return {min, max, min + (max - min) / 2 / step * step};
}

std::vector<std::int64_t> entriesOf(const Consumer& consumer, const Feature& feature) {
    std::vector<std::int64_t> values;
    for (const auto& [name, value] : consumer.entriesOf(feature.name)) {
        values.push_back(value);
    }
    return values;
}

std::vector<double> floatsOf(const Consumer& consumer, const Feature& feature) {
    const double min = consumer.floatMin(feature.name);
    const double max = consumer.floatMax(feature.name);
    return {min, max, min + (max - min) / 2};
}

void sweep(Pair& pair, const Feature& feature, const Folder& folder) {
    switch (feature.nodeClass) {
        case NodeClass::Integer: return pair.writeNumbers(feature, integersOf(pair.consumer, feature));
        case NodeClass::Enumeration: return pair.writeNumbers(feature, entriesOf(pair.consumer, feature));
        case NodeClass::Float: return pair.writeFloats(feature, floatsOf(pair.consumer, feature));
        case NodeClass::String:
            return pair.writeTexts(
                feature, {"", (folder.path / "a file").string(), (folder.path / std::string(100, 'x')).string()});
        default: FAIL() << feature.name << " has no value";
    }
}

TEST(FeatureWrite, EveryFeatureFromStartUpAnswersAndActsAsDirectCallsDo) {
    const Folder folder;
    std::vector<std::string> refusals;
    std::ptrdiff_t written = 0;
    for (const Feature& feature : features()) {
        if (feature.writable) {
            SCOPED_TRACE(feature.name);
            Pair pair;
            sweep(pair, feature, folder);
            EXPECT_GT(pair.writes, 0);
            refusals.insert(refusals.end(), pair.refusals.begin(), pair.refusals.end());
            ++written;
        }
    }
    EXPECT_EQ(written, std::ranges::count_if(features(), [](const Feature& feature) {
                  return findPublicParameter(feature.name)->access == ParameterAccess::ReadWrite;
              }));
    EXPECT_THAT(refusals,
                ElementsAre(
                    // The interval mode is on offer, and no signal of the switchboard stands behind it.
                    "FG_TRIGGERCAMERA_SOURCE = 1 ! -2075", "FG_TRIGGEROUT_GPO_0_SOURCE = 1 ! -2075",
                    "FG_TRIGGEROUT_GPO_1_SOURCE = 1 ! -2075", "FG_TRIGGEROUT_GPO_2_SOURCE = 1 ! -2075",
                    "FG_TRIGGEROUT_GPO_3_SOURCE = 1 ! -2075", "FG_TRIGGEROUT_GPO_4_SOURCE = 1 ! -2075",
                    "FG_TRIGGEROUT_GPO_5_SOURCE = 1 ! -2075", "FG_TRIGGEROUT_GPO_6_SOURCE = 1 ! -2075",
                    "FG_TRIGGEROUT_GPO_7_SOURCE = 1 ! -2075", "FG_TRIGGEROUT_FRONT_GPO_0_SOURCE = 1 ! -2075",
                    "FG_TRIGGEROUT_FRONT_GPO_1_SOURCE = 1 ! -2075",
                    // The selected image has to stay below the period, which starts at 1.
                    "FG_IMG_SELECT = 255 ! -6000", "FG_IMG_SELECT = 127 ! -6000",
                    // Rounded up to 32 pixels the longest line is too long.
                    "FG_CAMERASIMULATOR_WIDTH = 294920 ! -6000", "FG_CAMERASIMULATOR_LINE_GAP = 293896 ! -6000",
                    // The bounds of the rates are shown once the width or height has been written.
                    "FG_CAMERASIMULATOR_LINERATE = 10000000.000000 ! -6000",
                    "FG_CAMERASIMULATOR_LINERATE = 5000000.050000 ! -6000",
                    "FG_CAMERASIMULATOR_FRAMERATE = 10000000.000000 ! -6000",
                    "FG_CAMERASIMULATOR_FRAMERATE = 5000000.050000 ! -6000",
                    // The design has fewer debug points than there is room for.
                    "FG_DEBUGSOURCE = 10 ! -6000", "FG_DEBUGSOURCE = 5 ! -6000"));
}

TEST(FeatureWrite, AllFeaturesOneAfterTheOtherAnswerAndActAsDirectCallsDo) {
    const Folder folder;
    Pair pair;
    for (const Feature& feature : features()) {
        if (feature.writable) {
            SCOPED_TRACE(feature.name);
            sweep(pair, feature, folder);
        }
    }
    EXPECT_GT(pair.accesses, 1000U);
}

TEST(FeatureWrite, AWidthBecomesTheEightWritesOfTheBuffer) {
    BuiltApplet built;
    Consumer consumer(built.applet);
    built.board.clearTranscript();
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 2048), Done);
    EXPECT_THAT(built.board.writes(),
                ElementsAre("Device1_Process0_Buffer_0_SensorWidth = 2048", "Device1_Process0_Buffer_0_XMirror = 0",
                            "Device1_Process0_Buffer_0_YMirror = 0", "Device1_Process0_Buffer_0_SensorHeight = 1",
                            "Device1_Process0_Buffer_0_PixelFormat = 8", "Device1_Process0_Buffer_0_XLength = 2048",
                            "Device1_Process0_Buffer_0_XOffset = 0", "Device1_Process0_Buffer_0_YLength = 1024"));
    std::int64_t width = 0;
    EXPECT_EQ(consumer.readInteger("FG_WIDTH", width), Done);
    EXPECT_EQ(width, 2048);
}

TEST(FeatureWrite, AnEntryIsWrittenAndReadByItsName) {
    BuiltApplet built;
    Consumer consumer(built.applet);
    EXPECT_EQ(consumer.writeEntry("FG_FORMAT", "FG_COL48"), Done);
    EXPECT_EQ(built.applet.readInt(FG_FORMAT), 6);
    std::optional<std::string> entry;
    EXPECT_EQ(consumer.readEntry("FG_FORMAT", entry), Done);
    EXPECT_EQ(entry, "FG_COL48");
}

TEST(FeatureWrite, ATextFillsItsRegisterToTheLastByte) {
    BuiltApplet built;
    Consumer consumer(built.applet);
    const std::string longest(4096, 'p');
    EXPECT_EQ(consumer.writeString("FG_LUT_CUSTOM_FILE", longest), Done);
    EXPECT_EQ(built.applet.readText(FG_LUT_CUSTOM_FILE), longest);
    std::string seen;
    EXPECT_EQ(consumer.readString("FG_LUT_CUSTOM_FILE", seen), Done);
    EXPECT_EQ(seen, longest);
}

}  // namespace
}  // namespace quillon::genapi
