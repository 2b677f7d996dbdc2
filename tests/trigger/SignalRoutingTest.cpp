#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;

struct TestedRoute {
    int source;    ///< id of the source parameter
    int polarity;  ///< id of the polarity parameter
    std::string stem;
    int startSource;
};

const std::string Outputs = "Device1_Process1_Trigger_OutputMapping_";

const std::array<TestedRoute, 11> OutputRoutes = {{
    {200338, 200354, Outputs + "CamTrigger0_SelectTrigger", 2000},
    {200384, 200410, Outputs + "SelectGPO_Select0", 2002},
    {200385, 200411, Outputs + "SelectGPO_Select1", 2001},
    {200386, 200412, Outputs + "SelectGPO_Select2", 2000},
    {200387, 200413, Outputs + "SelectGPO_Select3", 5},
    {200388, 200414, Outputs + "SelectGPO_Select4", 5},
    {200389, 200415, Outputs + "SelectGPO_Select5", 5},
    {200390, 200416, Outputs + "SelectGPO_Select6", 5},
    {200391, 200417, Outputs + "SelectGPO_Select7", 5},
    {200392, 200418, Outputs + "SelectFrontGPO_Select0", 2002},
    {200393, 200419, Outputs + "SelectFrontGPO_Select1", 2001},
}};

const std::array<TestedRoute, 4> ObserverRoutes = {{
    {200420, 200421, "Device1_Process1_Trigger_Analyzer_Analyzer0_Select", 2000},
    {200430, 200431, "Device1_Process1_Trigger_Analyzer_Analyzer1_Select", 2100},
    {200440, 200441, "Device1_Process1_Trigger_Events_SelectCustomSignalEvent0", 2000},
    {200442, 200443, "Device1_Process1_Trigger_Events_SelectCustomSignalEvent1", 2002},
}};

/// A source, what selects it, and the invert flag under either polarity.
struct TestedSource {
    int value;
    const char* select;
    const char* invertHigh;
    const char* invertLow;
};

constexpr std::array<TestedSource, 19> CommonSources = {{
    {4, "0", "0", "0"},      // GND
    {5, "0", "1", "1"},      // VCC
    {2000, "1", "0", "1"},   // Cam0 Exsync
    {2001, "2", "0", "1"},   // Cam0 Exsync2
    {2002, "3", "0", "1"},   // Cam0 Flash
    {2007, "4", "0", "1"},   // Cam0 LVAL
    {2008, "5", "0", "1"},   // Cam0 FVAL
    {1001, "21", "0", "1"},  // GPI 0
    {1011, "22", "0", "1"}, {1021, "23", "0", "1"}, {1031, "24", "0", "1"}, {1041, "25", "0", "1"},
    {1051, "26", "0", "1"}, {1061, "27", "0", "1"}, {1071, "28", "0", "1"}, {1081, "29", "0", "1"},  // Front GPI 0
    {1091, "30", "0", "1"}, {1101, "31", "0", "1"}, {1111, "32", "0", "1"},
}};

constexpr std::array<TestedSource, 4> TransferSources = {{
    {2100, "33", "0", "1"},  // Cam0 Line Transfer Start
    {2101, "34", "0", "1"},
    {2102, "35", "0", "1"},
    {2103, "36", "0", "1"},
}};

class SignalRouting : public TriggerTest {
protected:
    static Lines pair(const TestedRoute& route, const char* select, const char* invert) {
        return {route.stem + "_SelectSignal_Select = " + select, route.stem + "_Polarity_Invert = " + invert};
    }

    template <std::size_t Count>
    void expectSources(const TestedRoute& route, const std::array<TestedSource, Count>& sources) {
        for (const TestedSource& source : sources) {
            EXPECT_EQ(accessesOf(route.source, source.value), pair(route, source.select, source.invertHigh));
            EXPECT_EQ(accessesOf(route.polarity, 0), pair(route, source.select, source.invertLow));
            EXPECT_EQ(accessesOf(route.source, source.value), pair(route, source.select, source.invertLow));
            EXPECT_EQ(accessesOf(route.polarity, 1), pair(route, source.select, source.invertHigh));
        }
    }
};

TEST_F(SignalRouting, EveryOutputTakesItsSourcesUnderBothPolarities) {
    for (const TestedRoute& route : OutputRoutes) {
        expectSources(route, CommonSources);
    }
}

TEST_F(SignalRouting, EveryObserverTakesItsSourcesUnderBothPolarities) {
    for (const TestedRoute& route : ObserverRoutes) {
        expectSources(route, CommonSources);
        expectSources(route, TransferSources);
    }
}

TEST_F(SignalRouting, AnOutputRefusesTheTransferSignals) {
    for (const TestedRoute& route : OutputRoutes) {
        for (const TestedSource& source : TransferSources) {
            expectRefused(route.source, source.value);
        }
    }
}

TEST_F(SignalRouting, IntervalModeIsOnOfferForOutputsAndFailsForWantOfASelect) {
    for (const TestedRoute& route : OutputRoutes) {
        expectRefused(route.source, 1, -2075);
        EXPECT_EQ(applet.readInt(route.source), route.startSource);
    }
}

TEST_F(SignalRouting, IntervalModeIsNotOnOfferForObservers) {
    for (const TestedRoute& route : ObserverRoutes) {
        expectRefused(route.source, 1);
    }
}

TEST_F(SignalRouting, ASourceOfNoTableIsRefusedOnEveryRoute) {
    const auto expectStrangersRefused = [this](const TestedRoute& route) {
        for (const int source : {0, 2, 3, 6, 21, 1000, 1002, 1112, 1999, 2003, 2006, 2009, 2099, 2104, -1}) {
            expectRefused(route.source, source);
        }
        for (const int polarity : {2, -1}) {
            expectRefused(route.polarity, polarity);
        }
    };
    for (const TestedRoute& route : OutputRoutes) {
        expectStrangersRefused(route);
    }
    for (const TestedRoute& route : ObserverRoutes) {
        expectStrangersRefused(route);
    }
}

TEST_F(SignalRouting, EveryRouteStartsWithItsSourceAndHighActive) {
    for (const TestedRoute& route : OutputRoutes) {
        EXPECT_EQ(applet.readInt(route.source), route.startSource);
        EXPECT_EQ(applet.readInt(route.polarity), 1);
    }
    for (const TestedRoute& route : ObserverRoutes) {
        EXPECT_EQ(applet.readInt(route.source), route.startSource);
        EXPECT_EQ(applet.readInt(route.polarity), 1);
    }
}

TEST_F(SignalRouting, TheListsThatUsersAreShownHave20And23SourcesWithIntervalModeLast) {
    for (const TestedRoute& route : OutputRoutes) {
        const auto entries = record(route.source).entries;
        ASSERT_EQ(entries.size(), 20U);
        EXPECT_EQ(entries.back(), (client::EnumEntry{"Interval Mode", 1, "FG_SIGNAL_CAM0_INTERVAL_MODE"}));
    }
    for (const TestedRoute& route : ObserverRoutes) {
        EXPECT_EQ(record(route.source).entries.size(), 23U);
    }
}

// Requested and applied
// ------------------------------------------------------------------------------------------------

TEST_F(SignalRouting, ASourceThatFailsAtEitherWriteReadsAsBeforeAndThePolarityGoesWithTheOldOne) {
    const auto expectOldSourceAfterFailure = [this](const TestedRoute& route) {
        for (const char* const failing : {"_SelectSignal_Select", "_Polarity_Invert"}) {
            ASSERT_EQ(applet.setInt(route.source, 2001), 0);
            board.planFault(route.stem + failing, client::Direction::Write, 1, -77);
            EXPECT_EQ(applet.setInt(route.source, 2008), -77);
            EXPECT_EQ(applet.readInt(route.source), 2001);
            EXPECT_EQ(accessesOf(route.polarity, 0), pair(route, "2", "1"));
            ASSERT_EQ(applet.setInt(route.polarity, 1), 0);
        }
    };
    for (const TestedRoute& route : OutputRoutes) {
        expectOldSourceAfterFailure(route);
    }
    for (const TestedRoute& route : ObserverRoutes) {
        expectOldSourceAfterFailure(route);
    }
}

TEST_F(SignalRouting, APolarityThatFailsAtEitherWriteReadsAsBeforeAndTheSourceGoesWithTheOldOne) {
    const auto expectOldPolarityAfterFailure = [this](const TestedRoute& route) {
        for (const char* const failing : {"_SelectSignal_Select", "_Polarity_Invert"}) {
            board.planFault(route.stem + failing, client::Direction::Write, 1, -77);
            EXPECT_EQ(applet.setInt(route.polarity, 0), -77);
            EXPECT_EQ(applet.readInt(route.polarity), 1);
            EXPECT_EQ(accessesOf(route.source, 2001), pair(route, "2", "0"));
        }
    };
    for (const TestedRoute& route : OutputRoutes) {
        expectOldPolarityAfterFailure(route);
    }
    for (const TestedRoute& route : ObserverRoutes) {
        expectOldPolarityAfterFailure(route);
    }
}

TEST_F(SignalRouting, ASelectThatWentThroughStaysWhenTheInvertFlagFails) {
    board.planFault(Outputs + "SelectGPO_Select0_Polarity_Invert", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_0_SOURCE, 1111), -77);
    EXPECT_EQ(board.integer(Outputs + "SelectGPO_Select0_SelectSignal_Select"), 32);
    EXPECT_EQ(board.integer(Outputs + "SelectGPO_Select0_Polarity_Invert"), 0);
}

/// Configurations as the applet saves them, with some values exchanged.
class RoutingConfiguration : public SignalRouting {
protected:
    void TearDown() override { std::filesystem::remove(file); }

    /// Saves the state, replaces `from` by `to` in the text, and loads it. Only what reaches the design stays recorded.
    void loadWith(const std::vector<std::pair<std::string, std::string>>& replacements) {
        ASSERT_EQ(applet.saveConfig(file), 0);
        std::ifstream saved(file, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(saved), {}};
        for (const auto& [from, to] : replacements) {
            const std::size_t at = text.find(from);
            ASSERT_NE(at, std::string::npos) << from;
            text.replace(at, from.size(), to);
        }
        std::ofstream(file, std::ios::binary) << text;
        board.clearTranscript();
        ASSERT_EQ(applet.loadConfig(file), 0);
    }
    Lines writesTo(const std::string& stem) const {
        Lines found;
        for (const std::string& line : board.writes()) {
            if (line.starts_with(stem)) {
                found.push_back(line);
            }
        }
        return found;
    }

    const std::filesystem::path file =
        std::filesystem::path(testing::TempDir()) / ("routing-" + std::to_string(getpid()) + ".mcf");
};

TEST_F(RoutingConfiguration, ASourceIsLoadedWithThePolarityThatTheDesignLastAccepted) {
    loadWith({{"FG_TRIGGEROUT_GPO_0_SOURCE=2002;", "FG_TRIGGEROUT_GPO_0_SOURCE=2001;"},
              {"FG_TRIGGEROUT_GPO_0_POLARITY=1;", "FG_TRIGGEROUT_GPO_0_POLARITY=0;"}});
    const std::string stem = Outputs + "SelectGPO_Select0";
    EXPECT_THAT(writesTo(stem), ElementsAre(stem + "_SelectSignal_Select = 2", stem + "_Polarity_Invert = 0",
                                            stem + "_SelectSignal_Select = 2", stem + "_Polarity_Invert = 1"));
    EXPECT_EQ(applet.readInt(FG_TRIGGEROUT_GPO_0_SOURCE), 2001);
    EXPECT_EQ(applet.readInt(FG_TRIGGEROUT_GPO_0_POLARITY), 0);
}

TEST_F(RoutingConfiguration, TheCamerasSourceIsLoadedWithThePolarityOfTheFile) {
    loadWith({{"FG_TRIGGERCAMERA_SOURCE=2000;", "FG_TRIGGERCAMERA_SOURCE=2001;"},
              {"FG_TRIGGERCAMERA_POLARITY=1;", "FG_TRIGGERCAMERA_POLARITY=0;"}});
    const std::string stem = Outputs + "CamTrigger0_SelectTrigger";
    EXPECT_THAT(writesTo(stem), ElementsAre(stem + "_SelectSignal_Select = 2", stem + "_Polarity_Invert = 1",
                                            stem + "_SelectSignal_Select = 2", stem + "_Polarity_Invert = 1"));
}

TEST_F(RoutingConfiguration, ASourceThatARouteRefusesIsNotReadBackAndLeavesThePolarityUsable) {
    loadWith({{"FG_TRIGGEROUT_GPO_0_SOURCE=2002;", "FG_TRIGGEROUT_GPO_0_SOURCE=1;"}});
    const std::string stem = Outputs + "SelectGPO_Select0";
    EXPECT_THAT(writesTo(stem), ElementsAre(stem + "_SelectSignal_Select = 3", stem + "_Polarity_Invert = 0"));
    EXPECT_EQ(applet.readInt(FG_TRIGGEROUT_GPO_0_SOURCE), 2002);
    EXPECT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_0_POLARITY, 0), 0);
}

TEST_F(RoutingConfiguration, ASourceThatTheCameraRefusesIsReadBackAndFailsWithEveryPolarity) {
    loadWith({{"FG_TRIGGERCAMERA_SOURCE=2000;", "FG_TRIGGERCAMERA_SOURCE=1;"}});
    EXPECT_THAT(writesTo(Outputs + "CamTrigger0_SelectTrigger"), testing::IsEmpty());
    EXPECT_EQ(applet.readInt(FG_TRIGGERCAMERA_SOURCE), 1);
    EXPECT_EQ(applet.setInt(FG_TRIGGERCAMERA_POLARITY, 0), -2075);
    EXPECT_EQ(applet.readInt(FG_TRIGGERCAMERA_POLARITY), 1);
    EXPECT_EQ(applet.setInt(FG_TRIGGERCAMERA_SOURCE, 2000), 0);
}

}  // namespace
}  // namespace quillon
