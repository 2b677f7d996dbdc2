// Names of parameters by position and by name, with and without the two extensions.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "quillon/client/ParameterRecord.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using test::Variable;
using testing::BuiltApplet;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

TEST(Names, AreAtTheirPositions) {
    const BuiltApplet built(1);
    std::ifstream listed(ENGINE_GOLDEN_FOLDER "/positions.txt");
    int position = 0;
    std::string name;
    for (int id = 0; listed >> name >> id; ++position) {
        EXPECT_EQ(built.applet.parameterNameAt(position), name);
        EXPECT_EQ(built.applet.parameterIdAt(position), id) << name;
        EXPECT_EQ(built.applet.parameterId(name), id) << name;
    }
    EXPECT_EQ(built.applet.parameterCount(), position);
    EXPECT_EQ(position, PositionCount);
}

TEST(Names, APositionOutsideIsRefusedAndRecorded) {
    BuiltApplet built(1);
    for (const int position : {PositionCount, -1, 1000000}) {
        std::int32_t width = 0;
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, width), 0);
        EXPECT_EQ(built.applet.parameterNameAt(position), std::nullopt);
        EXPECT_EQ(built.applet.lastError(), -2070);
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, width), 0);
        EXPECT_EQ(built.applet.parameterIdAt(position), -2070);
        EXPECT_EQ(built.applet.lastError(), -2070);
    }
}

TEST(Names, ANameThatIsNoneIsRefusedAndRecorded) {
    const BuiltApplet built(1);
    const Functions& f = built.applet.functions();
    for (const char* name : {static_cast<const char*>(nullptr), "", "FG_NOTHING", "fg_width", "FG_WIDTH "}) {
        ASSERT_EQ(built.applet.parameterId("FG_WIDTH"), 100);
        ASSERT_EQ(built.applet.lastError(), 0);
        EXPECT_EQ(f.Fg_getParameterIdByName(built.applet.handle(), name), -2070);
        EXPECT_EQ(built.applet.lastError(), -2070);
    }
}

TEST(Names, AFoundNameRecordsSuccessAndTheCountRecordsNothing) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("FG_NOTHING"), -2070);
    EXPECT_EQ(built.applet.parameterCount(), PositionCount);
    EXPECT_EQ(built.applet.lastError(), -2070);
    EXPECT_EQ(built.applet.parameterNameAt(0), "FG_TIMEOUT");
    EXPECT_EQ(built.applet.lastError(), 0);
    EXPECT_EQ(built.applet.parameterId("FG_NOTHING"), -2070);
    EXPECT_EQ(built.applet.parameterIdAt(0), 600);
    EXPECT_EQ(built.applet.lastError(), 0);
}

TEST(Names, TheDescriptionParameterHasNeitherPositionNorName) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("FG_PARAM_DESCR"), -2070);
    for (int i = 0; i < PositionCount; ++i) {
        EXPECT_NE(built.applet.parameterNameAt(i), "FG_PARAM_DESCR");
    }
}

TEST(Names, OfOnePositionIsOnePointerForTheWrappersLife) {
    const BuiltApplet built(1);
    const Functions& f = built.applet.functions();
    EXPECT_EQ(f.Fg_getParameterName(built.applet.handle(), 46), f.Fg_getParameterName(built.applet.handle(), 46));
}

// Registers ----------------------------------------------------------------------------------------------------------

constexpr int RegisterCount = 20;  ///< of the design

TEST(RegisterNames, StandBehindThePublicOnes) {
    const Variable enable("ORLO_ENABLE_DRA", "1");
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterCount(), PositionCount + RegisterCount);
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount - 1), PositionedParameters.back().name);
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount), "DRA_DesignId");
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount + RegisterCount - 1), "DRA_SpiCommand");
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount + RegisterCount), std::nullopt);
    EXPECT_EQ(built.applet.parameterIdAt(PositionCount), 1000001);
    EXPECT_EQ(built.applet.parameterIdAt(PositionCount + RegisterCount - 1), 1000020);
    EXPECT_EQ(built.applet.parameterId("DRA_Scratch"), 1000005);
    EXPECT_EQ(built.applet.parameterId("Scratch"), -2070);
}

TEST(RegisterNames, AreUnknownWithoutTheSwitch) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("DRA_Scratch"), -2070);
}

// The SDK's own parameters -------------------------------------------------------------------------------------------

/// All names from `first` on.
std::vector<std::string> namesFrom(const Applet& applet, int first) {
    std::vector<std::string> names;
    for (int i = first; i < applet.parameterCount(); ++i) {
        names.push_back(applet.parameterNameAt(i).value());
    }
    return names;
}

/// The design's parameters but for the three tables, and the SDK's own 10.
int sdkNameCount() {
    return static_cast<int>(test::designDescription()["parameters"].size()) - 3 + 10;
}

TEST(SdkNames, AreListedInAscendingOrderBehindThePublicOnes) {
    const Variable enable("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    const std::vector<std::string> names = namesFrom(built.applet, PositionCount);
    EXPECT_EQ(names.size(), static_cast<std::size_t>(sdkNameCount()));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_TRUE(std::all_of(names.begin(), names.end(), [](const auto& name) { return name.starts_with("DIXA_"); }));
    EXPECT_THAT(names, Contains("DIXA_FG_APC_STOP_TIMEOUT"));
    EXPECT_THAT(names, Contains("DIXA_Device1_Process0_Buffer_0_SensorWidth"));
    EXPECT_THAT(names, Not(Contains("DIXA_Device1_Process0_LookupTable_R_LUTcontent")));
}

TEST(SdkNames, StandBehindTheRegisters) {
    const Variable registers("ORLO_ENABLE_DRA", "on");
    const Variable parameters("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    const int first = PositionCount + RegisterCount;
    EXPECT_EQ(built.applet.parameterCount(), first + sdkNameCount());
    EXPECT_EQ(built.applet.parameterNameAt(first - 1), "DRA_SpiCommand");
    EXPECT_EQ(built.applet.parameterNameAt(first), "DIXA_Device1_Process0_AppletProperties_AppletUid");
    EXPECT_EQ(built.applet.parameterNameAt(first + sdkNameCount() - 1), "DIXA_FG_TRANSFER_LEN");
}

TEST(SdkNames, HaveAPositionButNoId) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const BuiltApplet built(1);
    const std::string name = built.applet.parameterNameAt(PositionCount).value();
    EXPECT_EQ(built.applet.parameterId(name), -2070);
    EXPECT_EQ(built.applet.parameterIdAt(PositionCount), -2070);
    EXPECT_EQ(built.applet.lastError(), -2070);
}

int countParameters(const std::vector<ParameterRecord>& records) {
    int count = 0;
    for (const ParameterRecord& record : records) {
        count += record.isGroup() ? countParameters(record.children) : 1;
    }
    return count;
}

TEST(SdkNames, HaveRecordsInTheFirstGroupOfTheCatalogue) {
    const Variable registers("ORLO_ENABLE_DRA", "on");
    const Variable parameters("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    const std::vector<ParameterRecord> groups = built.applet.parameterInfo();
    ASSERT_GE(groups.size(), 3U);
    EXPECT_EQ(groups[0].label, "Direct IX Access");
    EXPECT_EQ(groups[1].label, "Direct Register Access");
    EXPECT_EQ(groups[2].label, "Miscellaneous");
    EXPECT_EQ(countParameters(groups[0].children), sdkNameCount());
    EXPECT_EQ(countParameters(groups[1].children), RegisterCount);
    const ParameterRecord* record = findRecord(groups, 2000601);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->symbol, "DIXA_FG_APC_STOP_TIMEOUT");
    EXPECT_EQ(record->unit, "ms");
}

TEST(SdkNames, HaveNoGroupWhereThereAreNone) {
    const int described = countParameters(BuiltApplet(1).applet.parameterInfo());
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterIdByName", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    const std::vector<ParameterRecord> groups = applet.parameterInfo();
    ASSERT_FALSE(groups.empty());
    EXPECT_EQ(groups.front().label, "Miscellaneous");
    EXPECT_EQ(countParameters(groups), described);
}

TEST(SdkNames, ANameWithTheIdZeroIsLeftOut) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterIdByName", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    EXPECT_EQ(applet.parameterCount(), PositionCount);
}

TEST(SdkNames, AnSdkWithoutADescriptionAddsNothing) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterInfo", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    EXPECT_EQ(applet.parameterCount(), PositionCount);
}

TEST(SdkNames, AreSwitchedOnByFourWordsInAnyCase) {
    for (const char* value : {"yes", "true", "on", "1", "YES", "True"}) {
        const Variable enable("ORLO_ENABLE_DIXA", value);
        EXPECT_EQ(BuiltApplet(1).applet.parameterCount(), PositionCount + sdkNameCount()) << value;
    }
    for (const char* value : {"", "0", "no", "enabled", "2", " on"}) {
        const Variable enable("ORLO_ENABLE_DIXA", value);
        EXPECT_EQ(BuiltApplet(1).applet.parameterCount(), PositionCount) << value;
    }
}

TEST(SdkNames, TheSdkIsNotAskedWithoutTheSwitch) {
    BuiltApplet built(1);
    EXPECT_THAT(built.board.calls(), Not(Contains("Fg_getParameterInfo(0)")));
}

}  // namespace
}  // namespace quillon::client
