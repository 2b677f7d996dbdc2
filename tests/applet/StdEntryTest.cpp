// The start of a wrapper: its steps in order, and what each failure leaves.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/design/DesignNames.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

namespace fs = std::filesystem;
using quillon::test::CapturedLog;
using quillon::test::designDescription;
using quillon::test::packDesignFile;
using quillon::test::ToldLeak;
using quillon::test::Variable;
using quillon::test::WorkingDirectory;
using testing::BuiltApplet;
using testing::builtLibrary;
using testing::builtStandIns;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class StdEntry : public TemporaryFolder {
protected:
    StdEntry() { boards.clearTranscript(); }
    ~StdEntry() override {
        boards.clearFaults();
        boards.setSdkError(0);
        f.Fg_FreeGrabber(&location);
    }

    /// Opens a wrapper on the board; null if it fails. The status is in `status`.
    QuillonWrapper* start(int flags = 0) { return location = f.Std_entry(board.device(), &status, flags); }

    std::vector<std::string> loaderCalls() {
        std::vector<std::string> lines;
        for (const Access& access : boards.transcript()) {
            lines.push_back(access.line());
        }
        return lines;
    }
    void expectNothingAlive() {
        EXPECT_EQ(boards.liveHandles(), 0U);
        EXPECT_EQ(boards.liveDesigns(), 0U);
    }

    Library library = Library::open(builtLibrary(), builtStandIns());
    const Functions& f = library.functions();
    SoftBoard board = SoftBoard(builtStandIns());
    SoftBoardLibrary boards = board.library();
    int status = 77;
    QuillonWrapper* location = nullptr;
};

TEST_F(StdEntry, GivesAWrapperAndStatusZero) {
    EXPECT_NE(start(), nullptr);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(f.Fg_getLastErrorNumber(&location), 0);
}

TEST_F(StdEntry, NeedsNoStatus) {
    location = f.Std_entry(board.device(), nullptr, 0);
    EXPECT_NE(location, nullptr);
    {
        const ToldLeak leak;
        boards.planCallFault("TavLoadDesignFromBuffer", 1, 0);
        EXPECT_EQ(f.Std_entry(board.device(), nullptr, 0), nullptr);
    }
}

TEST_F(StdEntry, LoadsTheCarriedDesignAndHandsItToTheSdk) {
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(loaderCalls().front(), "TavLoadDesignFromBuffer(8255782, 1)");
    EXPECT_EQ(board.calls().front(), "Fg_InitHandleSlaveAware(Quillon.tav, 0)");
}

TEST_F(StdEntry, BindsTheDesignsParametersThenReadsItsTextsThenPushesTheState) {
    ASSERT_NE(start(), nullptr);
    std::vector<std::string> steps;  // one entry for a run of lines of one kind
    for (const Access& access : board.transcript()) {
        const std::string kind = access.direction == Direction::Read    ? "read"
                                 : access.direction == Direction::Write ? "write"
                                                                        : access.name;
        if (steps.empty() || steps.back() != kind) {
            steps.push_back(kind);
        }
    }
    ASSERT_GE(steps.size(), 3U);
    EXPECT_EQ(steps[0], "Fg_InitHandleSlaveAware");
    EXPECT_EQ(steps[1], "Fg_getParameterIdByName");
    EXPECT_EQ(steps[2], "read");
    const auto firstWrite = std::find(steps.begin(), steps.end(), "write");
    ASSERT_NE(firstWrite, steps.end());
    EXPECT_EQ(std::find(firstWrite, steps.end(), "Fg_InitHandleSlaveAware"), steps.end());
}

TEST_F(StdEntry, AsksForTheNamesOfAllParametersOfTheDesignInOrder) {
    ASSERT_NE(start(), nullptr);
    std::vector<std::string> names;
    for (const std::string& call : board.calls()) {
        if (call.starts_with("Fg_getParameterIdByName(")) {
            names.push_back(call.substr(24, call.find(')') - 24));
        }
    }
    ASSERT_GE(names.size(), DesignNames.size());
    names.resize(DesignNames.size());
    EXPECT_THAT(names, ElementsAreArray(DesignNames));
}

TEST_F(StdEntry, ASlaveLeavesTheDesignUntouched) {
    ASSERT_NE(start(1), nullptr);
    EXPECT_THAT(board.writes(), IsEmpty());
    EXPECT_EQ(board.calls().front(), "Fg_InitHandleSlaveAware(Quillon.tav, 1)");
}

TEST_F(StdEntry, OnlyTheLowestFlagMakesASlave) {
    ASSERT_NE(start(2), nullptr);
    EXPECT_THAT(board.writes(), Contains("Device1_Process0_Buffer_0_SensorWidth = 1024"));
    EXPECT_EQ(board.calls().front(), "Fg_InitHandleSlaveAware(Quillon.tav, 2)");
    f.Fg_FreeGrabber(&location);
    board.clearTranscript();
    ASSERT_NE(start(-1), nullptr);
    EXPECT_THAT(board.writes(), IsEmpty());
    EXPECT_EQ(board.calls().front(), "Fg_InitHandleSlaveAware(Quillon.tav, -1)");
}

TEST_F(StdEntry, StartsNoThread) {
    const auto threads = [] {
        return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
    };
    const auto before = threads();
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(threads(), before);
}

TEST_F(StdEntry, IsSilentWithACompleteDesign) {
    const CapturedLog log;
    ASSERT_NE(start(), nullptr);
    EXPECT_THAT(log.lines(), IsEmpty());
}

// Failures -----------------------------------------------------------------------------------------------------------

TEST_F(StdEntry, ADesignThatDoesNotLoadEndsTheStart) {
    const ToldLeak leak;  // this failure leaves the wrapper behind
    boards.planCallFault("TavLoadDesignFromBuffer", 1, 0);
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -100);
    EXPECT_THAT(board.transcript(), IsEmpty());
    EXPECT_EQ(loaderCalls().size(), 1U);
    expectNothingAlive();
}

TEST_F(StdEntry, AnSdkThatRefusesTheDesignGivesItsNumberAndTheDesignIsUnloaded) {
    const CapturedLog log;
    const std::uint64_t unloaded = boards.callCount("TavUnloadTavFile");
    board.planFault("Fg_InitHandleSlaveAware", Direction::Call, 1, -77);
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -77);
    EXPECT_EQ(boards.callCount("TavUnloadTavFile"), unloaded + 1);
    EXPECT_THAT(log.lines(), ElementsAre("5 orlo.wrapper.Quillon error calling 'Fg_InitHandleSlaveAware' (tavName = "
                                         "'Quillon.tav')"));
    expectNothingAlive();
}

TEST_F(StdEntry, AnSdkThatRefusesWithTheNumberZeroLeavesAWrapperWithoutAnSdkHandle) {
    board.planFault("Fg_InitHandleSlaveAware", Direction::Call, 1, 0);
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(f.Fg_AcquireEx(&location, 0, 1, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_getLastErrorNumber(&location), -12);
    EXPECT_EQ(f.Fg_getStatusEx(&location, 0, 0, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_getLastPicNumberEx(&location, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_getLastPicNumberBlockingEx(&location, 0, 0, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_stopAcquireEx(&location, 0, nullptr, 0), -12);
    EXPECT_EQ(f.Fg_getAppletId(&location, nullptr), -12);
    EXPECT_EQ(f.Fg_getParameterInfo(&location, 0), nullptr);
    EXPECT_EQ(f.Fg_FreeGrabber(&location), -9001);  // the SDK is asked to free a null handle
    EXPECT_EQ(location, nullptr);
    expectNothingAlive();
}

TEST_F(StdEntry, ARefusedDeviceIsARefusedDesign) {
    location = f.Std_entry(nullptr, &status, 0);
    EXPECT_EQ(location, nullptr);
    EXPECT_EQ(status, -9001);
    expectNothingAlive();
}

TEST_F(StdEntry, AFailureOfAnyDesignAccessLeavesTheStartSuccessful) {
    ASSERT_NE(start(), nullptr);
    const std::size_t accesses = board.accesses().size();
    f.Fg_FreeGrabber(&location);
    // Every access of the reading steps, and samples of the push, which is long.
    for (std::size_t nth = 1; nth <= accesses; nth += nth < 60 ? 1 : 17) {
        board.clearFaults();
        board.planFaultAt(static_cast<unsigned>(nth), -4321);
        EXPECT_NE(start(), nullptr) << nth;
        EXPECT_EQ(status, 0) << nth;
        EXPECT_EQ(f.Fg_FreeGrabber(&location), 0) << nth;
    }
}

// The external design file -------------------------------------------------------------------------------------------

class ExternalDesign : public StdEntry {
protected:
    /// Std_entry in a folder whose Quillon.tav has these bytes, with the variable set to `value`.
    void* startWith(const std::string& tavFile, const char* value = "") {
        write("Quillon.tav", tavFile);
        const WorkingDirectory here(folder);
        const Variable force("__ORLO_FORCE_EXTERNAL_TAV", value);
        return start();
    }
    std::string goodFile() {
        packDesignFile(designDescription(), folder / "packed.tav");
        return bytesOf("packed.tav");
    }
};

TEST_F(ExternalDesign, IsTakenFromTheWorkingDirectoryWhateverTheVariablesValue) {
    const std::string good = goodFile();
    for (const char* value : {"", "0", "no"}) {
        boards.clearTranscript();
        EXPECT_NE(startWith(good, value), nullptr);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(loaderCalls().front(), "TavLoadTavFileWithType(Quillon.tav, 1874, 1)");
        EXPECT_THAT(loaderCalls(), Not(Contains(StartsWith("TavLoadDesignFromBuffer"))));
        EXPECT_EQ(f.Fg_FreeGrabber(&location), 0);
    }
}

TEST_F(ExternalDesign, ThatIsNotThereEndsTheStart) {
    const ToldLeak leak;
    const WorkingDirectory here(folder);
    const Variable force("__ORLO_FORCE_EXTERNAL_TAV", "1");
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -100);
}

TEST_F(ExternalDesign, ThatIsCutOffEndsTheStart) {
    const ToldLeak leak;
    const std::string good = goodFile();
    for (const std::size_t length : {std::size_t{0}, std::size_t{3}, std::size_t{64}, good.size() - 1}) {
        status = 77;
        EXPECT_EQ(startWith(good.substr(0, length)), nullptr) << length;
        EXPECT_EQ(status, -100) << length;
    }
    expectNothingAlive();
}

TEST_F(ExternalDesign, ThatIsDamagedOrForeignEndsTheStart) {
    const ToldLeak leak;
    std::string damaged = goodFile();
    damaged[damaged.size() / 2] = static_cast<char>(~damaged[damaged.size() / 2]);
    EXPECT_EQ(startWith(damaged), nullptr);
    EXPECT_EQ(status, -100);
    status = 77;
    EXPECT_EQ(startWith("\x7f"
                        "ELF and nothing more"),
              nullptr);
    EXPECT_EQ(status, -100);
    expectNothingAlive();
}

TEST_F(ExternalDesign, OfAnotherBoardTypeEndsTheStart) {
    const ToldLeak leak;
    auto description = designDescription();
    description["type"] = 1873;
    packDesignFile(description, folder / "other.tav");
    EXPECT_EQ(startWith(bytesOf("other.tav")), nullptr);
    EXPECT_EQ(status, -100);
}

// Direct register access ---------------------------------------------------------------------------------------------

TEST_F(StdEntry, DirectRegisterAccessIsSwitchedOnByFourWords) {
    for (const char* value : {"yes", "true", "on", "1", "ON", "True", "YES"}) {
        const Variable enable("ORLO_ENABLE_DRA", value);
        ASSERT_NE(start(1), nullptr);
        EXPECT_EQ(f.Fg_getNrOfParameter(&location), PositionCount + 20) << value;
        EXPECT_EQ(f.Fg_FreeGrabber(&location), 0);
    }
}

TEST_F(StdEntry, DirectRegisterAccessStaysOffWithAnyOtherValue) {
    for (const char* value : {"enabled", "2", "", "off", "yes "}) {
        const Variable enable("ORLO_ENABLE_DRA", value);
        ASSERT_NE(start(1), nullptr);
        EXPECT_EQ(f.Fg_getNrOfParameter(&location), PositionCount) << value;
        EXPECT_EQ(f.Fg_FreeGrabber(&location), 0);
    }
}

// Several wrappers ---------------------------------------------------------------------------------------------------

TEST_F(StdEntry, WrappersAreIndependent) {
    BuiltApplet first;
    BuiltApplet second;
    EXPECT_EQ(first.applet.setInt(FG_WIDTH, 2048), 0);
    EXPECT_EQ(second.applet.setInt(FG_WIDTH, 4096), 0);
    EXPECT_EQ(second.applet.setInt(FG_PIXELDEPTH, 1), -12);
    EXPECT_EQ(first.applet.readInt(FG_WIDTH), 2048);
    EXPECT_EQ(second.applet.readInt(FG_WIDTH), 4096);
    EXPECT_EQ(first.board.integer("Device1_Process0_Buffer_0_XLength"), 2048);
    EXPECT_EQ(second.board.integer("Device1_Process0_Buffer_0_XLength"), 4096);
    EXPECT_EQ(first.applet.close(), 0);
    EXPECT_EQ(second.applet.readInt(FG_WIDTH), 4096);
}

TEST_F(StdEntry, TwoWrappersOnOneBoardEachHaveADesignOfTheirOwn) {
    ASSERT_NE(start(), nullptr);
    Applet slave(library, board, 1);
    EXPECT_EQ(boards.liveDesigns(), 2U);
    EXPECT_EQ(boards.liveHandles(), 2U);
    EXPECT_EQ(slave.close(), 0);
    EXPECT_EQ(boards.liveDesigns(), 1U);
}

}  // namespace
}  // namespace quillon::client
