#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "client/testing/BuiltApplet.h"
#include "gige/Device.h"
#include "gige/StreamPackets.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t Privilege = ControlChannel::PrivilegeAddress;

/// A viewer's socket.
class Client {
public:
    explicit Client(std::uint32_t address = Loopback) : descriptor_(socket(AF_INET, SOCK_DGRAM, 0)) {
        const sockaddr_in own = socketAddress({address, 0});
        EXPECT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0);
        const int size = 4 << 20;
        setsockopt(descriptor_, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { close(descriptor_); }

    Peer peer() const {
        sockaddr_in own{};
        socklen_t size = sizeof own;
        getsockname(descriptor_, reinterpret_cast<sockaddr*>(&own), &size);
        return {ntohl(own.sin_addr.s_addr), ntohs(own.sin_port)};
    }
    void send(const Bytes& packet, std::uint16_t port = ControlPort) const {
        const sockaddr_in to = socketAddress({Loopback, port});
        sendto(descriptor_, packet.data(), packet.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
    }
    /// The next datagram; empty: none came within that time.
    Bytes receive(std::chrono::milliseconds patience = 2000ms) const {
        pollfd waiting{descriptor_, POLLIN, 0};
        if (poll(&waiting, 1, static_cast<int>(patience.count())) <= 0) {
            return {};
        }
        Bytes packet(65536);
        packet.resize(static_cast<std::size_t>(recv(descriptor_, packet.data(), packet.size(), 0)));
        return packet;
    }
    Bytes ask(Command command, const Bytes& data) {
        send(request(command, data, ++id_ == 0 ? ++id_ : id_));
        return receive();
    }
    Status write(std::uint32_t address, std::uint32_t value) {
        return statusOf(ask(Command::WriteRegister, words({address, value})));
    }
    Status write(DeviceRegister reg, std::uint32_t value) { return write(static_cast<std::uint32_t>(reg), value); }
    std::uint32_t read(std::uint32_t address) {
        const Bytes answer = ask(Command::ReadRegister, words({address}));
        EXPECT_EQ(answer.size(), 12U) << address;
        return answer.size() == 12 ? number<std::uint32_t>(std::span(answer).subspan(8)) : 0;
    }
    static Status statusOf(const Bytes& answer) {
        EXPECT_GE(answer.size(), 8U);
        return answer.size() < 8 ? Status::NotImplemented : static_cast<Status>(number<std::uint16_t>(answer));
    }

private:
    int descriptor_;
    std::uint16_t id_ = 0;
};

/// A frame as it came.
struct Picture {
    Bytes leader;
    Bytes bytes;
    Bytes trailer;
};

class ServedDevice : public testing::Test {
protected:
    ~ServedDevice() override {
        ends = true;
        serving.join();
    }
    /// The viewer takes control and tells where its stream goes.
    void connect(std::uint32_t packetSize = 1400) {
        ASSERT_EQ(viewer.write(Privilege, 2), Status::Success);
        ASSERT_EQ(viewer.write(0xD18, Loopback), Status::Success);
        ASSERT_EQ(viewer.write(0xD00, stream.peer().port), Status::Success);
        ASSERT_EQ(viewer.write(0xD04, packetSize), Status::Success);
    }
    /// The next frame, whose packets come in order.
    Picture receivePicture() {
        Picture picture;
        for (Bytes packet = stream.receive(); packet.size() >= 8; packet = stream.receive()) {
            const auto format = std::to_integer<unsigned>(packet[4]);
            if (format == 1) {
                picture.leader = packet;
            } else if (format == 3) {
                EXPECT_EQ(number<std::uint32_t>(std::span(packet).subspan(4)) & 0xFFFFFF, ++packets);
                picture.bytes.insert(picture.bytes.end(), packet.begin() + 8, packet.end());
            } else if (format == 2) {
                picture.trailer = packet;
                packets = 0;
                break;
            }
        }
        return picture;
    }

    client::testing::BuiltApplet built;
    Device device{built.applet, built.board, {}};
    std::atomic<bool> ends = false;
    std::thread serving{[this] { device.run([this] { return !ends; }); }};
    Client viewer;
    Client stream;
    std::uint32_t packets = 0;
};

std::uint32_t wordOf(const Bytes& packet, std::size_t at) {
    return packet.size() >= at + 4 ? number<std::uint32_t>(std::span(packet).subspan(at)) : 0;
}

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
        EXPECT_EQ(wordOf(picture.leader, 8 + 12), 0x02180015U) << "BGR8";
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
