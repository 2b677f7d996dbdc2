#include "softboard/src/DesignDescription.h"

#include <gtest/gtest.h>

#include <string>

#include "softboard/src/DesignImage.h"

namespace {

using softboard::DesignError;
using softboard::packImage;
using softboard::parseDesign;
using softboard::unpackImage;
using softboard::ValueType;

/// A design with these parameters and registers, and no events.
std::string designText(const std::string& parameters, const std::string& registers = "") {
    return R"({"design": "Small", "version": "1", "type": 7, "parameters": [)" + parameters +
           R"(], "events": [], "registers": [)" + registers + "]}";
}

TEST(DesignDescription, NamesAParameterByItsPath) {
    const auto design =
        parseDesign(designText(R"({"path": "Device1/Buffer_0/XLength", "type": "uint32", "access": "rw"})"));
    EXPECT_EQ(design->parameters[0].name, "Device1_Buffer_0_XLength");
    EXPECT_EQ(design->parameters[0].groups, (std::vector<std::string>{"Device1", "Buffer_0"}));
    EXPECT_EQ(design->parameters[0].label, "XLength");
    EXPECT_EQ(design->parameters[0].id, 10000);
}

TEST(DesignDescription, KnowsTheTypesByWords) {
    const auto design = parseDesign(designText(R"({"path": "a", "type": "int32", "access": "r"},
        {"path": "b", "type": "uint32", "access": "r"}, {"path": "c", "type": "int64", "access": "r"},
        {"path": "d", "type": "uint64", "access": "r", "value": 18446744073709551615},
        {"path": "e", "type": "double", "access": "r", "value": 1.5}, {"path": "f", "type": "text", "access": "r", "value": "t"},
        {"path": "g", "type": "table", "access": "w", "length": 3})"));
    EXPECT_EQ(design->parameters[0].type, ValueType::Int32);
    EXPECT_EQ(design->parameters[1].type, ValueType::UInt32);
    EXPECT_EQ(design->parameters[2].type, ValueType::Int64);
    EXPECT_EQ(design->parameters[3].type, ValueType::UInt64);
    EXPECT_EQ(design->parameters[3].integer, -1);
    EXPECT_EQ(design->parameters[4].real, 1.5);
    EXPECT_EQ(design->parameters[5].text, "t");
    EXPECT_EQ(design->parameters[6].length, 3U);
}

TEST(DesignDescription, RefusesTextThatIsNoDescription) {
    EXPECT_THROW(parseDesign(""), DesignError);
    EXPECT_THROW(parseDesign("{}"), DesignError);
    EXPECT_THROW(parseDesign("[1, 2"), DesignError);
}

TEST(DesignDescription, RefusesAnUnknownTypeOrAccess) {
    EXPECT_THROW(parseDesign(designText(R"({"path": "a", "type": "word", "access": "r"})")), DesignError);
    EXPECT_THROW(parseDesign(designText(R"({"path": "a", "type": "uint32", "access": "x"})")), DesignError);
    EXPECT_THROW(parseDesign(designText(R"({"path": "a", "type": "table", "access": "r"})")), DesignError);
}

TEST(DesignDescription, RefusesATableThatNoBoardCanHold) {
    EXPECT_THROW(parseDesign(designText(R"({"path": "a", "type": "table", "access": "r", "length": 0})")), DesignError);
    EXPECT_THROW(parseDesign(designText(R"({"path": "a", "type": "table", "access": "r", "length": -1})")),
                 DesignError);
}

TEST(DesignDescription, RefusesANameThatStandsTwice) {
    EXPECT_THROW(parseDesign(designText(R"({"path": "a/b", "type": "uint32", "access": "r"},
                                           {"path": "a_b", "type": "uint32", "access": "r"})")),
                 DesignError);
    EXPECT_THROW(parseDesign(designText(
                     "", R"({"name": "R", "bits": 1, "access": "r"}, {"name": "R", "bits": 2, "access": "r"})")),
                 DesignError);
}

TEST(DesignDescription, RefusesARegisterWiderThan64Bits) {
    EXPECT_THROW(parseDesign(designText("", R"({"name": "R", "bits": 65, "access": "rw"})")), DesignError);
    EXPECT_THROW(parseDesign(designText("", R"({"name": "R", "bits": 0, "access": "rw"})")), DesignError);
}

TEST(DesignDescription, RefusesARegisterWithAnUnknownAccess) {
    EXPECT_THROW(parseDesign(designText("", R"({"name": "R", "bits": 8, "access": "both"})")), DesignError);
}

TEST(DesignImage, HoldsItsDescriptionUnchanged) {
    const std::string text = designText("");
    const auto image = packImage(text, 1000);
    EXPECT_EQ(image.size(), 1000U);
    const auto unpacked = unpackImage(image.data(), image.size());
    ASSERT_TRUE(unpacked.has_value());
    EXPECT_EQ(unpacked->description, text);
    EXPECT_EQ(unpacked->type, 7);
}

TEST(DesignImage, IsAsLongAsNeededWithoutASize) {
    const std::string text = designText("");
    EXPECT_EQ(packImage(text, 0).size(), 64 + text.size());
}

TEST(DesignImage, IsTheSameEveryTime) {
    EXPECT_EQ(packImage(designText(""), 5000), packImage(designText(""), 5000));
}

TEST(DesignImage, RefusesADescriptionThatDoesNotFit) {
    EXPECT_THROW(packImage(designText(""), 100), DesignError);
    EXPECT_THROW(packImage("nonsense", 1000), DesignError);
}

}  // namespace
