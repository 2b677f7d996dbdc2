#include "gige/StreamPackets.h"

#include "gige/Bytes.h"

namespace quillon::gige {
namespace {

constexpr std::uint8_t Leader = 1;
constexpr std::uint8_t Trailer = 2;
constexpr std::uint8_t Payload = 3;
constexpr std::uint16_t ImagePayload = 1;
constexpr std::uint16_t Success = 0;

void putHead(std::span<std::byte> packet, std::uint16_t frame, std::uint8_t format, std::uint32_t number) {
    put(packet, Success);
    put(packet.subspan(2), frame);
    put(packet.subspan(4), std::uint32_t{format} << 24 | (number & std::uint32_t{MostPacketNumber}));
}

}  // namespace

std::array<std::byte, LeaderSize> leader(const StreamFrame& frame) {
    std::array<std::byte, LeaderSize> packet{};
    putHead(packet, frame.id, Leader, 0);
    const std::span<std::byte> data = std::span(packet).subspan(StreamHeadSize);
    put(data.subspan(2), ImagePayload);
    put(data.subspan(4), frame.timestamp);
    put(data.subspan(12), frame.pixelFormat);
    put(data.subspan(16), frame.width);
    put(data.subspan(20), frame.lines);
    put(data.subspan(24), frame.xOffset);
    put(data.subspan(28), frame.yOffset);
    return packet;
}

std::array<std::byte, TrailerSize> trailer(const StreamFrame& frame, std::uint32_t packet) {
    std::array<std::byte, TrailerSize> bytes{};
    putHead(bytes, frame.id, Trailer, packet);
    put(std::span(bytes).subspan(StreamHeadSize + 2), ImagePayload);
    put(std::span(bytes).subspan(StreamHeadSize + 4), frame.lines);
    return bytes;
}

std::array<std::byte, StreamHeadSize> payloadHead(const StreamFrame& frame, std::uint32_t packet) {
    std::array<std::byte, StreamHeadSize> head{};
    putHead(head, frame.id, Payload, packet);
    return head;
}

}  // namespace quillon::gige
