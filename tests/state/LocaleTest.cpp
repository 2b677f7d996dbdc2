#include <stdlib.h>

#include <clocale>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

/// The host works under a locale with a decimal comma, made for the test where the system has none installed.
class HostLocale : public StateTest {
protected:
    void SetUp() override {
        if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
            make("de_DE", "de_DE.UTF-8");
            if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
                GTEST_SKIP() << "no locale with a decimal comma is installed, and localedef could not make one";
            }
        }
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    }

    void TearDown() override {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
    }

    /// Makes a locale that is known by `name` from now on.
    void make(const std::string& definition, const std::string& name) {
        const std::string command =
            "localedef --no-archive -i " + definition + " -f UTF-8 '" + path(name) + "' >/dev/null 2>&1";
        EXPECT_GE(std::system(command.c_str()), 0);
        ::setenv("LOCPATH", folder.c_str(), 1);
    }
};

TEST_F(HostLocale, NumbersOfASavedFileFollowIt) {
    const std::string text = save();
    EXPECT_EQ(lineOf(text, "FG_LINETRIGGERDEBOUNCING"), "FG_LINETRIGGERDEBOUNCING=0,112;");
    EXPECT_EQ(lineOf(text, "FG_LINEPERIODE"), "FG_LINEPERIODE=200;");
}

TEST_F(HostLocale, ItsOwnFilesComeBack) {
    EXPECT_EQ(built.applet.setDouble(FG_LINEPERIODE, 512.25), 0);
    const std::string text = save();
    EXPECT_EQ(built.applet.setDouble(FG_LINEPERIODE, 200.0), 0);
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(built.applet.readDouble(FG_LINEPERIODE), 512.25);
}

TEST_F(HostLocale, ADecimalPointEndsANumberOfALoadedFile) {
    EXPECT_EQ(load(withValue(start, "FG_LINEPERIODE", "300.75")), 0);
    EXPECT_EQ(built.applet.readDouble(FG_LINEPERIODE), 300.0);
}

TEST_F(HostLocale, IsKeptWhereNoLocaleIsCalledEnglish) {
    EXPECT_EQ(load(save()), 0);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "de_DE.UTF-8");
}

TEST_F(HostLocale, IsEnglishAfterASaveAndALoadWhereOneIsCalledSo) {
    make("en_US", "English");
    ASSERT_NE(std::setlocale(LC_ALL, "English"), nullptr);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(save(), start);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "English");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(built.applet.loadConfig(path("missing.mcf")), -2076);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "English");
}

}  // namespace
}  // namespace quillon::state
