// A description that the consumer only half understands gives no error, so everything in it is looked up by name, and
// its class, bounds, access and texts are compared with the applet's own records.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Text.h"
#include "tests/genapi/Features.h"

namespace quillon::genapi {
namespace {

using client::ParameterRecord;
using client::Range;
using client::testing::BuiltApplet;
using testing::ElementsAre;
using testing::ElementsAreArray;

class FeatureInventory : public testing::Test {
protected:
    /// The record of a feature as the applet has it now.
    const ParameterRecord& record(const Feature& feature) const { return *client::findRecord(records, feature.id()); }

    BuiltApplet built;
    std::vector<ParameterRecord> records = built.applet.parameterInfo();
    Consumer consumer{built.applet};
};

std::ptrdiff_t countOf(NodeClass nodeClass) {
    return std::ranges::count(features(), nodeClass, &Feature::nodeClass);
}

/// A double as the document prints it.
double inTwelveDigits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", value);
    return std::strtod(text, nullptr);
}

TEST_F(FeatureInventory, TheRootListsThirtyCategoriesInTheOrderOfTheDocument) {
    EXPECT_THAT(
        consumer.featuresOf("Root"),
        ElementsAre("Input", "Output", "Debug", "Miscellaneous", "CameraSimulator", "OutputFormat", "Processing",
                    "AppletProperties", "LookupTable", "WhiteBalance", "ImageSelector", "Overflow", "SignalAnalyzer",
                    "Flash", "SoftwareTrigger", "ImageTriggerInput", "ImageTriggerFlash", "Downscale",
                    "LineTriggerInput", "ShaftEncoderABFilter", "ExSyncOutput", "LineTriggerExSync", "Camera", "GPO",
                    "GPI", "EventSource", "ROI", "SensorGeometry", "PulseMessageTriggerMapping", "CameraLinkHS"));
}

TEST_F(FeatureInventory, EveryCategoryIsThereAndListsItsFeaturesInOrder) {
    std::map<std::string, std::vector<std::string>> expected;
    for (const Feature& feature : features()) {
        expected[feature.category].push_back(feature.name);
    }
    ASSERT_EQ(expected.size(), 30U);
    std::size_t listed = 0;
    for (const auto& [category, names] : expected) {
        EXPECT_THAT(consumer.featuresOf(category), ElementsAreArray(names)) << category;
        listed += consumer.featuresOf(category).size();
    }
    EXPECT_EQ(listed, features().size());
    EXPECT_THAT(consumer.featuresOf("ROI"), ElementsAre("FG_WIDTH", "FG_HEIGHT", "FG_XOFFSET", "FG_YOFFSET"));
}

TEST_F(FeatureInventory, EveryFeatureIsFoundByNameAndClass) {
    std::map<NodeClass, std::size_t> count;
    for (const Feature& feature : features()) {
        EXPECT_EQ(consumer.classOf(feature.name), feature.nodeClass) << feature.name;
        ++count[consumer.classOf(feature.name)];
    }
    EXPECT_EQ(
        count[NodeClass::Enumeration] + count[NodeClass::Integer] + count[NodeClass::Float] + count[NodeClass::String],
        features().size());
    EXPECT_EQ(consumer.classOf("FG_WIDTH"), NodeClass::Integer);
    EXPECT_EQ(consumer.classOf("FG_LINEPERIODE"), NodeClass::Float);
    EXPECT_EQ(consumer.classOf("FG_LUT_CUSTOM_FILE"), NodeClass::String);
    EXPECT_EQ(consumer.classOf("FG_VANTAGEPOINT"), NodeClass::Enumeration);
}

TEST_F(FeatureInventory, LookupTablesAndParametersOf64BitsAreNotInTheDocument) {
    EXPECT_THAT(parametersWithoutFeature(),
                ElementsAre("FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", "FG_LUT_VALUE_RED", "FG_LUT_VALUE_GREEN",
                            "FG_LUT_VALUE_BLUE", "FG_DEBUGWRITEPIXEL", "FG_SYSTEMMONITOR_FPGA_DNA"));
    for (const std::string& name : parametersWithoutFeature()) {
        EXPECT_EQ(consumer.classOf(name), NodeClass::Missing) << name;
        EXPECT_EQ(consumer.classOf(name + "_Reg"), NodeClass::Missing) << name;
    }
}

TEST_F(FeatureInventory, DescriptionsAreTheLabels) {
    for (const Feature& feature : features()) {
        EXPECT_EQ(consumer.descriptionOf(feature.name), client::utf8(record(feature).label)) << feature.name;
    }
    EXPECT_EQ(consumer.descriptionOf("FG_LINETRIGGERDELAY"), "Delay->Exsync");
}

TEST_F(FeatureInventory, AccessModesAreThoseOfTheRecords) {
    for (const Feature& feature : features()) {
        EXPECT_EQ(consumer.accessOf(feature.name),
                  record(feature).writable ? ARV_GC_ACCESS_MODE_RW : ARV_GC_ACCESS_MODE_RO)
            << feature.name;
    }
    EXPECT_EQ(consumer.accessOf("FG_WIDTH"), ARV_GC_ACCESS_MODE_RW);
    EXPECT_EQ(consumer.accessOf("FG_PIXELDEPTH"), ARV_GC_ACCESS_MODE_RO);
    EXPECT_EQ(consumer.accessOf("FG_LINETRIGGERINSRC"), ARV_GC_ACCESS_MODE_RO)
        << "the frame grabber makes the lines by itself at start-up";
}

TEST_F(FeatureInventory, BoundsAndStepsOfIntegersAreThoseOfTheRecords) {
    std::ptrdiff_t compared = 0;
    for (const Feature& feature : features()) {
        if (const auto* range = std::get_if<Range<std::uint64_t>>(&record(feature).range);
            range != nullptr && feature.nodeClass == NodeClass::Integer) {
            EXPECT_EQ(consumer.integerMin(feature.name), static_cast<std::int64_t>(range->min)) << feature.name;
            EXPECT_EQ(consumer.integerMax(feature.name), static_cast<std::int64_t>(range->max)) << feature.name;
            const std::uint64_t step = range->step == 0 ? 1 : range->step;  // none told counts as 1
            EXPECT_EQ(consumer.integerStep(feature.name), static_cast<std::int64_t>(step)) << feature.name;
            ++compared;
        }
    }
    EXPECT_EQ(compared, countOf(NodeClass::Integer) - 1)
        << "all integers but FG_DIGIO_OUTPUT, whose bound below 0 the consumer does not understand";
    EXPECT_EQ(consumer.integerMin("FG_WIDTH"), 4);
    EXPECT_EQ(consumer.integerMax("FG_WIDTH"), 16384);
    EXPECT_EQ(consumer.integerStep("FG_WIDTH"), 4);
}

TEST_F(FeatureInventory, BoundsOfFloatsAreThoseOfTheRecordsToTwelveDigits) {
    std::ptrdiff_t compared = 0;
    for (const Feature& feature : features()) {
        if (feature.nodeClass == NodeClass::Float) {
            const auto& range = std::get<Range<double>>(record(feature).range);
            EXPECT_EQ(consumer.floatMin(feature.name), inTwelveDigits(range.min)) << feature.name;
            EXPECT_EQ(consumer.floatMax(feature.name), inTwelveDigits(range.max)) << feature.name;
            ++compared;
        }
    }
    EXPECT_EQ(compared, countOf(NodeClass::Float));
    EXPECT_EQ(consumer.floatMin("FG_LINEPERIODE"), 0.512);
    EXPECT_EQ(consumer.floatMax("FG_LINEPERIODE"), 2097.144);
    EXPECT_EQ(consumer.floatMax("FG_SIGNAL_ANALYZER_0_PERIOD_MAX"), 34359738.36);
}

TEST_F(FeatureInventory, EnumerationsListTheirEntriesByRisingValue) {
    for (const Feature& feature : features()) {
        if (feature.nodeClass == NodeClass::Enumeration) {
            std::vector<std::pair<std::string, std::int64_t>> expected;
            for (const client::EnumEntry& entry : record(feature).entries) {
                expected.emplace_back(entry.name, entry.value);
            }
            std::ranges::stable_sort(expected, {}, &std::pair<std::string, std::int64_t>::second);
            EXPECT_THAT(consumer.entriesOf(feature.name), ElementsAreArray(expected)) << feature.name;
        }
    }
    using Entry = std::pair<std::string, std::int64_t>;
    EXPECT_THAT(consumer.entriesOf("FG_LUT_TYPE"),
                ElementsAre(Entry("LUT_TYPE_CUSTOM", 0), Entry("LUT_TYPE_PROCESSING", 3)));
    EXPECT_EQ(consumer.entriesOf("FG_IMGTRIGGERINSRC").front(), Entry("TRGINSOFTWARE", -1));
}

}  // namespace
}  // namespace quillon::genapi
