#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int Fault = -7;

/// An applet opened by hand, to see what Std_entry stores and what it does on a board made ready before.
class Opening {
public:
    /// 0 if Std_entry gave an object and stored 0, the stored status otherwise.
    int open(int flags = 0) {
        int status = -1;
        location = library.functions().Std_entry(board.device(), &status, flags);
        return location != nullptr ? status : -1;
    }
    ~Opening() { library.functions().Fg_FreeGrabber(&location); }

    client::Library library = client::Library::open(client::testing::builtLibrary(), client::testing::builtStandIns());
    client::SoftBoard board{client::testing::builtStandIns()};
    QuillonWrapper* location = nullptr;
};

/// The accesses that read the design's texts, before the push.
std::size_t accessesBeforePush(const std::vector<ListedAccess>& list) {
    std::size_t count = 0;
    while (!list[count].line.starts_with("FG_TIMEOUT")) {
        ++count;
    }
    return count;
}

TEST(StartUp, TheDesignSeesTheseAccessesInThisOrder) {
    const BuiltApplet built;
    EXPECT_EQ(shownAccesses(built.board), linesOf(goldenAccesses("start_up_accesses.txt")));
}

TEST(StartUp, TheDesignsLookupTablesGetTheIdentityCurve) {
    const BuiltApplet built;
    for (const char* table : {"R", "G", "B"}) {
        const std::string name = std::string("Device1_Process0_LookupTable_") + table + "_LUTcontent";
        EXPECT_EQ(built.board.element(name, 0), 0);
        EXPECT_EQ(built.board.element(name, 8191), 32765);
        EXPECT_EQ(built.board.element(name, 16383), 65535);
    }
}

TEST(StartUp, EveryRememberedValueIsItsDefault) {
    BuiltApplet built;
    const std::vector<std::string> values = goldenLines("start_up_values.txt");
    EXPECT_EQ(readAll(built.applet, values), values);
}

TEST(StartUp, TheAnalyzersClearIsAnActionThatHasEnded) {
    BuiltApplet built;
    EXPECT_EQ(readAsText(built.applet, "FG_SIGNAL_ANALYZER_CLEAR"), "1");
    EXPECT_EQ(built.board.integer("Device1_Process1_Trigger_Analyzer_Clear_Value"), 0);
}

TEST(StartUp, LineOrderAndSoftwareTriggerAreNotSent) {
    const BuiltApplet built;
    const std::vector<std::string> writes = built.board.writes();
    EXPECT_THAT(writes, Not(Contains(StartsWith("Device1_Process0_Camera_SortImage_"))));
    EXPECT_THAT(writes, Not(Contains(StartsWith("Device1_Process0_Trigger_Trigger_SoftwareTrgPulse"))));
}

TEST(StartUp, ThePushPublishesTheLimitsOfTheState) {
    const BuiltApplet built;
    const auto records = built.applet.parameterInfo();
    const auto maximum = [&](const char* name) {
        const auto* record = client::findRecord(records, findPublicParameter(name)->id);
        return std::visit(
            [](const auto& range) {
                if constexpr (std::is_same_v<std::decay_t<decltype(range)>, std::monostate>) {
                    return -1.0;
                } else {
                    return static_cast<double>(range.max);
                }
            },
            record->range);
    };
    EXPECT_EQ(maximum("FG_LINEEXPOSURE"), 200.0);
    EXPECT_EQ(maximum("FG_LINETRIGGERDELAY"), 200.0);
    EXPECT_EQ(maximum("FG_XOFFSET"), 15360.0);
    EXPECT_EQ(maximum("FG_WIDTH"), 16384.0);
    EXPECT_EQ(maximum("FG_CUSTOM_BIT_SHIFT_RIGHT"), 7.0);
    EXPECT_EQ(maximum("FG_CAMERASIMULATOR_FRAME_GAP"), 0.0);
}

TEST(StartUp, ThePushPublishesWhatCanBeWritten) {
    const BuiltApplet built;
    const auto records = built.applet.parameterInfo();
    const auto flags = [&](const char* name) {
        return client::findRecord(records, findPublicParameter(name)->id)->accessFlags;
    };
    EXPECT_EQ(flags("FG_CAMERASIMULATOR_LINERATE"), 7);
    EXPECT_EQ(flags("FG_CAMERASIMULATOR_FRAMERATE"), 1);
    EXPECT_EQ(flags("FG_PROCESSING_GAIN"), 1);
    EXPECT_EQ(flags("FG_LUT_CUSTOM_FILE"), 1);
    EXPECT_EQ(flags("FG_LINETRIGGERINSRC"), 1);
    EXPECT_EQ(flags("FG_SHAFTENCODERMODE"), 1);
    EXPECT_EQ(flags("FG_IMGTRIGGERINSRC"), 1);
    EXPECT_EQ(flags("FG_IMGTRIGGER_ASYNC_HEIGHT"), 1);
}

TEST(StartUp, AFailedAccessEndsItsStepAndNothingElse) {
    const std::vector<ListedAccess> list = goldenAccesses("start_up_accesses.txt");
    for (std::size_t i = accessesBeforePush(list); i < list.size(); ++i) {
        Opening opening;
        opening.board.planFaultAt(static_cast<unsigned>(i + 1), Fault);
        ASSERT_EQ(opening.open(), 0) << list[i].line;
        ASSERT_EQ(shownAccesses(opening.board), linesWithFault(list, i, Fault)) << list[i].line;
    }
}

TEST(StartUp, DesignThatTellsNothingOfItselfIsNoFailure) {
    const std::vector<ListedAccess> list = goldenAccesses("start_up_accesses.txt");
    for (std::size_t i = 0; i < accessesBeforePush(list); ++i) {
        Opening opening;
        opening.board.planFaultAt(static_cast<unsigned>(i + 1), Fault);
        ASSERT_EQ(opening.open(), 0) << list[i].line;
        ASSERT_THAT(opening.board.writes(), Contains("FG_TIMEOUT = 1000000")) << list[i].line;
    }
}

TEST(StartUp, DesignThatRefusesEverythingIsNoFailureAndLeavesTheDefaults) {
    Opening opening;
    opening.board.planFaultAt(0, Fault);
    EXPECT_EQ(opening.open(), 0);
    opening.board.clearFaults();
    std::int32_t width = 0;
    EXPECT_EQ(opening.library.functions().Fg_getParameterWithType(&opening.location, FG_WIDTH, &width, 0, FgTypeUInt32),
              0);
    EXPECT_EQ(width, 1024);
    std::int32_t polarity = 0;
    EXPECT_EQ(opening.library.functions().Fg_getParameterWithType(&opening.location, FG_CUSTOM_SIGNAL_EVENT_1_POLARITY,
                                                                  &polarity, 0, FgTypeUInt32),
              0);
    EXPECT_EQ(polarity, 1);
}

TEST(StartUp, DesignThatLacksAParameterGetsAllOthers) {
    Opening opening;
    opening.board.hideParameter("Device1_Process0_Trigger_Trigger_ExsyncEnable");
    EXPECT_EQ(opening.open(), 0);
    std::vector<std::string> expected;
    for (const ListedAccess& access : goldenAccesses("start_up_accesses.txt")) {
        if (!access.line.starts_with("Device1_Process0_Trigger_Trigger_ExsyncEnable ")) {
            expected.push_back(access.line);
        }
    }
    std::vector<std::string> seen = shownAccesses(opening.board);
    std::erase_if(seen, [](const std::string& line) { return line.find(" ! ") != std::string::npos; });
    EXPECT_EQ(seen, expected);
}

TEST(StartUp, OnASlaveTheDesignIsLeftAsItIs) {
    const BuiltApplet slave(1);
    EXPECT_THAT(slave.board.writes(), IsEmpty());
}

TEST(StartUp, OnASlaveTheDefaultsAreRememberedAllTheSame) {
    BuiltApplet slave(1);
    const std::vector<std::string> values = goldenLines("start_up_values.txt");
    EXPECT_EQ(readAll(slave.applet, values), values);
}

TEST(StartUp, BitsOtherThanTheFirstMakeNoSlave) {
    const BuiltApplet built(6);
    EXPECT_EQ(shownAccesses(built.board), linesOf(goldenAccesses("start_up_accesses.txt")));
}

}  // namespace
}  // namespace quillon::state
