#include "cli/PartFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/ExitStatus.h"
#include "tests/cli/Command.h"
#include "tests/cli/SizeLimit.h"

namespace quillon::cli {
namespace {

using testing::contentOf;
using testing::Folder;
using ::testing::HasSubstr;
using testing::SizeLimit;

void write(PartFile& file, std::string_view text) {
    file.write(std::as_bytes(std::span(text)));
}

std::size_t filesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST(PartFile, AFileAppearsWhenItIsWhole) {
    const Folder folder;
    PartFile file(folder / "a.txt");
    write(file, "whole");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.txt"));
    file.takePlace();
    EXPECT_EQ(contentOf(folder / "a.txt"), "whole");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PartFile, WhatStoodThereIsReplaced) {
    const Folder folder;
    for (const char* text : {"former", "new"}) {
        PartFile file(folder / "a.txt");
        write(file, text);
        file.takePlace();
    }
    EXPECT_EQ(contentOf(folder / "a.txt"), "new");
}

TEST(PartFile, WithoutAnEndNothingIsLeft) {
    const Folder folder;
    {
        PartFile file(folder / "a.txt");
        write(file, "torn");
        file.finish();
    }
    EXPECT_EQ(filesIn(folder.path()), 0U);
}

TEST(PartFile, TwoMayBeWrittenUnderOneName) {
    const Folder folder;
    PartFile first(folder / "a.txt");
    PartFile second(folder / "a.txt");
    write(first, "first");
    write(second, "second");
    first.takePlace();
    second.takePlace();
    EXPECT_EQ(contentOf(folder / "a.txt"), "second");
}

TEST(PartFile, ItCanBeWrittenOutOfOrder) {
    const Folder folder;
    PartFile file(folder / "a.txt");
    write(file, "....data");
    EXPECT_EQ(file.size(), 8U);
    file.seek(0);
    write(file, "head");
    EXPECT_EQ(file.size(), 8U);
    file.takePlace();
    EXPECT_EQ(contentOf(folder / "a.txt"), "headdata");
}

TEST(PartFile, ItHasTheRightsOfAnOrdinaryFile) {
    const Folder folder;
    const mode_t former = umask(022);
    PartFile file(folder / "a.txt");
    umask(former);
    file.takePlace();
    struct stat about {};
    ASSERT_EQ(stat((folder / "a.txt").c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777U, 0644U);
}

TEST(PartFile, AFolderThatIsMissingIsToldWithTheFilesName) {
    try {
        const PartFile file("/no/such/folder/a.txt");
        FAIL() << "a file was opened nowhere";
    } catch (const RefusedError& error) {
        EXPECT_STREQ(error.what(), "/no/such/folder/a.txt cannot be written: No such file or directory");
    }
}

TEST(PartFile, AFolderInItsPlaceIsToldAndNothingIsLeft) {
    const Folder folder;
    std::filesystem::create_directory(folder / "a.txt");
    {
        PartFile file(folder / "a.txt");
        EXPECT_THROW(file.takePlace(), RefusedError);
    }
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PartFile, AnEndOfTheRoomLeavesWhatStoodThere) {
    const Folder folder;
    {
        PartFile file(folder / "a.txt");
        write(file, "former");
        file.takePlace();
    }
    {
        const SizeLimit limit(1000);
        PartFile file(folder / "a.txt");
        try {
            write(file, std::string(100000, 'x'));
            file.takePlace();
            FAIL() << "more was written than there is room";
        } catch (const RefusedError& error) {
            EXPECT_THAT(error.what(), HasSubstr("a.txt cannot be written: File too large"));
        }
    }
    EXPECT_EQ(contentOf(folder / "a.txt"), "former");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PartFile, AnEndOfTheRoomIsFoundByTheLastBytes) {
    const Folder folder;
    const SizeLimit limit(3);
    PartFile file(folder / "a.txt");
    write(file, "four");
    EXPECT_THROW(file.takePlace(), RefusedError);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.txt"));
}

}  // namespace
}  // namespace quillon::cli
