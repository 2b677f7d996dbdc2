/// @file
/// The control channel of a device: who may do what, and what each request answers. It knows no sockets, so that tests
/// and fuzzers speak to it directly.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "gige/ControlPackets.h"

namespace quillon::gige {

/// An address and a port of the network, as numbers of the computer.
struct Peer {
    std::uint32_t address = 0;
    std::uint16_t port = 0;
    bool operator==(const Peer&) const = default;
};

/// "127.0.0.1:50000".
std::string inWords(const Peer& peer);

/// The memory that requests read and write. An access lies in one register, or in a part of one.
class AddressSpace {
public:
    AddressSpace() = default;
    AddressSpace(const AddressSpace&) = delete;
    AddressSpace& operator=(const AddressSpace&) = delete;
    virtual ~AddressSpace() = default;

    virtual Status read(std::uint32_t address, std::span<std::byte> bytes) = 0;
    virtual Status write(std::uint32_t address, std::span<const std::byte> bytes) = 0;
};

/// What the channel asks of the rest of the device.
class ControlListener {
public:
    ControlListener() = default;
    ControlListener(const ControlListener&) = delete;
    ControlListener& operator=(const ControlListener&) = delete;
    virtual ~ControlListener() = default;

    /// The controller has come, or is another; nothing: it has gone, and what it has started ends.
    virtual void controllerChanged(const std::optional<Peer>& controller) = 0;
    /// Somebody at the address of the controller asks for packets again, from its port or from that of its stream.
    virtual void resend(const Peer& sender, const ResendRequest& request) = 0;
};

/// One peer may hold the control privilege, by its address and port; others may read. Without a request of its own for
/// the heartbeat time it loses it.
///
/// A controller that misses an acknowledge sends its request once more, with the same id: then a write is not done
/// again, and the acknowledge is that of the first time.
class ControlChannel {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Clock = std::function<Time()>;

    static constexpr std::uint32_t DiscoverySize = 0xF8;
    static constexpr std::uint32_t PrivilegeAddress = 0xA00;

    ControlChannel(AddressSpace& memory, ControlListener& listener, Clock clock = std::chrono::steady_clock::now)
        : memory_(memory), listener_(listener), clock_(std::move(clock)) {}

    /// What a datagram is answered with; nothing if it is none of this protocol, or wants no answer.
    std::optional<std::vector<std::byte>> receive(const Peer& sender, std::span<const std::byte> datagram);
    /// Time has passed: a controller that has been silent for so long has gone.
    void expire(std::chrono::milliseconds heartbeat);

    const std::optional<Peer>& controller() const { return controller_; }

private:
    struct Answer {
        Status status = Status::Success;
        std::vector<std::byte> data;
    };

    std::vector<std::byte> acknowledged(const Peer& sender, const Request& request);
    Answer answer(const Peer& sender, const Request& request);
    Answer discover();
    Answer readRegisters(const Peer& sender, const Request& request);
    Answer writeRegisters(const Peer& sender, const Request& request);
    Answer readMemory(const Peer& sender, const Request& request);
    Answer writeMemory(const Peer& sender, const Request& request);
    Status readRegister(const Peer& sender, std::uint32_t address, std::span<std::byte> bytes);
    Status writeRegister(const Peer& sender, std::uint32_t address, std::span<const std::byte> bytes);
    Status changePrivilege(const Peer& sender, std::uint32_t privilege);
    bool mayRead(const Peer& sender) const;
    bool isController(const Peer& sender) const { return controller_ == sender; }

    AddressSpace& memory_;
    ControlListener& listener_;
    Clock clock_;
    std::optional<Peer> controller_;
    std::uint32_t privilege_ = 0;
    Time lastHeard_;                      ///< of the controller
    std::vector<std::byte> lastRequest_;  ///< of the controller
    std::vector<std::byte> lastAnswer_;   ///< to it, if it was a write
};

}  // namespace quillon::gige
