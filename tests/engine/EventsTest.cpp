// The events of the design under their public names, and the masks.

#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using test::CapturedLog;
using test::Variable;
using testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Event {
    const char* design;
    const char* name;
};

/// In the order of the maintained design, which is that of the masks.
constexpr std::array<Event, 31> Events = {
    {{"Device1_Process0_Overflow_Overflow", "FG_OVERFLOW_CAM0"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0", "FG_TRIGGER_INPUT0_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin0", "FG_TRIGGER_INPUT0_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin1", "FG_TRIGGER_INPUT1_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin1", "FG_TRIGGER_INPUT1_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin2", "FG_TRIGGER_INPUT2_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin2", "FG_TRIGGER_INPUT2_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin3", "FG_TRIGGER_INPUT3_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin3", "FG_TRIGGER_INPUT3_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin4", "FG_TRIGGER_INPUT4_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin4", "FG_TRIGGER_INPUT4_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin5", "FG_TRIGGER_INPUT5_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin5", "FG_TRIGGER_INPUT5_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin6", "FG_TRIGGER_INPUT6_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin6", "FG_TRIGGER_INPUT6_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin7", "FG_TRIGGER_INPUT7_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin7", "FG_TRIGGER_INPUT7_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin0", "FG_TRIGGER_FRONT_GPI0_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin0", "FG_TRIGGER_FRONT_GPI0_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin1", "FG_TRIGGER_FRONT_GPI1_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin1", "FG_TRIGGER_FRONT_GPI1_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin2", "FG_TRIGGER_FRONT_GPI2_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin2", "FG_TRIGGER_FRONT_GPI2_FALLING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin3", "FG_TRIGGER_FRONT_GPI3_RISING"},
     {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin3", "FG_TRIGGER_FRONT_GPI3_FALLING"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameStart", "FG_START_OF_FRAME_CAM_PORT_0"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameEnd", "FG_END_OF_FRAME_CAM_PORT_0"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineStart", "FG_START_OF_LINE_CAM_PORT_0"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd", "FG_END_OF_LINE_CAM_PORT_0"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent0", "FG_CUSTOM_SIGNAL_EVENT_0"},
     {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent1", "FG_CUSTOM_SIGNAL_EVENT_1"}}};

TEST(EventNames, AreThePublicOnesByTheirPlaceInTheDesign) {
    const BuiltApplet built(1);
    for (std::size_t i = 0; i < Events.size(); ++i) {
        const std::uint64_t mask = std::uint64_t{1} << i;
        EXPECT_EQ(built.applet.eventMask(Events[i].name), mask);
        EXPECT_EQ(built.applet.eventName(mask), Events[i].name);
    }
    EXPECT_EQ(built.applet.events().size(), 31U);
}

TEST(EventNames, AnEventOfKindOneAnswersToTheDesignsNameToo) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.eventMask("Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0"), 2U);
    EXPECT_EQ(built.applet.eventName(2), "FG_TRIGGER_INPUT0_RISING");
}

TEST(EventNames, AnEventOfAnotherKindAnswersToThePublicNameOnly) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.eventMask("FG_OVERFLOW_CAM0"), 1U);
    EXPECT_EQ(built.applet.eventName(1), "FG_OVERFLOW_CAM0");
    EXPECT_EQ(built.applet.eventMask("Device1_Process0_Overflow_Overflow"), 0U);
    EXPECT_EQ(built.applet.lastError(), -2070);
}

TEST(EventNames, WhatIsFoundRecordsSuccessAndWhatIsNotIsRefused) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.eventMask("FG_NOTHING"), 0U);
    EXPECT_EQ(built.applet.lastError(), -2070);
    EXPECT_EQ(built.applet.eventMask("FG_OVERFLOW_CAM0"), 1U);
    EXPECT_EQ(built.applet.lastError(), 0);
    for (const std::uint64_t mask : {std::uint64_t{0}, std::uint64_t{3}, std::uint64_t{1} << 31, ~std::uint64_t{0}}) {
        ASSERT_EQ(built.applet.eventMask("FG_OVERFLOW_CAM0"), 1U);
        EXPECT_EQ(built.applet.eventName(mask), std::nullopt);
        EXPECT_EQ(built.applet.lastError(), -2070);
    }
    EXPECT_EQ(built.applet.eventName(1), "FG_OVERFLOW_CAM0");
    EXPECT_EQ(built.applet.lastError(), 0);
}

TEST(MissingEvents, AreLoggedByTheDesignsNameAndTheOthersMoveUp) {
    const CapturedLog log;
    const Variable hide(
        "SOFTBOARD_HIDE",
        "Device1_Process0_Overflow_Overflow,Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd");
    const BuiltApplet built(1);
    EXPECT_THAT(log.lines(), ElementsAre("4 orlo.wrapper.Quillon cannot retrieve event id for internal event: "
                                         "'Device1_Process0_Overflow_Overflow'",
                                         "4 orlo.wrapper.Quillon cannot retrieve event id for internal event: "
                                         "'Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd'"));
    EXPECT_EQ(built.applet.eventMask("FG_OVERFLOW_CAM0"), 0U);
    EXPECT_EQ(built.applet.lastError(), -2070);
    EXPECT_EQ(built.applet.eventMask("FG_TRIGGER_INPUT0_RISING"), 1U);
    EXPECT_EQ(built.applet.eventMask("FG_CUSTOM_SIGNAL_EVENT_1"), std::uint64_t{1} << 28);
}

TEST(MissingEvents, AreLoggedAll31InOrder) {
    const CapturedLog log;
    std::string all;
    std::vector<std::string> expected;
    for (const Event& event : Events) {
        all += std::string(event.design) + ",";
        expected.push_back(std::string("4 orlo.wrapper.Quillon cannot retrieve event id for internal event: '") +
                           event.design + "'");
    }
    const Variable hide("SOFTBOARD_HIDE", all);
    const BuiltApplet built(1);
    EXPECT_EQ(log.lines(), expected);
    EXPECT_THAT(built.applet.events(), IsEmpty());
}

TEST(MissingEvents, AreNoFailureOfTheStart) {
    const Variable hide("SOFTBOARD_HIDE", "Device1_Process0_Overflow_Overflow");
    BuiltApplet built;
    EXPECT_EQ(built.applet.lastError(), 0);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), 0);
}

/// The maintained design with other events.
class OwnEvents : public TemporaryFolder {
protected:
    /// Opens the applet with the design `description`.
    void open(const nlohmann::ordered_json& description) {
        test::packDesignFile(description, folder / "Quillon.tav");
        const test::WorkingDirectory here(folder);
        const Variable force("__ORLO_FORCE_EXTERNAL_TAV", "");
        built.emplace(1);
    }
    static nlohmann::ordered_json event(const std::string& name, int kind) { return {{"name", name}, {"kind", kind}}; }

    std::optional<BuiltApplet> built;
};

TEST_F(OwnEvents, WithoutAPublicNameKeepTheDesignsIfTheirKindIsOne) {
    auto description = test::designDescription();
    description["events"] = {event("Extra_Signal", 1), event("Extra_Internal", 2), event("Extra_Zero", 0)};
    open(description);
    EXPECT_EQ(built->applet.eventMask("Extra_Signal"), 1U);
    EXPECT_EQ(built->applet.eventName(1), "Extra_Signal");
    EXPECT_EQ(built->applet.eventMask("Extra_Internal"), 0U);
    EXPECT_EQ(built->applet.eventName(2), std::nullopt);
    EXPECT_EQ(built->applet.eventMask("Extra_Zero"), 0U);
}

TEST_F(OwnEvents, ReachUpToTheLastBitOfAMask) {
    auto description = test::designDescription();
    for (int i = 31; i < 64; ++i) {
        description["events"].push_back(event("Extra_" + std::to_string(i), 1));
    }
    open(description);
    EXPECT_EQ(built->applet.eventMask("Extra_31"), std::uint64_t{1} << 31);
    EXPECT_EQ(built->applet.eventMask("Extra_63"), std::uint64_t{1} << 63);
    EXPECT_EQ(built->applet.eventName(std::uint64_t{1} << 63), "Extra_63");
    EXPECT_EQ(built->applet.eventMask("FG_OVERFLOW_CAM0"), 1U);
}

TEST_F(OwnEvents, BehindTheLastBitAreLeftOut) {
    auto description = test::designDescription();
    for (int i = 31; i < 80; ++i) {
        description["events"].push_back(event("Extra_" + std::to_string(i), 1));
    }
    open(description);
    EXPECT_EQ(built->applet.eventMask("Extra_63"), std::uint64_t{1} << 63);
    EXPECT_EQ(built->applet.eventMask("Extra_64"), 0U);
    EXPECT_EQ(built->applet.eventMask("Extra_79"), 0U);
    EXPECT_EQ(built->applet.eventName(1), "FG_OVERFLOW_CAM0");
    EXPECT_EQ(built->applet.eventName(0), std::nullopt);
}

TEST_F(OwnEvents, MayBeNone) {
    auto description = test::designDescription();
    description["events"] = nlohmann::ordered_json::array();
    open(description);
    EXPECT_THAT(built->applet.events(), IsEmpty());
    EXPECT_EQ(built->applet.eventMask("FG_OVERFLOW_CAM0"), 0U);
}

}  // namespace
}  // namespace quillon::client
