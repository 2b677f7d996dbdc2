#include "cli/pictures/FileTemplate.h"

#include <gmock/gmock.h>

#include "cli/ExitStatus.h"

namespace quillon::cli {
namespace {

TEST(FileTemplate, ANumberIsPaddedAsItIsWritten) {
    EXPECT_EQ(FileTemplate("out_%d.png").name(7), "out_7.png");
    EXPECT_EQ(FileTemplate("out_%03d.png").name(7), "out_007.png");
    EXPECT_EQ(FileTemplate("out_%3d.png").name(7), "out_  7.png");
    EXPECT_EQ(FileTemplate("%0d").name(7), "7");
    EXPECT_EQ(FileTemplate("%020d").name(7), "00000000000000000007");
}

TEST(FileTemplate, ANumberThatIsWiderIsNotCut) {
    EXPECT_EQ(FileTemplate("out_%03d.png").name(12345), "out_12345.png");
}

TEST(FileTemplate, ANameWithoutANumberIsAlwaysTheSame) {
    const FileTemplate name("out.png");
    EXPECT_FALSE(name.isNumbered());
    EXPECT_EQ(name.name(1), "out.png");
    EXPECT_EQ(name.name(2), "out.png");
    EXPECT_TRUE(FileTemplate("%d.png").isNumbered());
}

TEST(FileTemplate, TwoPercentSignsAreOne) {
    EXPECT_EQ(FileTemplate("100%%_%d.png").name(1), "100%_1.png");
    EXPECT_EQ(FileTemplate("%d_100%%").name(1), "1_100%");
    EXPECT_FALSE(FileTemplate("%%d").isNumbered());
}

class BadTemplate : public ::testing::TestWithParam<const char*> {};

TEST_P(BadTemplate, IsUsage) {
    EXPECT_THROW(FileTemplate{GetParam()}, UsageError);
}

INSTANTIATE_TEST_SUITE_P(Texts, BadTemplate,
                         ::testing::Values("%", "out_%", "%s.png", "%5", "%-5d.png", "%d_%d.png", "%+d", "%ld", "%021d",
                                           "%99999999999999999999999d", "% d"));

}  // namespace
}  // namespace quillon::cli
