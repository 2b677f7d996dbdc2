// Registers of the design, reached by number.

#include <gmock/gmock.h>

#include <cstdint>
#include <optional>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/files/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/PackedDesign.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int BoardStatusId = 1000004;        // 32 bits, read-only
constexpr int ScratchId = 1000005;            // 32 bits
constexpr int DmaEnableId = 1000007;          // 1 bit
constexpr int DmaBaseAddressId = 1000009;     // 64 bits
constexpr int DmaTransferLengthId = 1000010;  // 33 bits
constexpr int LineCounterId = 1000013;        // 40 bits
constexpr int SpiCommandId = 1000020;         // 16 bits, write-only

class Registers : public ::testing::Test {
protected:
    void SetUp() override { built.board.clearTranscript(); }

    int set(int id, std::uint64_t value, unsigned dma = 0, FgParamTypes type = FgTypeUInt32) {
        return built.applet.setWithType(id, &value, dma, type);
    }
    /// Reads into a place that is filled with fives before.
    int get(int id, unsigned dma = 0, FgParamTypes type = FgTypeUInt32) {
        place = 0x5555555555555555;
        return built.applet.getWithType(id, &place, dma, type);
    }

    const test::Variable enable{"ORLO_ENABLE_DRA", "on"};
    BuiltApplet built;
    std::uint64_t place = 0;
};

TEST_F(Registers, OfUpTo32BitsStore32) {
    built.board.setRegister("DmaEnable", 1);
    built.board.setRegister("Scratch", 0xFEDCBA98);
    EXPECT_EQ(get(DmaEnableId), 0);
    EXPECT_EQ(place, 0x5555555500000001U);
    EXPECT_EQ(get(ScratchId), 0);
    EXPECT_EQ(place, 0x55555555FEDCBA98U);
}

TEST_F(Registers, OfMoreThan32BitsStore64) {
    built.board.setRegister("DmaTransferLength", 0x123456789);
    built.board.setRegister("LineCounter", 0xAB00000001);
    built.board.setRegister("DmaBaseAddress", 0xFEDCBA9876543210);
    EXPECT_EQ(get(DmaTransferLengthId), 0);
    EXPECT_EQ(place, 0x123456789U);
    EXPECT_EQ(get(LineCounterId), 0);
    EXPECT_EQ(place, 0xAB00000001U);
    EXPECT_EQ(get(DmaBaseAddressId), 0);
    EXPECT_EQ(place, 0xFEDCBA9876543210U);
}

TEST_F(Registers, AreReadWithTheHalfThatATypeClears) {
    built.board.setRegister("Scratch", 0xFEDCBA98);
    EXPECT_EQ(get(ScratchId, 0, FgTypeUInt64), 0);
    EXPECT_EQ(place, 0xFEDCBA98U);
}

TEST_F(Registers, OfUpTo32BitsTake32) {
    EXPECT_EQ(set(ScratchId, 0x99999999FEDCBA98), 0);
    EXPECT_EQ(set(DmaEnableId, 0x9999999900000001), 0);
    EXPECT_THAT(built.board.accesses(), ElementsAre("register Scratch = 4275878552", "register DmaEnable = 1"));
}

TEST_F(Registers, OfMoreThan32BitsTake64) {
    EXPECT_EQ(set(DmaTransferLengthId, 0x123456789), 0);
    EXPECT_EQ(set(DmaBaseAddressId, 0xFEDCBA9876543210), 0);
    EXPECT_EQ(built.board.registerValue("DmaTransferLength"), 0x123456789U);
    EXPECT_EQ(built.board.registerValue("DmaBaseAddress"), 0xFEDCBA9876543210U);
}

TEST_F(Registers, LookAtNeitherProcessNorType) {
    EXPECT_EQ(set(ScratchId, 7, 99, FgTypeDouble), 0);
    EXPECT_EQ(get(ScratchId, 0xFFFFFFFF, FgTypeDouble), 0);
    EXPECT_EQ(place, 0x5555555500000007U);
}

TEST_F(Registers, ThatRefuseAnAccessGiveTheirCodeAndLeaveTheValueAlone) {
    EXPECT_EQ(set(BoardStatusId, 1), -9004);
    EXPECT_EQ(built.applet.lastError(), -9004);
    EXPECT_EQ(get(SpiCommandId), -9005);
    EXPECT_EQ(place, 0x5555555555555555U);
    EXPECT_EQ(built.applet.lastError(), -9005);
    built.board.planFault("Scratch", Direction::Read, 1, -44);
    EXPECT_EQ(get(ScratchId), -44);
    EXPECT_EQ(place, 0x5555555555555555U);
}

TEST_F(Registers, ThatDoNotExistAreBoardAccesssToRefuse) {
    EXPECT_EQ(get(1000021), -9002);
    EXPECT_EQ(set(1999999, 0), -9002);
    EXPECT_EQ(get(2000000), -9002);
    EXPECT_EQ(built.applet.lastError(), -9002);
}

TEST_F(Registers, BeginBehindOneMillion) {
    const test::CapturedLog log;
    EXPECT_EQ(get(1000000), -2070);
    EXPECT_THAT(log.lines(),
                ElementsAre("4 orlo.wrapper.Quillon trying to get unknown SDK parameter '1000000' on process 0!"));
    EXPECT_EQ(get(1000001), 0);
    EXPECT_EQ(place, 0x5555555500000000U + 1364544590);
}

TEST_F(Registers, EndWhereTheSdksParametersBegin) {
    EXPECT_EQ(get(2000601), 0);
    EXPECT_THAT(built.board.accesses(), ElementsAre("FG_APC_STOP_TIMEOUT ? 1000"));
}

TEST_F(Registers, TakeNoNullValue) {
    EXPECT_EQ(built.applet.getWithType(ScratchId, nullptr, 0, FgTypeUInt32), -2070);
    EXPECT_EQ(built.applet.setWithType(ScratchId, nullptr, 0, FgTypeUInt32), -2070);
    EXPECT_THAT(built.board.accesses(), IsEmpty());
}

TEST(RegistersWithoutTheSwitch, AreUnknownParameters) {
    const test::CapturedLog log;
    BuiltApplet built(1);
    built.board.clearTranscript();
    std::uint64_t value = 5;
    EXPECT_EQ(built.applet.getWithType(1000001, &value, 0, FgTypeUInt32), -2070);
    EXPECT_EQ(built.applet.setWithType(1000005, &value, 0, FgTypeUInt32), -2070);
    EXPECT_THAT(log.lines(),
                ElementsAre("4 orlo.wrapper.Quillon trying to get unknown SDK parameter '1000001' on process 0!",
                            "4 orlo.wrapper.Quillon trying to set unknown SDK parameter '1000005' on process 0!"));
    EXPECT_EQ(value, 5U);
    EXPECT_THAT(built.board.accesses(), IsEmpty());
}

/// A design without registers, opened with the access to registers on.
class NoRegisters : public TemporaryFolder {
protected:
    NoRegisters() {
        auto description = test::designDescription();
        description["registers"] = nlohmann::ordered_json::array();
        test::packDesignFile(description, folder / "Quillon.tav");
    }
    void open() {
        const test::WorkingDirectory here(folder);
        const test::Variable force("__ORLO_FORCE_EXTERNAL_TAV", "");
        const test::Variable enable("ORLO_ENABLE_DRA", "on");
        built.emplace(1);
        built->board.clearTranscript();
    }

    std::optional<BuiltApplet> built;
};

TEST_F(NoRegisters, AddNoNames) {
    open();
    EXPECT_EQ(built->applet.parameterCount(), PositionCount);
    EXPECT_EQ(built->applet.parameterNameAt(PositionCount - 1), PositionedParameters.back().name);
    EXPECT_EQ(built->applet.parameterNameAt(PositionCount), std::nullopt);
    EXPECT_EQ(built->applet.parameterIdAt(PositionCount), -2070);
}

TEST_F(NoRegisters, LetTheSdksNamesStandRightBehindThePublicOnes) {
    const test::Variable parameters("ORLO_ENABLE_DIXA", "on");
    open();
    EXPECT_EQ(built->applet.parameterNameAt(PositionCount), "DIXA_Device1_Process0_AppletProperties_AppletUid");
}

TEST_F(NoRegisters, LeaveTheirGroupInTheCatalogueEmpty) {
    open();
    const auto groups = built->applet.parameterInfo();
    ASSERT_FALSE(groups.empty());
    EXPECT_EQ(groups.front().label, "Direct Register Access");
    EXPECT_THAT(groups.front().children, IsEmpty());
}

TEST_F(NoRegisters, AreStillBoardAccesssToRefuse) {
    open();
    std::uint32_t value = 5;
    EXPECT_EQ(built->applet.getWithType(1000001, &value, 0, FgTypeUInt32), -9002);
    EXPECT_EQ(built->applet.setWithType(1000001, &value, 0, FgTypeUInt32), -9002);
    EXPECT_EQ(value, 5U);
}

}  // namespace
}  // namespace quillon::client
