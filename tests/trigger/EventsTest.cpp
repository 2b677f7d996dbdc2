#include <array>
#include <cstdlib>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

struct Event {
    const char* designName;
    const char* publicName;
};

/// In the order of the board's design, which gives the events their bits: they stand behind the overflow.
constexpr std::array<Event, 30> SignalEvents = {{
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
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent1", "FG_CUSTOM_SIGNAL_EVENT_1"},
}};

class Events : public TriggerTest {};

TEST_F(Events, AnswerToBothNamesWithTheBitOfTheirPositionAndTellThePublicOne) {
    std::uint64_t mask = 2;
    for (const Event& event : SignalEvents) {
        EXPECT_EQ(applet.eventMask(event.publicName), mask) << event.publicName;
        EXPECT_EQ(applet.eventMask(event.designName), mask) << event.designName;
        EXPECT_EQ(applet.eventName(mask), event.publicName);
        EXPECT_EQ(applet.lastError(), 0);
        mask <<= 1U;
    }
}

TEST_F(Events, ThatAreNoSignalsAnswerToTheirPublicNameAlone) {
    EXPECT_EQ(applet.eventMask("FG_OVERFLOW_CAM0"), 1U);
    EXPECT_EQ(applet.eventName(1), "FG_OVERFLOW_CAM0");
    EXPECT_EQ(applet.eventMask("Device1_Process0_Overflow_Overflow"), 0U);
    EXPECT_EQ(applet.lastError(), -2070);
}

TEST_F(Events, OfAnUnknownNameHaveNoMask) {
    for (const char* const name : {"", "FG_TRIGGER_INPUT8_RISING", "fg_overflow_cam0", "FG_OVERFLOW_CAM0 "}) {
        EXPECT_EQ(applet.eventMask(name), 0U);
        EXPECT_EQ(applet.lastError(), -2070);
    }
}

TEST_F(Events, OfAnUnknownMaskHaveNoName) {
    const std::uint64_t rising = applet.eventMask("FG_TRIGGER_INPUT0_RISING");
    const std::uint64_t falling = applet.eventMask("FG_TRIGGER_INPUT0_FALLING");
    for (const std::uint64_t mask : {rising | falling, std::uint64_t{0}, std::uint64_t{1} << 31U, ~std::uint64_t{0}}) {
        EXPECT_EQ(applet.eventName(mask), std::nullopt);
        EXPECT_EQ(applet.lastError(), -2070);
    }
}

TEST_F(Events, ThatAreFoundClearAnOlderError) {
    applet.eventMask("no event");
    ASSERT_EQ(applet.lastError(), -2070);
    EXPECT_NE(applet.eventMask("FG_OVERFLOW_CAM0"), 0U);
    EXPECT_EQ(applet.lastError(), 0);
    applet.eventMask("no event");
    EXPECT_EQ(applet.eventName(1), "FG_OVERFLOW_CAM0");
    EXPECT_EQ(applet.lastError(), 0);
}

TEST_F(Events, KeepTheirNamesInPlaceAsLongAsTheAppletLives) {
    const char* const name = applet.functions().Fg_getEventName(applet.handle(), 2);
    EXPECT_EQ(applet.functions().Fg_getEventName(applet.handle(), 2), name);
    EXPECT_STREQ(name, "FG_TRIGGER_INPUT0_RISING");
}

TEST_F(Events, OfCustomSignalsFollowTheRouteOfTheirNumber) {
    const std::string stem = "Device1_Process1_Trigger_Events_SelectCustomSignalEvent1_";
    EXPECT_THAT(accessesOf(FG_CUSTOM_SIGNAL_EVENT_1_SOURCE, 2103),
                testing::ElementsAre(stem + "SelectSignal_Select = 36", stem + "Polarity_Invert = 0"));
    EXPECT_EQ(applet.eventMask("FG_CUSTOM_SIGNAL_EVENT_1"), std::uint64_t{1} << 30U);
}

/// A design without the first two events.
class EventsOfAnotherDesign : public testing::Test {
protected:
    struct Hidden {
        Hidden() {
            setenv("SOFTBOARD_HIDE",
                   "Device1_Process0_Overflow_Overflow,Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0",
                   1);
        }
        ~Hidden() { unsetenv("SOFTBOARD_HIDE"); }
    } hidden;
    client::testing::BuiltApplet built;
};

TEST_F(EventsOfAnotherDesign, AreLeftOutWhereItLacksThemAndMoveUpBehindThem) {
    client::Applet& applet = built.applet;
    EXPECT_EQ(applet.eventMask("FG_OVERFLOW_CAM0"), 0U);
    EXPECT_EQ(applet.lastError(), -2070);
    EXPECT_EQ(applet.eventMask("FG_TRIGGER_INPUT0_RISING"), 0U);
    EXPECT_EQ(applet.eventMask("FG_TRIGGER_INPUT0_FALLING"), 1U);
    EXPECT_EQ(applet.eventName(1), "FG_TRIGGER_INPUT0_FALLING");
    EXPECT_EQ(applet.eventMask("FG_CUSTOM_SIGNAL_EVENT_1"), std::uint64_t{1} << 28U);
}

}  // namespace
}  // namespace quillon
