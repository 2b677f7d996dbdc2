#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(ListVerb, AGroupShowsLabelNameAccessValueAndRange) {
    const Outcome outcome = quillon({"list", "--group", "ROI"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("ROI\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("\n  Width +FG_WIDTH +rw +1024 pixel +4 to 16384 pixel in steps of 4\n"));
}

TEST(ListVerb, AllGroupsComeInTheOrderOfTheirMaking) {
    const auto json = quillon({"list", "--json"}).json();
    ASSERT_EQ(json.size(), 15U);
    EXPECT_EQ(json[0]["group"], "Camera Link HS");
    EXPECT_EQ(json[14]["group"], "Miscellaneous");
}

TEST(ListVerb, AMisspeltGroupIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"list", "--group", "ROY"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no group \"ROY\", did you mean ROI?"));
}

TEST(DescribeVerb, AParameterIsToldWithItsRangeAndWhyAndWhatItReaches) {
    const Outcome outcome = quillon({"describe", "FG_XOFFSET"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("300 (0x12c)"));
    EXPECT_THAT(outcome.out, ContainsRegex("Accepts +0 to 15360 pixel in steps of 4\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("Range follows +at most 16384 less FG_WIDTH"));
    EXPECT_THAT(outcome.out, ContainsRegex("Writes +Device1_Process0_Buffer_0_SensorWidth\n"));
}

TEST(DescribeVerb, EnumeratorsAreToldWithValueAndLabel) {
    EXPECT_THAT(quillon({"describe", "FG_BITALIGNMENT"}).out,
                ContainsRegex("Values +FG_LEFT_ALIGNED \\(1\\), Left Aligned\n"));
}

TEST(DescribeVerb, AReadOutIsToldAsSuchWithTheDesignParameterBehindIt) {
    const auto json = quillon({"describe", "FG_SYSTEMMONITOR_FPGA_TEMPERATURE", "--json"}).json();
    EXPECT_EQ(json[0]["access"], "read");
    EXPECT_EQ(json[0]["type"], "real");
    EXPECT_EQ(json[0]["unit"], "°C");
    EXPECT_EQ(json[0]["reads"], nlohmann::json({"Device1_Process0_BoardStatus_FpgaTemperature"}));
    EXPECT_TRUE(json[0]["writes"].empty());
}

TEST(XmlVerb, TheDocumentGoesToTheOutput) {
    const Outcome outcome = quillon({"xml"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("<?xml"));
}

TEST(XmlVerb, TheDocumentGoesToAFile) {
    const Folder folder;
    EXPECT_EQ(quillon({"xml", "-o", folder / "quillon.xml"}).status, 0);
    EXPECT_EQ(contentOf(folder / "quillon.xml"), quillon({"xml"}).out);
}

TEST(XmlVerb, AFileThatCannotBeWrittenIsRefused) {
    const Outcome outcome = quillon({"xml", "-o", "/no/such/folder/quillon.xml"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/folder/quillon.xml cannot be written"));
}

TEST(EventsVerb, EachIsListedWithItsMask) {
    const Outcome outcome = quillon({"events"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("0x[0-9a-f]+ +FG_OVERFLOW_CAM0\n"));
}

TEST(DemoVerb, ItShowsAStepARefusalAndAFailureWithItsRollback) {
    const Folder folder;
    const Outcome outcome = quillon({"demo"}, folder.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("$ quillon set FG_WIDTH=2048 --trace"));
    EXPECT_THAT(outcome.out, HasSubstr("FG_WIDTH=1030 was refused: -7080 (ValueNotAligned)"));
    EXPECT_THAT(outcome.out, HasSubstr("failed: -5"));
    EXPECT_THAT(outcome.out, HasSubstr("$ quillon get FG_HEIGHT\n  FG_HEIGHT = 512 pixel\n"));
    EXPECT_THAT(outcome.err, HasSubstr("examples/free_running_4k.mcf is not there"));
}

TEST(DemoVerb, AConfigurationIsLoadedCheckedChangedAndCompared) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_WIDTH=4096", "--save", folder / "wide.mcf"}).status, 0);
    const Outcome outcome = quillon({"demo", "--example", folder / "wide.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("FG_WIDTH +1024 pixel +-> +4096 pixel\n"));
    EXPECT_THAT(outcome.out, HasSubstr("FG_LINE_DOWNSCALE: 0 pulses was refused: -6000 (ValueOutOfRange)"));
    EXPECT_THAT(outcome.out, ContainsRegex("FG_PROCESSING_GAMMA +1 +2.2\n"));
    EXPECT_THAT(outcome.out, HasSubstr("<?xml"));
}

}  // namespace
}  // namespace quillon::cli::testing
