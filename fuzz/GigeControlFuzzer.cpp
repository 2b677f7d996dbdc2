/// @file
/// Datagrams of any bytes, of several peers and at several times, for the control channel of a device over the applet:
/// whoever does not control it changes nothing, and answers keep to the protocol.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "fuzz/InputFile.h"
#include "gige/Bytes.h"
#include "gige/ControlChannel.h"
#include "gige/DeviceMemory.h"

namespace {

using namespace quillon::gige;
using quillon::fuzz::expect;
using quillon::fuzz::InputFile;

using Bytes = std::vector<std::byte>;

constexpr std::size_t HeadSize = 8;
constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::array<Peer, 4> Peers{
    {{Loopback, 50000}, {Loopback, 50001}, {Loopback + 1, 50000}, {Loopback + 1, 3956}}};

/// The input, from its front on; zeros behind its end.
class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size) : rest_(bytes, size) {}

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte() {
        if (rest_.empty()) {
            return 0;
        }
        const std::uint8_t first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }
    std::uint16_t half() {
        const unsigned high = byte();
        return static_cast<std::uint16_t>(high << 8 | byte());
    }
    std::uint32_t word() {
        const std::uint32_t high = half();
        return high << 16 | half();
    }

private:
    std::span<const std::uint8_t> rest_;
};

/// An address that is there, or any.
std::uint32_t address(Input& input) {
    switch (input.byte() % 7) {
        case 0: return input.word();
        case 1: return input.half() & 0xFFFCU;
        case 2: return ControlChannel::PrivilegeAddress;
        case 3: return 0xD00 + input.byte() % 8 * 4U;
        case 4: return 0x20000 + input.byte() % 0x40 * 8U;
        case 5: return FirstParameterAddress + input.byte() * ParameterStride;
        default: return FirstParameterAddress + input.byte() * ParameterStride + MinimumOffset + input.byte() % 8 * 4U;
    }
}

Bytes head(std::uint8_t flags, std::uint16_t command, std::size_t length, std::uint16_t id) {
    Bytes packet{std::byte{0x42}, static_cast<std::byte>(flags)};
    append(packet, command);
    append(packet, static_cast<std::uint16_t>(length));
    append(packet, id);
    return packet;
}

/// A datagram of any bytes, or a request with addresses and values.
Bytes datagram(Input& input, unsigned form) {
    constexpr std::array<std::uint16_t, 7> Commands{0x0002, 0x0040, 0x0080, 0x0082, 0x0084, 0x0086, 0x0089};
    Bytes data;
    if (form == 0) {
        for (unsigned length = input.byte() * 4U; length > 0 && !input.empty(); --length) {
            data.push_back(static_cast<std::byte>(input.byte()));
        }
        return data;
    }
    const std::uint16_t command = form <= Commands.size() ? Commands[form - 1] : input.half();
    const std::uint8_t flags = input.byte();
    const unsigned count = input.byte() % 140U;
    for (unsigned i = 0; i < count && !input.empty(); ++i) {
        const bool isAddress = i == 0 || command == 0x0080 || (command == 0x0082 && i % 2 == 0);
        append(data, isAddress ? address(input) : input.word());
    }
    Bytes packet = head(flags, command, data.size(), input.half());
    packet.insert(packet.end(), data.begin(), data.end());
    return packet;
}

class Actions final : public DeviceActions {
public:
    Status startAcquisition(std::int64_t frames) override {
        expect(frames == -1 || (frames >= 1 && frames <= 0xFFFFFFFF));
        acquiring_ = true;
        return Status::Success;
    }
    void stopAcquisition() override { acquiring_ = false; }
    bool acquiring() const override { return acquiring_; }
    void sendTestPacket(std::uint32_t size) override { expect(size <= MostPacketSize); }
    std::string userSet() const override { return {}; }

private:
    bool acquiring_ = false;
};

/// A device of the whole run, but for its sockets.
class Served final : public AddressSpace, public ControlListener {
public:
    Served() {
        built_.board.record(false);
        const InputFile file(".saved.mcf", nullptr, 0);
        expect(built_.applet.saveConfig(file.name()) == 0);
        start_ = file.bytes();
    }

    void run(Input input) {
        ControlChannel channel(*this, *this, [this] { return now_; });
        channel_ = &channel;
        while (!input.empty()) {
            const unsigned how = input.byte();
            if ((how & 4U) != 0) {
                now_ += std::chrono::milliseconds(300);
            }
            if ((how & 8U) != 0) {
                expired_ = true;
                channel.expire(std::chrono::milliseconds(memory_.heartbeat()));
                expired_ = false;
            }
            sender_ = Peers[how % Peers.size()];
            receive(channel, datagram(input, how >> 4U));
        }
        memory_.setController(std::nullopt);
        restore();
    }

    Status read(std::uint32_t address, std::span<std::byte> bytes) override { return memory_.read(address, bytes); }

    /// All is written but texts: some of them name files.
    Status write(std::uint32_t address, std::span<const std::byte> bytes) override {
        expect(channel_->controller() == sender_);
        const auto& parameters = memory_.parameters();
        const std::size_t position = (address - FirstParameterAddress) / ParameterStride;
        if (address >= FirstParameterAddress && position < parameters.size() &&
            parameters[position].kind == RegisterKind::Text) {
            return Status::WriteProtected;
        }
        written_ = written_ || address >= BootstrapEnd;
        return memory_.write(address, bytes);
    }

    void controllerChanged(const std::optional<Peer>& controller) override {
        expect(expired_ ? !controller : (controller ? controller : controller_) == sender_);
        controller_ = controller;
        memory_.setController(controller);
    }
    void resend(const Peer& sender, const ResendRequest& request) override {
        expect(controller_ && controller_->address == sender.address);
        expect(request.first <= 0xFFFFFF && request.last <= 0xFFFFFF);
    }

private:
    static constexpr std::uint32_t BootstrapEnd = 0x10000;

    void receive(ControlChannel& channel, const Bytes& packet) {
        const std::optional<Peer> before = channel.controller();
        const auto answer = channel.receive(sender_, packet);
        expect(!before || before == sender_ || channel.controller() == before);
        if (answer) {
            check(*answer, packet);
        }
        const StreamSettings stream = memory_.stream();
        expect(stream.address == 0 || (channel.controller() && stream.address == channel.controller()->address));
        expect(stream.packetSize >= LeastPacketSize && stream.packetSize <= MostPacketSize);
    }

    static void check(const Bytes& answer, const Bytes& packet) {
        const std::span<const std::byte> all(answer);
        expect(packet.size() >= HeadSize && answer.size() >= HeadSize && answer.size() <= HeadSize + MostData);
        const auto asked = number<std::uint16_t>(std::span(packet).subspan(2));
        expect(number<std::uint16_t>(all.subspan(2)) == static_cast<std::uint16_t>(asked + 1));
        expect(number<std::uint16_t>(all.subspan(4)) == answer.size() - HeadSize);
        expect(number<std::uint16_t>(all.subspan(6)) == number<std::uint16_t>(std::span(packet).subspan(6)));
        constexpr std::size_t Count = 4;  // what a write answers
        const auto command = static_cast<Command>(asked);
        const bool success = number<std::uint16_t>(all) == 0;
        const std::size_t data = answer.size() - HeadSize;
        switch (command) {
            case Command::Discovery: expect(data == (success ? ControlChannel::DiscoverySize : 0)); break;
            case Command::ReadRegister: expect(data == (success ? packet.size() - HeadSize : 0)); break;
            case Command::ReadMemory: expect(success ? data > Count : data == 0); break;
            case Command::WriteRegister:
            case Command::WriteMemory: expect(data == (success ? Count : 0)); break;
            default: expect(!success && data == 0);
        }
    }

    /// Loads the state at start, so that an input finds what every other found.
    void restore() {
        controller_.reset();
        if (written_) {
            const InputFile file(".start.mcf", reinterpret_cast<const std::uint8_t*>(start_.data()), start_.size());
            expect(built_.applet.loadConfig(file.name()) == 0);
            written_ = false;
        }
    }

    quillon::client::testing::BuiltApplet built_;
    Actions actions_;
    DeviceMemory memory_{built_.applet, built_.board, {}, actions_};
    std::string start_;
    bool written_ = false;
    bool expired_ = false;
    ControlChannel* channel_ = nullptr;
    ControlChannel::Time now_;
    Peer sender_;
    std::optional<Peer> controller_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static Served served;
    served.run({bytes, size});
    return 0;
}
