#include <gmock/gmock.h>

#include <sstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

TEST(RegistersVerb, AllOfThemAreListedWithNumberAndValue) {
    const Outcome outcome = quillon({"registers", "--json"});
    EXPECT_EQ(outcome.status, 0);
    const auto json = outcome.json();
    ASSERT_FALSE(json.empty());
    EXPECT_EQ(json[0]["number"], 1);
    EXPECT_EQ(json[0]["id"], 1000001);
}

TEST(RegistersVerb, AWrittenRegisterReadsBack) {
    const auto all = quillon({"registers", "--json"}).json();
    std::string writable;
    for (const auto& entry : all) {
        if (entry["writable"] == true && !entry["value"].is_null()) {
            writable = entry["name"].get<std::string>();
        }
    }
    ASSERT_NE(writable, "");
    const Outcome outcome = quillon({"registers", writable + "=1", "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json()[0]["value"], 1);
}

/// The lines of the help of a verb that begin with the command, without what stands behind them.
std::vector<std::string> examplesOf(const std::string& verb) {
    std::istringstream help(quillon({verb, "--help"}).out);
    std::vector<std::string> examples;
    for (std::string line; std::getline(help, line);) {
        if (line.starts_with("  quillon ")) {
            examples.push_back(line.substr(2, line.find("  ", 2) - 2));
        }
    }
    return examples;
}

TEST(RegistersVerb, TheExamplesOfItsHelpWork) {
    const std::vector<std::string> examples = examplesOf("registers");
    ASSERT_EQ(examples.size(), 6U);
    for (const std::string& example : examples) {
        const Outcome outcome = shell("quillon() { \"$quillon\" \"$@\"; }; " + example);
        EXPECT_EQ(outcome.status, 0) << example;
        EXPECT_NE(outcome.out, "") << example;
        EXPECT_EQ(outcome.err, "") << example;
    }
}

TEST(RegistersVerb, TakesTheNumbersAndNamesThatItLists) {
    const auto all = quillon({"registers", "--json"}).json();
    std::vector<std::string> numbers{"registers", "--json"};
    std::vector<std::string> names{"registers", "--json"};
    std::vector<std::string> ids{"registers", "--json"};
    auto readable = nlohmann::json::array();
    for (const auto& entry : all) {
        if (entry["access"] != "write") {
            numbers.push_back(entry["number"].dump());
            names.push_back(entry["name"]);
            ids.push_back(entry["id"].dump());
            readable.push_back(entry);
        }
    }
    ASSERT_EQ(readable.size(), 18U);
    EXPECT_EQ(quillon(numbers).json(), readable);
    EXPECT_EQ(quillon(names).json(), readable);
    EXPECT_EQ(quillon(ids).json(), readable);
    EXPECT_EQ(quillon({"registers", "dra_scratch", "0x5"}).out,
              "5  Scratch  0x0  read-write\n5  Scratch  0x0  read-write\n");
}

TEST(RegistersVerb, AWrongNumberIsUsage) {
    for (const char* number : {"0", "21", "100", "-1", "1000000", "1000021", "18446744073709551615"}) {
        const Outcome outcome = quillon({"registers", number});
        EXPECT_EQ(outcome.status, 2) << number;
        EXPECT_THAT(outcome.err, HasSubstr("there is no register")) << number;
    }
}

TEST(RegistersVerb, ListsWithoutReadingWhatCanOnlyBeWritten) {
    const Outcome outcome = quillon({"registers"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("\n4   BoardStatus        0xc0de      read-only\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\n8   DmaReset                       write-only\n"));
}

TEST(RegistersVerb, DoesNotReadBackWhatCanOnlyBeWritten) {
    EXPECT_EQ(quillon({"registers", "SpiCommand=0x9F"}).out, "20  SpiCommand  0x9f written  write-only\n");
    const Outcome outcome = quillon({"registers", "SpiCommand=0x9F", "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json()[0], nlohmann::json({{"name", "SpiCommand"},
                                                 {"number", 20},
                                                 {"id", 1000020},
                                                 {"access", "write"},
                                                 {"writable", true},
                                                 {"value", nullptr},
                                                 {"accepted", true},
                                                 {"asked", {{"value", 0x9F}}}}));
}

TEST(RegistersVerb, AReadThatIsAskedForReachesTheApplet) {
    const Outcome outcome = quillon({"registers", "SpiCommand", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("register SpiCommand was refused: -9005 (SoftBoardWriteOnly)"));
    EXPECT_EQ(outcome.json()[0]["refused"]["name"], "SoftBoardWriteOnly");
}

TEST(RegistersVerb, TellsWhatIsHeldWhereItIsAnotherValue) {
    EXPECT_EQ(quillon({"registers", "LedControl=0x101"}).out, "6  LedControl  0x1, asked for 0x101  read-write\n");
}

TEST(RegistersVerb, ARefusedWriteEndsTheWords) {
    const Outcome outcome = quillon({"registers", "Scratch=7", "DesignId=1", "Scratch=8", "--json"});
    EXPECT_EQ(outcome.status, 1);
    const auto json = outcome.json();
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0]["value"], 7);
    EXPECT_EQ(json[1]["accepted"], false);
    EXPECT_EQ(json[1]["refused"]["name"], "SoftBoardReadOnly");
}

TEST(RegistersVerb, NothingIsWrittenBeforeAllWordsAreUnderstood) {
    const Outcome outcome = quillon({"registers", "Scratch=7", "NoSuchRegister"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
}

TEST(RegistersVerb, AnUnknownRegisterIsUsage) {
    const Outcome outcome = quillon({"registers", "NoSuchRegister"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no parameter \"DRA_NoSuchRegister\""));
}

TEST(RegistersVerb, WithoutTheVerbTheirIdsAreUnknown) {
    EXPECT_EQ(quillon({"get", "1000001"}).status, 1);
}

TEST(RegistersVerb, KnowsThemWhateverTheEnvironmentSays) {
    EXPECT_EQ(shell("ORLO_ENABLE_DRA=no \"$quillon\" registers DesignId").status, 0);
}

}  // namespace
}  // namespace quillon::cli::testing
