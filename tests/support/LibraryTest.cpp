#include "support/Library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/files/TemporaryFolder.h"
#include "tests/support/SupportProbe.h"

namespace orlo::tools::logging {
namespace {

namespace fs = std::filesystem;

TEST(RootAbove, IsTheDirectoryAboveTheMarkingOne) {
    EXPECT_EQ(rootAbove("/opt/orlo/bin/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/dll/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/Hardware Applets/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/lib/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/lib64/libQuillon.so"), "/opt/orlo");
}

TEST(RootAbove, MarksInAnyCase) {
    EXPECT_EQ(rootAbove("/opt/orlo/HARDWARE APPLETS/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/Lib64/libQuillon.so"), "/opt/orlo");
    EXPECT_EQ(rootAbove("/opt/orlo/DLL/libQuillon.so"), "/opt/orlo");
}

TEST(RootAbove, WalksUpToTheFirstThatMarks) {
    EXPECT_EQ(rootAbove("/opt/lib/orlo/bin/mE6/Line/libQuillon.so"), "/opt/lib/orlo");
    EXPECT_EQ(rootAbove("/lib/deep/er/libQuillon.so"), "");
}

TEST(RootAbove, DropsRepeatedSlashes) {
    EXPECT_EQ(rootAbove("/opt/orlo//lib///libQuillon.so"), "/opt/orlo");
}

TEST(RootAbove, IsNothingWithoutAMarkingDirectory) {
    EXPECT_EQ(rootAbove("/opt/orlo/applets/libQuillon.so"), std::nullopt);
    EXPECT_EQ(rootAbove("/opt/library/libs/mylib/libQuillon.so"), std::nullopt);
    EXPECT_EQ(rootAbove("libQuillon.so"), std::nullopt);
    EXPECT_EQ(rootAbove("/opt/applets/lib"), std::nullopt);  // the file's own name marks nothing
    EXPECT_EQ(rootAbove(""), std::nullopt);
}

TEST(OpenedLibrary, TellsTheLoadersWordsOnFailure) {
    const Library missing("/nowhere/libmissing.so");
    EXPECT_FALSE(missing.isOpen());
    EXPECT_NE(missing.error().find("/nowhere/libmissing.so"), std::string::npos);
}

TEST(OpenedLibrary, GivesItsSymbols) {
    const Library probe(SUPPORT_PROBE);
    ASSERT_TRUE(probe.isOpen()) << probe.error();
    EXPECT_NE(probe.symbol("probe_find"), nullptr);
    EXPECT_EQ(probe.symbol("probe_nothing"), nullptr);
}

/// Copies of the probe in folders of an installation: each is a program of its own, that has not searched yet.
class LibrarySearch : public quillon::TemporaryFolder {
protected:
    using Find = decltype(&probe_find);

    void SetUp() override {
        unsetenv("ORLODIR5_64");
        unsetenv("ORLODIR5");
    }
    void TearDown() override { SetUp(); }

    fs::path place(const fs::path& file) const {
        const fs::path target = folder / file;
        fs::create_directories(target.parent_path());
        fs::copy_file(SUPPORT_PROBE, target);
        return target;
    }

    /// The search of a copy that lies in `directory`.
    Find searchFrom(const fs::path& directory) const {
        void* const library = dlopen(place(directory / "libprobe.so").c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(library, nullptr) << dlerror();
        return reinterpret_cast<Find>(dlsym(library, "probe_find"));
    }
};

TEST_F(LibrarySearch, LooksInLib64BesideTheAppletsMarkedDirectory) {
    const fs::path needle = place("root/lib64/libneedle.so");
    EXPECT_STREQ(searchFrom("root/Hardware APPLETS/mE6")("needle", nullptr), needle.c_str());
}

TEST_F(LibrarySearch, TheAppletsPlaceWinsOverTheEnvironment) {
    const fs::path needle = place("root/lib64/libneedle.so");
    place("other/lib64/libneedle.so");
    setenv("ORLODIR5_64", (folder / "other").c_str(), 1);
    EXPECT_STREQ(searchFrom("root/bin")("needle", nullptr), needle.c_str());
}

TEST_F(LibrarySearch, TheNewerVariableWinsOverTheOlder) {
    const fs::path newer = place("newer/lib64/libneedle.so");
    place("older/lib64/libneedle.so");
    setenv("ORLODIR5_64", (folder / "newer").c_str(), 1);
    setenv("ORLODIR5", (folder / "older").c_str(), 1);
    EXPECT_STREQ(searchFrom("applets")("needle", nullptr), newer.c_str());
}

TEST_F(LibrarySearch, TheOlderVariableServesAlone) {
    const fs::path older = place("older/lib64/libneedle.so");
    setenv("ORLODIR5", (folder / "older").c_str(), 1);
    EXPECT_STREQ(searchFrom("applets")("needle", nullptr), older.c_str());
}

TEST_F(LibrarySearch, AVariableMayEndInSlashes) {
    const fs::path needle = place("newer/lib64/libneedle.so");
    setenv("ORLODIR5_64", ((folder / "newer").string() + "///").c_str(), 1);
    EXPECT_STREQ(searchFrom("applets")("needle", nullptr), needle.c_str());
}

TEST_F(LibrarySearch, AnEmptyNewerVariableCountsAsSet) {
    place("older/lib64/libneedle.so");
    setenv("ORLODIR5_64", "", 1);
    setenv("ORLODIR5", (folder / "older").c_str(), 1);
    EXPECT_EQ(searchFrom("applets")("needle", nullptr), nullptr);
}

TEST_F(LibrarySearch, WithoutAPlaceAndAVariableNothingIsFound) {
    EXPECT_EQ(searchFrom("applets")("needle", nullptr), nullptr);
}

TEST_F(LibrarySearch, AVariableThatComesLaterIsStillTaken) {
    const fs::path needle = place("newer/lib64/libneedle.so");
    const Find find = searchFrom("applets");
    EXPECT_EQ(find("needle", nullptr), nullptr);
    setenv("ORLODIR5_64", (folder / "newer").c_str(), 1);
    EXPECT_STREQ(find("needle", nullptr), needle.c_str());
}

TEST_F(LibrarySearch, ARootOnceFoundStays) {
    const fs::path first = place("first/lib64/libneedle.so");
    place("second/lib64/libneedle.so");
    const Find find = searchFrom("applets");
    setenv("ORLODIR5_64", (folder / "first").c_str(), 1);
    EXPECT_STREQ(find("needle", nullptr), first.c_str());
    setenv("ORLODIR5_64", (folder / "second").c_str(), 1);
    EXPECT_STREQ(find("needle", nullptr), first.c_str());
}

TEST_F(LibrarySearch, AGivenRootIsTakenAsItIs) {
    const fs::path needle = place("given/lib64/libneedle.so");
    EXPECT_STREQ(searchFrom("applets")("needle", (folder / "given").c_str()), needle.c_str());
}

TEST_F(LibrarySearch, ALibraryThatIsNotThereIsNothing) {
    EXPECT_EQ(searchFrom("root/lib")("needle", nullptr), nullptr);
}

TEST_F(LibrarySearch, AVariableLongerThanItsBufferFindsNothing) {
    setenv("ORLODIR5_64", std::string(5000, 'x').c_str(), 1);
    EXPECT_EQ(searchFrom("applets")("needle", nullptr), nullptr);
}

}  // namespace
}  // namespace orlo::tools::logging
