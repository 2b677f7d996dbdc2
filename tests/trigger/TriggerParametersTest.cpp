// What a user finds: the ids behind the names, the values at start-up, and what cannot be written.

#include <array>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

class TriggerParameters : public TriggerTest {};

struct IntegerParameter {
    const char* name;
    int id;
    int startValue;
};

constexpr std::array<IntegerParameter, 25> Integers = {{
    {"FG_LINETRIGGERMODE", 8102, 1},
    {"FG_EXSYNCON", 8300, 1},
    {"FG_LINETRIGGERINSRC", 8112, 1},
    {"FG_LINETRIGGERINPOLARITY", 8115, 0},
    {"FG_LINE_DOWNSCALE", 24040, 1},
    {"FG_LINE_DOWNSCALEINIT", 24050, 1},
    {"FG_SHAFTENCODERON", 9110, 0},
    {"FG_SHAFTENCODERMODE", 110065, 1},
    {"FG_SHAFTENCODERINSRC", 9100, 2},
    {"FG_SHAFTENCODERLEADING", 9120, 0},
    {"FG_SHAFTENCODER_COMPENSATION_ENABLE", 200370, 1},
    {"FG_SHAFTENCODER_COMPENSATION_COUNT", 200371, 0},
    {"FG_EXSYNCPOLARITY", 8420, 1},
    {"FG_IMGTRIGGERMODE", 8104, 0},
    {"FG_IMGTRIGGERON", 8106, 1},
    {"FG_FLASHON", 8600, 1},
    {"FG_IMGTRIGGER_ASYNC_HEIGHT", 110067, 1024},
    {"FG_IMGTRIGGERINSRC", 8113, 0},
    {"FG_IMGTRIGGERINPOLARITY", 8116, 0},
    {"FG_IMGTRIGGERGATEDELAY", 8118, 0},
    {"FG_FLASH_POLARITY", 24060, 1},
    {"FG_STROBEPULSEDELAY", 8700, 0},
    {"FG_SENDSOFTWARETRIGGER", 8800, 1},
    {"FG_SETSOFTWARETRIGGER", 8801, 0},
    {"FG_DIGIO_OUTPUT", 14020, 3},
}};

struct TimeParameter {
    const char* name;
    int id;
    double startValue;
};

constexpr std::array<TimeParameter, 5> Times = {{
    {"FG_LINETRIGGERDEBOUNCING", 110063, 0.112},
    {"FG_LINEPERIODE", 96, 200.0},
    {"FG_LINEEXPOSURE", 10030, 19.0},
    {"FG_LINETRIGGERDELAY", 8900, 0.0},
    {"FG_IMGTRIGGERDEBOUNCING", 110064, 0.112},
}};

TEST_F(TriggerParameters, AreKnownByNameAndStartWithTheirValues) {
    for (const IntegerParameter& parameter : Integers) {
        EXPECT_EQ(applet.parameterId(parameter.name), parameter.id) << parameter.name;
        EXPECT_EQ(applet.readInt(parameter.id), parameter.startValue) << parameter.name;
    }
    for (const TimeParameter& parameter : Times) {
        EXPECT_EQ(applet.parameterId(parameter.name), parameter.id) << parameter.name;
        EXPECT_EQ(applet.readDouble(parameter.id), parameter.startValue) << parameter.name;
    }
}

TEST_F(TriggerParameters, ThatAreRemembered_AreReadWithoutTheDesign) {
    board.clearTranscript();
    for (const IntegerParameter& parameter : Integers) {
        if (parameter.id != 200371) {  // the encoder's compensation count is a live read-out
            applet.readInt(parameter.id);
        }
    }
    for (const TimeParameter& parameter : Times) {
        applet.readDouble(parameter.id);
    }
    EXPECT_THAT(board.accesses(), testing::IsEmpty());
}

TEST_F(TriggerParameters, ThatAreReadOutsOnly_RefuseAWrite) {
    constexpr std::array<IntegerParameter, 11> readOuts = {{
        {"FG_IMGTRIGGER_IS_BUSY", 110066, 0},
        {"FG_DIGIO_INPUT", 14010, 0},
        {"FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT", 200422, 0},
        {"FG_SIGNAL_ANALYZER_0_PERIOD_MAX", 200423, 0},
        {"FG_SIGNAL_ANALYZER_0_PERIOD_MIN", 200424, 0},
        {"FG_SIGNAL_ANALYZER_0_PULSE_COUNT", 200425, 0},
        {"FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT", 200432, 0},
        {"FG_SIGNAL_ANALYZER_1_PERIOD_MAX", 200433, 0},
        {"FG_SIGNAL_ANALYZER_1_PERIOD_MIN", 200434, 0},
        {"FG_SIGNAL_ANALYZER_1_PULSE_COUNT", 200435, 0},
        {"FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", 200439, 0},
    }};
    board.clearTranscript();
    for (const IntegerParameter& readOut : readOuts) {
        EXPECT_EQ(applet.parameterId(readOut.name), readOut.id);
        EXPECT_EQ(applet.setInt64(readOut.id, 1), -12) << readOut.name;
        EXPECT_EQ(applet.lastError(), -12);
    }
    EXPECT_THAT(board.accesses(), testing::IsEmpty());
}

TEST_F(TriggerParameters, OfTheSwitchboardAreKnownByName) {
    constexpr std::array<IntegerParameter, 7> parameters = {{
        {"FG_TRIGGERCAMERA_SOURCE", 200338, 2000},
        {"FG_TRIGGEROUT_GPO_7_SOURCE", 200391, 5},
        {"FG_TRIGGEROUT_FRONT_GPO_1_POLARITY", 200419, 1},
        {"FG_SIGNAL_ANALYZER_1_SOURCE", 200430, 2100},
        {"FG_SIGNAL_ANALYZER_CLEAR", 200438, 1},
        {"FG_CLHS_TRIGGER_PULSE_MESSAGE", 200401, 1},
        {"FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", 200443, 1},
    }};
    for (const IntegerParameter& parameter : parameters) {
        EXPECT_EQ(applet.parameterId(parameter.name), parameter.id) << parameter.name;
        EXPECT_EQ(applet.readInt(parameter.id), parameter.startValue) << parameter.name;
    }
}

}  // namespace
}  // namespace quillon
