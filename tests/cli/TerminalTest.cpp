#include "cli/Terminal.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillon::cli {
namespace {

TEST(Terminal, ColumnsAreAsWideAsTheirWidestCell) {
    std::ostringstream out;
    printRows(out, {{"a", "b"}, {"long", "c"}});
    EXPECT_EQ(out.str(), "a     b\nlong  c\n");
}

TEST(Terminal, ACharacterOfTwoBytesTakesOnePlace) {
    std::ostringstream out;
    printRows(out, {{"\xC2\xB5s", "b"}, {"ms", "c"}});
    EXPECT_EQ(out.str(), "\xC2\xB5s  b\nms  c\n");
}

TEST(Terminal, NoBlanksAreLeftAtTheEndOfALine) {
    std::ostringstream out;
    printRows(out, {{"a", ""}, {"b", "c"}}, "  ");
    EXPECT_EQ(out.str(), "  a\n  b  c\n");
}

TEST(Terminal, ThereIsNoColourWithoutATerminal) {
    EXPECT_EQ(Painter(-1).paint(Style::Bad, "refused"), "refused");
}

}  // namespace
}  // namespace quillon::cli
