#include "gige/ControlPackets.h"

#include "gige/Bytes.h"

namespace quillon::gige {
namespace {

constexpr std::byte Key{0x42};
constexpr unsigned AcknowledgeFlag = 1;
constexpr std::size_t HeadSize = 8;

std::vector<std::byte> head(Status status, std::uint16_t command, std::size_t length, std::uint16_t id) {
    std::vector<std::byte> packet;
    packet.reserve(HeadSize + length);
    append(packet, static_cast<std::uint16_t>(status));
    append(packet, command);
    append(packet, static_cast<std::uint16_t>(length));
    append(packet, id);
    return packet;
}

}  // namespace

std::optional<Request> parseRequest(std::span<const std::byte> datagram) {
    if (datagram.size() < HeadSize || datagram.size() > HeadSize + MostData || datagram[0] != Key) {
        return std::nullopt;
    }
    Request request;
    request.acknowledge = (std::to_integer<unsigned>(datagram[1]) & AcknowledgeFlag) != 0;
    request.command = number<std::uint16_t>(datagram.subspan(2));
    request.id = number<std::uint16_t>(datagram.subspan(6));
    request.data = datagram.subspan(HeadSize);
    if (number<std::uint16_t>(datagram.subspan(4)) != request.data.size() || request.id == 0) {
        return std::nullopt;
    }
    return request;
}

std::vector<std::byte> acknowledge(const Request& request, Status status, std::span<const std::byte> data) {
    const std::span<const std::byte> carried = status == Status::Success ? data : std::span<const std::byte>();
    std::vector<std::byte> packet =
        head(status, static_cast<std::uint16_t>(request.command + 1), carried.size(), request.id);
    packet.insert(packet.end(), carried.begin(), carried.end());
    return packet;
}

std::vector<std::byte> pending(const Request& request, std::uint16_t milliseconds) {
    std::vector<std::byte> packet =
        head(Status::Success, static_cast<std::uint16_t>(Command::Pending), 2 * sizeof milliseconds, request.id);
    append(packet, std::uint16_t{0});
    append(packet, milliseconds);
    return packet;
}

std::optional<ResendRequest> parseResend(std::span<const std::byte> data) {
    constexpr std::size_t Size = 12;
    constexpr std::uint32_t PacketNumber = 0xFFFFFF;
    if (data.size() < Size) {
        return std::nullopt;
    }
    return ResendRequest{number<std::uint16_t>(data.subspan(2)), number<std::uint32_t>(data.subspan(4)) & PacketNumber,
                         number<std::uint32_t>(data.subspan(8)) & PacketNumber};
}

}  // namespace quillon::gige
