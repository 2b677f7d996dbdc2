// The output branches as the design's own texts tell them, and designs that tell less or other than they should.

#include <algorithm>
#include <array>
#include <optional>

#include "tests/files/TemporaryFolder.h"
#include "tests/image/ImagePath.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/Surroundings.h"

namespace quillon::image_test {
namespace {

using client::Direction;
using client::SoftBoard;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string Told = "Device1_Process0_OutputFormat_FG_FORMAT_";

/// An applet on a design whose texts are changed before it opens; by default it sends no start-up state.
struct OutputFormatTable : ::testing::Test {
    client::Library library = client::Library::open(client::testing::builtLibrary(), client::testing::builtStandIns());
    SoftBoard board = SoftBoard(client::testing::builtStandIns());
    std::optional<client::Applet> applet;

    void tell(const std::string& name, const std::string& text) { board.setText(Told + name, text); }
    void open() {
        applet.emplace(library, board, 1);
        board.clearTranscript();
    }
    int setFormat(std::uint32_t format) { return applet->setUnsigned(FG_FORMAT, format); }
    std::vector<std::string> writes() const { return board.writes(); }
};

TEST_F(OutputFormatTable, ItIsReadInOrderOnceAtStartUp) {
    applet.emplace(library, board, 1);
    std::vector<std::string> reads;
    for (const std::string& line : board.reads()) {
        if (line.starts_with(Told)) {
            reads.push_back(line.substr(Told.size()));
        }
    }
    EXPECT_THAT(reads, ElementsAre("NoOfInputs ? 5", "MaxBits ? 16", "Input0 ? FG_COL24", "InputFlag0 ? 1",
                                   "Input1 ? FG_COL30", "InputFlag1 ? 1", "Input2 ? FG_COL36", "InputFlag2 ? 1",
                                   "Input3 ? FG_COL42", "InputFlag3 ? 1", "Input4 ? FG_COL48", "InputFlag4 ? 0"));
}

TEST_F(OutputFormatTable, ThePositionOfABranchIsWhatIsSelected) {
    tell("NoOfInputs", "3");
    tell("Input0", "FG_COL48");
    tell("Input1", "FG_GRAY");
    tell("Input2", "FG_COL24");
    open();
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_THAT(writes(), ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                                      "Device1_Process0_OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                                      "Device1_Process0_OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 0",
                                      "Device1_Process0_OutputFormat_DynamicShift_Shift_Value = 8",
                                      "Device1_Process0_OutputFormat_FG_FORMAT_SelectSource = 2"));
    EXPECT_EQ(setFormat(6), 0);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_FG_FORMAT_SelectSource"), 0);
}

TEST_F(OutputFormatTable, AllNamesOfBranchesAreKnown) {
    for (const char* name : {"FG_GRAY", "FG_GRAY10", "FG_GRAY12", "FG_GRAY14", "FG_GRAY16", "FG_COL24", "FG_COL30",
                             "FG_COL36", "FG_COL42", "FG_RGBX32", "FG_RGBX40", "FG_RGBX48", "FG_RGBX56", "FG_RGBX64"}) {
        SCOPED_TRACE(name);
        applet.reset();
        board = SoftBoard(client::testing::builtStandIns());
        tell("NoOfInputs", "2");
        tell("Input0", name);
        tell("Input1", "FG_COL48");  // reached only if the name before it is known
        open();
        EXPECT_EQ(setFormat(6), 0);
        EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_FG_FORMAT_SelectSource"), 1);
    }
}

TEST_F(OutputFormatTable, ABranchWithAnUnusedComponentIsNoColourBranch) {
    tell("Input0", "FG_RGBX32");
    open();
    EXPECT_EQ(setFormat(2), -6000);
}

TEST_F(OutputFormatTable, TheWordWidthCountsInTheShift) {
    tell("MaxBits", "30");
    open();
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 22);  // 30 - 8
    EXPECT_EQ(setFormat(6), 0);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 14);  // 30 - 16
}

TEST_F(OutputFormatTable, OfTheWordWidthTwoCharactersAreRead) {
    tell("MaxBits", "161");
    open();
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 8);
}

TEST_F(OutputFormatTable, OfTheCountAndTheFlagsTheFirstCharacterIsRead) {
    tell("NoOfInputs", "17");
    tell("InputFlag0", "10");
    open();
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_THAT(writes(), ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
                                      "Device1_Process0_OutputFormat_DynamicShift_Shift_Value = 8",
                                      "Device1_Process0_OutputFormat_FG_FORMAT_SelectSource = 0"));
    EXPECT_EQ(setFormat(5), -6000);
}

TEST_F(OutputFormatTable, ACountThatIsNoDigitRefusesEveryFormat) {
    for (const char* count : {"0", "", "x", " 5", "-1", ":"}) {
        SCOPED_TRACE(count);
        applet.reset();
        board = SoftBoard(client::testing::builtStandIns());
        tell("NoOfInputs", count);
        open();
        EXPECT_EQ(setFormat(2), -6000);
        EXPECT_EQ(setFormat(6), -6000);
        EXPECT_THAT(writes(), IsEmpty());
    }
}

TEST_F(OutputFormatTable, AnUnknownNameEndsTheTableThere) {
    tell("Input2", "FG_COL37");
    open();
    EXPECT_EQ(setFormat(5), 0);
    EXPECT_THAT(writes(), ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                                      "Device1_Process0_OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 0",
                                      "Device1_Process0_OutputFormat_DynamicShift_Shift_Value = 6",
                                      "Device1_Process0_OutputFormat_FG_FORMAT_SelectSource = 1"));
    board.clearTranscript();
    EXPECT_EQ(setFormat(6), -6000);
    EXPECT_THAT(writes(), ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                                      "Device1_Process0_OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1"));
}

TEST_F(OutputFormatTable, ANameMatchesExactly) {
    tell("Input0", "FG_COL24 ");
    open();
    EXPECT_EQ(setFormat(2), -6000);
}

TEST_F(OutputFormatTable, AReadThatFailsEndsTheTableThere) {
    for (const char* name : {"NoOfInputs", "MaxBits", "Input0"}) {
        SCOPED_TRACE(name);
        applet.reset();
        board = SoftBoard(client::testing::builtStandIns());
        board.planFault(Told + name, Direction::Read, 1, DesignFailure);
        open();
        EXPECT_EQ(setFormat(2), -6000);
        EXPECT_THAT(writes(), IsEmpty());
    }
}

TEST_F(OutputFormatTable, AFlagThatCannotBeReadLeavesItsBranchWithoutTrash) {
    board.planFault(Told + "InputFlag1", Direction::Read, 1, DesignFailure);
    open();
    EXPECT_EQ(setFormat(5), 0);
    EXPECT_THAT(writes(), ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                                      "Device1_Process0_OutputFormat_DynamicShift_Shift_Value = 6",
                                      "Device1_Process0_OutputFormat_FG_FORMAT_SelectSource = 1"));
}

TEST_F(OutputFormatTable, ATrashSwitchThatIsMissingFailsTheFormatAndNotTheTable) {
    board.hideParameter("Device1_Process0_OutputFormat_Convert1_VirtualTrash_EnableTrash_Value");
    open();
    EXPECT_EQ(setFormat(6), -2031);
    EXPECT_EQ(applet->readUnsigned(FG_FORMAT), 2U);
    EXPECT_EQ(writes().front(), "Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1");
    EXPECT_EQ(writes().size(), 2U);
}

TEST_F(OutputFormatTable, AlignmentAndShiftNeedTheTableToo) {
    tell("NoOfInputs", "0");
    open();
    EXPECT_EQ(applet->setUnsigned(FG_BITALIGNMENT, 0), -6000);
    EXPECT_EQ(applet->setUnsigned(FG_CUSTOM_BIT_SHIFT_RIGHT, 1), -6000);
    EXPECT_EQ(applet->readUnsigned(FG_BITALIGNMENT), 1U);
    EXPECT_EQ(applet->readUnsigned(FG_CUSTOM_BIT_SHIFT_RIGHT), 0U);
}

TEST_F(OutputFormatTable, ANarrowWordGivesAShiftBelowZeroInTheCustomAlignment) {
    tell("MaxBits", "10");
    open();
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_EQ(applet->setUnsigned(FG_BITALIGNMENT, 2), 0);            // 10 - 8 + 0
    EXPECT_EQ(setFormat(7), -6000);                                   // 10 - 12 + 0
    EXPECT_EQ(applet->setUnsigned(FG_CUSTOM_BIT_SHIFT_RIGHT, 7), 0);  // 10 - 8 + 7
    EXPECT_EQ(setFormat(5), 0);                                       // 10 - 10 + 7
    EXPECT_EQ(setFormat(2), 0);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 9);
}

/// A design with as many branches as one digit can tell: five without colour, one with an unused component among them,
/// and four with colour.
class NineOutputBranches : public TemporaryFolder {
protected:
    NineOutputBranches() {
        auto description = test::designDescription();
        auto& parameters = description["parameters"];
        for (auto& parameter : parameters) {
            if (parameter["path"] == Path + "FG_FORMAT/SelectSource") {
                parameter["max"] = 8;
            }
        }
        const auto isToldAlready = [](const auto& parameter) {
            const auto path = parameter["path"].template get<std::string>();
            return path == Path + "FG_FORMAT/NoOfInputs" || path.starts_with(Path + "FG_FORMAT/Input") ||
                   path.starts_with(Path + "Convert");
        };
        parameters.erase(std::remove_if(parameters.begin(), parameters.end(), isToldAlready), parameters.end());
        parameters.push_back(text("FG_FORMAT/NoOfInputs", "9"));
        for (std::size_t i = 0; i < Names.size(); ++i) {
            const std::string number = std::to_string(i);
            parameters.push_back(text("FG_FORMAT/Input" + number, Names[i]));
            parameters.push_back(text("FG_FORMAT/InputFlag" + number, "1"));
            parameters.push_back({{"path", Path + "Convert" + number + "/VirtualTrash/EnableTrash/Value"},
                                  {"type", "uint32"},
                                  {"access", "rw"},
                                  {"min", 0},
                                  {"max", 1},
                                  {"value", 1}});
        }
        test::packDesignFile(description, folder / "Quillon.tav");
        const test::WorkingDirectory here(folder);
        const test::Variable force("__ORLO_FORCE_EXTERNAL_TAV", "");
        built.emplace(1);
        built->board.clearTranscript();
    }

    static inline const std::string Path = "Device1/Process0/OutputFormat/";
    static constexpr std::array<const char*, 9> Names = {"FG_GRAY",  "FG_GRAY10", "FG_GRAY12", "FG_RGBX40", "FG_GRAY16",
                                                         "FG_COL30", "FG_COL36",  "FG_COL42",  "FG_COL24"};

    static nlohmann::ordered_json text(const std::string& name, const std::string& value) {
        return {{"path", Path + name}, {"type", "text"}, {"access", "r"}, {"value", value}};
    }

    std::optional<client::testing::BuiltApplet> built;
};

TEST_F(NineOutputBranches, AreAllSwitchedAndTheLastIsSelected) {
    EXPECT_EQ(built->applet.setUnsigned(FG_FORMAT, 2), 0);
    EXPECT_THAT(built->board.writes(),
                ElementsAre("Device1_Process0_OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert4_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert5_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert6_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert7_VirtualTrash_EnableTrash_Value = 1",
                            "Device1_Process0_OutputFormat_Convert8_VirtualTrash_EnableTrash_Value = 0",
                            "Device1_Process0_OutputFormat_DynamicShift_Shift_Value = 8",
                            "Device1_Process0_OutputFormat_FG_FORMAT_SelectSource = 8"));
}

TEST_F(NineOutputBranches, StandBeforeTheAlternativesOfABranchInFrontOfThem) {
    EXPECT_EQ(built->applet.setUnsigned(FG_FORMAT, 5), 0);
    EXPECT_EQ(built->board.integer("Device1_Process0_OutputFormat_FG_FORMAT_SelectSource"), 5);
    EXPECT_EQ(built->board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 6);
    EXPECT_EQ(built->applet.setUnsigned(FG_FORMAT, 6), -6000);
}

}  // namespace
}  // namespace quillon::image_test
