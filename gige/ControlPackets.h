/// @file
/// The control protocol (GVCP) as bytes: requests in, acknowledges out. All numbers are big-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillon::gige {

inline constexpr std::uint16_t ControlPort = 3956;

enum class Command : std::uint16_t {
    Discovery = 0x0002,
    PacketResend = 0x0040,
    ReadRegister = 0x0080,
    WriteRegister = 0x0082,
    ReadMemory = 0x0084,
    WriteMemory = 0x0086,
    Pending = 0x0089,
};

enum class Status : std::uint16_t {
    Success = 0x0000,
    NotImplemented = 0x8001,
    InvalidParameter = 0x8002,
    InvalidAddress = 0x8003,
    WriteProtected = 0x8004,
    BadAlignment = 0x8005,
    AccessDenied = 0x8006,
    Busy = 0x8007,
    Error = 0x8FFF,  ///< the applet refuses a value
};

/// The most that a request or an acknowledge carries behind its head of eight bytes.
inline constexpr std::size_t MostData = 540;
inline constexpr std::size_t MostMemory = 536;  ///< bytes of memory in one of them

struct Request {
    std::uint16_t command = 0;  ///< a Command, if it is known
    bool acknowledge = false;   ///< the sender wants one
    std::uint16_t id = 0;
    std::span<const std::byte> data;
};

/// The request that a datagram carries; nothing if it is none: another key, a length that is not that of the datagram,
/// id 0.
std::optional<Request> parseRequest(std::span<const std::byte> datagram);

/// The acknowledge of a request. Without success there is no data.
std::vector<std::byte> acknowledge(const Request& request, Status status, std::span<const std::byte> data = {});
/// Tells the sender of a request that its acknowledge takes so many milliseconds.
std::vector<std::byte> pending(const Request& request, std::uint16_t milliseconds);

/// Registers that a PacketResend asks for.
struct ResendRequest {
    std::uint16_t frame = 0;
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    bool operator==(const ResendRequest&) const = default;
};
std::optional<ResendRequest> parseResend(std::span<const std::byte> data);

}  // namespace quillon::gige
