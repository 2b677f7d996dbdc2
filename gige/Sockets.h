/// @file
/// The sockets of a device, and the interface of the network that it is found on.
#pragma once

#include <netinet/in.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "gige/ControlChannel.h"

namespace quillon::gige {

/// An interface of the computer with its IPv4 address.
struct Interface {
    std::string name;
    std::uint32_t address = 0;
    std::uint32_t mask = 0;
    std::array<std::uint8_t, 6> mac = {};
    bool loopback = false;
};

/// Throws std::runtime_error, with the names that there are, for another one.
Interface findInterface(const std::string& name);

/// Whether a peer is in the network of an interface. Nobody else is answered: whoever writes a sender's address that is
/// not his own would have the device send there.
bool isNear(const Peer& peer, const Interface& interface);

sockaddr_in socketAddress(const Peer& peer);

/// A UDP socket that hears one interface alone.
class Socket {
public:
    /// @param port       0: any that is free
    /// @param broadcast  hears what is sent to all, too
    /// Throws std::system_error, naming what could not be done.
    Socket(const Interface& interface, std::uint16_t port, bool broadcast);
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket();

    int descriptor() const { return descriptor_; }
    std::uint16_t port() const;
    /// A datagram that is there, as far as it fits; nothing if there is none.
    std::optional<std::size_t> receive(std::span<std::byte> buffer, Peer& sender) const;
    void send(const Peer& to, std::span<const std::byte> datagram) const;

private:
    int descriptor_;
};

}  // namespace quillon::gige
