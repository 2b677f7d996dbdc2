// The binding of the design's parameters by name, seen from outside.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "tests/design/DesignNames.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using test::CapturedLog;
using test::Variable;
using testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Binding, AsksForEveryNameOnceInOrder) {
    BuiltApplet built(1);
    std::vector<std::string> expected;
    for (const char* name : DesignNames) {
        expected.push_back(std::string("Fg_getParameterIdByName(") + name + ")");
    }
    std::vector<std::string> calls = built.board.calls();
    ASSERT_GT(calls.size(), DesignNames.size());
    calls.erase(calls.begin());  // the SDK's handle
    calls.resize(DesignNames.size());
    EXPECT_EQ(calls, expected);
}

TEST(Binding, LogsEveryNameThatTheDesignLacksAndGoesOn) {
    const CapturedLog log;
    std::string all;
    std::vector<std::string> expected;
    for (const char* name : DesignNames) {
        all += std::string(name) + ",";
        expected.push_back(std::string("4 orlo.wrapper.Quillon cannot retrieve IX id for IX parameter: '") + name +
                           "'");
    }
    const Variable hide("SOFTBOARD_HIDE", all);
    BuiltApplet built(1);
    std::vector<std::string> lines = log.lines();
    ASSERT_GE(lines.size(), DesignNames.size());
    lines.resize(DesignNames.size());  // what follows are reads that fail for want of an id
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
}

TEST(Binding, AMissingNameFailsAtItsFirstWriteWithTheSdksCode) {
    const CapturedLog log;
    const Variable hide("SOFTBOARD_HIDE", "Device1_Process0_Buffer_0_SensorWidth");
    BuiltApplet built(1);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), -9002);
    EXPECT_EQ(built.applet.lastError(), -9002);
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
    EXPECT_THAT(log.lines(),
                ElementsAre("4 orlo.wrapper.Quillon cannot retrieve IX id for IX parameter: "
                            "'Device1_Process0_Buffer_0_SensorWidth'",
                            "5 orlo.wrapper.Quillon Setting IX parameter 'Device1_Process0_Buffer_0_SensorWidth' (ID: "
                            "-9002) failed: result = -9002"));
}

TEST(Binding, AnIdOfZeroIsNoneEither) {
    const CapturedLog log;
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterIdByName", Direction::Call, 1, 0);
    const Applet applet(library, board, 1);
    EXPECT_THAT(log.lines(), ElementsAre("4 orlo.wrapper.Quillon cannot retrieve IX id for IX parameter: "
                                         "'Device1_Process0_Buffer_0_SensorWidth'"));
}

TEST(Binding, AFailedWriteIsLoggedWithItsIdAndResult) {
    const CapturedLog log;
    BuiltApplet built;
    built.board.planFault("Device1_Process0_Buffer_0_XOffset", Direction::Write, 1, -321);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), -321);
    EXPECT_THAT(log.lines(), ElementsAre("5 orlo.wrapper.Quillon Setting IX parameter "
                                         "'Device1_Process0_Buffer_0_XOffset' (ID: 10006) failed: result = -321"));
}

TEST(Binding, AFailedReadIsLoggedWithItsIdAndResult) {
    const CapturedLog log;
    BuiltApplet built;
    built.board.planFault("Device1_Process0_BoardStatus_FpgaTemperature", Direction::Read, 1, -321);
    double temperature = 0.0;
    EXPECT_EQ(built.applet.getDouble(FG_SYSTEMMONITOR_FPGA_TEMPERATURE, temperature), -321);
    EXPECT_THAT(
        log.lines(),
        ElementsAre("5 orlo.wrapper.Quillon Getting IX parameter 'Device1_Process0_BoardStatus_FpgaTemperature' "
                    "(ID: 10025) failed: result = -321"));
}

TEST(Binding, AFailureThatTheStartSwallowsIsLoggedAllTheSame) {
    const CapturedLog log;
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Device1_Process0_LookupTable_EnableLUT_Value", Direction::Write, 1, -321);
    const Applet applet(library, board);
    EXPECT_EQ(applet.lastError(), 0);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines()[0], ::testing::StartsWith("5 orlo.wrapper.Quillon Setting IX parameter "
                                                      "'Device1_Process0_LookupTable_EnableLUT_Value' (ID: "));
}

TEST(Binding, NothingIsLoggedAboveItsLevel) {
    const CapturedLog log(6);
    const Variable hide("SOFTBOARD_HIDE", "Device1_Process0_Buffer_0_SensorWidth");
    BuiltApplet built;
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), -9002);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(Binding, ProcessOneOfTheHierarchyIsReachedThroughProcessZero) {
    BuiltApplet built;
    built.board.clearTranscript();
    EXPECT_EQ(built.applet.setInt(FG_SIGNAL_ANALYZER_CLEAR, 1), 0);
    ASSERT_FALSE(built.board.transcript().empty());
    for (const Access& access : built.board.transcript()) {
        EXPECT_EQ(access.name, "Device1_Process1_Trigger_Analyzer_Clear_Value");
        EXPECT_EQ(access.dma, 0);
    }
}

}  // namespace
}  // namespace quillon::client
