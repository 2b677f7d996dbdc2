#include "cli/Completions.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// A command of two verbs, with the words of the applet.
class Candidate : public ::testing::Test {
protected:
    Candidate() : session_(optionsOfTheBuild()), completions_(command(), session_) {}

    Candidates after(const Words& words, const std::string& beginning) const {
        return completions_.after(words, beginning);
    }
    Words wordsAfter(const Words& words, const std::string& beginning) const { return after(words, beginning).words; }

private:
    static Options optionsOfTheBuild() {
        const std::filesystem::path root = std::filesystem::path(QUILLON_COMMAND).parent_path().parent_path();
        Options options;
        options.library = root / "lib" / "libQuillon.so";
        options.softBoard = root / "lib" / "softboard";
        return options;
    }
    static Description command() {
        Description get{"get", "", "", {}, {}};
        Description set{"set", "", "", {{"--trace", {"trace"}, "", ""}, {"--fault", {"fault"}, "NAME=CODE", ""}}, {}};
        Description lut{"lut", "", "", {{"-o,--output", {"output"}, "FILE", ""}}, {}};
        return {"quillon", "", "", {{"--json", {"json"}, "", ""}, {"--mcf", {"mcf"}, "FILE", ""}}, {get, set, lut}};
    }

    Session session_;
    Completions completions_;
};

TEST_F(Candidate, FirstIsAVerb) {
    EXPECT_THAT(wordsAfter({}, ""), ElementsAre("get", "set", "lut"));
    EXPECT_THAT(wordsAfter({"--json"}, "S"), ElementsAre("set"));
}

TEST_F(Candidate, IsAParameterInWhateverCase) {
    EXPECT_THAT(wordsAfter({"get"}, "fg_wid"), ElementsAre("FG_WIDTH"));
    EXPECT_EQ(after({"get"}, "fg_wid").behind, " ");
}

TEST_F(Candidate, BehindAnAssignmentIsAnEnumerator) {
    EXPECT_THAT(wordsAfter({"set"}, "FG_WID"), ElementsAre("FG_WIDTH"));
    EXPECT_EQ(after({"set"}, "FG_WID").behind, "=");
    EXPECT_THAT(wordsAfter({"set", "FG_WIDTH=8"}, "fg_exsyncon=fg_o"),
                ElementsAre("fg_exsyncon=FG_ON", "fg_exsyncon=FG_OFF"));
    EXPECT_THAT(wordsAfter({"set"}, "FG_WIDTH=1"), IsEmpty());
}

TEST_F(Candidate, IsAnOptionOfTheVerbOrOfAll) {
    EXPECT_THAT(wordsAfter({"set"}, "--"), ElementsAre("--fault", "--json", "--mcf", "--trace"));
    EXPECT_THAT(wordsAfter({"get"}, "--"), ElementsAre("--json", "--mcf"));
}

TEST_F(Candidate, IsAFileWithTheSuffixOrAFolder) {
    const Folder folder;
    std::ofstream(folder / "a.mcf") << "";
    std::ofstream(folder / "a.txt") << "";
    std::filesystem::create_directory(folder / "apart");
    const std::string front = folder.path().string() + "/";
    EXPECT_THAT(wordsAfter({"load"}, front + "a"), ElementsAre(front + "a.mcf", front + "apart/"));
    EXPECT_THAT(wordsAfter({"get", "--mcf"}, front + "a."), ElementsAre(front + "a.mcf"));
    EXPECT_THAT(wordsAfter({"get"}, "--mcf=" + front + "a."), ElementsAre("--mcf=" + front + "a.mcf"));
    EXPECT_THAT(wordsAfter({"lut", "-o"}, front + "a."), ElementsAre(front + "a.mcf", front + "a.txt"));
    EXPECT_EQ(after({"load"}, front + "ap").behind, "");
    EXPECT_THAT(wordsAfter({"load"}, "/no such folder/"), IsEmpty());
}

TEST_F(Candidate, IsAWordOfAListOrOfTheApplet) {
    EXPECT_THAT(wordsAfter({"grab", "--clock"}, "r"), ElementsAre("real"));
    EXPECT_THAT(wordsAfter({"wait"}, "FG_END"), Contains("FG_END_OF_FRAME_CAM_PORT_0"));
    EXPECT_THAT(wordsAfter({"registers"}, "boardc"), ElementsAre("BoardControl"));
    EXPECT_THAT(wordsAfter({"list", "--group"}, "r"), Contains("ROI"));
    EXPECT_THAT(wordsAfter({"get"}, "DRA_"), Not(Contains("DRA_BoardControl")));
}

}  // namespace
}  // namespace quillon::cli::testing
