#include <gmock/gmock.h>

#include <bit>
#include <cstdint>
#include <new>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "gige/DeviceMemory.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr Peer Viewer{0x7F000001, 50000};
constexpr std::uint32_t StreamPort = 0xD00;
constexpr std::uint32_t PacketSize = 0xD04;
constexpr std::uint32_t PacketDelay = 0xD08;
constexpr std::uint32_t StreamAddress = 0xD18;

class Actions final : public DeviceActions {
public:
    Status startAcquisition(std::int64_t frames) override {
        if (fails) {
            throw std::bad_alloc();
        }
        started = frames;
        return Status::Success;
    }
    void stopAcquisition() override { started.reset(); }
    bool acquiring() const override { return started.has_value(); }
    void sendTestPacket(std::uint32_t size) override { testPackets.push_back(size); }
    std::string userSet() const override { return {}; }

    bool fails = false;
    std::optional<std::int64_t> started;
    std::vector<std::uint32_t> testPackets;
};

class RegistersOfTheDevice : public testing::Test {
protected:
    std::uint32_t address(const std::string& parameter) {
        for (const ParameterRegister& reg : memory.parameters()) {
            if (reg.name == parameter) {
                return reg.address;
            }
        }
        ADD_FAILURE() << parameter;
        return 0;
    }
    std::uint32_t at(std::uint32_t address) {
        Bytes value(4);
        EXPECT_EQ(memory.read(address, value), Status::Success) << address;
        return number<std::uint32_t>(value);
    }
    std::uint32_t at(DeviceRegister reg) { return at(static_cast<std::uint32_t>(reg)); }
    double realAt(std::uint32_t address) {
        Bytes value(8);
        EXPECT_EQ(memory.read(address, value), Status::Success) << address;
        return std::bit_cast<double>(number<std::uint64_t>(value));
    }
    std::string textAt(std::uint32_t address, std::size_t size) {
        Bytes value(size);
        EXPECT_EQ(memory.read(address, value), Status::Success) << address;
        std::string text;
        for (std::size_t i = 0; i < size && value[i] != std::byte{0}; ++i) {
            text += static_cast<char>(value[i]);
        }
        return text;
    }
    Status write(std::uint32_t address, std::uint32_t value) { return memory.write(address, words({value})); }
    Status write(DeviceRegister reg, std::uint32_t value) { return write(static_cast<std::uint32_t>(reg), value); }
    Status writeReal(std::uint32_t address, double value) {
        Bytes bytes;
        append(bytes, std::bit_cast<std::uint64_t>(value));
        return memory.write(address, bytes);
    }

    client::testing::BuiltApplet built;
    Actions actions;
    Identity identity{"Maker", "Model", "1.2", "more", "SERIAL", 0x7F000001, 0xFF000000, {1, 2, 3, 4, 5, 6}};
    DeviceMemory memory{built.applet, built.board, identity, actions};
};

TEST_F(RegistersOfTheDevice, TellWhoItIs) {
    EXPECT_EQ(at(0x0U), 0x00010002U);
    EXPECT_EQ(at(0x4U), 0x80000001U);
    EXPECT_EQ(at(0x8U), 0x0102U);
    EXPECT_EQ(at(0xCU), 0x03040506U);
    EXPECT_EQ(at(0x24U), 0x7F000001U);
    EXPECT_EQ(textAt(0x48, 32), "Maker");
    EXPECT_EQ(textAt(0x68, 32), "Model");
    EXPECT_EQ(textAt(0xD8, 16), "SERIAL");
    EXPECT_THAT(textAt(0x200, 512), StartsWith("Local:Quillon.xml;100000;"));
    EXPECT_EQ(at(0x940U), 125'000'000U);
    EXPECT_EQ(memory.write(0x48, words({1})), Status::WriteProtected);
    EXPECT_EQ(memory.write(0xE8, bytes("61 62 00 00")), Status::Success);
    EXPECT_EQ(textAt(0xE8, 16), "ab");
}

TEST_F(RegistersOfTheDevice, HoldTheDocument) {
    const std::string& document = memory.document();
    EXPECT_EQ(textAt(0x100000, 512), document.substr(0, 512));
    const auto end = static_cast<std::uint32_t>(0x100000 + document.size() / 4 * 4);
    Bytes past(16);
    EXPECT_EQ(memory.read(end + 4, past), Status::InvalidAddress);
    EXPECT_EQ(memory.write(0x100000, words({0})), Status::WriteProtected);
}

TEST_F(RegistersOfTheDevice, AreTheParameters) {
    EXPECT_EQ(at(address("FG_WIDTH")), 1024U);
    EXPECT_EQ(write(address("FG_WIDTH"), 512), Status::Success);
    EXPECT_EQ(built.applet.readUnsigned(FG_WIDTH), 512U);
    EXPECT_EQ(realAt(address("FG_LINEPERIODE")), 200.0);
    EXPECT_EQ(writeReal(address("FG_LINEPERIODE"), 100.0), Status::Success);
    EXPECT_EQ(built.applet.readDouble(FG_LINEPERIODE), 100.0);
    EXPECT_EQ(write(address("FG_IMGTRIGGERINSRC"), 0xFFFFFFFF), Status::Success) << "-1, the software";
    EXPECT_EQ(built.applet.readInt(FG_IMGTRIGGERINSRC), -1);
}

TEST_F(RegistersOfTheDevice, TellTheLimitsOfTheMoment) {
    const std::uint32_t width = address("FG_WIDTH");
    Bytes limit(8);
    ASSERT_EQ(memory.read(width + MaximumOffset, limit), Status::Success);
    EXPECT_EQ(number<std::uint64_t>(limit), 16384U);
    ASSERT_EQ(memory.read(width + IncrementOffset, limit), Status::Success);
    EXPECT_EQ(number<std::uint64_t>(limit), 4U);
    EXPECT_EQ(write(address("FG_XOFFSET"), 1000), Status::Success);
    ASSERT_EQ(memory.read(width + MaximumOffset, limit), Status::Success);
    EXPECT_EQ(number<std::uint64_t>(limit), 15384U);
    EXPECT_EQ(realAt(address("FG_LINEPERIODE") + MaximumOffset), 2097.144);
    EXPECT_EQ(write(width + MaximumOffset, 1), Status::WriteProtected);
}

TEST_F(RegistersOfTheDevice, RememberWhatWasRefused) {
    EXPECT_EQ(at(DeviceRegister::RefusalCode), 0U);
    EXPECT_EQ(write(address("FG_WIDTH"), 5), Status::Error);
    EXPECT_EQ(static_cast<std::int32_t>(at(DeviceRegister::RefusalCode)), -7080);
    EXPECT_THAT(textAt(static_cast<std::uint32_t>(DeviceRegister::Refusal), RefusalLength),
                HasSubstr("FG_WIDTH = 5 was refused: -7080"));
    EXPECT_EQ(built.applet.readUnsigned(FG_WIDTH), 1024U);
    EXPECT_EQ(write(address("FG_SYSTEMMONITOR_FPGA_TEMPERATURE"), 1), Status::WriteProtected);
}

TEST_F(RegistersOfTheDevice, TakeATextInPieces) {
    const std::uint32_t file = address("FG_DEBUGFILE");
    const std::string name(600, 'x');
    Bytes all(4096);
    std::transform(name.begin(), name.end(), all.begin(), [](char c) { return static_cast<std::byte>(c); });
    for (std::uint32_t at = 0; at < all.size(); at += 512) {
        EXPECT_EQ(memory.write(file + at, std::span(all).subspan(at, 512)), Status::Success) << at;
    }
    EXPECT_EQ(built.applet.readText(FG_DEBUGFILE), name);
    EXPECT_EQ(textAt(file, 512), name.substr(0, 512));
}

TEST_F(RegistersOfTheDevice, AreWrittenWhole) {
    EXPECT_EQ(memory.write(address("FG_LINEPERIODE"), words({1})), Status::InvalidParameter);
    EXPECT_EQ(memory.write(address("FG_WIDTH") + 4, words({1})), Status::InvalidAddress);
    Bytes value(4);
    EXPECT_EQ(memory.read(FirstParameterAddress + 1000 * ParameterStride, value), Status::InvalidAddress);
    EXPECT_EQ(memory.read(0x30000, value), Status::InvalidAddress);
    EXPECT_EQ(memory.write(0x30000, value), Status::InvalidAddress);
    EXPECT_EQ(memory.read(0xFFFFFFFC, value), Status::InvalidAddress);
}

TEST_F(RegistersOfTheDevice, SendNobodyElseTheStream) {
    EXPECT_EQ(write(StreamAddress, Viewer.address), Status::InvalidParameter) << "nobody controls it";
    memory.setController(Viewer);
    EXPECT_EQ(write(StreamAddress, 0x08080808), Status::InvalidParameter);
    EXPECT_EQ(write(StreamAddress, Viewer.address), Status::Success);
    EXPECT_EQ(write(StreamPort, 40000), Status::Success);
    EXPECT_EQ(memory.stream().port, 40000);
    memory.setController(std::nullopt);
    EXPECT_EQ(memory.stream().port, 0);
    EXPECT_EQ(memory.stream().address, 0U);
}

TEST_F(RegistersOfTheDevice, EndTheStreamThatIsClosed) {
    memory.setController(Viewer);
    for (const std::uint32_t reg : {StreamPort, StreamAddress}) {
        write(StreamAddress, Viewer.address);
        write(StreamPort, 40000);
        write(DeviceRegister::AcquisitionStart, 1);
        EXPECT_TRUE(actions.started);
        EXPECT_EQ(write(reg, 0), Status::Success);
        EXPECT_FALSE(actions.started);
    }
}

TEST_F(RegistersOfTheDevice, KeepNothingOfAControllerThatHasGone) {
    const std::uint32_t file = address("FG_DEBUGFILE");
    memory.setController(Viewer);
    EXPECT_EQ(write(PacketSize, 9000), Status::Success);
    EXPECT_EQ(write(PacketDelay, 0xFFFFFFFF), Status::Success);
    EXPECT_EQ(memory.write(file, words({0x61616161})), Status::Success) << "the beginning of a text";
    memory.setController(std::nullopt);
    EXPECT_EQ(memory.stream().packetSize, StreamSettings().packetSize);
    EXPECT_EQ(memory.stream().delay, 0U);
    const std::string before = built.applet.readText(FG_DEBUGFILE);
    static_cast<void>(memory.write(file + 4, words({0x62000000})));
    EXPECT_EQ(built.applet.readText(FG_DEBUGFILE), before);
}

TEST_F(RegistersOfTheDevice, LimitTheHeartbeat) {
    EXPECT_EQ(memory.heartbeat(), 3000U);
    EXPECT_EQ(write(0x938, 0), Status::Success);
    EXPECT_EQ(at(0x938U), 500U);
    EXPECT_EQ(write(0x938, 0xFFFFFFFF), Status::Success);
    EXPECT_EQ(at(0x938U), 600'000U) << "ten minutes";
}

TEST_F(RegistersOfTheDevice, LimitPackets) {
    EXPECT_EQ(write(PacketSize, 100), Status::Success);
    EXPECT_EQ(memory.stream().packetSize, LeastPacketSize);
    EXPECT_EQ(write(PacketSize, 0x80000000 | 60000), Status::Success);
    EXPECT_EQ(memory.stream().packetSize, MostPacketSize);
    EXPECT_TRUE(actions.testPackets.empty()) << "none of a size that is never sent";
    EXPECT_EQ(write(PacketSize, 0xC0000000 | 8000), Status::Success);
    EXPECT_EQ(actions.testPackets, std::vector<std::uint32_t>{8000});
}

TEST_F(RegistersOfTheDevice, FollowTheFormat) {
    EXPECT_EQ(at(DeviceRegister::PixelFormat), 0x02180014U) << "RGB8, which viewers can show";
    EXPECT_EQ(at(DeviceRegister::PayloadSize), 1024U * 1024 * 3);
    EXPECT_EQ(write(DeviceRegister::PixelFormat, 0x02180015), Status::Success);
    EXPECT_EQ(write(DeviceRegister::PixelFormat, 0x0230004B), Status::Success);
    EXPECT_EQ(built.applet.readInt(FG_FORMAT), FG_COL48);
    EXPECT_EQ(at(DeviceRegister::PayloadSize), 1024U * 1024 * 6);
    built.applet["FG_FORMAT"] = "FG_COL30";
    EXPECT_EQ(at(DeviceRegister::PixelFormat), 0x02300019U) << "BGR10: the first of FG_COL30, blue first";
    EXPECT_EQ(write(DeviceRegister::PixelFormat, 0x01080001), Status::Success);
    EXPECT_EQ(at(DeviceRegister::PayloadSize), 1024U * 1024) << "Mono8";
    EXPECT_EQ(write(DeviceRegister::PixelFormat, 0x12345678), Status::InvalidParameter);
}

TEST_F(RegistersOfTheDevice, StartAndStop) {
    write(DeviceRegister::AcquisitionStart, 1);
    EXPECT_EQ(actions.started, -1);
    EXPECT_EQ(write(DeviceRegister::PixelFormat, 0x02180014), Status::Busy);
    write(DeviceRegister::AcquisitionStop, 1);
    EXPECT_FALSE(actions.started);
    write(DeviceRegister::AcquisitionMode, 2);
    write(DeviceRegister::AcquisitionFrameCount, 7);
    write(DeviceRegister::AcquisitionStart, 1);
    EXPECT_EQ(actions.started, 7);
    write(DeviceRegister::AcquisitionMode, 1);
    write(DeviceRegister::AcquisitionStart, 1);
    EXPECT_EQ(actions.started, 1);
    EXPECT_EQ(write(DeviceRegister::AcquisitionMode, 3), Status::InvalidParameter);
}

TEST_F(RegistersOfTheDevice, StartNothingThatCannotBe) {
    actions.fails = true;
    EXPECT_EQ(write(DeviceRegister::AcquisitionStart, 1), Status::Error);
    EXPECT_EQ(memory.refusal(), std::bad_alloc().what());
    actions.fails = false;
    write(PacketSize, 220);
    built.applet["FG_WIDTH"] = 16384;
    built.applet["FG_HEIGHT"] = 62806;  // 2^24 - 2 packets of 184 bytes hold 62805.3 lines
    EXPECT_EQ(write(DeviceRegister::AcquisitionStart, 1), Status::Error);
    EXPECT_THAT(memory.refusal(), HasSubstr("packets"));
    EXPECT_FALSE(actions.started);
    built.applet["FG_HEIGHT"] = 62805;
    EXPECT_EQ(write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    built.applet["FG_HEIGHT"] = 200000;
    EXPECT_EQ(at(DeviceRegister::PayloadSize), 0xFFFFFFFF) << "9.8 GB, and no more than the register holds";
}

TEST_F(RegistersOfTheDevice, TellTheRatesOfCameraAndSimulator) {
    const auto rate = [this](DeviceRegister reg) { return realAt(static_cast<std::uint32_t>(reg)); };
    const double longest = 2097.144;  // us
    EXPECT_DOUBLE_EQ(rate(DeviceRegister::LineRateMinimum), 1e6 / longest);
    EXPECT_DOUBLE_EQ(rate(DeviceRegister::FrameRateMinimum), 1e6 / longest / 1024);
    EXPECT_GT(rate(DeviceRegister::FrameRateMaximum), rate(DeviceRegister::FrameRate));
    EXPECT_EQ(write(DeviceRegister::TestPattern, 1), Status::Success);
    EXPECT_DOUBLE_EQ(rate(DeviceRegister::LineRateMinimum), 0.1);
    built.applet["FG_CAMERASIMULATOR_SELECT_MODE"] = "FG_FRAMERATE";
    EXPECT_EQ(writeReal(static_cast<std::uint32_t>(DeviceRegister::FrameRate), 20.0), Status::Success);
    EXPECT_NEAR(rate(DeviceRegister::FrameRate), 20.0, 0.01);
    EXPECT_NEAR(built.applet.readDouble(FG_CAMERASIMULATOR_LINERATE), 20.0 * 1024, 10.0);
    EXPECT_EQ(built.applet.readDouble(FG_LINEPERIODE), 200.0) << "the camera's stays";
}

TEST_F(RegistersOfTheDevice, TurnStandardNamesIntoParameters) {
    const auto lineRate = static_cast<std::uint32_t>(DeviceRegister::LineRate);
    const auto frameRate = static_cast<std::uint32_t>(DeviceRegister::FrameRate);
    EXPECT_EQ(realAt(lineRate), 5000.0);
    EXPECT_EQ(writeReal(frameRate, 10.0), Status::Success);
    EXPECT_NEAR(realAt(frameRate), 10.0, 0.01);
    EXPECT_EQ(writeReal(lineRate, 0.0), Status::Error);
    EXPECT_EQ(writeReal(static_cast<std::uint32_t>(DeviceRegister::LineRateMaximum), 1.0), Status::WriteProtected);
    EXPECT_EQ(write(DeviceRegister::TriggerMode, 1), Status::Success);
    EXPECT_EQ(built.applet.readInt(FG_IMGTRIGGERMODE), ASYNC_TRIGGER);
    EXPECT_EQ(write(DeviceRegister::TriggerMode, 0), Status::Success);
    EXPECT_EQ(built.applet.readInt(FG_IMGTRIGGERMODE), FREE_RUN);
    EXPECT_EQ(write(DeviceRegister::ReverseX, 1), Status::Success);
    EXPECT_EQ(write(DeviceRegister::ReverseY, 1), Status::Success);
    EXPECT_EQ(built.applet.readInt(FG_VANTAGEPOINT), FG_VANTAGEPOINT_BOTTOM_RIGHT);
    EXPECT_EQ(write(DeviceRegister::TestPattern, 3), Status::Success);
    EXPECT_EQ(built.applet.readInt(FG_CAMERASIMULATOR_ENABLE), FG_CAMERASIMULATOR);
    EXPECT_EQ(at(DeviceRegister::TestPattern), 3U);
    EXPECT_EQ(write(DeviceRegister::UserSetLoad, 1), Status::Error) << "there is no file";
}

}  // namespace
}  // namespace quillon::gige
