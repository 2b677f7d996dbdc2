#include "info/XmlFilter.h"

#include <gtest/gtest.h>

#include <string_view>

namespace quillon {
namespace {

TEST(XmlStringFilter, ReplacesTheFiveSpecialCharacters) {
    EXPECT_EQ(xmlStringFilter("a\"b&c'd<e>f"), "a&quot;b&amp;c&apos;d&lt;e&gt;f");
    EXPECT_EQ(xmlStringFilter("&amp;"), "&amp;amp;");
    EXPECT_EQ(xmlStringFilter(""), "");
}

TEST(XmlStringFilter, CopiesControlBytesAndBytesAbove7F) {
    EXPECT_EQ(xmlStringFilter("\xB5s\t\x01\xC3\xBC"), "\xB5s\t\x01\xC3\xBC");
}

TEST(XmlStringFilter, EndsWithTheTextAndNotWithTheBytesBehindIt) {
    EXPECT_EQ(xmlStringFilter(std::string_view("a<b", 1)), "a");
    EXPECT_EQ(xmlStringFilter(std::string_view("<<", 1)), "&lt;");
    EXPECT_EQ(xmlStringFilter(std::string_view("&", 0)), "");
}

TEST(XmlNameFilter, KeepsLettersDigitsAndUnderscores) {
    EXPECT_EQ(xmlNameFilter("FG_GPO_0_SOURCE"), "FG_GPO_0_SOURCE");
    EXPECT_EQ(xmlNameFilter("Line Trigger / ExSync"), "LineTriggerExSync");
    EXPECT_EQ(xmlNameFilter("Shaft Encoder A/B Filter"), "ShaftEncoderABFilter");
    EXPECT_EQ(xmlNameFilter("\xB5s"), "s");
    EXPECT_EQ(xmlNameFilter(""), "");
}

TEST(XmlNameFilter, EndsWithTheTextAndNotWithTheBytesBehindIt) {
    EXPECT_EQ(xmlNameFilter(std::string_view("abc", 2)), "ab");
    EXPECT_EQ(xmlNameFilter(std::string_view("a", 0)), "");
}

TEST(XmlNameFilter, DropsADigitOrUnderscoreOnlyAtTheFirstPosition) {
    EXPECT_EQ(xmlNameFilter("1a1"), "a1");
    EXPECT_EQ(xmlNameFilter("_a_"), "a_");
    EXPECT_EQ(xmlNameFilter("12"), "2");
    EXPECT_EQ(xmlNameFilter("-1a"), "1a");
    EXPECT_EQ(xmlNameFilter(xmlNameFilter("-1a")), "a");
}

}  // namespace
}  // namespace quillon
