// What is read live of buffer, camera and board, and the SDK's own parameters.

#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using client::Direction;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string OverflowParameter = "Device1_Process0_Overflow_OverflowOccurred";

struct Status : ::testing::Test, ImagePath {
    void setFill(std::int64_t first, std::int64_t second, std::int64_t third) {
        board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_FillLevel", first);
        board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_1_FillLevel", second);
        board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_2_FillLevel", third);
    }
    void setOverflow(std::int64_t value) { board.setInteger(OverflowParameter, value); }
    /// What the SDK answers for its own parameter 2050.
    void setSdkStatus(std::int64_t value) { board.setInteger("FG_CAMSTATUS_EXTENDED", value); }
    std::uint32_t read(int id) { return get<std::uint32_t>(id); }
};

// Fill level and overflow --------------------------------------------------------------------------------------------

TEST_F(Status, TheFillLevelIsTheLargestOfThree) {
    setFill(10, 20, 30);
    EXPECT_EQ(read(FG_FILLLEVEL), 30U);
    EXPECT_THAT(accesses(),
                ElementsAre("Overflow_OverflowOccurred ? 0", "Buffer_0_DRAM_DRAM_A_0_FillLevel ? 10",
                            "Buffer_0_DRAM_DRAM_A_1_FillLevel ? 20", "Buffer_0_DRAM_DRAM_A_2_FillLevel ? 30"));
    setFill(10, 50, 30);
    EXPECT_EQ(read(FG_FILLLEVEL), 50U);
    setFill(70, 50, 30);
    EXPECT_EQ(read(FG_FILLLEVEL), 70U);
}

TEST_F(Status, AnOverflowReadsAsFull) {
    setFill(1, 2, 3);
    setOverflow(1);
    EXPECT_EQ(read(FG_FILLLEVEL), 100U);
    EXPECT_THAT(accesses(), ElementsAre("Overflow_OverflowOccurred ? 1"));
    EXPECT_EQ(read(FG_OVERFLOW), 1U);
}

TEST_F(Status, OnlyOneIsAnOverflow) {
    setFill(1, 2, 3);
    setOverflow(2);
    EXPECT_EQ(read(FG_FILLLEVEL), 3U);
    EXPECT_EQ(read(FG_OVERFLOW), 2U);
}

// Camera -------------------------------------------------------------------------------------------------------------

TEST_F(Status, TheCameraStatusIsBitZeroOfTheSdks) {
    setSdkStatus(6);
    EXPECT_EQ(read(FG_CAMSTATUS), 0U);
    EXPECT_THAT(accesses(), ElementsAre("Overflow_OverflowOccurred ? 0", "Buffer_0_DRAM_DRAM_A_0_FillLevel ? 3",
                                        "Buffer_0_DRAM_DRAM_A_1_FillLevel ? 2", "Buffer_0_DRAM_DRAM_A_2_FillLevel ? 1",
                                        "Overflow_OverflowOccurred ? 0", "FG_CAMSTATUS_EXTENDED ? 6"));
    setSdkStatus(255);
    EXPECT_EQ(read(FG_CAMSTATUS), 1U);
}

TEST_F(Status, TheSimulatorIsACamera) {
    setSdkStatus(0);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_ENABLE, 1), 0);
    EXPECT_EQ(read(FG_CAMSTATUS), 1U);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), 1U);
    setSdkStatus(0x16);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), 0x17U);
}

TEST_F(Status, TheExtendedStatusMakesTheSameReads) {
    read(FG_CAMSTATUS_EXTENDED);
    EXPECT_THAT(accesses(), ElementsAre("Overflow_OverflowOccurred ? 0", "Buffer_0_DRAM_DRAM_A_0_FillLevel ? 3",
                                        "Buffer_0_DRAM_DRAM_A_1_FillLevel ? 2", "Buffer_0_DRAM_DRAM_A_2_FillLevel ? 1",
                                        "Overflow_OverflowOccurred ? 0", "FG_CAMSTATUS_EXTENDED ? 7"));
}

TEST_F(Status, TheExtendedStatusHoldsTheFillLevelInQuarters) {
    const struct {
        std::int64_t fillLevel;
        std::uint32_t status;
    } rows[] = {{0, 0x00},  {24, 0x00}, {25, 0x40},  {49, 0x40},        {50, 0x80},
                {74, 0x80}, {75, 0xC0}, {100, 0xC0}, {4294967295, 0xC0}};
    setSdkStatus(0);
    for (const auto& row : rows) {
        setFill(row.fillLevel, 0, 0);
        EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), row.status) << row.fillLevel;
    }
}

TEST_F(Status, AnOverflowSetsTheUpperThreeBits) {
    setSdkStatus(7);
    setOverflow(1);
    setFill(0, 0, 0);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), 0xE7U);
    EXPECT_THAT(accesses(), ElementsAre("Overflow_OverflowOccurred ? 1", "Overflow_OverflowOccurred ? 1",
                                        "FG_CAMSTATUS_EXTENDED ? 7"));
}

TEST_F(Status, TheSdksOwnUpperThreeBitsAreReplaced) {
    setSdkStatus(0xFF);
    setFill(30, 0, 0);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), 0x5FU);
    setSdkStatus(0xF00);
    setFill(0, 0, 0);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED), 0xF00U);
}

TEST_F(Status, EveryFailureInAStatusReadFailsIt) {
    const struct {
        int id;
        unsigned accesses;
    } rows[] = {{FG_FILLLEVEL, 4}, {FG_CAMSTATUS, 6}, {FG_CAMSTATUS_EXTENDED, 6}};
    for (const auto& row : rows) {
        for (unsigned failing = 1; failing <= row.accesses; ++failing) {
            forget();
            board.planFaultAt(failing, DesignFailure);
            std::uint32_t value = 77;
            EXPECT_EQ(applet.getUnsigned(row.id, value), DesignFailure) << row.id << " access " << failing;
            EXPECT_EQ(value, 77U);
            EXPECT_EQ(accesses().size(), failing);
        }
    }
}

TEST_F(Status, TheSimulatorDoesNotSpareTheCameraStatusAFailure) {
    set(FG_CAMERASIMULATOR_ENABLE, 1);
    board.planFault("FG_CAMSTATUS_EXTENDED", Direction::Read, 1, -77);
    std::uint32_t value = 0;
    EXPECT_EQ(applet.getUnsigned(FG_CAMSTATUS, value), -77);
}

// Board --------------------------------------------------------------------------------------------------------------

TEST_F(Status, TheBoardMonitorReadsTheDesignUnchanged) {
    const struct {
        int id;
        std::string name;
        double value;
    } rows[] = {{FG_SYSTEMMONITOR_FPGA_TEMPERATURE, "BoardStatus_FpgaTemperature", -12.625},
                {FG_SYSTEMMONITOR_FPGA_VCC_INT, "BoardStatus_FpgaVccInt", 0.953125},
                {FG_SYSTEMMONITOR_FPGA_VCC_AUX, "BoardStatus_FpgaVccAux", 1.8125},
                {FG_SYSTEMMONITOR_FPGA_VCC_BRAM, "BoardStatus_FpgaVccBram", 0.9375},
                {FG_SYSTEMMONITOR_CURRENT_LINK_SPEED, "BoardStatus_PcieCurrentLinkSpeed", 2.5}};
    for (const auto& row : rows) {
        board.setDouble("Device1_Process0_" + row.name, row.value);
        EXPECT_EQ(get<double>(row.id), row.value);
        board.planFault("Device1_Process0_" + row.name, Direction::Read, 1, DesignFailure);
        double value = 7.0;
        EXPECT_EQ(applet.getDouble(row.id, value), DesignFailure) << row.name;
        EXPECT_EQ(applet.setDouble(row.id, 1.0), -12) << row.name;
    }
}

TEST_F(Status, TheLinkAndTheInputsReadTheDesignUnchanged) {
    const struct {
        int id;
        std::string name;
    } rows[] = {
        {FG_OVERFLOW, "Device1_Process0_Overflow_OverflowOccurred"},
        {FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH, "Device1_Process0_BoardStatus_PcieCurrentLinkWidth"},
        {FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE, "Device1_Process0_BoardStatus_PcieLinkGen2Capable"},
        {FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE, "Device1_Process0_BoardStatus_PcieLinkPartnerGen2Capable"},
        {FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE, "Device1_Process0_BoardStatus_PcieTrainedPayloadSize"},
        {FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT, "Device1_Process0_BoardStatus_ExtensionConnectorPresent"},
        {FG_DIGIO_INPUT, "Device1_Process1_Trigger_Inputs_InputStatus_Status"}};
    std::int64_t value = 4294967000;
    for (const auto& row : rows) {
        board.setInteger(row.name, ++value);
        EXPECT_EQ(read(row.id), static_cast<std::uint32_t>(value)) << row.name;
        board.planFault(row.name, Direction::Read, 1, DesignFailure);
        std::uint32_t untouched = 77;
        EXPECT_EQ(applet.getUnsigned(row.id, untouched), DesignFailure) << row.name;
        EXPECT_EQ(untouched, 77U);
        EXPECT_EQ(set(row.id, 1), -12) << row.name;
    }
}

TEST_F(Status, TheSerialNumberOfTheFpgaHas64Bits) {
    board.setInteger("Device1_Process0_BoardStatus_FpgaDNA", 0x0123456789ABCDEF);
    EXPECT_EQ(applet.readUnsigned64(FG_SYSTEMMONITOR_FPGA_DNA), 0x0123456789ABCDEFU);
    EXPECT_EQ(board.transcript().back().type, 4);
    EXPECT_EQ(applet.setUnsigned64(FG_SYSTEMMONITOR_FPGA_DNA, 1), -12);
}

TEST_F(Status, TheAlternativeBoardDetectionIsTheInverseOfTheDesigns) {
    const std::string name = "Device1_Process0_BoardStatus_AlternativeBoardDetection";
    board.setInteger(name, 0);
    EXPECT_EQ(read(FG_ALTERNATIVE_BOARD_DETECTION), 1U);
    for (const std::int64_t value : {1, 2, 77}) {
        board.setInteger(name, value);
        EXPECT_EQ(read(FG_ALTERNATIVE_BOARD_DETECTION), 0U) << value;
    }
    board.planFault(name, Direction::Read, 1, DesignFailure);
    std::uint32_t value = 0;
    EXPECT_EQ(applet.getUnsigned(FG_ALTERNATIVE_BOARD_DETECTION, value), DesignFailure);
    EXPECT_EQ(set(FG_ALTERNATIVE_BOARD_DETECTION, 1), -12);
}

TEST_F(Status, TheTextsOfTheDesignAreReadLive) {
    EXPECT_EQ(applet.readText(FG_APPLET_ID), "5525b60f-1373-9674-c4da-fd24a026a8af");
    EXPECT_EQ(applet.readText(FG_APPLET_BUILD_TIME), "2019-09-11 09:41:58");
    board.setText("Device1_Process0_AppletProperties_BuildTime", "never");
    EXPECT_EQ(applet.readText(FG_APPLET_BUILD_TIME), "never");
    board.planFault("Device1_Process0_AppletProperties_AppletUid", Direction::Read, 1, DesignFailure);
    std::string text = "as it was";
    EXPECT_EQ(applet.getText(FG_APPLET_ID, text), DesignFailure);
    EXPECT_EQ(text, "as it was");
}

TEST_F(Status, TheAppletTellsConstantsOfItself) {
    EXPECT_EQ(read(FG_APPLET_VERSION), 2U);
    EXPECT_EQ(read(FG_APPLET_REVISION), 1U);
    EXPECT_EQ(read(FG_NR_OF_PROCESSES), 1U);
    EXPECT_EQ(applet.readText(FG_TAV_FILE), "Quillon.tav");
    EXPECT_THAT(accesses(), IsEmpty());
}

// The SDK's own ------------------------------------------------------------------------------------------------------

TEST_F(Status, ParametersOfTheSdkAreHandedOn) {
    const struct {
        int id;
        std::string name;
    } rows[] = {{FG_APC_STOP_TIMEOUT, "FG_APC_STOP_TIMEOUT"},
                {FG_NR_OF_DMAS, "FG_NR_OF_DMAS"},
                {FG_NR_OF_CAMS, "FG_NR_OF_CAMS"},
                {FG_DMA_PORT, "FG_DMA_PORT"},
                {FG_CAM_PORT, "FG_CAM_PORT"},
                {FG_TRANSFER_LEN, "FG_TRANSFER_LEN"}};
    for (const auto& row : rows) {
        forget();
        board.setInteger(row.name, 4321);
        EXPECT_EQ(read(row.id), 4321U) << row.name;
        EXPECT_THAT(accesses(), ElementsAre(row.name + " ? 4321"));
        board.planFault(row.name, Direction::Read, 1, -99);
        std::uint32_t value = 0;
        EXPECT_EQ(applet.getUnsigned(row.id, value), -99) << row.name;
        EXPECT_EQ(set(row.id, 1), -12) << row.name;
    }
}

TEST_F(Status, TheTypeOfTheCallerGoesToTheSdkToo) {
    board.setInteger("FG_TRANSFER_LEN", 4321);
    EXPECT_EQ(applet.readUnsigned64(FG_TRANSFER_LEN), 4321U);
    EXPECT_EQ(board.transcript().back().type, 4);
}

// Timeout ------------------------------------------------------------------------------------------------------------

TEST_F(Status, ATimeoutGoesToTheSdk) {
    EXPECT_EQ(read(FG_TIMEOUT), 1'000'000U);
    EXPECT_EQ(set(FG_TIMEOUT, 2), 0);
    EXPECT_EQ(set(FG_TIMEOUT, 2147483646), 0);
    EXPECT_THAT(accesses(), ElementsAre("FG_TIMEOUT = 2", "FG_TIMEOUT = 2147483646"));
    EXPECT_EQ(board.transcript().back().type, 2);
    EXPECT_EQ(read(FG_TIMEOUT), 2147483646U);
}

TEST_F(Status, ATimeoutIsFrom2ToOneBelowTheLargest) {
    for (const std::int32_t value : {1, 0, -1, 2147483647}) {
        EXPECT_EQ(applet.setInt(FG_TIMEOUT, value), -6000) << value;
    }
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(read(FG_TIMEOUT), 1'000'000U);
}

TEST(TimeoutFailure, RestoresIt) {
    expectEachFailureRestores(asStarted, FG_TIMEOUT, 5, {"FG_TIMEOUT = 5"});
}

}  // namespace
}  // namespace quillon::image_test
