#include "info/XmlFilter.h"

#include <gtest/gtest.h>

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

TEST(XmlNameFilter, KeepsLettersDigitsAndUnderscores) {
    EXPECT_EQ(xmlNameFilter("FG_GPO_0_SOURCE"), "FG_GPO_0_SOURCE");
    EXPECT_EQ(xmlNameFilter("Line Trigger / ExSync"), "LineTriggerExSync");
    EXPECT_EQ(xmlNameFilter("Shaft Encoder A/B Filter"), "ShaftEncoderABFilter");
    EXPECT_EQ(xmlNameFilter("\xB5s"), "s");
    EXPECT_EQ(xmlNameFilter(""), "");
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
