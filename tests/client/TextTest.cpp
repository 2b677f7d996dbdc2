#include "quillon/client/Text.h"

#include <gtest/gtest.h>

namespace quillon::client {
namespace {

TEST(Text, PlainCharactersStayAsTheyAre) {
    EXPECT_EQ(utf8("pixel"), "pixel");
}

TEST(Text, TheMicroSignOfTheTimesBecomesTwoBytes) {
    EXPECT_EQ(utf8("\xB5s"), "\xC2\xB5s");
}

TEST(Text, TheHighestCharacterOfLatin1BecomesTwoBytes) {
    EXPECT_EQ(utf8("\xFF"), "\xC3\xBF");
}

}  // namespace
}  // namespace quillon::client
