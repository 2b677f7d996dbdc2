/// @file
/// A device that serves on the loopback interface, and viewers of it.
#pragma once

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "client/testing/BuiltApplet.h"
#include "gige/Device.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {

inline constexpr std::uint32_t Loopback = 0x7F000001;
inline constexpr std::uint32_t Privilege = ControlChannel::PrivilegeAddress;

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
    Bytes receive(std::chrono::milliseconds patience = std::chrono::seconds(2)) const {
        pollfd waiting{descriptor_, POLLIN, 0};
        if (poll(&waiting, 1, static_cast<int>(patience.count())) <= 0) {
            return {};
        }
        Bytes packet(65536);
        packet.resize(static_cast<std::size_t>(recv(descriptor_, packet.data(), packet.size(), 0)));
        return packet;
    }
    /// The answer to a request; empty: none came. The word that it takes long is none.
    Bytes ask(Command command, const Bytes& data) {
        send(request(command, data, ++id_ == 0 ? ++id_ : id_));
        Bytes answer = receive();
        while (answer.size() >= 8 && number<std::uint16_t>(std::span(answer).subspan(2)) == Pending) {
            answer = receive();
        }
        return answer;
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
    static constexpr auto Pending = static_cast<std::uint16_t>(Command::Pending);

    int descriptor_;
    std::uint16_t id_ = 0;
};

/// A frame as it came.
struct Picture {
    Bytes leader;
    Bytes bytes;
    Bytes trailer;
};

/// A device over an applet of its own, a viewer's socket for control, and its socket for the stream.
class ServedDevice : public testing::Test {
protected:
    ~ServedDevice() override {
        ends = true;
        serving.join();
        std::filesystem::remove(options.userSet);
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
    DeviceOptions options{"lo", "QUILLON-0", testing::TempDir() + "user_set_" + std::to_string(getpid()) + ".mcf",
                          400e6};
    Device device{built.applet, built.board, options};
    std::atomic<bool> ends = false;
    std::thread serving{[this] { device.run([this] { return !ends; }); }};
    Client viewer;
    Client stream;
    std::uint32_t packets = 0;
};

/// Four bytes of a packet; 0 behind its end.
inline std::uint32_t wordOf(const Bytes& packet, std::size_t at) {
    return packet.size() >= at + 4 ? number<std::uint32_t>(std::span(packet).subspan(at)) : 0;
}

}  // namespace quillon::gige
