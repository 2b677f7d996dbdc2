#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "gige/StreamPackets.h"
#include "tests/gige/ServedDevice.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t Neighbour = 0x7F000002;  // 127.0.0.2
constexpr std::uint32_t StreamPort = 0xD00;
constexpr std::uint32_t PacketSize = 0xD04;
constexpr std::uint32_t PacketDelay = 0xD08;
constexpr std::uint32_t StreamAddress = 0xD18;
constexpr std::uint32_t Heartbeat = 0x938;
constexpr std::size_t MostAnswer = 8 + MostData;

/// What has come to a socket, until nothing comes any more.
struct Heard {
    std::size_t datagrams = 0;
    std::size_t bytes = 0;
    std::size_t longest = 0;
};

Heard listen(const Client& client, std::chrono::milliseconds patience = 200ms) {
    Heard heard;
    for (Bytes packet = client.receive(patience); !packet.empty(); packet = client.receive(patience)) {
        ++heard.datagrams;
        heard.bytes += packet.size();
        heard.longest = std::max(heard.longest, packet.size());
    }
    return heard;
}

Bytes resendRequest(std::uint32_t frame, std::uint32_t first, std::uint32_t last) {
    return request(Command::PacketResend, words({frame, first, last}), 9, false);
}

class HostileViewers : public ServedDevice {
protected:
    /// Streams one small frame to its end.
    Picture streamOne() {
        built.applet["FG_WIDTH"] = 64;
        built.applet["FG_HEIGHT"] = 32;
        connect();
        EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionMode, 1), Status::Success);
        EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
        return receivePicture();
    }
    /// The device is there, its controller is the viewer, and nothing comes that it has not asked for.
    void expectUnmoved() {
        EXPECT_EQ(viewer.read(Privilege), 2U);
        EXPECT_EQ(device.state().controller, viewer.peer());
        EXPECT_EQ(listen(stream, 50ms).datagrams, 0U);
    }

    Client stranger;
    Client neighbour{Neighbour};
};

// ---- The control channel ----

TEST_F(HostileViewers, SendNoiseOfAnyLength) {
    connect();
    std::minstd_rand random(1);
    for (std::size_t length = 0; length <= 2000; ++length) {
        Bytes noise(length);
        std::generate(noise.begin(), noise.end(), [&] { return static_cast<std::byte>(random() >> 8); });
        (length % 2 == 0 ? stranger : neighbour).send(noise);
        Bytes cut = request(Command::ReadMemory, Bytes(length, std::byte{0x10}));
        cut.resize(cut.size() - (length > 0 ? 1 : 0));
        (length > 0 ? viewer : stranger).send(cut);
    }
    EXPECT_EQ(listen(stranger).datagrams, 1U) << "the request without data is refused, the others are none";
    EXPECT_EQ(listen(neighbour).datagrams, 0U);
    EXPECT_EQ(listen(viewer).datagrams, 0U);
    expectUnmoved();
}

TEST_F(HostileViewers, SendHeadsThatAreWrong) {
    connect();
    Bytes otherKey = request(Command::ReadRegister, words({0}));
    otherKey[0] = std::byte{0x43};
    Bytes tooLong = request(Command::ReadRegister, words({0}));
    tooLong[5] = std::byte{8};
    Bytes tooShort = request(Command::ReadRegister, words({0, 4}));
    tooShort[5] = std::byte{4};
    for (const Bytes& packet : {otherKey, tooLong, tooShort, request(Command::ReadRegister, words({0}), 0)}) {
        viewer.send(packet);
        stranger.send(packet);
    }
    EXPECT_EQ(listen(viewer).datagrams, 0U);
    EXPECT_EQ(listen(stranger).datagrams, 0U);
    for (const unsigned command : {0x0000U, 0x0001U, 0x0003U, 0x0041U, 0x0083U, 0x0089U, 0x00C0U, 0xFFFFU}) {
        EXPECT_EQ(Client::statusOf(stranger.ask(static_cast<Command>(command), words({0, 0}))), Status::NotImplemented)
            << command;
    }
    expectUnmoved();
}

TEST_F(HostileViewers, ReplayWritesInVain) {
    connect();
    const auto count = static_cast<std::uint32_t>(DeviceRegister::AcquisitionFrameCount);
    const Bytes write = request(Command::WriteRegister, words({count, 5}), 77);
    viewer.send(write);
    EXPECT_EQ(Client::statusOf(viewer.receive()), Status::Success);
    EXPECT_EQ(viewer.write(count, 6), Status::Success);
    for (const Client* const other : {&stranger, &neighbour}) {
        other->send(write);
        EXPECT_EQ(Client::statusOf(other->receive()), Status::AccessDenied);
    }
    EXPECT_EQ(viewer.read(count), 6U);
    EXPECT_EQ(neighbour.write(Privilege, 2), Status::AccessDenied);
    EXPECT_EQ(neighbour.write(Privilege, 0), Status::AccessDenied);
    EXPECT_EQ(stranger.write(StreamAddress, Neighbour), Status::AccessDenied);
    expectUnmoved();
}

TEST_F(HostileViewers, SendNoiseThatLooksLikeRequests) {
    connect();
    constexpr std::size_t Rounds = 200;
    constexpr std::size_t EachRound = 100;
    std::minstd_rand random(2);
    const auto any = [&](std::uint32_t below) { return static_cast<std::uint32_t>((random() >> 4) % below); };
    Heard heard;
    for (std::size_t round = 0; round < Rounds; ++round) {
        const Client& sender = round % 2 == 0 ? stranger : neighbour;
        for (std::size_t i = 0; i < EachRound; ++i) {
            Bytes data(any(20) * 4);
            std::generate(data.begin(), data.end(), [&] { return static_cast<std::byte>(any(256)); });
            if (data.size() >= 4 && any(2) == 0) {
                put(std::span(data), any(0x1000) & ~3U);
            }
            sender.send(request(static_cast<Command>(any(0x90)), data, static_cast<std::uint16_t>(any(0x10000))));
        }
        const Bytes answer = viewer.ask(Command::ReadRegister, words({Privilege}));
        ASSERT_EQ(wordOf(answer, 8), 2U) << round;
        for (Bytes packet = sender.receive(0ms); !packet.empty(); packet = sender.receive(0ms)) {
            ++heard.datagrams;
            heard.longest = std::max(heard.longest, packet.size());
        }
    }
    EXPECT_GT(heard.datagrams, 0U);
    EXPECT_LE(heard.datagrams, Rounds * EachRound);
    EXPECT_LE(heard.longest, MostAnswer);
    expectUnmoved();
}

TEST_F(HostileViewers, AreServedAFewAtATime) {
    ends = true;
    serving.join();
    constexpr std::size_t Requests = 200;
    for (std::size_t i = 0; i < Requests; ++i) {
        stranger.send(request(Command::ReadRegister, words({Privilege})));
    }
    int turns = 0;
    device.run([&] { return turns++ == 0; });
    const Heard first = listen(stranger);
    EXPECT_GT(first.datagrams, 0U);
    EXPECT_LT(first.datagrams, Requests) << "the end of it is looked for in between";
    serving = std::thread([this] { device.run([] { return false; }); });
}

// ---- Where the stream goes ----

TEST_F(HostileViewers, DirectNoStreamAtOthers) {
    connect();
    EXPECT_EQ(viewer.write(StreamAddress, Neighbour), Status::InvalidParameter);
    EXPECT_EQ(viewer.write(StreamAddress, 0xFFFFFFFF), Status::InvalidParameter);
    EXPECT_EQ(viewer.read(StreamAddress), Loopback);
    EXPECT_EQ(viewer.write(StreamAddress, 0), Status::Success);
    EXPECT_EQ(viewer.write(PacketSize, 0x80000000 | 1400), Status::Success);
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Error);
    expectUnmoved();
}

TEST_F(HostileViewers, GetOneTestPacketOfAtMost9000Bytes) {
    connect();
    for (const std::uint32_t size : {0U, 1U, 28U, 9001U, 0xFFFFU}) {
        EXPECT_EQ(viewer.write(PacketSize, 0x80000000 | size), Status::Success);
    }
    EXPECT_EQ(stranger.write(PacketSize, 0x80000000 | 9000), Status::AccessDenied);
    EXPECT_EQ(listen(stream, 100ms).datagrams, 0U);
    EXPECT_EQ(viewer.write(PacketSize, 0x80000000 | 9000), Status::Success);
    const Heard heard = listen(stream, 100ms);
    EXPECT_EQ(heard.datagrams, 1U);
    EXPECT_EQ(heard.bytes, 9000 - NetworkHeads);
}

TEST_F(HostileViewers, AskForTheFramesOfTheControllerBeforeThem) {
    ASSERT_FALSE(streamOne().trailer.empty());
    ASSERT_EQ(viewer.write(Privilege, 0), Status::Success);
    ASSERT_EQ(neighbour.write(Privilege, 2), Status::Success);
    neighbour.send(resendRequest(1, 0, 3));
    EXPECT_EQ(neighbour.read(Privilege), 2U);
    EXPECT_EQ(listen(stream).datagrams, 0U);
    EXPECT_EQ(device.state().stream.resent, 0U);
}

// ---- Packets again ----

TEST_F(HostileViewers, AskForPacketsThatAFrameDoesNotHave) {
    const Picture picture = streamOne();
    ASSERT_FALSE(picture.trailer.empty());
    const std::size_t all = packetsOf(picture.bytes.size(), 1400);
    viewer.send(resendRequest(1, 0, 0xFFFFFF));
    EXPECT_EQ(listen(stream).datagrams, all);
    viewer.send(resendRequest(1, 0xFFFFFF, 0xFFFFFF));
    viewer.send(resendRequest(1, static_cast<std::uint32_t>(all), 0xFFFFFF));
    viewer.send(resendRequest(1, 3, 2));
    viewer.send(resendRequest(0, 0, 0xFFFFFF));
    viewer.send(resendRequest(2, 0, 0xFFFFFF));
    viewer.send(request(Command::PacketResend, words({1, 0}), 9, false));
    viewer.send(request(Command::PacketResend, {}, 9, true));
    expectUnmoved();
    EXPECT_EQ(device.state().stream.resent, all);
}

TEST_F(HostileViewers, AskForAFrameAgainAndAgain) {
    const Picture picture = streamOne();
    ASSERT_FALSE(picture.trailer.empty());
    const std::size_t all = packetsOf(picture.bytes.size(), 1400);
    constexpr std::size_t Requests = 1000;
    for (std::size_t i = 0; i < Requests; ++i) {
        (i % 2 == 0 ? viewer : stream).send(resendRequest(1, 0, 0xFFFFFF));
        ASSERT_EQ(viewer.read(Privilege), 2U);
    }
    const Heard heard = listen(stream);
    EXPECT_GE(heard.datagrams, all);
    EXPECT_LE(heard.datagrams, 4 * all) << "as often as a viewer of ill luck needs them, and no more";
    EXPECT_EQ(device.state().stream.resent, heard.datagrams);
    EXPECT_LE(device.state().stream.gone, Requests - 4) << "the same request is not kept twice";
}

// ---- While it streams ----

TEST_F(HostileViewers, WaitForAnEndThatADelayDoesNotPutOff) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 512;
    connect(220);
    ASSERT_EQ(viewer.write(PacketDelay, 0xFFFFFFFF), Status::Success) << "34 seconds between packets";
    ASSERT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    ASSERT_FALSE(stream.receive().empty());
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStop, 1), Status::Success);
    EXPECT_FALSE(device.state().streaming);
}

TEST_F(HostileViewers, StartFramesThatNoNumberOfPacketsCounts) {
    built.applet["FG_WIDTH"] = 16384;
    built.applet["FG_HEIGHT"] = 200000;  // 9.8 GB
    connect(220);
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Error);
    EXPECT_FALSE(device.state().streaming);
    EXPECT_THAT(device.state().refusal, testing::HasSubstr("packets"));
    expectUnmoved();
}

/// The picture has as many bytes as its leader tells.
void expectWhole(const Picture& picture) {
    ASSERT_EQ(picture.leader.size(), LeaderSize);
    const std::size_t bitsOfPixel = wordOf(picture.leader, 8 + 12) >> 16 & 0xFF;
    const std::size_t pixels = std::size_t{wordOf(picture.leader, 8 + 16)} * wordOf(picture.leader, 8 + 20);
    EXPECT_EQ(picture.bytes.size(), pixels * bitsOfPixel / 8);
}

TEST_F(HostileViewers, StartFramesThatTakeAllMemory) {
    built.applet["FG_WIDTH"] = 16384;
    built.applet["FG_HEIGHT"] = 1398101;  // 69 GB
    connect(9000);
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Error);
    EXPECT_FALSE(device.state().streaming);
    EXPECT_THAT(device.state().refusal, testing::HasSubstr("half of the memory"));
    expectUnmoved();
}

TEST_F(HostileViewers, ChangeTheFormatAndTheSizeOfFramesOnTheirWay) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    connect();
    ASSERT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    const std::vector<std::pair<const char*, std::uint32_t>> changes{
        {"FG_FORMAT", FG_COL48}, {"FG_WIDTH", 32},        {"FG_FORMAT", FG_COL30}, {"FG_HEIGHT", 1},
        {"FG_WIDTH", 2048},      {"FG_FORMAT", FG_COL36}, {"FG_HEIGHT", 100},      {"FG_FORMAT", FG_COL24}};
    for (const auto& [parameter, value] : changes) {
        built.applet[parameter] = value;
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(parameter);
            expectWhole(receivePicture());
        }
    }
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStop, 1), Status::Success);
}

TEST_F(HostileViewers, LoadTheUserSetWhileItStreams) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    connect();
    constexpr auto TriggerMode = static_cast<std::uint32_t>(DeviceRegister::TriggerMode);
    ASSERT_EQ(viewer.write(DeviceRegister::UserSetSave, 1), Status::Success);
    ASSERT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(viewer.write(TriggerMode, 1), Status::Success);
        EXPECT_EQ(viewer.read(TriggerMode), 1U);
        EXPECT_EQ(viewer.write(DeviceRegister::UserSetLoad, 1), Status::Success);
        EXPECT_EQ(viewer.read(TriggerMode), 0U);
        EXPECT_TRUE(device.state().streaming);
        expectWhole(receivePicture());
    }
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStop, 1), Status::Success);
    listen(stream, 100ms);
    expectUnmoved();
}

TEST_F(HostileViewers, StartAndStopWhileOthersLook) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    connect();
    std::atomic<bool> looks = true;
    std::uint64_t frames = 0;
    std::thread looker([&] {
        while (looks) {
            frames = std::max(frames, device.state().stream.frames);
            std::this_thread::yield();
        }
    });
    for (std::uint32_t i = 0; i < 60; ++i) {
        EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
        viewer.send(resendRequest(i, 0, 0xFFFFFF));
        if (i % 3 != 0) {
            EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStop, 1), Status::Success);
        }
        if (i % 10 == 9) {
            EXPECT_EQ(viewer.write(Privilege, 0), Status::Success);
            connect();
        }
    }
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
    for (bool first = false; !first;) {
        const Bytes packet = stream.receive();
        ASSERT_FALSE(packet.empty());
        first = device.state().stream.frames > 0;
    }
    EXPECT_EQ(viewer.write(DeviceRegister::AcquisitionStop, 1), Status::Success);
    looks = false;
    looker.join();
    listen(stream, 100ms);
    expectUnmoved();
}

TEST_F(HostileViewers, VanishWhileItStreams) {
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 32;
    for (int i = 0; i < 3; ++i) {
        Client gone;
        ASSERT_EQ(gone.write(Privilege, 3), Status::Success);
        ASSERT_EQ(gone.write(Heartbeat, 0), Status::Success) << "500 ms at least";
        ASSERT_EQ(gone.write(StreamAddress, Loopback), Status::Success);
        ASSERT_EQ(gone.write(StreamPort, 9), Status::Success) << "where nobody listens";
        ASSERT_EQ(gone.write(DeviceRegister::AcquisitionStart, 1), Status::Success);
        EXPECT_TRUE(device.state().streaming);
        for (int tries = 0; tries < 100 && device.state().controller; ++tries) {
            std::this_thread::sleep_for(100ms);
        }
        EXPECT_FALSE(device.state().controller);
        EXPECT_FALSE(device.state().streaming);
    }
    connect();
    expectUnmoved();
}

// ---- Without sockets ----

class NoActions final : public DeviceActions {
public:
    Status startAcquisition(std::int64_t /*frames*/) override { return Status::Success; }
    void stopAcquisition() override {}
    bool acquiring() const override { return false; }
    void sendTestPacket(std::uint32_t size) override { mostTested = std::max(mostTested, size); }
    std::string userSet() const override { return {}; }

    std::uint32_t mostTested = 0;
};

/// The memory of a device, but for texts: some of them name files, which are written.
class WithoutTexts final : public AddressSpace {
public:
    explicit WithoutTexts(DeviceMemory& memory) : memory_(memory) {}

    Status read(std::uint32_t address, std::span<std::byte> bytes) override { return memory_.read(address, bytes); }
    Status write(std::uint32_t address, std::span<const std::byte> bytes) override {
        const auto& all = memory_.parameters();
        const std::size_t position = (address - FirstParameterAddress) / ParameterStride;
        if (address >= FirstParameterAddress && position < all.size() && all[position].kind == RegisterKind::Text) {
            return Status::WriteProtected;
        }
        ++writes;
        return memory_.write(address, bytes);
    }

    std::uint64_t writes = 0;

private:
    DeviceMemory& memory_;
};

class NoListener final : public ControlListener {
public:
    void controllerChanged(const std::optional<Peer>& /*controller*/) override {}
    void resend(const Peer& /*sender*/, const ResendRequest& /*request*/) override {}
};

/// Requests of all kinds at addresses that are there, mostly.
class RandomRequests {
public:
    explicit RandomRequests(std::size_t parameters) : parameters_(parameters) {}

    Bytes next() {
        static constexpr std::array Commands{Command::Discovery,     Command::PacketResend, Command::ReadRegister,
                                             Command::WriteRegister, Command::ReadMemory,   Command::WriteMemory,
                                             Command::Pending};
        const Command command = Commands[below(Commands.size())];
        Bytes data;
        append(data, address());
        if (command == Command::ReadMemory && below(8) != 0) {
            append(data, below(MostMemory / 4 + 2) * 4);
        } else {
            for (std::uint32_t count = below(6); count > 0; --count) {
                append(data, below(4) == 0 ? address() : value());
            }
        }
        Bytes packet = request(command, data, static_cast<std::uint16_t>(below(0x10000)), below(16) != 0);
        if (below(32) == 0) {
            packet.resize(below(static_cast<std::uint32_t>(packet.size()) + 1));
        }
        return packet;
    }
    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }

private:
    std::uint32_t value() { return below(2) == 0 ? below(3000) : static_cast<std::uint32_t>(random_()); }
    std::uint32_t address() {
        switch (below(8)) {
            case 0: return static_cast<std::uint32_t>(random_());
            case 1: return 0x20000 + below(0x50) * 8;
            case 2: return 0x100000 + below(0x100000) * 4;
            case 3: return below(4) == 0 ? Privilege : 0xD00 + below(8) * 4;
            case 4: return below(0x1000) * 4;
            default: {
                const auto position = below(static_cast<std::uint32_t>(parameters_) + 1);
                return FirstParameterAddress + position * ParameterStride + (below(4) == 0 ? 0x1000 + below(8) * 4 : 0);
            }
        }
    }

    std::size_t parameters_;
    std::mt19937 random_{3};
};

TEST(HostileRequests, LeaveTheAppletAndTheChannelInOrder) {
#ifdef NDEBUG
    constexpr std::size_t Count = 1'000'000;
#else
    constexpr std::size_t Count = 50'000;
#endif
    client::testing::BuiltApplet built;
    built.board.record(false);
    NoActions actions;
    DeviceMemory memory(built.applet, built.board, {}, actions);
    WithoutTexts space(memory);
    NoListener listener;
    ControlChannel::Time now;
    ControlChannel channel(space, listener, [&] { return now; });
    RandomRequests requests(memory.parameters().size());
    const std::array peers{Peer{Loopback, 50000}, Peer{Loopback, 50001}, Peer{Neighbour, 50000}};
    std::size_t answers = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        const Peer& sender = peers[requests.below(peers.size())];
        const std::optional<Peer> controller = channel.controller();
        const std::uint64_t writes = space.writes;
        const Bytes packet = requests.next();
        const auto answer = channel.receive(sender, packet);
        if (controller && controller != sender) {
            ASSERT_EQ(channel.controller(), controller);
            ASSERT_EQ(space.writes, writes);
        }
        if (answer) {
            ++answers;
            ASSERT_LE(answer->size(), MostAnswer);
            ASSERT_GE(packet.size(), 8U);
            ASSERT_EQ(wordOf(*answer, 4) & 0xFFFF, wordOf(packet, 4) & 0xFFFF) << "the id";
            ASSERT_EQ(wordOf(*answer, 0) & 0xFFFF, (wordOf(packet, 0) & 0xFFFF) + 1) << "the command";
        }
        if (requests.below(256) == 0) {
            now += 1s;
            channel.expire(500ms);
        }
    }
    EXPECT_GT(answers, Count / 2);
    EXPECT_GT(space.writes, Count / 100);
    EXPECT_LE(actions.mostTested, MostPacketSize);
    EXPECT_GE(memory.heartbeat(), 500U);
    built.applet["FG_WIDTH"] = 1024;
    EXPECT_EQ(built.applet.readUnsigned(FG_WIDTH), 1024U);
}

}  // namespace
}  // namespace quillon::gige
