#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "gige/StreamPackets.h"
#include "tests/gige/ServedDevice.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

TEST_F(ServedDevice, IsFound) {
    const Bytes answer = viewer.ask(Command::Discovery, {});
    ASSERT_EQ(answer.size(), 8U + ControlChannel::DiscoverySize);
    EXPECT_EQ(wordOf(answer, 8 + 0x24), Loopback);
}

TEST_F(ServedDevice, StreamsFramesOfTheBoard) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    built.applet["FG_CAMERASIMULATOR_ENABLE"] = "FG_CAMERASIMULATOR";
    connect();
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionMode, 2), Status::Success);
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionFrameCount, 3), Status::Success);
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    Bytes first;
    for (std::uint32_t id = 1; id <= 3; ++id) {
        const Picture picture = receivePicture();
        ASSERT_EQ(picture.leader.size(), LeaderSize);
        EXPECT_EQ(wordOf(picture.leader, 0), id);
        EXPECT_EQ(wordOf(picture.leader, 8 + 12), 0x02180014U) << "RGB8";
        EXPECT_EQ(wordOf(picture.leader, 8 + 16), 64U);
        EXPECT_EQ(wordOf(picture.leader, 8 + 20), 32U);
        EXPECT_EQ(wordOf(picture.trailer, 8 + 4), 32U);
        EXPECT_EQ(picture.bytes.size(), 64U * 32 * 3);
    }
    EXPECT_TRUE(stream.receive(300ms).empty()) << "three were asked for";
    EXPECT_EQ(device.state().stream.frames, 3U);
}

TEST_F(ServedDevice, TellsHowHighAFrameIs) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 1000;
    built.applet["FG_LINEPERIODE"] = 100.0;
    built.applet["FG_IMGTRIGGERMODE"] = "ASYNC_GATED";
    built.board.setClock(client::ClockMode::Stepped);
    connect();
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    built.board.advanceSignals(150.0);  // between two lines
    for (const std::uint32_t lines : {10U, 25U}) {
        built.board.setInput(0, true);
        built.board.advanceSignals(lines * 100.0);
        built.board.setInput(0, false);
        built.board.advanceSignals(1000.0);
        const Picture picture = receivePicture();
        EXPECT_EQ(wordOf(picture.leader, 8 + 20), lines);
        EXPECT_EQ(wordOf(picture.trailer, 8 + 4), lines);
        EXPECT_EQ(picture.bytes.size(), lines * 64 * 3);
    }
}

TEST_F(ServedDevice, SendsAgainWhatTheViewerAsksForFromEitherOfItsSockets) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    connect();
    viewer.write(DeviceRegister::AcquisitionMode, 1);
    viewer.write(DeviceRegister::AcquisitionStart, 1);
    const Picture picture = receivePicture();
    ASSERT_FALSE(picture.trailer.empty());
    const Bytes wanted = request(Command::PacketResend, words({1, 1, 2}), 9, false);
    for (const Client* const client : {&viewer, &stream}) {
        client->send(wanted);
        const Bytes one = stream.receive();
        const Bytes two = stream.receive();
        ASSERT_GT(one.size(), 8U);
        EXPECT_EQ(wordOf(one, 4), 0x03000001U);
        EXPECT_TRUE(std::equal(one.begin() + 8, one.end(), picture.bytes.begin()));
        EXPECT_EQ(wordOf(two, 4), 0x03000002U);
    }
    Client stranger;
    stranger.send(wanted);
    viewer.send(request(Command::PacketResend, words({77, 1, 2}), 9, false));
    EXPECT_TRUE(stream.receive(300ms).empty());
    EXPECT_EQ(device.state().stream.resent, 4U);
    EXPECT_EQ(device.state().stream.gone, 1U);
}

TEST_F(ServedDevice, LetsOthersReadAndNoMore) {
    connect();
    Client other;
    EXPECT_EQ(other.write(Privilege, 2), Status::AccessDenied);
    EXPECT_EQ(other.read(Privilege), 2U);
    EXPECT_EQ(other.write(DeviceRegister::AcquisitionStart, 1), Status::AccessDenied);
    EXPECT_EQ(device.state().controller, viewer.peer());
}

TEST_F(ServedDevice, IsFreeAgainAndSilentWhenItsControllerDies) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    connect();
    ASSERT_EQ(viewer.write(0x938, 500), Status::Success) << "the heartbeat";
    ASSERT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    EXPECT_FALSE(receivePicture().trailer.empty());
    std::this_thread::sleep_for(1000ms);
    EXPECT_FALSE(device.state().controller);
    EXPECT_FALSE(device.state().streaming);
    Client other;
    EXPECT_EQ(other.write(Privilege, 2), Status::Success);
}

TEST_F(ServedDevice, SendsTestPacketsOfTheSizeThatIsAskedFor) {
    connect();
    ASSERT_EQ(viewer.write(0xD04, 0xC0000000 | 4000), Status::Success);
    EXPECT_EQ(stream.receive().size(), 4000 - NetworkHeads);
}

TEST(Interfaces, AreFoundByNameAndTellWhoIsNear) {
    EXPECT_EQ(findInterface("lo").address, Loopback);
    EXPECT_TRUE(findInterface("lo").loopback);
    const Interface network{"eth0", 0xC0A80105, 0xFFFFFF00};
    EXPECT_TRUE(isNear({0xC0A80177, 40000}, network)) << "192.168.1.119";
    EXPECT_FALSE(isNear({0xC0A80277, 40000}, network)) << "192.168.2.119";
    try {
        findInterface("eth77");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("lo"));
    }
}

}  // namespace
}  // namespace quillon::gige
