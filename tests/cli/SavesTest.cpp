#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<std::string> filesIn(const Folder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

struct Save {
    const char* words;
    const char* file;
};

class Saves : public ::testing::TestWithParam<Save> {};

INSTANTIATE_TEST_SUITE_P(OfEveryKind, Saves,
                         ::testing::Values(Save{"save", "a.mcf"}, Save{"get FG_WIDTH --save", "a.mcf"},
                                           Save{"lut --save", "a.lut"}, Save{"lut -o", "a.png"},
                                           Save{"trigger -o", "a.png"}, Save{"xml -o", "a.xml"},
                                           Save{"grab -o", "a.png"}, Save{"grab -o", "a.tif"}, Save{"grab -o", "a.raw"},
                                           Save{"grab --histogram", "a.png"}));

TEST_P(Saves, AnEndOfTheRoomIsAnErrorAndLeavesWhatStoodThere) {
    const Folder folder;
    const std::string file = GetParam().file;
    const Outcome outcome =
        shell("echo former > " + file + "; ulimit -f 1; \"$quillon\" " + GetParam().words + " " + file + " >/dev/null",
              folder.path());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(file + " cannot be written: File too large"));
    EXPECT_EQ(contentOf(folder / file), "former\n");
    EXPECT_THAT(filesIn(folder), ElementsAre(file));
}

TEST_P(Saves, ADeviceThatIsFullIsAnErrorAndStaysADevice) {
    const Folder folder;
    const std::string file = GetParam().file;
    const Outcome outcome =
        shell("ln -s /dev/full " + file + "; \"$quillon\" " + GetParam().words + " " + file, folder.path());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(file + " cannot be written: No space left on device"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / file));
}

TEST_P(Saves, ALinkStaysOneAndTheFileKeepsItsRights) {
    const Folder folder;
    const std::string file = GetParam().file;
    const Outcome outcome = shell("mkdir far; touch far/" + file + "; chmod 640 far/" + file + "; ln -s far/" + file +
                                      " " + file + "; \"$quillon\" " + GetParam().words + " " + file,
                                  folder.path());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(std::filesystem::is_symlink(folder / file));
    EXPECT_GT(std::filesystem::file_size(folder / ("far/" + file)), 1000U);
    EXPECT_EQ(static_cast<int>(std::filesystem::status(folder / ("far/" + file)).permissions()), 0640);
}

TEST(SavedFiles, AConfigurationThatDoesNotReachItsFileHasTheAppletsCode) {
    const Outcome outcome = quillon({"save", "/no/such/folder/state.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.err,
        "quillon: /no/such/folder/state.mcf was not written: -5001 (FileNotWritten), the file could not be written\n"
        "  /no/such/folder/state.mcf cannot be written: No such file or directory\n");
}

TEST(SavedFiles, ItsBytesAreThoseOfTheFile) {
    const Folder folder;
    const auto json = quillon({"save", folder / "a.mcf", "--json"}).json();
    EXPECT_EQ(json["bytes"], std::filesystem::file_size(folder / "a.mcf"));
    EXPECT_THAT(contentOf(folder / "a.mcf"), StartsWith("[Kamerasektion]\n"));
    EXPECT_THAT(contentOf(folder / "a.mcf"), EndsWith(";\n"));
}

TEST(SavedFiles, APipeGetsAllOfIt) {
    const Folder folder;
    const Outcome outcome = shell(
        "mkfifo a.mcf; cat a.mcf > copy & \"$quillon\" save a.mcf; status=$?; wait; \"$quillon\" save b.mcf; cmp copy "
        "b.mcf; exit $status",
        folder.path());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(contentOf(folder / "copy"), contentOf(folder / "b.mcf"));
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "a.mcf"));
}

}  // namespace
}  // namespace quillon::cli::testing
