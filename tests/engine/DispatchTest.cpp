// The road of a read and a write: id ranges, processes, refusals, codes and last errors.

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Dispatch : public ::testing::Test {
protected:
    void SetUp() override { built.board.clearTranscript(); }

    int set(int id, unsigned dma = 0, FgParamTypes type = FgTypeInt32) {
        return built.applet.setWithType(id, buffer.data(), dma, type);
    }
    int get(int id, unsigned dma = 0, FgParamTypes type = FgTypeInt32) {
        return built.applet.getWithType(id, buffer.data(), dma, type);
    }
    int lastError() { return built.applet.lastError(); }

    test::CapturedLog log;
    BuiltApplet built;
    std::array<std::uint64_t, 8> buffer{};
};

// Read-only parameters -----------------------------------------------------------------------------------------------

struct Named {
    int id;
    const char* name;
};

constexpr std::array<Named, 52> ReadOnly = {{{4000, "FG_PIXELDEPTH"},
                                             {300006, "FG_LUT_IMPLEMENTATION_TYPE"},
                                             {300007, "FG_LUT_IN_BITS"},
                                             {300008, "FG_LUT_OUT_BITS"},
                                             {30100, "FG_CAMERASIMULATOR_PASSIVE"},
                                             {30101, "FG_CAMERASIMULATOR_ACTIVE"},
                                             {601, "FG_APC_STOP_TIMEOUT"},
                                             {2000, "FG_CAMSTATUS"},
                                             {2050, "FG_CAMSTATUS_EXTENDED"},
                                             {3050, "FG_NR_OF_DMAS"},
                                             {3060, "FG_NR_OF_CAMS"},
                                             {3070, "FG_NR_OF_PROCESSES"},
                                             {3080, "FG_DMA_PORT"},
                                             {3090, "FG_CAM_PORT"},
                                             {5210, "FG_TRANSFER_LEN"},
                                             {24010, "FG_APPLET_ID"},
                                             {24011, "FG_APPLET_BUILD_TIME"},
                                             {24020, "FG_APPLET_VERSION"},
                                             {24030, "FG_APPLET_REVISION"},
                                             {24092, "FG_DMASTATUS"},
                                             {24108, "FG_TAV_FILE"},
                                             {24114, "FG_PARAM_DESCR"},
                                             {110086, "FG_FILLLEVEL"},
                                             {110087, "FG_OVERFLOW"},
                                             {200341, "FG_SYSTEMMONITOR_FPGA_TEMPERATURE"},
                                             {200342, "FG_SYSTEMMONITOR_FPGA_VCC_INT"},
                                             {200343, "FG_SYSTEMMONITOR_FPGA_VCC_AUX"},
                                             {200349, "FG_SYSTEMMONITOR_FPGA_DNA"},
                                             {200372, "FG_SYSTEMMONITOR_FPGA_VCC_BRAM"},
                                             {200373, "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH"},
                                             {200374, "FG_SYSTEMMONITOR_CURRENT_LINK_SPEED"},
                                             {200375, "FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE"},
                                             {200376, "FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE"},
                                             {200377, "FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE"},
                                             {200378, "FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT"},
                                             {200381, "FG_ALTERNATIVE_BOARD_DETECTION"},
                                             {110066, "FG_IMGTRIGGER_IS_BUSY"},
                                             {14010, "FG_DIGIO_INPUT"},
                                             {200422, "FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT"},
                                             {200423, "FG_SIGNAL_ANALYZER_0_PERIOD_MAX"},
                                             {200424, "FG_SIGNAL_ANALYZER_0_PERIOD_MIN"},
                                             {200425, "FG_SIGNAL_ANALYZER_0_PULSE_COUNT"},
                                             {200432, "FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT"},
                                             {200433, "FG_SIGNAL_ANALYZER_1_PERIOD_MAX"},
                                             {200434, "FG_SIGNAL_ANALYZER_1_PERIOD_MIN"},
                                             {200435, "FG_SIGNAL_ANALYZER_1_PULSE_COUNT"},
                                             {200439, "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE"},
                                             {900006, "FG_DEBUGSOURCENAME"},
                                             {900007, "FG_DEBUGOUTXPOS"},
                                             {900008, "FG_DEBUGOUTYPOS"},
                                             {900009, "FG_DEBUGOUTPIXEL"},
                                             {900012, "FG_DEBUGREADY"}}};

TEST_F(Dispatch, AReadOnlyParameterIsRefusedByNameWhateverTheValue) {
    for (const Named& parameter : ReadOnly) {
        log.clear();
        EXPECT_EQ(set(parameter.id), -12) << parameter.name;
        EXPECT_EQ(lastError(), -12) << parameter.name;
        EXPECT_THAT(log.lines(),
                    ElementsAre(std::string("4 orlo.wrapper.Quillon trying to set read-only SDK parameter '") +
                                parameter.name + "' on process 0!"));
    }
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

TEST_F(Dispatch, ARefusalIsTheSameWithoutALog) {
    log.changeLevel("orlo.wrapper.Quillon", 5);
    for (const Named& parameter : ReadOnly) {
        EXPECT_EQ(set(parameter.id), -12) << parameter.name;
    }
    EXPECT_EQ(set(5), -2070);
    EXPECT_EQ(get(5), -2070);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(Dispatch, AReadOnlyParameterKeepsItsValue) {
    buffer[0] = 8;
    EXPECT_EQ(set(FG_PIXELDEPTH), -12);
    EXPECT_EQ(built.applet.readInt(FG_PIXELDEPTH), 16);
}

TEST_F(Dispatch, AReadOnlyParameterOfAnUnknownProcessIsAnUnknownProcess) {
    EXPECT_EQ(set(FG_PIXELDEPTH, 1), -2070);
    EXPECT_THAT(log.lines(), IsEmpty());
}

// Constants ----------------------------------------------------------------------------------------------------------

TEST_F(Dispatch, TheConstantsAreAnsweredWithoutTheDesign) {
    EXPECT_EQ(built.applet.readInt(FG_APPLET_VERSION), 2);
    EXPECT_EQ(built.applet.readInt(FG_APPLET_REVISION), 1);
    EXPECT_EQ(built.applet.readInt(FG_PIXELDEPTH), 16);
    EXPECT_EQ(built.applet.readInt(FG_LUT_IN_BITS), 14);
    EXPECT_EQ(built.applet.readInt(FG_LUT_OUT_BITS), 16);
    EXPECT_EQ(built.applet.readInt(FG_LUT_IMPLEMENTATION_TYPE), 0);
    EXPECT_EQ(built.applet.readInt(FG_NR_OF_PROCESSES), 1);
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

// Ids ----------------------------------------------------------------------------------------------------------------

TEST_F(Dispatch, UnknownIdsAreRefusedWithALogLine) {
    for (const int id : {0, -1, 5, 999999, 1000000, 1000001, 1999999, 2000000, -2147483647}) {
        log.clear();
        EXPECT_EQ(get(id), -2070) << id;
        EXPECT_EQ(lastError(), -2070) << id;
        EXPECT_EQ(set(id), -2070) << id;
        EXPECT_EQ(lastError(), -2070) << id;
        const std::string number = std::to_string(id);
        EXPECT_THAT(
            log.lines(),
            ElementsAre("4 orlo.wrapper.Quillon trying to get unknown SDK parameter '" + number + "' on process 0!",
                        "4 orlo.wrapper.Quillon trying to set unknown SDK parameter '" + number + "' on process 0!"));
    }
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

TEST_F(Dispatch, BothDirectionsKnowAll164Parameters) {
    for (int position = 0; position < PositionCount; ++position) {
        const int id = built.applet.parameterIdAt(position);
        std::array<char, 4096> place{};
        built.applet.getWithType(id, place.data(), 0, FgTypeCharBuffer);
    }
    std::array<char, 4096> name{};
    built.applet.getWithType(FG_PARAM_DESCR, name.data(), 0, FgTypeCharBuffer);
    EXPECT_THAT(log.lines(), Not(Contains(HasSubstr("unknown SDK parameter"))));
}

TEST_F(Dispatch, IdsAboveTwoMillionReachTheSdkUnwrapped) {
    EXPECT_EQ(get(2000601), 0);
    EXPECT_EQ(buffer[0], 1000U);
    buffer[0] = 250;
    EXPECT_EQ(set(2000601), 0);
    EXPECT_EQ(lastError(), 0);
    EXPECT_THAT(built.board.accesses(), ElementsAre("FG_APC_STOP_TIMEOUT ? 1000", "FG_APC_STOP_TIMEOUT = 250"));
}

TEST_F(Dispatch, UnwrappedCodesAreTheSdksAndAreRecorded) {
    EXPECT_EQ(get(2000001), -9002);
    EXPECT_EQ(lastError(), -9002);
    EXPECT_EQ(set(2000001), -9002);
    EXPECT_EQ(set(2003050), -9004);
    EXPECT_EQ(lastError(), -9004);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(Dispatch, UnwrappedCallsHandProcessAndTypeOn) {
    EXPECT_EQ(get(2000601, 3), -9001);
    EXPECT_EQ(get(2000601, 0, FgTypeDouble), -9003);
    EXPECT_EQ(built.board.transcript()[0].dma, 3);
    EXPECT_EQ(built.board.transcript()[1].type, 5);
}

TEST_F(Dispatch, UnwrappedNullValuesStopBeforeTheSdk) {
    EXPECT_EQ(built.applet.getWithType(2000601, nullptr, 0, FgTypeInt32), -2070);
    EXPECT_EQ(built.applet.setWithType(2000601, nullptr, 0, FgTypeInt32), -2070);
    EXPECT_EQ(lastError(), -2070);
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

// Processes ----------------------------------------------------------------------------------------------------------

TEST_F(Dispatch, EveryProcessButZeroIsRefusedInSilence) {
    for (const unsigned dma : {1U, 7U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(get(FG_WIDTH, dma), -2070);
        EXPECT_EQ(lastError(), -2070);
        EXPECT_EQ(set(FG_WIDTH, dma), -2070);
        EXPECT_EQ(get(5, dma), -2070);
        EXPECT_EQ(set(5, dma), -2070);
    }
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(Dispatch, TheNumberOfProcessesIsAnsweredForAnyProcess) {
    buffer[0] = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(get(FG_NR_OF_PROCESSES, 7), 0);
    EXPECT_EQ(buffer[0], 0xFFFFFFFF00000001);
    EXPECT_EQ(set(FG_NR_OF_PROCESSES, 7), -2070);
    EXPECT_EQ(set(FG_NR_OF_PROCESSES), -12);
}

// Values -------------------------------------------------------------------------------------------------------------

TEST_F(Dispatch, TheTypeIsNoConversion) {
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 22, 4096, 4098, -5}) {
        buffer[0] = 0x7777777700000800;
        EXPECT_EQ(set(FG_WIDTH, 0, FgParamTypes{type}), 0) << type;
        EXPECT_EQ(built.applet.readInt(FG_WIDTH), 2048) << type;
        const double period = 100.0;
        EXPECT_EQ(built.applet.setWithType(FG_LINEPERIODE, &period, 0, FgParamTypes{type}), 0) << type;
        double answer = 0.0;
        EXPECT_EQ(built.applet.getWithType(FG_LINEPERIODE, &answer, 0, FgParamTypes{type}), 0) << type;
        EXPECT_EQ(answer, 100.0);
    }
}

TEST_F(Dispatch, ASuccessRecordsSuccess) {
    EXPECT_EQ(set(FG_PIXELDEPTH), -12);
    EXPECT_EQ(get(FG_WIDTH), 0);
    EXPECT_EQ(lastError(), 0);
    EXPECT_EQ(set(FG_PIXELDEPTH), -12);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), 0);
    EXPECT_EQ(lastError(), 0);
}

TEST_F(Dispatch, ARememberedReadTouchesNoHardware) {
    EXPECT_EQ(get(FG_WIDTH), 0);
    EXPECT_EQ(buffer[0], 1024U);
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

TEST_F(Dispatch, AWriteThatFailsInTheDesignReturnsTheDesignsCodeAndKeepsTheOldValue) {
    built.board.planFault("Device1_Process0_Buffer_0_XLength", Direction::Write, 1, -321);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), -321);
    EXPECT_EQ(lastError(), -321);
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
}

TEST_F(Dispatch, AReadThatFailsInTheDesignReturnsTheDesignsCode) {
    built.board.planFault("Device1_Process0_BoardStatus_FpgaTemperature", Direction::Read, 1, -321);
    double temperature = 0.0;
    EXPECT_EQ(built.applet.getDouble(FG_SYSTEMMONITOR_FPGA_TEMPERATURE, temperature), -321);
    EXPECT_EQ(lastError(), -321);
    EXPECT_EQ(built.applet.getDouble(FG_SYSTEMMONITOR_FPGA_TEMPERATURE, temperature), 0);
    EXPECT_EQ(temperature, 45.2);
}

// Forwarded parameters -----------------------------------------------------------------------------------------------

TEST_F(Dispatch, SixParametersAreTheSdksUnderTheirOwnIds) {
    built.board.setInteger("FG_TRANSFER_LEN", 4711);
    EXPECT_EQ(built.applet.readInt(FG_APC_STOP_TIMEOUT), 1000);
    EXPECT_EQ(built.applet.readInt(FG_NR_OF_DMAS), 1);
    EXPECT_EQ(built.applet.readInt(FG_NR_OF_CAMS), 1);
    EXPECT_EQ(built.applet.readInt(FG_DMA_PORT), 0);
    EXPECT_EQ(built.applet.readInt(FG_CAM_PORT), 0);
    EXPECT_EQ(built.applet.readInt(FG_TRANSFER_LEN), 4711);
    EXPECT_THAT(built.board.accesses(),
                ElementsAre("FG_APC_STOP_TIMEOUT ? 1000", "FG_NR_OF_DMAS ? 1", "FG_NR_OF_CAMS ? 1", "FG_DMA_PORT ? 0",
                            "FG_CAM_PORT ? 0", "FG_TRANSFER_LEN ? 4711"));
}

TEST_F(Dispatch, AForwardedParametersTypeAndFailureAreTheSdks) {
    EXPECT_EQ(get(FG_APC_STOP_TIMEOUT, 0, FgTypeDouble), -9003);
    built.board.planFault("FG_NR_OF_DMAS", Direction::Read, 1, -44);
    EXPECT_EQ(get(FG_NR_OF_DMAS), -44);
    EXPECT_EQ(lastError(), -44);
    EXPECT_EQ(get(FG_NR_OF_DMAS, 1), -2070);  // the process is the applet's to refuse
}

TEST_F(Dispatch, TheDmaStatusIsFilledBesideTheCallersValue) {
    buffer[0] = 0x5555555555555555;
    EXPECT_EQ(get(FG_DMASTATUS, 0, FgTypeDouble), 0);
    EXPECT_EQ(buffer[0], 0x5555555555555555U);
    ASSERT_EQ(built.board.transcript().size(), 1U);
    EXPECT_EQ(built.board.transcript()[0].name, "FG_DMASTATUS");
    EXPECT_EQ(built.board.transcript()[0].dma, 0);
    EXPECT_EQ(built.board.transcript()[0].type, 2);
    built.board.planFault("FG_DMASTATUS", Direction::Read, 1, -45);
    EXPECT_EQ(get(FG_DMASTATUS), -45);
}

// Lookup tables ------------------------------------------------------------------------------------------------------

TEST_F(Dispatch, AnElementOfATableMustLieInIt) {
    std::uint32_t value = 0;
    EXPECT_EQ(built.applet.getElement(FG_LUT_VALUE_RED, 16383, value), 0);
    EXPECT_EQ(built.applet.getElement(FG_LUT_VALUE_RED, 16384, value), -2070);
    EXPECT_EQ(built.applet.getElement(FG_LUT_VALUE_GREEN, 0xFFFFFFFF, value), -2070);
    EXPECT_EQ(built.applet.getElement(FG_LUT_VALUE_BLUE, 16384, value), -2070);
    EXPECT_EQ(lastError(), -2070);
}

TEST_F(Dispatch, ARunOfATableMustLieInIt) {
    std::vector<std::uint32_t> values(16385);
    const auto getRun = [&](std::uint32_t index, std::uint32_t count) {
        FieldParameterAccess access{FgTypeUInt32, index, count, values.data()};
        return built.applet.getWithType(FG_LUT_VALUE_RED, &access, 0, FgTypeFieldAccess);
    };
    EXPECT_EQ(getRun(0, 16384), 0);
    EXPECT_EQ(getRun(16380, 4), 0);
    EXPECT_EQ(getRun(16380, 5), -2070);
    EXPECT_EQ(getRun(16383, 1), 0);
    EXPECT_EQ(getRun(16384, 0), -2070);
    EXPECT_EQ(getRun(0, 16385), -2070);
    EXPECT_EQ(getRun(16383, 0xFFFFFFFF), -2070);
    EXPECT_EQ(getRun(0xFFFFFFFF, 1), -2070);
    EXPECT_EQ(getRun(0, 0), 0);
}

}  // namespace
}  // namespace quillon::client
