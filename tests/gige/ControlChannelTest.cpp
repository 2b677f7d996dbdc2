#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <random>

#include "gige/ControlChannel.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

constexpr Peer Viewer{0x7F000001, 50000};
constexpr Peer Other{0x7F000001, 50001};
constexpr std::uint32_t Privilege = ControlChannel::PrivilegeAddress;

/// Registers of four bytes at 0 to 0xFFC; writes at 0x100 are refused.
class Memory final : public AddressSpace {
public:
    Status read(std::uint32_t address, std::span<std::byte> bytes) override {
        if (address + bytes.size() > 0x1000) {
            return Status::InvalidAddress;
        }
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<std::byte>(address + i);
        }
        return Status::Success;
    }
    Status write(std::uint32_t address, std::span<const std::byte> bytes) override {
        if (address == 0x100) {
            return Status::Error;
        }
        written[address] = {bytes.begin(), bytes.end()};
        if (duringWrite) {
            duringWrite();
        }
        return Status::Success;
    }
    std::map<std::uint32_t, Bytes> written;
    std::function<void()> duringWrite;
};

class Listener final : public ControlListener {
public:
    void controllerChanged(const std::optional<Peer>& controller) override { controllers.push_back(controller); }
    void resend(const Peer& sender, const ResendRequest& request) override {
        resent.emplace_back(sender, request.frame);
    }
    std::vector<std::optional<Peer>> controllers;
    std::vector<std::pair<Peer, unsigned>> resent;
};

class Channel : public testing::Test {
protected:
    using Time = ControlChannel::Time;

    std::optional<Bytes> ask(const Peer& sender, Command command, const Bytes& data) {
        return channel.receive(sender, request(command, data));
    }
    Status statusOf(const std::optional<Bytes>& answer) {
        EXPECT_TRUE(answer);
        return answer ? static_cast<Status>(number<std::uint16_t>(*answer)) : Status::NotImplemented;
    }
    Status write(const Peer& sender, std::uint32_t address, std::uint32_t value) {
        return statusOf(ask(sender, Command::WriteRegister, words({address, value})));
    }
    Status read(const Peer& sender, std::uint32_t address) {
        return statusOf(ask(sender, Command::ReadRegister, words({address})));
    }
    std::uint32_t privilege(const Peer& sender) {
        const auto answer = ask(sender, Command::ReadRegister, words({Privilege}));
        return number<std::uint32_t>(std::span(*answer).subspan(8));
    }

    Memory memory;
    Listener listener;
    Time now;
    ControlChannel channel{memory, listener, [this] { return now; }};
};

TEST_F(Channel, AnswersDiscovery) {
    const auto answer = ask(Other, Command::Discovery, {});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->size(), 8U + 0xF8);
    EXPECT_EQ((*answer)[8 + 0x48], std::byte{0x48});
}

TEST_F(Channel, ReadsRegistersAndMemory) {
    EXPECT_EQ(*ask(Other, Command::ReadRegister, words({0x10, 0x20})),
              bytes("00 00 00 81 00 08 00 01 10 11 12 13 20 21 22 23"));
    EXPECT_EQ(*ask(Other, Command::ReadMemory, words({0x40, 8})),
              bytes("00 00 00 85 00 0c 00 01 00 00 00 40 40 41 42 43 44 45 46 47"));
}

TEST_F(Channel, WritesForItsControllerAlone) {
    EXPECT_EQ(write(Viewer, 0x20, 5), Status::AccessDenied);
    EXPECT_EQ(write(Viewer, Privilege, 2), Status::Success);
    EXPECT_EQ(write(Viewer, 0x20, 5), Status::Success);
    EXPECT_EQ(write(Other, 0x20, 6), Status::AccessDenied);
    EXPECT_EQ(statusOf(ask(Other, Command::WriteMemory, words({0x20, 6}))), Status::AccessDenied);
    EXPECT_EQ(memory.written[0x20], words({5}));
    EXPECT_EQ(*ask(Viewer, Command::WriteMemory, words({0x24, 7, 8})), bytes("00 00 00 87 00 04 00 01 00 00 00 08"));
    EXPECT_EQ(memory.written[0x24], words({7, 8}));
}

TEST_F(Channel, TellsThePrivilegeInTheMiddleOfABlock) {
    write(Viewer, Privilege, 2);
    const auto block = ask(Other, Command::ReadMemory, words({Privilege - 4, 12}));
    EXPECT_EQ(*block, bytes("00 00 00 85 00 10 00 01 00 00 09 fc fc fd fe ff 00 00 00 02 04 05 06 07"));
}

TEST_F(Channel, GivesThePrivilegeForItsRegisterAlone) {
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteMemory, words({Privilege, 2, 7}))), Status::AccessDenied);
    EXPECT_FALSE(channel.controller());
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteMemory, words({Privilege, 2}))), Status::Success);
    EXPECT_EQ(channel.controller(), Viewer);
}

TEST_F(Channel, TellsHowManyRegistersWereWritten) {
    write(Viewer, Privilege, 2);
    EXPECT_EQ(*ask(Viewer, Command::WriteRegister, words({0x20, 1, 0x24, 2})),
              bytes("00 00 00 83 00 04 00 01 00 00 00 02"));
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteRegister, words({0x28, 1, 0x100, 2, 0x2C, 3}))), Status::Error);
    EXPECT_TRUE(memory.written.contains(0x28));
    EXPECT_FALSE(memory.written.contains(0x2C));
}

TEST_F(Channel, CannotBeTaken) {
    EXPECT_EQ(write(Viewer, Privilege, 2), Status::Success);
    EXPECT_EQ(write(Other, Privilege, 2), Status::AccessDenied);
    EXPECT_EQ(write(Other, Privilege, 0), Status::AccessDenied);
    EXPECT_EQ(statusOf(ask(Other, Command::WriteMemory, words({Privilege, 2}))), Status::AccessDenied);
    EXPECT_EQ(channel.controller(), Viewer);
    EXPECT_EQ(privilege(Other), 2U);
    EXPECT_EQ(write(Viewer, Privilege, 0), Status::Success);
    EXPECT_EQ(write(Other, Privilege, 2), Status::Success);
    EXPECT_EQ(listener.controllers, (std::vector<std::optional<Peer>>{Viewer, std::nullopt, Other}));
}

TEST_F(Channel, IsClosedToOthersByAnExclusiveController) {
    write(Viewer, Privilege, 1);
    EXPECT_EQ(read(Other, 0x20), Status::AccessDenied);
    EXPECT_EQ(statusOf(ask(Other, Command::ReadMemory, words({0x20, 4}))), Status::AccessDenied);
    EXPECT_EQ(privilege(Other), 1U) << "that it is taken may be known";
    EXPECT_EQ(read(Viewer, 0x20), Status::Success);
    EXPECT_TRUE(ask(Other, Command::Discovery, {}));
}

TEST_F(Channel, FreesItselfOfASilentController) {
    using namespace std::chrono_literals;
    write(Viewer, Privilege, 2);
    now += 2900ms;
    channel.expire(3000ms);
    EXPECT_EQ(channel.controller(), Viewer);
    privilege(Viewer);
    now += 2900ms;
    privilege(Other);
    channel.expire(3000ms);
    EXPECT_EQ(channel.controller(), Viewer);
    now += 200ms;
    channel.expire(3000ms);
    EXPECT_FALSE(channel.controller());
    EXPECT_EQ(listener.controllers.back(), std::nullopt);
    EXPECT_EQ(write(Viewer, 0x20, 5), Status::AccessDenied);
}

TEST_F(Channel, SendsAgainForItsControllerAlone) {
    const Bytes packets = bytes("00 00 00 07 00 00 00 01 00 00 00 02");
    EXPECT_FALSE(ask(Viewer, Command::PacketResend, packets));
    EXPECT_TRUE(listener.resent.empty());
    write(Viewer, Privilege, 2);
    EXPECT_FALSE(ask(Viewer, Command::PacketResend, packets));
    EXPECT_FALSE(ask(Other, Command::PacketResend, packets)) << "from the port of its stream, perhaps";
    EXPECT_FALSE(ask(Peer{0x7F000002, Viewer.port}, Command::PacketResend, packets));
    EXPECT_EQ(listener.resent, (std::vector<std::pair<Peer, unsigned>>{{Viewer, 7}, {Other, 7}}));
}

TEST_F(Channel, DoesNotDoTwiceWhatIsAskedTwice) {
    write(Viewer, Privilege, 2);
    const Bytes write20 = request(Command::WriteRegister, words({0x20, 5}), 77);
    const auto first = channel.receive(Viewer, write20);
    memory.written.clear();
    EXPECT_EQ(channel.receive(Viewer, write20), first);
    EXPECT_TRUE(memory.written.empty());
    EXPECT_EQ(statusOf(channel.receive(Other, write20)), Status::AccessDenied) << "a replay of somebody else";
    EXPECT_TRUE(memory.written.empty());
    channel.receive(Viewer, request(Command::WriteRegister, words({0x20, 5}), 78));
    EXPECT_EQ(memory.written[0x20], words({5})) << "another request";
    memory.written.clear();
    read(Viewer, 0x20);
    channel.receive(Viewer, request(Command::WriteRegister, words({0x20, 5}), 78));
    EXPECT_EQ(memory.written[0x20], words({5})) << "ids come round again";
}

TEST_F(Channel, HearsAControllerWhoseRequestTakesLong) {
    using namespace std::chrono_literals;
    write(Viewer, Privilege, 2);
    memory.duringWrite = [this] { now += 5s; };
    write(Viewer, 0x20, 1);
    channel.expire(3s);
    EXPECT_EQ(channel.controller(), Viewer);
}

TEST_F(Channel, RefusesWhatMakesNoSense) {
    write(Viewer, Privilege, 2);
    EXPECT_EQ(read(Viewer, 0x21), Status::BadAlignment);
    EXPECT_EQ(write(Viewer, 0x22, 1), Status::BadAlignment);
    EXPECT_EQ(read(Viewer, 0x2000), Status::InvalidAddress);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadRegister, {})), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadRegister, bytes("00 00 00"))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteRegister, words({0x20}))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadMemory, words({0x20, 0}))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadMemory, words({0x20, 540}))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadMemory, words({0x20, 3}))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::ReadMemory, words({0x22, 4}))), Status::BadAlignment);
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteMemory, words({0x20}))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, Command::WriteMemory, bytes("00 00 00 20 01"))), Status::InvalidParameter);
    EXPECT_EQ(statusOf(ask(Viewer, static_cast<Command>(0x1234), {})), Status::NotImplemented);
}

TEST_F(Channel, AnswersNobodyWhoWantsNone) {
    write(Viewer, Privilege, 2);
    EXPECT_FALSE(channel.receive(Viewer, request(Command::WriteRegister, words({0x20, 9}), 1, false)));
    EXPECT_EQ(memory.written[0x20], words({9}));
    EXPECT_FALSE(channel.receive(Viewer, bytes("00 11 22")));
}

TEST_F(Channel, StandsAnyBytes) {
    std::mt19937 random(3956);
    std::size_t answered = 0;
    for (int round = 0; round < 200'000; ++round) {
        Bytes packet(random() % 64);
        for (std::byte& byte : packet) {
            byte = static_cast<std::byte>(random());
        }
        if (packet.size() >= 8 && random() % 4 != 0) {
            packet[0] = std::byte{0x42};
            packet[2] = std::byte{0};
            packet[3] = static_cast<std::byte>(0x80 + random() % 8);
            put(std::span(packet).subspan(4), static_cast<std::uint16_t>(packet.size() - 8));
        }
        const auto answer = channel.receive({static_cast<std::uint32_t>(random()), 1}, packet);
        answered += answer ? 1 : 0;
        ASSERT_LE(answer ? answer->size() : 0, 8 + MostData);
    }
    EXPECT_GT(answered, 10'000U);
}

}  // namespace
}  // namespace quillon::gige
