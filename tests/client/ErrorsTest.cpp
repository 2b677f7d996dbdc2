#include "quillon/client/Errors.h"

#include <gtest/gtest.h>

namespace quillon::client {
namespace {

TEST(Errors, ACodeOfTheAppletHasANameAndAMeaning) {
    EXPECT_EQ(codeText(-6000).name, "ValueOutOfRange");
    EXPECT_EQ(codeText(-6000).sentence, "the value is out of range");
    EXPECT_EQ(describeCode(-7080), "-7080 (ValueNotAligned)");
}

TEST(Errors, ACodeOfTheSoftwareBoardHasANameToo) {
    EXPECT_EQ(describeCode(-9004), "-9004 (SoftBoardReadOnly)");
}

TEST(Errors, ACodeThatIsOnlyHandedOnIsToldAsSuch) {
    EXPECT_EQ(describeCode(-5), "-5");
    EXPECT_EQ(codeText(-5).name, "");
    EXPECT_EQ(codeText(-5).sentence, "a code of the SDK or the design, handed on by the applet");
}

TEST(Errors, AParameterErrorTellsParameterAndCode) {
    const ParameterError error("a get", 100, -2070);
    EXPECT_EQ(error.id, 100);
    EXPECT_EQ(error.code, -2070);
    EXPECT_STREQ(
        error.what(),
        "a get of parameter 100 answered -2070 (InvalidParameter), no such parameter, name, process or string, "
        "or an access outside a field");
}

}  // namespace
}  // namespace quillon::client
