#include "cli/Suggestions.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon::cli {
namespace {

const std::vector<std::string> names{"FG_WIDTH", "FG_HEIGHT", "FG_XOFFSET", "FG_YOFFSET"};

TEST(Suggestions, SwappedLettersAreForgiven) {
    EXPECT_EQ(nearest("FG_WIDHT", names), "FG_WIDTH");
}

TEST(Suggestions, CaseAndAMissingPrefixAreForgiven) {
    EXPECT_EQ(nearest("fg_height", names), "FG_HEIGHT");
    EXPECT_EQ(nearest("width", names), "FG_WIDTH");
}

TEST(Suggestions, AFarWordSuggestsNothing) {
    EXPECT_EQ(nearest("temperature", names), std::nullopt);
    EXPECT_EQ(didYouMean("temperature", names), "");
}

TEST(Suggestions, TheSuggestionIsAQuestion) {
    EXPECT_EQ(didYouMean("FG_WIDHT", names), ", did you mean FG_WIDTH?");
}

}  // namespace
}  // namespace quillon::cli
