#include <gmock/gmock.h>

#include <sstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

std::vector<nlohmann::json> documents(const std::string& text) {
    std::vector<nlohmann::json> parsed;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        parsed.push_back(nlohmann::json::parse(line));
    }
    return parsed;
}

TEST(WatchVerb, EachLookIsALineWithTheTimeOfTheBoard) {
    const Outcome outcome = quillon({"watch", "FG_WIDTH", "fg_format", "--every", "10ms", "--times", "3"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "          time   FG_WIDTH   FG_FORMAT\n"
              "    0.000000 s   1024 pixel   FG_COL24 (2)\n"
              "    0.010000 s   1024 pixel   FG_COL24 (2)\n"
              "    0.020000 s   1024 pixel   FG_COL24 (2)\n");
}

// At the period of 200 us the fifth pulse begins after a millisecond.
TEST(WatchVerb, TimePassesAndWhatChangesIsMarked) {
    const Outcome outcome = quillon(
        {"watch", "FG_SIGNAL_ANALYZER_0_PULSE_COUNT", "FG_LINEPERIODE", "--every", "1ms", "--times", "3", "--json"});
    const auto looks = documents(outcome.out);
    ASSERT_EQ(looks.size(), 3U);
    EXPECT_EQ(looks[0]["time"], (nlohmann::json{{"value", 0.0}, {"unit", "\u00B5s"}}));
    EXPECT_EQ(looks[1]["time"]["value"], 1000.0);
    EXPECT_EQ(looks[0]["values"][0]["changed"], false);
    EXPECT_EQ(looks[1]["values"][0]["changed"], true);
    EXPECT_EQ(looks[2]["values"][0]["value"].get<int>() - looks[1]["values"][0]["value"].get<int>(), 5);
    EXPECT_EQ(looks[1]["values"][1],
              (nlohmann::json{
                  {"name", "FG_LINEPERIODE"}, {"id", 96}, {"value", 200.0}, {"unit", "\u00B5s"}, {"changed", false}}));
}

TEST(WatchVerb, AChangedValueHasAStarInFront) {
    const Outcome outcome =
        quillon({"watch", "FG_SIGNAL_ANALYZER_0_PULSE_COUNT", "FG_WIDTH", "--every", "1ms", "--times", "2"});
    std::istringstream lines(outcome.out);
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    EXPECT_EQ(line.find('*'), std::string::npos);
    std::getline(lines, line);
    EXPECT_THAT(line, ::testing::MatchesRegex("    0\\.001000 s  \\*[0-9]+ .*   1024 pixel"));
}

TEST(WatchVerb, EntriesOfATableAreNamed) {
    EXPECT_THAT(quillon({"watch", "FG_LUT_VALUE_RED[0..1]", "--times", "1"}).out,
                HasSubstr("FG_LUT_VALUE_RED[0..1]\n"));
}

// Whoever runs the tests may have the signal ignored, which a program inherits.
TEST(WatchVerb, CtrlCEndsItWithWhatWasPrinted) {
    for (const char* words : {"watch FG_WIDTH --every 3600s", "status --watch --interval 3600"}) {
        const Folder folder;
        const Outcome outcome = shell("env --default-signal=INT \"$quillon\" " + std::string(words) +
                                          " > out &\nuntil [ -s out ]; do sleep 0.01; done; kill -INT $!; wait $!",
                                      folder.path());
        EXPECT_EQ(outcome.status, 0) << words;
        EXPECT_THAT(contentOf(folder / "out"), HasSubstr("0")) << words;
    }
}

TEST(WatchVerb, WhereTheSignalIsIgnoredItStaysSo) {
    const Folder folder;
    const Outcome outcome = shell(
        "trap '' INT\n\"$quillon\" watch FG_WIDTH --every 50ms --times 4 > out &\n"
        "until [ -s out ]; do sleep 0.01; done; kill -INT $!; wait $!",
        folder.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(contentOf(folder / "out"), HasSubstr("0.150000 s"));
}

TEST(WatchVerb, ItEndsWithItsReader) {
    EXPECT_EQ(shell("\"$quillon\" watch FG_WIDTH --every 1ms | head -n 2; exit ${PIPESTATUS[0]}").status, 0);
}

TEST(WatchVerb, TheStateCanBeSavedAfterwards) {
    const Folder folder;
    EXPECT_EQ(quillon({"watch", "FG_WIDTH", "--times", "1", "--save", folder / "a.mcf"}).status, 0);
    EXPECT_THAT(contentOf(folder / "a.mcf"), HasSubstr("FG_WIDTH=1024;"));
}

TEST(WatchVerb, ARefusedReadIsToldAndIsOne) {
    const Outcome outcome = quillon({"watch", "FG_WIDTH", "4711", "--times", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("1024 pixel   -"));
    const auto json = quillon({"watch", "4711", "--times", "1", "--json"}).json();
    EXPECT_EQ(json["values"][0]["value"], nullptr);
    EXPECT_LT(json["values"][0]["refused"]["code"], 0);
}

TEST(WatchVerb, NonsenseIsUsage) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"FG_WIDHT"},
                                               {"FG_WIDTH", "--every", "0s"},
                                               {"FG_WIDTH", "--every", "10"},
                                               {"FG_WIDTH", "--every", "1e300s"},
                                               {"FG_WIDTH", "--every", "20kHz"},
                                               {"FG_WIDTH", "--times", "0"},
                                               {"FG_WIDTH", "--times", "-1"},
                                               {}}) {
        std::vector<std::string> whole{"watch"};
        whole.insert(whole.end(), words.begin(), words.end());
        EXPECT_EQ(quillon(whole).status, 2) << ::testing::PrintToString(words);
    }
}

}  // namespace
}  // namespace quillon::cli::testing
