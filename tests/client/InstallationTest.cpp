#include <gmock/gmock.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Installation.h"

namespace quillon::client {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class Installed : public ::testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "quillon-home-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        home = name;
    }
    void TearDown() override {
        unsetenv("QUILLON_HOME");
        fs::remove_all(home);
    }

    fs::path home;
};

TEST_F(Installed, TheAppletIsFoundInTheBuildFolderThatThisProgramLiesIn) {
    const auto found = findInstallation();
    ASSERT_TRUE(found);
    EXPECT_TRUE(fs::equivalent(found->applet, QUILLON_BUILT_LIBRARY));
    EXPECT_TRUE(fs::equivalent(found->softBoard, QUILLON_BUILT_STAND_INS));
}

TEST_F(Installed, TheAppletOpensWithoutAPath) {
    SoftBoard board;
    const Applet applet(Library::open(), board);
    EXPECT_EQ(applet.readInt(FG_WIDTH), 1024);
}

TEST_F(Installed, TheEnvironmentComesFirst) {
    fs::create_directory(home / "lib");
    std::ofstream(home / "lib" / "libQuillon.so") << "no library";
    setenv("QUILLON_HOME", home.c_str(), 1);
    const auto found = findInstallation();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->applet, home / "lib" / "libQuillon.so");
    EXPECT_EQ(found->softBoard, home / "lib" / "softboard");
    EXPECT_THROW(Library::open(), LibraryError);
}

TEST_F(Installed, AnEnvironmentThatIsWrongIsTold) {
    setenv("QUILLON_HOME", home.c_str(), 1);
    EXPECT_FALSE(findInstallation());
    try {
        requireInstallation();
        FAIL();
    } catch (const LibraryError& error) {
        EXPECT_THAT(error.what(), HasSubstr("QUILLON_HOME=" + home.string()));
    }
    EXPECT_THROW(SoftBoard(), LibraryError);
    setenv("QUILLON_HOME", "", 1);
    EXPECT_TRUE(findInstallation()) << "an empty one is none";
}

}  // namespace
}  // namespace quillon::client
