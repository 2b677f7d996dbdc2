#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <string>

#include "files/ConfigFileParser.h"
#include "files/LutFileParser.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

/// Runs under a locale with a decimal comma, made for the test where the system has none installed.
class DecimalComma : public TemporaryFolder {
protected:
    void SetUp() override {
        if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr && !makeLocale()) {
            GTEST_SKIP() << "no locale with a decimal comma is installed, and localedef could not make one";
        }
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    }

    void TearDown() override {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
    }

private:
    bool makeLocale() {
        const std::string command =
            "localedef --no-archive -i de_DE -f UTF-8 '" + path("de_DE.UTF-8") + "' >/dev/null 2>&1";
        if (std::system(command.c_str()) < 0) {
            return false;
        }
        ::setenv("LOCPATH", folder.c_str(), 1);
        return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
};

TEST_F(DecimalComma, DoublesAreWrittenAndReadBackWithIt) {
    Fg_ConfigFileParser writer(nullptr, nullptr, false);
    ASSERT_TRUE(writer.setSaveFile(path("a.mcf").c_str()));
    writer.writeConfigFileByPort(0);
    writer.writeConfigFileDoubleKey("FG_LINEPERIODE", 0.112);
    writer.writeConfigFileIntKey("FG_WIDTH", 16384);
    EXPECT_EQ(bytesOf("a.mcf"), "\n[Port A]\nFG_LINEPERIODE=0,112;\nFG_WIDTH=16384;\n");

    Fg_ConfigFileParser reader(nullptr, path("a.mcf").c_str(), true);
    double period = 0;
    EXPECT_EQ(reader.parseDoubleKeySection(0, "FG_LINEPERIODE", &period), 0);
    EXPECT_EQ(period, 0.112);
}

TEST_F(DecimalComma, DecimalPointEndsANumber) {
    Fg_ConfigFileParser reader(nullptr, write("a.mcf", "[Port A]\nFG_LINEPERIODE=12.5;\n").c_str(), true);
    double period = 0;
    EXPECT_EQ(reader.parseDoubleKeySection(0, "FG_LINEPERIODE", &period), 0);
    EXPECT_EQ(period, 12.0);
}

TEST_F(DecimalComma, ParsersLeaveTheLocaleOfTheProcessAlone) {
    {
        Fg_ConfigFileParser parser(nullptr, write("a.mcf", "[Port A]\nK=1;\n").c_str(), true);
        int value = 0;
        EXPECT_EQ(parser.parseIntKeySection(0, "K", &value), 0);
    }
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "de_DE.UTF-8");
}

TEST_F(DecimalComma, LookupTablesAreIntegersAndStayTheSame) {
    std::uint32_t entries[] = {0, 65535};
    const LookupTable_s table = {.data = entries, .nrOfElements = 2};
    Fg_LutFileParser parser;
    ASSERT_EQ(parser.saveLutToFile(path("a.lut").c_str(), &table), 0);
    EXPECT_EQ(bytesOf("a.lut"),
              "# Lut data file v1.1\n\n\n\n[gray]\n\nid=0;\nnrOfElements=2;\nformat=0;\nnumber=0;\n0,0;\n1,65535;\n");
}

}  // namespace
}  // namespace quillon
