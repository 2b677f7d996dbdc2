/// @file
/// The stream protocol (GVSP) as bytes: a frame as leader, payload and trailer. All numbers are big-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quillon::gige {

/// What the leader and the trailer of a frame tell.
struct StreamFrame {
    std::uint16_t id = 1;         ///< 1 to 65535
    std::uint64_t timestamp = 0;  ///< ticks
    std::uint32_t pixelFormat = 0;
    std::uint32_t width = 0;
    std::uint32_t lines = 0;  ///< that are really there
    std::uint32_t xOffset = 0;
    std::uint32_t yOffset = 0;
};

/// Heads of IP and UDP, which a packet size includes.
inline constexpr std::size_t NetworkHeads = 28;
inline constexpr std::size_t StreamHeadSize = 8;
inline constexpr std::size_t LeaderSize = StreamHeadSize + 36;
inline constexpr std::size_t TrailerSize = StreamHeadSize + 8;
inline constexpr std::size_t MostPacketNumber = 0xFFFFFF;

/// How many bytes of a frame a packet of that size carries.
constexpr std::size_t payloadOf(std::size_t packetSize) {
    return packetSize - NetworkHeads - StreamHeadSize;
}

/// How many packets a frame takes: leader, payload and trailer.
constexpr std::size_t packetsOf(std::size_t bytes, std::size_t packetSize) {
    return 2 + (bytes + payloadOf(packetSize) - 1) / payloadOf(packetSize);
}

/// The packets of a frame have the numbers 0 (leader), 1 and so on (payload), and the last (trailer).
std::array<std::byte, LeaderSize> leader(const StreamFrame& frame);
std::array<std::byte, TrailerSize> trailer(const StreamFrame& frame, std::uint32_t packet);
/// The head that stands in front of bytes of a frame.
std::array<std::byte, StreamHeadSize> payloadHead(const StreamFrame& frame, std::uint32_t packet);

}  // namespace quillon::gige
