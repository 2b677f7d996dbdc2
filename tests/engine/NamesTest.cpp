// Names of parameters by position and by name, with and without the two extensions.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/ParameterRecord.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using test::Variable;
using testing::BuiltApplet;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

struct Position {
    const char* name;
    int id;
};

constexpr std::array<Position, 163> Positions = {{{"FG_TIMEOUT", 600},
                                                  {"FG_APPLET_VERSION", 24020},
                                                  {"FG_APPLET_REVISION", 24030},
                                                  {"FG_APPLET_ID", 24010},
                                                  {"FG_APPLET_BUILD_TIME", 24011},
                                                  {"FG_TAV_FILE", 24108},
                                                  {"FG_DMASTATUS", 24092},
                                                  {"FG_CAMSTATUS", 2000},
                                                  {"FG_CAMSTATUS_EXTENDED", 2050},
                                                  {"FG_SYSTEMMONITOR_FPGA_TEMPERATURE", 200341},
                                                  {"FG_SYSTEMMONITOR_FPGA_VCC_INT", 200342},
                                                  {"FG_SYSTEMMONITOR_FPGA_VCC_AUX", 200343},
                                                  {"FG_SYSTEMMONITOR_FPGA_VCC_BRAM", 200372},
                                                  {"FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH", 200373},
                                                  {"FG_SYSTEMMONITOR_CURRENT_LINK_SPEED", 200374},
                                                  {"FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE", 200375},
                                                  {"FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE", 200376},
                                                  {"FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE", 200377},
                                                  {"FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT", 200378},
                                                  {"FG_ALTERNATIVE_BOARD_DETECTION", 200381},
                                                  {"FG_SYSTEMMONITOR_FPGA_DNA", 200349},
                                                  {"FG_TRANSFER_LEN", 5210},
                                                  {"FG_NR_OF_PROCESSES", 3070},
                                                  {"FG_NR_OF_DMAS", 3050},
                                                  {"FG_NR_OF_CAMS", 3060},
                                                  {"FG_DMA_PORT", 3080},
                                                  {"FG_CAM_PORT", 3090},
                                                  {"FG_APC_STOP_TIMEOUT", 601},
                                                  {"FG_DEBUGSOURCE", 900001},
                                                  {"FG_DEBUGSOURCENAME", 900006},
                                                  {"FG_DEBUGINENABLE", 900002},
                                                  {"FG_DEBUGFILE", 900000},
                                                  {"FG_DEBUGINSERT", 900003},
                                                  {"FG_DEBUGWRITEPIXEL", 900010},
                                                  {"FG_DEBUGWRITEFLAG", 900011},
                                                  {"FG_DEBUGOUTENABLE", 900004},
                                                  {"FG_DEBUGOUTXPOS", 900007},
                                                  {"FG_DEBUGOUTYPOS", 900008},
                                                  {"FG_DEBUGOUTPIXEL", 900009},
                                                  {"FG_DEBUGREADY", 900012},
                                                  {"FG_DEBUGSAVECONFIG", 900013},
                                                  {"FG_PIXELFORMAT", 200368},
                                                  {"FG_LINEORDER", 920000},
                                                  {"FG_VANTAGEPOINT", 300112},
                                                  {"FG_SENSORWIDTH", 200220},
                                                  {"FG_SENSORHEIGHT", 200221},
                                                  {"FG_WIDTH", 100},
                                                  {"FG_HEIGHT", 200},
                                                  {"FG_XOFFSET", 300},
                                                  {"FG_YOFFSET", 400},
                                                  {"FG_FILLLEVEL", 110086},
                                                  {"FG_OVERFLOW", 110087},
                                                  {"FG_FORMAT", 700},
                                                  {"FG_BITALIGNMENT", 4010},
                                                  {"FG_PIXELDEPTH", 4000},
                                                  {"FG_CUSTOM_BIT_SHIFT_RIGHT", 200396},
                                                  {"FG_CAMERASIMULATOR_ENABLE", 30099},
                                                  {"FG_CAMERASIMULATOR_WIDTH", 30102},
                                                  {"FG_CAMERASIMULATOR_LINE_GAP", 30105},
                                                  {"FG_CAMERASIMULATOR_HEIGHT", 200322},
                                                  {"FG_CAMERASIMULATOR_FRAME_GAP", 200325},
                                                  {"FG_CAMERASIMULATOR_PATTERN", 200326},
                                                  {"FG_CAMERASIMULATOR_PATTERN_OFFSET", 200356},
                                                  {"FG_CAMERASIMULATOR_ROLL", 200327},
                                                  {"FG_CAMERASIMULATOR_SELECT_MODE", 200328},
                                                  {"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", 30106},
                                                  {"FG_CAMERASIMULATOR_LINERATE", 200329},
                                                  {"FG_CAMERASIMULATOR_FRAMERATE", 200352},
                                                  {"FG_CAMERASIMULATOR_TRIGGER_MODE", 200355},
                                                  {"FG_CAMERASIMULATOR_ACTIVE", 30101},
                                                  {"FG_CAMERASIMULATOR_PASSIVE", 30100},
                                                  {"FG_IMG_SELECT_PERIOD", 25110},
                                                  {"FG_IMG_SELECT", 25111},
                                                  {"FG_SCALINGFACTOR_RED", 13000},
                                                  {"FG_SCALINGFACTOR_BLUE", 13010},
                                                  {"FG_SCALINGFACTOR_GREEN", 13030},
                                                  {"FG_LUT_ENABLE", 12030},
                                                  {"FG_LUT_TYPE", 110017},
                                                  {"FG_LUT_IMPLEMENTATION_TYPE", 300006},
                                                  {"FG_LUT_IN_BITS", 300007},
                                                  {"FG_LUT_OUT_BITS", 300008},
                                                  {"FG_LUT_VALUE_RED", 300009},
                                                  {"FG_LUT_VALUE_GREEN", 300010},
                                                  {"FG_LUT_VALUE_BLUE", 300011},
                                                  {"FG_LUT_CUSTOM_FILE", 300000},
                                                  {"FG_LUT_SAVE_FILE", 110021},
                                                  {"FG_PROCESSING_OFFSET", 300004},
                                                  {"FG_PROCESSING_GAIN", 300002},
                                                  {"FG_PROCESSING_GAMMA", 300003},
                                                  {"FG_PROCESSING_INVERT", 300005},
                                                  {"FG_LINETRIGGERMODE", 8102},
                                                  {"FG_EXSYNCON", 8300},
                                                  {"FG_LINETRIGGERINSRC", 8112},
                                                  {"FG_LINETRIGGERINPOLARITY", 8115},
                                                  {"FG_LINETRIGGERDEBOUNCING", 110063},
                                                  {"FG_LINE_DOWNSCALE", 24040},
                                                  {"FG_LINE_DOWNSCALEINIT", 24050},
                                                  {"FG_SHAFTENCODERON", 9110},
                                                  {"FG_SHAFTENCODERMODE", 110065},
                                                  {"FG_SHAFTENCODERINSRC", 9100},
                                                  {"FG_SHAFTENCODERLEADING", 9120},
                                                  {"FG_SHAFTENCODER_COMPENSATION_ENABLE", 200370},
                                                  {"FG_SHAFTENCODER_COMPENSATION_COUNT", 200371},
                                                  {"FG_LINEPERIODE", 96},
                                                  {"FG_LINEEXPOSURE", 10030},
                                                  {"FG_EXSYNCPOLARITY", 8420},
                                                  {"FG_LINETRIGGERDELAY", 8900},
                                                  {"FG_IMGTRIGGERMODE", 8104},
                                                  {"FG_IMGTRIGGERON", 8106},
                                                  {"FG_FLASHON", 8600},
                                                  {"FG_IMGTRIGGER_ASYNC_HEIGHT", 110067},
                                                  {"FG_IMGTRIGGER_IS_BUSY", 110066},
                                                  {"FG_IMGTRIGGERINSRC", 8113},
                                                  {"FG_IMGTRIGGERINPOLARITY", 8116},
                                                  {"FG_IMGTRIGGERGATEDELAY", 8118},
                                                  {"FG_IMGTRIGGERDEBOUNCING", 110064},
                                                  {"FG_FLASH_POLARITY", 24060},
                                                  {"FG_STROBEPULSEDELAY", 8700},
                                                  {"FG_SENDSOFTWARETRIGGER", 8800},
                                                  {"FG_SETSOFTWARETRIGGER", 8801},
                                                  {"FG_TRIGGERCAMERA_SOURCE", 200338},
                                                  {"FG_TRIGGERCAMERA_POLARITY", 200354},
                                                  {"FG_TRIGGEROUT_GPO_0_SOURCE", 200384},
                                                  {"FG_TRIGGEROUT_GPO_0_POLARITY", 200410},
                                                  {"FG_TRIGGEROUT_GPO_1_SOURCE", 200385},
                                                  {"FG_TRIGGEROUT_GPO_1_POLARITY", 200411},
                                                  {"FG_TRIGGEROUT_GPO_2_SOURCE", 200386},
                                                  {"FG_TRIGGEROUT_GPO_2_POLARITY", 200412},
                                                  {"FG_TRIGGEROUT_GPO_3_SOURCE", 200387},
                                                  {"FG_TRIGGEROUT_GPO_3_POLARITY", 200413},
                                                  {"FG_TRIGGEROUT_GPO_4_SOURCE", 200388},
                                                  {"FG_TRIGGEROUT_GPO_4_POLARITY", 200414},
                                                  {"FG_TRIGGEROUT_GPO_5_SOURCE", 200389},
                                                  {"FG_TRIGGEROUT_GPO_5_POLARITY", 200415},
                                                  {"FG_TRIGGEROUT_GPO_6_SOURCE", 200390},
                                                  {"FG_TRIGGEROUT_GPO_6_POLARITY", 200416},
                                                  {"FG_TRIGGEROUT_GPO_7_SOURCE", 200391},
                                                  {"FG_TRIGGEROUT_GPO_7_POLARITY", 200417},
                                                  {"FG_TRIGGEROUT_FRONT_GPO_0_SOURCE", 200392},
                                                  {"FG_TRIGGEROUT_FRONT_GPO_0_POLARITY", 200418},
                                                  {"FG_TRIGGEROUT_FRONT_GPO_1_SOURCE", 200393},
                                                  {"FG_TRIGGEROUT_FRONT_GPO_1_POLARITY", 200419},
                                                  {"FG_DIGIO_OUTPUT", 14020},
                                                  {"FG_DIGIO_INPUT", 14010},
                                                  {"FG_SIGNAL_ANALYZER_0_SOURCE", 200420},
                                                  {"FG_SIGNAL_ANALYZER_0_POLARITY", 200421},
                                                  {"FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT", 200422},
                                                  {"FG_SIGNAL_ANALYZER_0_PERIOD_MAX", 200423},
                                                  {"FG_SIGNAL_ANALYZER_0_PERIOD_MIN", 200424},
                                                  {"FG_SIGNAL_ANALYZER_0_PULSE_COUNT", 200425},
                                                  {"FG_SIGNAL_ANALYZER_1_SOURCE", 200430},
                                                  {"FG_SIGNAL_ANALYZER_1_POLARITY", 200431},
                                                  {"FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT", 200432},
                                                  {"FG_SIGNAL_ANALYZER_1_PERIOD_MAX", 200433},
                                                  {"FG_SIGNAL_ANALYZER_1_PERIOD_MIN", 200434},
                                                  {"FG_SIGNAL_ANALYZER_1_PULSE_COUNT", 200435},
                                                  {"FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", 200439},
                                                  {"FG_SIGNAL_ANALYZER_CLEAR", 200438},
                                                  {"FG_CLHS_TRIGGER_PULSE_MESSAGE", 200401},
                                                  {"FG_CUSTOM_SIGNAL_EVENT_0_SOURCE", 200440},
                                                  {"FG_CUSTOM_SIGNAL_EVENT_0_POLARITY", 200441},
                                                  {"FG_CUSTOM_SIGNAL_EVENT_1_SOURCE", 200442},
                                                  {"FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", 200443}}};

TEST(Names, ThereAre163AtTheirPositions) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterCount(), 163);
    for (int i = 0; i < 163; ++i) {
        const auto& [name, id] = Positions[static_cast<std::size_t>(i)];
        EXPECT_EQ(built.applet.parameterNameAt(i), name);
        EXPECT_EQ(built.applet.parameterIdAt(i), id) << name;
        EXPECT_EQ(built.applet.parameterId(name), id) << name;
    }
}

TEST(Names, APositionOutsideIsRefusedAndRecorded) {
    BuiltApplet built(1);
    for (const int position : {163, -1, 1000000}) {
        std::int32_t width = 0;
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, width), 0);
        EXPECT_EQ(built.applet.parameterNameAt(position), std::nullopt);
        EXPECT_EQ(built.applet.lastError(), -2070);
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, width), 0);
        EXPECT_EQ(built.applet.parameterIdAt(position), -2070);
        EXPECT_EQ(built.applet.lastError(), -2070);
    }
}

TEST(Names, ANameThatIsNoneIsRefusedAndRecorded) {
    const BuiltApplet built(1);
    const Functions& f = built.applet.functions();
    for (const char* name : {static_cast<const char*>(nullptr), "", "FG_NOTHING", "fg_width", "FG_WIDTH "}) {
        ASSERT_EQ(built.applet.parameterId("FG_WIDTH"), 100);
        ASSERT_EQ(built.applet.lastError(), 0);
        EXPECT_EQ(f.Fg_getParameterIdByName(built.applet.handle(), name), -2070);
        EXPECT_EQ(built.applet.lastError(), -2070);
    }
}

TEST(Names, AFoundNameRecordsSuccessAndTheCountRecordsNothing) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("FG_NOTHING"), -2070);
    EXPECT_EQ(built.applet.parameterCount(), 163);
    EXPECT_EQ(built.applet.lastError(), -2070);
    EXPECT_EQ(built.applet.parameterNameAt(0), "FG_TIMEOUT");
    EXPECT_EQ(built.applet.lastError(), 0);
    EXPECT_EQ(built.applet.parameterId("FG_NOTHING"), -2070);
    EXPECT_EQ(built.applet.parameterIdAt(0), 600);
    EXPECT_EQ(built.applet.lastError(), 0);
}

TEST(Names, TheDescriptionParameterHasNeitherPositionNorName) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("FG_PARAM_DESCR"), -2070);
    for (int i = 0; i < 163; ++i) {
        EXPECT_NE(built.applet.parameterNameAt(i), "FG_PARAM_DESCR");
    }
}

TEST(Names, OfOnePositionIsOnePointerForTheWrappersLife) {
    const BuiltApplet built(1);
    const Functions& f = built.applet.functions();
    EXPECT_EQ(f.Fg_getParameterName(built.applet.handle(), 46), f.Fg_getParameterName(built.applet.handle(), 46));
}

// Registers ----------------------------------------------------------------------------------------------------------

TEST(RegisterNames, StandBehindThePublicOnes) {
    const Variable enable("ORLO_ENABLE_DRA", "1");
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterCount(), 183);
    EXPECT_EQ(built.applet.parameterNameAt(162), "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY");
    EXPECT_EQ(built.applet.parameterNameAt(163), "DRA_DesignId");
    EXPECT_EQ(built.applet.parameterNameAt(182), "DRA_SpiCommand");
    EXPECT_EQ(built.applet.parameterNameAt(183), std::nullopt);
    EXPECT_EQ(built.applet.parameterIdAt(163), 1000001);
    EXPECT_EQ(built.applet.parameterIdAt(182), 1000020);
    EXPECT_EQ(built.applet.parameterId("DRA_Scratch"), 1000005);
    EXPECT_EQ(built.applet.parameterId("Scratch"), -2070);
}

TEST(RegisterNames, AreUnknownWithoutTheSwitch) {
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterId("DRA_Scratch"), -2070);
}

// The SDK's own parameters -------------------------------------------------------------------------------------------

/// All names from `first` on.
std::vector<std::string> namesFrom(const Applet& applet, int first) {
    std::vector<std::string> names;
    for (int i = first; i < applet.parameterCount(); ++i) {
        names.push_back(applet.parameterNameAt(i).value());
    }
    return names;
}

TEST(SdkNames, AreListedInAscendingOrderBehindThePublicOnes) {
    const Variable enable("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    const std::vector<std::string> names = namesFrom(built.applet, 163);
    EXPECT_EQ(names.size(), 184U);  // the design's 177 but for three fields, and the SDK's 10
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_TRUE(std::all_of(names.begin(), names.end(), [](const auto& name) { return name.starts_with("DIXA_"); }));
    EXPECT_THAT(names, Contains("DIXA_FG_APC_STOP_TIMEOUT"));
    EXPECT_THAT(names, Contains("DIXA_Device1_Process0_Buffer_0_SensorWidth"));
    EXPECT_THAT(names, Not(Contains("DIXA_Device1_Process0_LookupTable_R_LUTcontent")));
}

TEST(SdkNames, StandBehindTheRegisters) {
    const Variable registers("ORLO_ENABLE_DRA", "on");
    const Variable parameters("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    EXPECT_EQ(built.applet.parameterCount(), 367);
    EXPECT_EQ(built.applet.parameterNameAt(182), "DRA_SpiCommand");
    EXPECT_EQ(built.applet.parameterNameAt(183), "DIXA_Device1_Process0_AppletProperties_AppletUid");
    EXPECT_EQ(built.applet.parameterNameAt(366), "DIXA_FG_TRANSFER_LEN");
}

TEST(SdkNames, HaveAPositionButNoId) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const BuiltApplet built(1);
    const std::string name = built.applet.parameterNameAt(163).value();
    EXPECT_EQ(built.applet.parameterId(name), -2070);
    EXPECT_EQ(built.applet.parameterIdAt(163), -2070);
    EXPECT_EQ(built.applet.lastError(), -2070);
}

int countParameters(const std::vector<ParameterRecord>& records) {
    int count = 0;
    for (const ParameterRecord& record : records) {
        count += record.isGroup() ? countParameters(record.children) : 1;
    }
    return count;
}

TEST(SdkNames, HaveRecordsInTheFirstGroupOfTheCatalogue) {
    const Variable registers("ORLO_ENABLE_DRA", "on");
    const Variable parameters("ORLO_ENABLE_DIXA", "on");
    const BuiltApplet built(1);
    const std::vector<ParameterRecord> groups = built.applet.parameterInfo();
    ASSERT_GE(groups.size(), 3U);
    EXPECT_EQ(groups[0].label, "Direct IX Access");
    EXPECT_EQ(groups[1].label, "Direct Register Access");
    EXPECT_EQ(groups[2].label, "Miscellaneous");
    EXPECT_EQ(countParameters(groups[0].children), 184);
    EXPECT_EQ(countParameters(groups[1].children), 20);
    const ParameterRecord* record = findRecord(groups, 2000601);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->symbol, "DIXA_FG_APC_STOP_TIMEOUT");
    EXPECT_EQ(record->unit, "ms");
}

TEST(SdkNames, HaveNoGroupWhereThereAreNone) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterIdByName", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    const std::vector<ParameterRecord> groups = applet.parameterInfo();
    ASSERT_FALSE(groups.empty());
    EXPECT_EQ(groups.front().label, "Miscellaneous");
    EXPECT_EQ(countParameters(groups), 156);
}

TEST(SdkNames, ANameWithTheIdZeroIsLeftOut) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterIdByName", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    EXPECT_EQ(applet.parameterCount(), 163);
}

TEST(SdkNames, AnSdkWithoutADescriptionAddsNothing) {
    const Variable enable("ORLO_ENABLE_DIXA", "1");
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.planFault("Fg_getParameterInfo", Direction::Call, 0, 0);
    const Applet applet(library, board, 1);
    EXPECT_EQ(applet.parameterCount(), 163);
}

TEST(SdkNames, AreSwitchedOnByFourWordsInAnyCase) {
    for (const char* value : {"yes", "true", "on", "1", "YES", "True"}) {
        const Variable enable("ORLO_ENABLE_DIXA", value);
        EXPECT_EQ(BuiltApplet(1).applet.parameterCount(), 347) << value;
    }
    for (const char* value : {"", "0", "no", "enabled", "2", " on"}) {
        const Variable enable("ORLO_ENABLE_DIXA", value);
        EXPECT_EQ(BuiltApplet(1).applet.parameterCount(), 163) << value;
    }
}

TEST(SdkNames, TheSdkIsNotAskedWithoutTheSwitch) {
    BuiltApplet built(1);
    EXPECT_THAT(built.board.calls(), Not(Contains("Fg_getParameterInfo(0)")));
}

}  // namespace
}  // namespace quillon::client
