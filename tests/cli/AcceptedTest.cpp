// What the command calls accepted is accepted, and one step outside is refused: every parameter that can be written, in
// states that move its bounds.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <regex>

#include "cli/Assignments.h"
#include "cli/Refusals.h"
#include "client/testing/BuiltApplet.h"
#include "quillon/client/Accepted.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using client::testing::BuiltApplet;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
using Assignments = std::vector<std::string>;

/// Holds every number of 64 bits and every double.
using Number = long double;

/// The numbers that a text of accepted values tells.
struct Told {
    bool isRange = false;
    Number min = 0;
    Number max = 0;
    Number step = 1;
    std::vector<std::int64_t> enumerators;
};

Told readTold(const std::string& text) {
    Told told;
    std::smatch match;
    static const std::regex range(R"((?:16384 entries of )?(-?[0-9.e+-]+) to (-?[0-9.e+-]+)(?: .*)?)");
    static const std::regex step(R"(in steps of ([0-9.e+-]+)$)");
    static const std::regex only(R"(only (-?[0-9.e+-]+))");
    static const std::regex enumerator(R"((\w+) \((-?\d+)\))");
    if (std::regex_match(text, match, range)) {
        told = {true, std::stold(match[1]), std::stold(match[2]), 1, {}};
        if (std::regex_search(text, match, step)) {
            told.step = std::stold(match[1]);
        }
    } else if (std::regex_match(text, match, only)) {
        told = {true, std::stold(match[1]), std::stold(match[1]), 1, {}};
    } else {
        for (std::sregex_iterator entry(text.begin(), text.end(), enumerator); entry != std::sregex_iterator();
             ++entry) {
            told.enumerators.push_back(std::stoll((*entry)[2]));
        }
    }
    return told;
}

int write(client::Applet& applet, const Parameter& parameter, Number value) {
    switch (parameter.kind) {
        case ParameterKind::Double: return applet.setDouble(parameter.id, static_cast<double>(value));
        case ParameterKind::Field: return applet.setElement(parameter.id, 0, static_cast<std::uint32_t>(value));
        case ParameterKind::Int64:
            return applet.setUnsigned64(parameter.id, value < 0 ? std::numeric_limits<std::uint64_t>::max()
                                                                : static_cast<std::uint64_t>(value));
        default: return applet.setUnsigned(parameter.id, static_cast<std::uint32_t>(static_cast<std::int64_t>(value)));
    }
}

bool hangsOnOthers(const std::string& name) {
    return !client::rangeReason(name).empty();
}

class AcceptedValues : public ::testing::TestWithParam<Assignments> {
protected:
    AcceptedValues() { assign(built_.applet, GetParam()); }

    /// In the state of the test, whatever has been written before.
    static void expectAccepted(const Parameter& parameter, Number value) {
        BuiltApplet fresh;
        assign(fresh.applet, GetParam());
        EXPECT_EQ(write(fresh.applet, parameter, value), 0) << parameter.name << " = " << value;
    }
    /// A refused value leaves the state as it is.
    void expectRefused(const Parameter& parameter, Number value) {
        EXPECT_NE(write(built_.applet, parameter, value), 0) << parameter.name << " = " << value;
    }

    void checkEnumerators(const Parameter& parameter, const std::vector<std::int64_t>& told) {
        ASSERT_FALSE(told.empty()) << parameter.name;
        for (const std::int64_t value : told) {
            if (hangsOnOthers(parameter.name)) {
                expectAccepted(parameter, static_cast<Number>(value));
            } else {
                EXPECT_EQ(write(built_.applet, parameter, static_cast<Number>(value)), 0)
                    << parameter.name << " = " << value;
            }
        }
        for (const client::EnumEntry& entry : parameter.record->entries) {
            if (std::find(told.begin(), told.end(), entry.value) == told.end()) {
                expectRefused(parameter, entry.value);
            }
        }
        const auto values = std::minmax_element(
            parameter.record->entries.begin(), parameter.record->entries.end(),
            [](const client::EnumEntry& left, const client::EnumEntry& right) { return left.value < right.value; });
        expectRefused(parameter, values.first->value - Number(1));
        expectRefused(parameter, values.second->value + Number(1));
    }

    void checkRange(const Parameter& parameter, const Told& told) {
        expectAccepted(parameter, told.min);
        expectAccepted(parameter, told.max);
        if (parameter.kind == ParameterKind::Double) {
            // Twelve digits are told.
            constexpr Number relative = 1e-11L;
            expectRefused(parameter, told.min - std::max(std::abs(told.min) * relative, relative));
            expectRefused(parameter, told.max + std::max(std::abs(told.max) * relative, relative));
        } else {
            // A number without a sign takes one below 0 for a huge one, which is outside, too.
            expectRefused(parameter, told.min - told.step);
            expectRefused(parameter, told.max + told.step);
        }
    }

    void check(const std::string& name) {
        const Parameter parameter = findParameter(built_.applet, name);
        const std::string text = acceptedValues(built_.applet, &built_.board, parameter);
        const Told told = readTold(text);
        if (parameter.isEnumerated()) {
            checkEnumerators(parameter, told.enumerators);
        } else {
            ASSERT_TRUE(told.isRange) << name << " accepts \"" << text << '"';
            checkRange(parameter, told);
        }
    }

private:
    BuiltApplet built_;
};

bool isWritableNumber(const PublicParameter& known) {
    return known.access == ParameterAccess::ReadWrite && known.kind != ParameterKind::String;
}

/// Those that no other parameter bounds are checked in the first state alone.
TEST_P(AcceptedValues, AreAcceptedAndOneStepOutsideIsRefused) {
    for (const bool dependent : {true, false}) {
        for (const PublicParameter& known : PublicParameters) {
            const std::string name(known.name);
            if (isWritableNumber(known) && hangsOnOthers(name) == dependent && (dependent || GetParam().empty())) {
                check(name);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    States, AcceptedValues,
    ::testing::Values(Assignments{},
                      Assignments{"FG_XOFFSET=4096", "FG_SENSORWIDTH=5121", "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT",
                                  "FG_DEBUGSOURCE=1", "FG_IMG_SELECT_PERIOD=10", "FG_IMG_SELECT=4"},
                      Assignments{"FG_SENSORHEIGHT=1398101", "FG_PIXELFORMAT=RGB16",
                                  "FG_VANTAGEPOINT=FG_VANTAGEPOINT_BOTTOM_LEFT", "FG_FORMAT=FG_COL36",
                                  "FG_CUSTOM_BIT_SHIFT_RIGHT=9", "FG_BITALIGNMENT=FG_CUSTOM_BIT_SHIFT_MODE",
                                  "FG_LINEPERIODE=20"},
                      Assignments{"FG_CAMERASIMULATOR_SELECT_MODE=FG_PIXEL_FREQUENCY",
                                  "FG_CAMERASIMULATOR_LINE_GAP=100", "FG_CAMERASIMULATOR_FRAME_GAP=7",
                                  "FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINEPERIODE=20",
                                  "FG_IMGTRIGGERMODE=ASYNC_TRIGGER_MULTIFRAME"},
                      Assignments{"FG_CAMERASIMULATOR_WIDTH=8000", "FG_CAMERASIMULATOR_LINERATE=20000",
                                  "FG_FORMAT=FG_COL48", "FG_BITALIGNMENT=FG_CUSTOM_BIT_SHIFT_MODE",
                                  "FG_CUSTOM_BIT_SHIFT_RIGHT=15", "FG_CAMERASIMULATOR_HEIGHT=100"},
                      Assignments{"FG_CAMERASIMULATOR_SELECT_MODE=FG_FRAMERATE", "FG_CAMERASIMULATOR_WIDTH=4096"}));

TEST(AcceptedValuesOfTheCommand, ListAndDescribeTellThoseOfTheMoment) {
    EXPECT_THAT(quillon({"describe", "FG_DEBUGSOURCE"}).out, ContainsRegex("Accepts +0 to 1\n"));
    EXPECT_THAT(quillon({"list", "--group", "Image Selector"}).out, ContainsRegex("FG_IMG_SELECT .*only 0\n"));
    const std::string outputs = quillon({"describe", "FG_TRIGGEROUT_GPO_0_SOURCE", "--json"}).json()[0]["accepted"];
    EXPECT_THAT(outputs, HasSubstr("FG_SIGNAL_FRONT_GPI_3 (1111)"));
    EXPECT_THAT(outputs, Not(HasSubstr("FG_SIGNAL_CAM0_INTERVAL_MODE")));
}

TEST(AcceptedValuesOfTheCommand, AnEnumeratorThatIsRefusedNowIsMarked) {
    EXPECT_THAT(quillon({"describe", "FG_TRIGGEROUT_GPO_0_SOURCE"}).out,
                HasSubstr("FG_SIGNAL_CAM0_INTERVAL_MODE (1), Interval Mode; refused at present\n"));
}

TEST(AcceptedValuesOfTheCommand, ARefusalThatHangsOnTheStateTellsTheNearestValueAndWhatToSetFirst) {
    EXPECT_EQ(quillon({"set", "FG_XOFFSET=8", "FG_WIDTH=16384"}).err,
              "quillon: FG_WIDTH=16384 was refused: -6000 (ValueOutOfRange), the value is out of range\n"
              "  accepted: 4 to 16376 pixel in steps of 4\n"
              "  because:  at most 16384 less FG_XOFFSET, a multiple of 4\n"
              "  nearest:  16376 pixel\n"
              "  first:    FG_XOFFSET to 0\n");
    const auto json = quillon({"set", "FG_IMG_SELECT=3", "--json"}).json();
    EXPECT_EQ(json[0]["refused"]["nearest"], nlohmann::json({{"value", 0}, {"unit", "image"}}));
    EXPECT_EQ(json[0]["refused"]["first"], "FG_IMG_SELECT_PERIOD to at least 4");
}

/// What `first` says of a refused value, carried out with the bound that it names, lets the value be accepted.
TEST(AcceptedValuesOfTheCommand, WhatIsToldToBeSetFirstHelps) {
    const std::vector<std::pair<Assignments, std::string>> refused{
        {{"FG_XOFFSET=4096"}, "FG_WIDTH=16000"},
        {{"FG_WIDTH=16000"}, "FG_XOFFSET=4096"},
        {{"FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT"}, "FG_XOFFSET=64"},
        {{"FG_WIDTH=2048"}, "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT"},
        {{"FG_HEIGHT=2048"}, "FG_VANTAGEPOINT=FG_VANTAGEPOINT_BOTTOM_LEFT"},
        {{}, "FG_CUSTOM_BIT_SHIFT_RIGHT=12"},
        {{"FG_LINEPERIODE=20"}, "FG_LINEEXPOSURE=30"},
        {{"FG_LINEPERIODE=20"}, "FG_LINETRIGGERDELAY=30"},
        {{}, "FG_IMG_SELECT=9"},
        {{"FG_IMG_SELECT_PERIOD=20", "FG_IMG_SELECT=9"}, "FG_IMG_SELECT_PERIOD=5"},
        {{"FG_CAMERASIMULATOR_LINERATE=100000"}, "FG_CAMERASIMULATOR_WIDTH=60000"},
        {{"FG_CAMERASIMULATOR_WIDTH=60000"}, "FG_CAMERASIMULATOR_LINERATE=100000"},
        {{}, "FG_CAMERASIMULATOR_FRAME_GAP=5"},
        {{"FG_CAMERASIMULATOR_SELECT_MODE=FG_PIXEL_FREQUENCY", "FG_CAMERASIMULATOR_LINE_GAP=290000"},
         "FG_CAMERASIMULATOR_WIDTH=8000"},
        {{"FG_CAMERASIMULATOR_SELECT_MODE=FG_PIXEL_FREQUENCY", "FG_CAMERASIMULATOR_FRAME_GAP=60000"},
         "FG_CAMERASIMULATOR_HEIGHT=8000"},
        {{"FG_CAMERASIMULATOR_SELECT_MODE=FG_FRAMERATE", "FG_CAMERASIMULATOR_FRAMERATE=3000"},
         "FG_CAMERASIMULATOR_HEIGHT=4000"},
        {{"FG_CAMERASIMULATOR_SELECT_MODE=FG_FRAMERATE"}, "FG_CAMERASIMULATOR_FRAMERATE=30000"},
    };
    const std::regex step(R"((\w+) to (?:at most |at least )?(\S+))");
    for (const auto& [state, assignment] : refused) {
        Assignments words{"set", "--json"};
        words.insert(words.end(), state.begin(), state.end());
        words.push_back(assignment);
        const Outcome outcome = quillon(words);
        ASSERT_EQ(outcome.status, 1) << assignment;
        const auto json = outcome.json();
        ASSERT_TRUE(json.back()["refused"].contains("first")) << assignment << ' ' << outcome.out;
        const std::string first = json.back()["refused"]["first"];
        std::smatch match;
        ASSERT_TRUE(std::regex_search(first, match, step)) << first;
        words.back() = match[2] == "a" ? "FG_FORMAT=FG_COL42" : match[1].str() + "=" + match[2].str();
        words.push_back(assignment);
        EXPECT_EQ(quillon(words).status, 0) << assignment << " after " << first;
    }
}

}  // namespace
}  // namespace quillon::cli::testing
