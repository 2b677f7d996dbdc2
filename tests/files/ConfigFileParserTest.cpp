#include <gtest/gtest.h>
#include <sys/stat.h>

#include <climits>
#include <cstdio>
#include <fstream>
#include <limits>
#include <string>

#include "files/ConfigFileParser.h"
#include "support/FgLog.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

/// Opening, file names, and what is written.
class ConfigFile : public TemporaryFolder {
protected:
    /// What stands in a file after `write` has been given a parser that saves to it.
    template <typename Write>
    std::string saved(Write write) {
        Fg_ConfigFileParser parser(nullptr, nullptr, false);
        EXPECT_TRUE(parser.setSaveFile(path("saved.mcf").c_str()));
        write(parser);
        return bytesOf("saved.mcf");
    }
};

TEST_F(ConfigFile, TypeIsTheExtensionAnywhereInTheName) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    EXPECT_TRUE(parser.checkFileType("a.mcf"));
    EXPECT_TRUE(parser.checkFileType("a.mcf.bak"));
    EXPECT_TRUE(parser.checkFileType("/old.mcf.d/a.txt"));
    EXPECT_FALSE(parser.checkFileType("a.txt"));
    EXPECT_FALSE(parser.checkFileType("a.MCF"));
    EXPECT_FALSE(parser.checkFileType(""));
    EXPECT_FALSE(parser.checkFileType(nullptr));
}

TEST_F(ConfigFile, ExistsIfItOpensForReading) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    EXPECT_TRUE(parser.checkFileExist(write("a.txt", "").c_str()));
    EXPECT_FALSE(parser.checkFileExist(path("b.mcf").c_str()));
    EXPECT_FALSE(parser.checkFileExist(nullptr));
}

TEST_F(ConfigFile, SaveToANameOfAnotherTypeIsRefusedAndLeavesTheFile) {
    const std::string name = write("a.txt", "kept");
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    EXPECT_FALSE(parser.setSaveFile(name.c_str()));
    EXPECT_EQ(bytesOf("a.txt"), "kept");
    EXPECT_FALSE(parser.setSaveFile(nullptr));
}

TEST_F(ConfigFile, SaveIntoAMissingFolderIsRefused) {
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    EXPECT_FALSE(parser.setSaveFile(path("none/a.mcf").c_str()));
}

TEST_F(ConfigFile, SaveTruncatesTheFileThatWasThere) {
    write("saved.mcf", "old old old old");
    EXPECT_EQ(saved([](Fg_ConfigFileParser&) {}), "");
}

TEST_F(ConfigFile, OpeningWithoutReadOnlyKeepsWhatStandsInTheFile) {
    const std::string name = write("a.mcf", "[Port A]\nK=1;\n");
    int value = 0;
    EXPECT_EQ(Fg_ConfigFileParser(nullptr, name.c_str(), false).parseIntKeySection(0, "K", &value), 0);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(bytesOf("a.mcf"), "[Port A]\nK=1;\n");
}

TEST_F(ConfigFile, WritesWithoutAFileDoNothing) {
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    parser.writeConfigFileHeader();
    parser.writeConfigFilePortA();
    parser.writeConfigFileIntKey("K", 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(ConfigFile, WritesToAFileOpenForReadingLeaveItAlone) {
    const std::string name = write("a.mcf", "[Port A]\nK=1;\n");
    Fg_ConfigFileParser(nullptr, name.c_str(), true).writeConfigFileIntKey("K", 2);
    EXPECT_EQ(bytesOf("a.mcf"), "[Port A]\nK=1;\n");
}

TEST_F(ConfigFile, HeaderIsTwoLiterals) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) { parser.writeConfigFileHeader(); }),
              "[Kamerasektion]\n\nConfigFileVersion=2.0;\n");
}

TEST_F(ConfigFile, PortsAreNamedByLetters) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    EXPECT_EQ(parser.getPortString(0), "[Port A]");
    EXPECT_EQ(parser.getPortString(1), "[Port B]");
    EXPECT_EQ(parser.getPortString(3), "[Port D]");
}

TEST_F(ConfigFile, PortSectionsBeginWithAnEmptyLine) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) {
                  parser.writeConfigFilePortA();
                  parser.writeConfigFilePortB();
                  parser.writeConfigFileByPort(2);
              }),
              "\n[Port A]\n\n[Port B]\n\n[Port C]\n");
}

TEST_F(ConfigFile, TextsStandInQuotesAsTheyAre) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) {
                  parser.writeConfigFile("FG_DEBUGFILE", "");
                  parser.writeConfigFile("Typ", "a 'b';=%s");
                  parser.writeConfigFileValue("Raw", "a b");
              }),
              "FG_DEBUGFILE='';\nTyp='a 'b';=%s';\nRaw=a b;\n");
}

TEST_F(ConfigFile, IntegersStandWithTheirSign) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) {
                  parser.writeConfigFileIntKey("A", 0);
                  parser.writeConfigFileIntKey("B", INT_MIN);
                  parser.writeConfigFileUInt64Key("C", ULONG_MAX);
                  parser.writeConfigFileInt64Key("D", LONG_MIN);
              }),
              "A=0;\nB=-2147483648;\nC=18446744073709551615;\nD=-9223372036854775808;\n");
}

TEST_F(ConfigFile, DoublesKeepTwelveDigitsAndNoTrailingZeros) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) {
                  parser.writeConfigFileDoubleKey("A", 200.0);
                  parser.writeConfigFileDoubleKey("B", 0.112);
                  parser.writeConfigFileDoubleKey("C", 0.00001);
                  parser.writeConfigFileDoubleKey("D", 1.0 / 3.0);
                  parser.writeConfigFileDoubleKey("E", -std::numeric_limits<double>::max());
                  parser.writeConfigFileDoubleKey("F", 123456789012345.0);
              }),
              "A=200;\nB=0.112;\nC=1e-05;\nD=0.333333333333;\nE=-1.79769313486e+308;\nF=1.23456789012e+14;\n");
}

TEST_F(ConfigFile, EachWriteIsInTheFileAtOnce) {
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    ASSERT_TRUE(parser.setSaveFile(path("a.mcf").c_str()));
    parser.writeConfigFileIntKey("K", 1);
    EXPECT_EQ(bytesOf("a.mcf"), "K=1;\n");
    parser.writeConfigFile("L", "x");
    EXPECT_EQ(bytesOf("a.mcf"), "K=1;\nL='x';\n");
}

TEST_F(ConfigFile, WholeFileToTheByte) {
    EXPECT_EQ(saved([](Fg_ConfigFileParser& parser) {
                  parser.writeConfigFileHeader();
                  parser.writeConfigFile("Hersteller", "Veltrix");
                  parser.writeConfigFile("Typ", "Quillon");
                  parser.writeConfigFile("Version", "2.1.2");
                  parser.writeConfigFileIntKey("LoadAppletId", 0);
                  parser.writeConfigFileIntKey("AktivePort", 0);
                  parser.writeConfigFileByPort(0);
                  parser.writeConfigFileIntKey("FG_TIMEOUT", 1000000);
              }),
              "[Kamerasektion]\n\nConfigFileVersion=2.0;\nHersteller='Veltrix';\nTyp='Quillon';\nVersion='2.1.2';\n"
              "LoadAppletId=0;\nAktivePort=0;\n\n[Port A]\nFG_TIMEOUT=1000000;\n");
}

TEST_F(ConfigFile, FailuresAreToldToALogThatIsOpen) {
    {
        Fg_Log log("unused");
        log.attach(std::fopen(path("log").c_str(), "w"));
        const Fg_ConfigFileParser wrongType(&log, "a.txt", true);
        const Fg_ConfigFileParser missing(&log, path("none.mcf").c_str(), true);
        const std::string good = write("a.mcf", "");
        Fg_ConfigFileParser parser(&log, good.c_str(), true);
        EXPECT_FALSE(parser.setSaveFile(path("none/a.mcf").c_str()));
    }
    EXPECT_EQ(bytesOf("log"),
              "lumaframeIV::Error >> Config File is Invalid;\n"
              "lumaframeIV::Error >> Config File is Invalid;\n"
              "lumaframeIV::Error >> Config File: fopen failed;\n");
}

TEST_F(ConfigFile, PipeIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(path("pipe.mcf").c_str(), 0600), 0);
    EXPECT_FALSE(Fg_ConfigFileParser(nullptr, path("pipe.mcf").c_str(), true).checkFileExist(path("pipe.mcf").c_str()));
}

TEST_F(ConfigFile, ADeviceIsAFile) {
    for (const char* device : {"/dev/null", "/dev/zero"}) {  // the one is empty, the other has no end
        const std::string name = path(std::string("link") + ".mcf");
        std::filesystem::remove(name);
        std::filesystem::create_symlink(device, name);
        for (const bool readOnly : {true, false}) {
            Fg_ConfigFileParser parser(nullptr, name.c_str(), readOnly);
            EXPECT_TRUE(parser.checkFileExist(name.c_str()));
            char text[256];
            EXPECT_EQ(parser.parseKeyFromLine("Typ", text), -8000);
            EXPECT_STREQ(text, "Error");
            EXPECT_EQ(parser.parseKey("[Port A]", "K", text), -8000);
        }
    }
}

class ConfigFileUpdate : public ConfigFile {
protected:
    /// The file's bytes after `use` had the parser of it.
    template <class Use>
    std::string after(const std::string& bytes, Use use) {
        const std::string name = write("update.mcf", bytes);
        {
            Fg_ConfigFileParser parser(nullptr, name.c_str(), false);
            use(parser);
        }
        return bytesOf("update.mcf");
    }

    char text[256];
    int value = 0;
    const std::string file = "[Port A]\nA=1;\nB=2;\nC=3;\nD=4;\n";
};

TEST_F(ConfigFileUpdate, AWriteBehindALookUpGoesBehindTheLineAfterItsOwn) {
    EXPECT_EQ(after(file,
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseIntKeySection(0, "A", &value), 0);
                        parser.writeConfigFileIntKey("X", 9);
                    }),
              "[Port A]\nA=1;\nB=2;\nX=9;\nD=4;\n");
    EXPECT_EQ(after(file,
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseKeyFromLine("B", text), 0);
                        parser.writeConfigFileIntKey("X", 9);
                    }),
              "[Port A]\nA=1;\nB=2;\nC=3;\nX=9;\n");
}

TEST_F(ConfigFileUpdate, AWriteBehindALookUpOfTheLastKeyAppends) {
    EXPECT_EQ(after(file,
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseIntKeySection(0, "D", &value), 0);
                        parser.writeConfigFileIntKey("X", 9);
                    }),
              file + "X=9;\n");
}

TEST_F(ConfigFileUpdate, AWriteBehindALookUpThatFoundNothingAppends) {
    EXPECT_EQ(after(file,
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseIntKeySection(0, "none", &value), -1);
                        parser.writeConfigFileIntKey("X", 9);
                        parser.writeConfigFileIntKey("Y", 8);
                        ASSERT_EQ(parser.parseIntKeySection(0, "Y", &value), 0);  // what was written is found
                        parser.writeConfigFileIntKey("Z", 7);
                    }),
              file + "X=9;\nY=8;\nZ=7;\n");
    EXPECT_EQ(value, 8);
    EXPECT_EQ(after(file,
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseKeyFromLine("none", text), -8000);
                        parser.writeConfigFile("X", "9");
                    }),
              file + "X='9';\n");
}

TEST_F(ConfigFileUpdate, AWriteBehindNoLookUpOverwritesTheStart) {
    EXPECT_EQ(after(file, [&](Fg_ConfigFileParser& parser) { parser.writeConfigFileIntKey("LONGE", 9); }),
              "LONGE=9;\nA=1;\nB=2;\nC=3;\nD=4;\n");
}

TEST_F(ConfigFileUpdate, ANewFileIsWrittenFromItsStartWhateverWasLookedUpBefore) {
    Fg_ConfigFileParser parser(nullptr, write("a.mcf", file).c_str(), false);
    ASSERT_EQ(parser.parseIntKeySection(0, "A", &value), 0);
    ASSERT_TRUE(parser.setSaveFile(path("b.mcf").c_str()));
    parser.writeConfigFileIntKey("X", 9);
    EXPECT_EQ(bytesOf("b.mcf"), "X=9;\n");
}

TEST_F(ConfigFileUpdate, AWriteBehindALookUpInALongFileGoesWhereItEnded) {
    std::string bytes = "[Port A]\n";
    for (int i = 0; i < 3000; ++i) {
        bytes += "KEY" + std::to_string(i) + "=1;\n";
    }
    const std::string head = bytes + "A=1;\nB=2;\n";
    EXPECT_EQ(after(head + "C=3;\nD=4;\n",
                    [&](Fg_ConfigFileParser& parser) {
                        ASSERT_EQ(parser.parseIntKeySection(0, "A", &value), 0);
                        parser.writeConfigFileIntKey("X", 9);
                    }),
              head + "X=9;\nD=4;\n");
}

TEST(ConfigFileConversion, IntegersAreDecimalAndKeepTheirLow32Bits) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    int value = 7;
    EXPECT_EQ(parser.getIntValue("-12 px", &value), 0);
    EXPECT_EQ(value, -12);
    EXPECT_EQ(parser.getIntValue("010", &value), 0);
    EXPECT_EQ(value, 10);
    EXPECT_EQ(parser.getIntValue("4294967295", &value), 0);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(parser.getIntValue("4294967301", &value), 0);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(parser.getIntValue("none", &value), 0);
    EXPECT_EQ(value, 0);
}

TEST(ConfigFileConversion, SixtyFourBitIntegersStayAsTheyWereWithoutANumber) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    unsigned long unsignedValue = 7;
    EXPECT_EQ(parser.getUInt64Value("none", &unsignedValue), 0);
    EXPECT_EQ(unsignedValue, 7u);
    EXPECT_EQ(parser.getUInt64Value("18446744073709551615", &unsignedValue), 0);
    EXPECT_EQ(unsignedValue, ULONG_MAX);
    long value = 7;
    EXPECT_EQ(parser.getInt64Value("", &value), 0);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(parser.getInt64Value("-9223372036854775808", &value), 0);
    EXPECT_EQ(value, LONG_MIN);
    EXPECT_EQ(parser.getInt64Value("0x10", &value), 0);
    EXPECT_EQ(value, 16);
}

TEST(ConfigFileConversion, DoubleWithoutANumberIsZero) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, false);
    double value = 7;
    EXPECT_EQ(parser.getDoubleValue("none", &value), 0);
    EXPECT_EQ(value, 0.0);
    EXPECT_EQ(parser.getDoubleValue("1e-05", &value), 0);
    EXPECT_EQ(value, 0.00001);
}

}  // namespace
}  // namespace quillon
