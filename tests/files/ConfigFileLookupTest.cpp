#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "files/ConfigFileParser.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

using testing::FieldsAre;

/// The outcome of a look-up: its result, and what then stands in the caller's value.
template <typename Value>
struct Found {
    int result;
    Value value;
};

class ConfigFileLookup : public TemporaryFolder {
protected:
    Found<std::string> text(const std::string& bytes, const char* key, const char* section = "[Port A]") {
        char value[1024] = "untouched";
        const int result = open(bytes).parseKey(section, key, value);
        return {result, value};
    }

    Found<std::string> headerText(const std::string& bytes, const char* key) {
        char value[1024] = "untouched";
        const int result = open(bytes).parseKeyFromLine(key, value);
        return {result, value};
    }

    Found<int> integer(const std::string& bytes, const char* key) {
        int value = 77;
        const int result = open(bytes).parseIntKeySection(0, key, &value);
        return {result, value};
    }

    Fg_ConfigFileParser open(const std::string& bytes) {
        return Fg_ConfigFileParser(nullptr, write("a.mcf", bytes).c_str(), true);
    }
};

TEST_F(ConfigFileLookup, KeyOfItsSection) {
    EXPECT_THAT(text("[Port A]\nFG_WIDTH=1024;\n", "FG_WIDTH"), FieldsAre(0, "1024"));
    EXPECT_THAT(text("[Port A]\nFG_WIDTH=1;\n\n[Port B]\nFG_WIDTH=2;\n", "FG_WIDTH", "[Port B]"), FieldsAre(0, "2"));
}

TEST_F(ConfigFileLookup, KeysInAnyOrder) {
    Fg_ConfigFileParser parser = open("[Port A]\nA=1;\nB=2;\n");
    int value = 0;
    EXPECT_EQ(parser.parseIntKeySection(0, "B", &value), 0);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(parser.parseIntKeySection(0, "A", &value), 0);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(parser.parseIntKeySection(0, "C", &value), -1);
    EXPECT_EQ(parser.parseIntKeySection(0, "A", &value), 0);
    EXPECT_EQ(value, 1);
}

TEST_F(ConfigFileLookup, KeyAboveItsSectionIsNotSeen) {
    EXPECT_THAT(text("K=1;\n[Port A]\nL=2;\n", "K"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, KeyBesideItsSectionsNameIsNotSeen) {
    EXPECT_THAT(text("K=1;[Port A]\nL=2;\n", "K"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, KeyAbsentFromItsSectionIsFoundInALaterOne) {
    EXPECT_THAT(text("[Port A]\nL=2;\n[Port B]\nK=1;\n", "K"), FieldsAre(0, "1"));
}

TEST_F(ConfigFileLookup, SectionsNameMayStandAnywhereInItsLine) {
    EXPECT_THAT(text("# see [Port A], below\nK=1;\n", "K"), FieldsAre(0, "1"));
}

TEST_F(ConfigFileLookup, MissingSectionIsAnError) {
    EXPECT_THAT(text("[Port B]\nK=1;\n", "K"), FieldsAre(-8000, "Error"));
    EXPECT_THAT(text("", "K"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, FirstOfTwoLinesWithOneKeyServes) {
    EXPECT_THAT(text("[Port A]\nK=1;\nK=2;\n", "K"), FieldsAre(0, "1"));
}

TEST_F(ConfigFileLookup, LongerKeyWithTheSameBeginningIsPassedOver) {
    EXPECT_THAT(text("[Port A]\nFG_LINE_DOWNSCALEINIT=3;\nFG_LINE_DOWNSCALE=2;\n", "FG_LINE_DOWNSCALE"),
                FieldsAre(0, "2"));
}

TEST_F(ConfigFileLookup, ShorterKeyIsPassedOver) {
    EXPECT_THAT(text("[Port A]\nFG_LINE=3;\nFG_LINE_DOWNSCALE=2;\n", "FG_LINE_DOWNSCALE"), FieldsAre(0, "2"));
}

TEST_F(ConfigFileLookup, BlankBehindTheKeyHidesIt) {
    EXPECT_THAT(text("[Port A]\nFG_HEIGHT = 5;\n", "FG_HEIGHT"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, BlankBeforeTheKeyHidesIt) {
    EXPECT_THAT(text("[Port A]\n FG_HEIGHT=5;\n", "FG_HEIGHT"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, BlanksBelongToTheValue) {
    EXPECT_THAT(text("[Port A]\nK= 5 ;\n", "K"), FieldsAre(0, " 5 "));
    EXPECT_THAT(integer("[Port A]\nK= 5 ;\n", "K"), FieldsAre(0, 5));
}

TEST_F(ConfigFileLookup, QuotesAreDropped) {
    EXPECT_THAT(text("[Port A]\nKEY='a b';\n", "KEY"), FieldsAre(0, "a b"));
}

TEST_F(ConfigFileLookup, ValueIsCutAtDelimiters) {
    EXPECT_THAT(text("[Port A]\nK='a=b';\n", "K"), FieldsAre(0, "a"));
    EXPECT_THAT(text("[Port A]\nK='a;b';\n", "K"), FieldsAre(0, "a"));
    EXPECT_THAT(text("[Port A]\nK='a'b';\n", "K"), FieldsAre(0, "a"));
    EXPECT_THAT(text("[Port A]\nK==a;\n", "K"), FieldsAre(0, "a"));
}

TEST_F(ConfigFileLookup, EmptyQuotesAreAnEmptyText) {
    EXPECT_THAT(text("[Port A]\nFG_DEBUGFILE='';\nFG_TIMEOUT=1;\n", "FG_DEBUGFILE"), FieldsAre(0, ""));
}

TEST_F(ConfigFileLookup, LineWithoutAValueIsAnEmptyText) {
    EXPECT_THAT(text("[Port A]\nK=;\n", "K"), FieldsAre(0, ""));
    EXPECT_THAT(text("[Port A]\nK=\n", "K"), FieldsAre(0, ""));
    EXPECT_THAT(text("[Port A]\r\nK=\r\n", "K"), FieldsAre(0, ""));
    EXPECT_THAT(integer("[Port A]\nK=;\n", "K"), FieldsAre(0, 0));
}

TEST_F(ConfigFileLookup, DelimitersAsTheFilesLastBytesAreAnEmptyText) {
    EXPECT_THAT(text("[Port A]\nKEY=;", "KEY"), FieldsAre(0, ""));
    EXPECT_THAT(text("[Port A]\nKEY=", "KEY"), FieldsAre(0, ""));
    EXPECT_THAT(text("[Port A]\nKEY='';", "KEY"), FieldsAre(0, ""));
}

TEST_F(ConfigFileLookup, ValueWithoutASemicolonKeepsItsLineFeed) {
    EXPECT_THAT(text("[Port A]\nK=abc\n", "K"), FieldsAre(0, "abc\n"));
    EXPECT_THAT(text("[Port A]\nK=abc", "K"), FieldsAre(0, "abc"));
    EXPECT_THAT(integer("[Port A]\nK=12\n", "K"), FieldsAre(0, 12));
}

TEST_F(ConfigFileLookup, CarriageReturnsBehindTheSemicolonDontMatter) {
    EXPECT_THAT(text("[Port A]\r\nK=1;\r\nL='x';\r\n", "K"), FieldsAre(0, "1"));
    EXPECT_THAT(text("[Port A]\r\nK=1;\r\nL='x';\r\n", "L"), FieldsAre(0, "x"));
    EXPECT_THAT(text("[Port A]\r\nK='';\r\n", "K"), FieldsAre(0, ""));
}

TEST_F(ConfigFileLookup, KeyIsCaseSensitive) {
    EXPECT_THAT(text("[Port A]\nk=1;\n", "K"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, LineOf255CharactersIsReadWhole) {
    const std::string value(252, 'x');
    EXPECT_THAT(text("[Port A]\nK=" + value + ";\nL=2;\n", "K"), FieldsAre(0, value));
    EXPECT_THAT(text("[Port A]\nK=" + value + ";\nL=2;\n", "L"), FieldsAre(0, "2"));
}

TEST_F(ConfigFileLookup, LongerLineIsReadInPieces) {
    EXPECT_THAT(text("[Port A]\nK=" + std::string(300, 'x') + ";\n", "K"), FieldsAre(0, std::string(253, 'x')));
}

TEST_F(ConfigFileLookup, PieceOfALongLineThatBeginsWithTheKeyCountsAsALine) {
    EXPECT_THAT(text("[Port A]\n" + std::string(255, 'x') + "K=1;\n", "K"), FieldsAre(0, "1"));
}

TEST_F(ConfigFileLookup, KeyCutByThePieceBoundaryIsNotFound) {
    EXPECT_THAT(text("[Port A]\n" + std::string(254, 'x') + "KEY=1;\n", "KEY"), FieldsAre(-8000, "Error"));
    EXPECT_THAT(text(std::string(250, 'x') + "[Port A]\nKEY=1;\n", "KEY"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, KeyLongerThanALineIsNotFound) {
    const std::string key(400, 'K');
    EXPECT_THAT(text("[Port A]\n" + key + "=1;\n", key.c_str()), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, ZeroBytesEndTheirLine) {
    using namespace std::string_literals;
    EXPECT_THAT(text("[Port A]\nK=1\0002;\nL=3;\n"s, "K"), FieldsAre(0, "1"));
    EXPECT_THAT(text("[Port A]\n\0K=1;\nL=3;\n"s, "K"), FieldsAre(-8000, "Error"));
    EXPECT_THAT(text("[Port A]\n\0K=1;\nL=3;\n"s, "L"), FieldsAre(0, "3"));
}

TEST_F(ConfigFileLookup, BinaryBytesAreAValue) {
    EXPECT_THAT(text("[Port A]\nK=\xff\x01\x80;\n", "K"), FieldsAre(0, "\xff\x01\x80"));
}

TEST_F(ConfigFileLookup, MissingKeyLeavesTheCallersNumber) {
    EXPECT_THAT(integer("[Port A]\nL=1;\n", "K"), FieldsAre(-1, 77));
}

TEST_F(ConfigFileLookup, NumberWhoseTextHoldsErrorIsAFailure) {
    EXPECT_THAT(integer("[Port A]\nK=5 Errors;\n", "K"), FieldsAre(-1, 77));
    EXPECT_THAT(text("[Port A]\nK='no Error here';\n", "K"), FieldsAre(0, "no Error here"));
}

TEST_F(ConfigFileLookup, TextWhereANumberIsExpectedIsZero) {
    EXPECT_THAT(integer("[Port A]\nK=wide;\n", "K"), FieldsAre(0, 0));
    EXPECT_THAT(integer("[Port A]\nK='12';\n", "K"), FieldsAre(0, 12));
}

TEST_F(ConfigFileLookup, NumberBeyond32BitsKeepsItsLow32) {
    EXPECT_THAT(integer("[Port A]\nK=4294967295;\n", "K"), FieldsAre(0, -1));
    EXPECT_THAT(integer("[Port A]\nK=4294967300;\n", "K"), FieldsAre(0, 4));
}

TEST_F(ConfigFileLookup, DoublesWithAndWithoutExponent) {
    Fg_ConfigFileParser parser = open("[Port A]\nA=1e-05;\nB=200;\nC=abc;\nD=Error;\n");
    double value = 77;
    EXPECT_EQ(parser.parseDoubleKeySection(0, "A", &value), 0);
    EXPECT_EQ(value, 0.00001);
    EXPECT_EQ(parser.parseDoubleKeySection(0, "B", &value), 0);
    EXPECT_EQ(value, 200.0);
    EXPECT_EQ(parser.parseDoubleKeySection(0, "C", &value), 0);
    EXPECT_EQ(value, 0.0);
    value = 77;
    EXPECT_EQ(parser.parseDoubleKeySection(0, "D", &value), -1);
    EXPECT_EQ(parser.parseDoubleKeySection(0, "E", &value), -1);
    EXPECT_EQ(value, 77.0);
}

TEST_F(ConfigFileLookup, SixtyFourBitNumbersOfBothSigns) {
    Fg_ConfigFileParser parser = open("[Port A]\nA=18446744073709551615;\n[Port B]\nB=-9223372036854775808;\nC=x;\n");
    unsigned long unsignedValue = 77;
    long value = 77;
    EXPECT_EQ(parser.parseUInt64KeySection(0, "A", &unsignedValue), 0);
    EXPECT_EQ(unsignedValue, 18446744073709551615u);
    EXPECT_EQ(parser.parseInt64KeySection(1, "B", &value), 0);
    EXPECT_EQ(value, -9223372036854775807 - 1);
    value = 77;
    EXPECT_EQ(parser.parseInt64KeySection(1, "C", &value), 0);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(parser.parseInt64KeySection(1, "A", &value), -1);
    EXPECT_EQ(value, 77);
    unsignedValue = 77;
    EXPECT_EQ(parser.parseUInt64KeySection(0, "D", &unsignedValue), -1);
    EXPECT_EQ(unsignedValue, 77u);
}

TEST_F(ConfigFileLookup, NullKeyInAPortIsRefused) {
    Fg_ConfigFileParser parser = open("[Port A]\nK=1;\n");
    char textValue[256] = "untouched";
    int intValue = 77;
    double doubleValue = 77;
    unsigned long unsignedValue = 77;
    long longValue = 77;
    EXPECT_EQ(parser.parseKeySection(0, nullptr, textValue), -1);
    EXPECT_EQ(parser.parseIntKeySection(0, nullptr, &intValue), -1);
    EXPECT_EQ(parser.parseDoubleKeySection(0, nullptr, &doubleValue), -1);
    EXPECT_EQ(parser.parseUInt64KeySection(0, nullptr, &unsignedValue), -1);
    EXPECT_EQ(parser.parseInt64KeySection(0, nullptr, &longValue), -1);
    EXPECT_STREQ(textValue, "untouched");
    EXPECT_EQ(intValue, 77);
}

TEST_F(ConfigFileLookup, TextInAPort) {
    Fg_ConfigFileParser parser = open("[Port A]\nK='a.lut';\n");
    char value[1024] = {};
    EXPECT_EQ(parser.parseKeySection(0, "K", value), 0);
    EXPECT_STREQ(value, "a.lut");
    EXPECT_EQ(parser.parseKeySection(1, "K", value), -8000);
    EXPECT_STREQ(value, "Error");
}

TEST_F(ConfigFileLookup, HeaderNumberNeedsTheSectionsBareLineFeed) {
    int value = 77;
    EXPECT_EQ(open("[Kamerasektion]\n\nAktivePort=3;\n").parseIntKeyFromHeader("AktivePort", &value), 0);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(open("[Kamerasektion]\r\n\r\nAktivePort=4;\r\n").parseIntKeyFromHeader("AktivePort", &value), -1);
    EXPECT_EQ(value, 3);
}

TEST_F(ConfigFileLookup, HeaderTextIsTheFirstLineThatHoldsTheWord) {
    EXPECT_THAT(headerText("[Kamerasektion]\n\nHersteller='Veltrix';\nTyp='Quillon';\n", "Typ"),
                FieldsAre(0, "Quillon"));
    EXPECT_THAT(headerText("  The Typ='One';\nTyp='Two';\n", "Typ"), FieldsAre(0, "One"));
    EXPECT_THAT(headerText("TypOfCamera='Line';\nTyp='Quillon';\n", "Typ"), FieldsAre(0, "Line"));
}

TEST_F(ConfigFileLookup, HeaderTextNeedsNoSection) {
    EXPECT_THAT(headerText("Typ=Quillon;", "Typ"), FieldsAre(0, "Quillon"));
}

TEST_F(ConfigFileLookup, MissingHeaderTextIsAnError) {
    EXPECT_THAT(headerText("[Kamerasektion]\n", "Typ"), FieldsAre(-8000, "Error"));
}

TEST_F(ConfigFileLookup, HeaderTextWithoutAValueIsWhatStandsBehindTheDelimiters) {
    EXPECT_THAT(headerText("Typ='';\n", "Typ"), FieldsAre(0, "\n"));
    EXPECT_THAT(headerText("Typ='';", "Typ"), FieldsAre(0, ""));
    EXPECT_THAT(headerText("Typ", "Typ"), FieldsAre(0, ""));
}

TEST_F(ConfigFileLookup, NothingIsFoundWithoutAFile) {
    Fg_ConfigFileParser parser(nullptr, nullptr, true);
    char value[256] = {};
    int number = 77;
    EXPECT_EQ(parser.parseKey("[Port A]", "K", value), -8000);
    EXPECT_STREQ(value, "Error");
    EXPECT_EQ(parser.parseKeyFromLine("K", value), -8000);
    EXPECT_STREQ(value, "Error");
    EXPECT_EQ(parser.parseIntKey("[Port A]", "K", &number), -1);
    EXPECT_EQ(number, 77);
}

TEST_F(ConfigFileLookup, FolderReadsAsAnEmptyFile) {
    std::filesystem::create_directory(path("folder.mcf"));
    Fg_ConfigFileParser parser(nullptr, path("folder.mcf").c_str(), true);
    EXPECT_TRUE(parser.checkFileExist(path("folder.mcf").c_str()));
    char value[256] = {};
    EXPECT_EQ(parser.parseKeyFromLine("Typ", value), -8000);
}

}  // namespace
}  // namespace quillon
