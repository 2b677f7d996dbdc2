#include "gige/Sockets.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace quillon::gige {
namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void setOption(int socket, int level, int option, int value, const std::string& what) {
    if (setsockopt(socket, level, option, &value, sizeof value) != 0) {
        fail(what);
    }
}

std::uint32_t addressOf(const sockaddr* address) {
    sockaddr_in in{};
    std::memcpy(&in, address, sizeof in);
    return ntohl(in.sin_addr.s_addr);
}

}  // namespace

Interface findInterface(const std::string& name) {
    ifaddrs* all = nullptr;
    if (getifaddrs(&all) != 0) {
        fail("the interfaces of the network");
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> guard(all, freeifaddrs);
    Interface found;
    std::string names;
    for (const ifaddrs* it = all; it != nullptr; it = it->ifa_next) {
        if (it->ifa_addr == nullptr) {
            continue;
        }
        if (it->ifa_addr->sa_family == AF_INET && it->ifa_netmask != nullptr) {
            names += (names.empty() ? "" : ", ") + std::string(it->ifa_name);
            if (name == it->ifa_name) {
                found.name = name;
                found.address = addressOf(it->ifa_addr);
                found.mask = addressOf(it->ifa_netmask);
                found.loopback = (it->ifa_flags & IFF_LOOPBACK) != 0;
            }
        } else if (it->ifa_addr->sa_family == AF_PACKET && name == it->ifa_name) {
            sockaddr_ll link{};
            std::memcpy(&link, it->ifa_addr, sizeof link);
            std::copy_n(link.sll_addr, found.mac.size(), found.mac.begin());
        }
    }
    if (found.name.empty()) {
        throw std::runtime_error("there is no interface \"" + name + "\" with an address; there are " + names);
    }
    return found;
}

bool isNear(const Peer& peer, const Interface& interface) {
    return ((peer.address ^ interface.address) & interface.mask) == 0;
}

sockaddr_in socketAddress(const Peer& peer) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(peer.address);
    address.sin_port = htons(peer.port);
    return address;
}

Socket::Socket(const Interface& interface, std::uint16_t port, bool broadcast)
    : descriptor_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    if (descriptor_ < 0) {
        fail("a socket");
    }
    try {
        if (setsockopt(descriptor_, SOL_SOCKET, SO_BINDTODEVICE, interface.name.c_str(),
                       static_cast<socklen_t>(interface.name.size())) != 0) {
            fail("interface " + interface.name);
        }
        setOption(descriptor_, SOL_SOCKET, SO_BROADCAST, broadcast ? 1 : 0, "broadcasts");
        // What is sent to all does not come to a socket that is bound to one address.
        const sockaddr_in address = socketAddress({broadcast ? INADDR_ANY : interface.address, port});
        if (bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            fail("port " + std::to_string(port));
        }
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

Socket::~Socket() {
    close(descriptor_);
}

std::uint16_t Socket::port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        fail("the port of a socket");
    }
    return ntohs(address.sin_port);
}

std::optional<std::size_t> Socket::receive(std::span<std::byte> buffer, Peer& sender) const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    // MSG_TRUNC: the length of the datagram, even if it is longer than the buffer.
    const ssize_t received =
        recvfrom(descriptor_, buffer.data(), buffer.size(), MSG_TRUNC, reinterpret_cast<sockaddr*>(&address), &size);
    if (received < 0) {
        return std::nullopt;
    }
    sender = {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
    return static_cast<std::size_t>(received);
}

void Socket::send(const Peer& to, std::span<const std::byte> datagram) const {
    const sockaddr_in address = socketAddress(to);
    // An answer that does not get out is asked for again.
    static_cast<void>(sendto(descriptor_, datagram.data(), datagram.size(), 0,
                             reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

}  // namespace quillon::gige
