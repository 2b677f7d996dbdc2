// The texts that FG_PARAM_DESCR answers, as they stand in quillon/Parameters.def.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

struct Described {
    std::string name;
    std::string text;
};

const std::vector<Described>& descriptions() {
    static const std::vector<Described> texts{
#define PUBLIC_PARAMETER(name, id, access, kind, description) {#name, description},
#include "quillon/Parameters.def"
#undef PUBLIC_PARAMETER
    };
    return texts;
}

std::string descriptionOf(std::string_view name) {
    const auto found = std::ranges::find(descriptions(), name, &Described::name);
    return found != descriptions().end() ? found->text : "no such parameter";
}

/// The words of a text that name a public parameter or something like it: FG_ and what follows in capitals.
std::vector<std::string> namesIn(std::string_view text) {
    std::vector<std::string> names;
    for (std::size_t start = text.find("FG_"); start != std::string_view::npos; start = text.find("FG_", start + 3)) {
        const std::size_t end =
            std::min(text.size(), text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_", start));
        names.emplace_back(text.substr(start, end - start));
    }
    return names;
}

TEST(DescriptionTexts, EightParametersHaveNone) {
    std::vector<std::string> empty;
    for (const Described& parameter : descriptions()) {
        if (parameter.text.empty()) {
            empty.push_back(parameter.name);
        }
    }
    EXPECT_THAT(empty, ElementsAre("FG_TRANSFER_LEN", "FG_NR_OF_PROCESSES", "FG_NR_OF_DMAS", "FG_NR_OF_CAMS",
                                   "FG_DMA_PORT", "FG_CAM_PORT", "FG_APC_STOP_TIMEOUT", "FG_PARAM_DESCR"));
}

TEST(DescriptionTexts, TheDebugInterfaceIsToldNothingOf) {
    int count = 0;
    for (const Described& parameter : descriptions()) {
        if (parameter.name.starts_with("FG_DEBUG")) {
            EXPECT_EQ(parameter.text, "Debug-Interface, Internal Use ONLY.") << parameter.name;
            ++count;
        }
    }
    EXPECT_EQ(count, 13);
}

TEST(DescriptionTexts, SettledTextsKeepTheirLetters) {
    EXPECT_EQ(descriptionOf("FG_TIMEOUT"),
              "Internal framegrabber image timeout. This is independend of the runtime timeout value.");
    EXPECT_EQ(descriptionOf("FG_TAV_FILE"),
              "The name of the Hardware-Applet (TAV) file on which this Marlets is based.");
    EXPECT_EQ(descriptionOf("FG_CAMSTATUS_EXTENDED"),
              "Returns the extended status of the camera. Bit = meaning: 0 = CameraPixelClk, 1 = CameraLval, "
              "2 = CameraFval, 3 = Camera CC1 Signal, 4 = ExTrg / external trigger, 5 = BufferOverflow, "
              "6 = BufferStatus-LSB, 7 = BufferStatus-MSB");
    EXPECT_EQ(descriptionOf("FG_PIXELFORMAT"),
              "Camera pixel format acording to Pixel Format Naming Convention (PFMC).");
    EXPECT_EQ(descriptionOf("FG_SYSTEMMONITOR_CURRENT_LINK_SPEED"),
              "Returns the current PCIe link speed in Gibibyte (2^30 byte).");
    EXPECT_EQ(descriptionOf("FG_LINEORDER"), "Order of lines of type R, G and B");
}

TEST(DescriptionTexts, UnitsAndDependenciesAreNamed) {
    EXPECT_EQ(descriptionOf("FG_WIDTH"),
              "Width of the region of interest in pixels, a multiple of 4. FG_WIDTH and FG_XOFFSET together must not "
              "exceed 16384.");
    EXPECT_THAT(descriptionOf("FG_LINEPERIODE"), HasSubstr("in microseconds, 0.512 to 2097.144"));
    EXPECT_THAT(namesIn(descriptionOf("FG_LINEEXPOSURE")), Contains("FG_LINEPERIODE"));
    EXPECT_THAT(descriptionOf("FG_CAMERASIMULATOR_PIXEL_FREQUENCY"), HasSubstr("in MHz"));
}

// They are copied into buffers that callers provide without telling their size.
TEST(DescriptionTexts, EveryTextIsShortPlainAsciiOnOneLine) {
    for (const Described& parameter : descriptions()) {
        EXPECT_LE(parameter.text.size(), 230U) << parameter.name;
        EXPECT_TRUE(std::ranges::all_of(parameter.text, [](char byte) { return byte >= ' ' && byte <= '~'; }))
            << parameter.name;
    }
}

TEST(DescriptionTexts, EveryTextButTheSettledOnesIsOneOrTwoWholeSentences) {
    for (const Described& parameter : descriptions()) {
        if (parameter.text.empty() || parameter.name == "FG_CAMSTATUS_EXTENDED" || parameter.name == "FG_LINEORDER") {
            continue;
        }
        EXPECT_TRUE(parameter.text.ends_with(".")) << parameter.name;
        std::size_t ends = 0;
        for (std::size_t at = parameter.text.find(". "); at != std::string::npos;
             at = parameter.text.find(". ", at + 1)) {
            ++ends;
        }
        EXPECT_LE(ends, 1U) << parameter.name << ": " << parameter.text;
    }
}

TEST(DescriptionTexts, EveryParameterThatATextPointsToExists) {
    // Names of enumerators and events that the texts use beside those of parameters.
    const std::set<std::string> others{"FG_PIXEL_FREQUENCY",       "FG_LINERATE", "FG_FRAMERATE",
                                       "FG_CUSTOM_BIT_SHIFT_MODE", "FG_APPLY",    "FG_CUSTOM_SIGNAL_EVENT_0",
                                       "FG_CUSTOM_SIGNAL_EVENT_1"};
    for (const Described& parameter : descriptions()) {
        for (const std::string& name : namesIn(parameter.text)) {
            EXPECT_TRUE(others.contains(name) || descriptionOf(name) != "no such parameter")
                << parameter.name << " points to " << name;
        }
    }
}

}  // namespace
}  // namespace quillon
