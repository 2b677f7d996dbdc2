#include "gige/ControlChannel.h"

#include <algorithm>
#include <array>

#include "gige/Bytes.h"

namespace quillon::gige {
namespace {

constexpr std::uint32_t ExclusivePrivilege = 1;
constexpr std::uint32_t ControlPrivilege = 2;
constexpr std::size_t RegisterSize = 4;

bool isWrite(const Request& request) {
    const auto command = static_cast<Command>(request.command);
    return command == Command::WriteRegister || command == Command::WriteMemory;
}

}  // namespace

std::string inWords(const Peer& peer) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += std::to_string(peer.address >> shift & 0xFF) + (shift != 0 ? "." : ":");
    }
    return text + std::to_string(peer.port);
}

std::optional<std::vector<std::byte>> ControlChannel::receive(const Peer& sender, std::span<const std::byte> datagram) {
    const std::optional<Request> request = parseRequest(datagram);
    if (!request) {
        return std::nullopt;
    }
    if (request->command == static_cast<std::uint16_t>(Command::PacketResend)) {
        if (isController(sender)) {
            lastHeard_ = clock_();
        }
        const auto resend = parseResend(request->data);
        if (resend && controller_ && controller_->address == sender.address) {
            listener_.resend(sender, *resend);
        }
        return std::nullopt;
    }
    const bool again = isController(sender) && !lastAnswer_.empty() && std::ranges::equal(datagram, lastRequest_);
    std::vector<std::byte> answered = again ? lastAnswer_ : acknowledged(sender, *request);
    if (isController(sender)) {
        // What takes long does not make its sender silent.
        lastHeard_ = clock_();
        lastRequest_.assign(datagram.begin(), datagram.end());
        lastAnswer_ = isWrite(*request) ? answered : std::vector<std::byte>();
    }
    return request->acknowledge ? std::optional(std::move(answered)) : std::nullopt;
}

void ControlChannel::expire(std::chrono::milliseconds heartbeat) {
    if (controller_ && clock_() - lastHeard_ > heartbeat) {
        controller_.reset();
        privilege_ = 0;
        listener_.controllerChanged(controller_);
    }
}

std::vector<std::byte> ControlChannel::acknowledged(const Peer& sender, const Request& request) {
    const Answer answered = answer(sender, request);
    return acknowledge(request, answered.status, answered.data);
}

ControlChannel::Answer ControlChannel::answer(const Peer& sender, const Request& request) {
    switch (static_cast<Command>(request.command)) {
        case Command::Discovery: return discover();
        case Command::ReadRegister: return readRegisters(sender, request);
        case Command::WriteRegister: return writeRegisters(sender, request);
        case Command::ReadMemory: return readMemory(sender, request);
        case Command::WriteMemory: return writeMemory(sender, request);
        default: return {Status::NotImplemented, {}};
    }
}

ControlChannel::Answer ControlChannel::discover() {
    Answer result;
    result.data.resize(DiscoverySize);
    result.status = memory_.read(0, result.data);
    return result;
}

bool ControlChannel::mayRead(const Peer& sender) const {
    return isController(sender) || (privilege_ & ExclusivePrivilege) == 0;
}

// ---- Registers ----

ControlChannel::Answer ControlChannel::readRegisters(const Peer& sender, const Request& request) {
    if (request.data.empty() || request.data.size() % RegisterSize != 0) {
        return {Status::InvalidParameter, {}};
    }
    Answer result;
    result.data.resize(request.data.size());
    for (std::size_t at = 0; at < request.data.size() && result.status == Status::Success; at += RegisterSize) {
        result.status = readRegister(sender, number<std::uint32_t>(request.data.subspan(at)),
                                     std::span(result.data).subspan(at, RegisterSize));
    }
    return result;
}

Status ControlChannel::readRegister(const Peer& sender, std::uint32_t address, std::span<std::byte> bytes) {
    if (address % RegisterSize != 0) {
        return Status::BadAlignment;
    }
    if (address == PrivilegeAddress) {
        // Whoever asks may know whether the device is taken.
        put(bytes, privilege_);
        return Status::Success;
    }
    return mayRead(sender) ? memory_.read(address, bytes) : Status::AccessDenied;
}

/// The writes before the one that fails are done; the acknowledge of a success tells how many.
ControlChannel::Answer ControlChannel::writeRegisters(const Peer& sender, const Request& request) {
    constexpr std::size_t PairSize = 2 * RegisterSize;
    if (request.data.empty() || request.data.size() % PairSize != 0) {
        return {Status::InvalidParameter, {}};
    }
    std::uint32_t written = 0;
    for (std::size_t at = 0; at < request.data.size(); at += PairSize) {
        const Status status = writeRegister(sender, number<std::uint32_t>(request.data.subspan(at)),
                                            request.data.subspan(at + RegisterSize, RegisterSize));
        if (status != Status::Success) {
            return {status, {}};
        }
        ++written;
    }
    Answer result;
    append(result.data, written);
    return result;
}

Status ControlChannel::writeRegister(const Peer& sender, std::uint32_t address, std::span<const std::byte> bytes) {
    if (address % RegisterSize != 0) {
        return Status::BadAlignment;
    }
    if (address == PrivilegeAddress) {
        return changePrivilege(sender, number<std::uint32_t>(bytes));
    }
    return isController(sender) ? memory_.write(address, bytes) : Status::AccessDenied;
}

Status ControlChannel::changePrivilege(const Peer& sender, std::uint32_t privilege) {
    if (controller_ && !isController(sender)) {
        return Status::AccessDenied;
    }
    const std::optional<Peer> before = controller_;
    privilege_ = privilege & (ExclusivePrivilege | ControlPrivilege);
    controller_ = privilege_ != 0 ? std::optional(sender) : std::nullopt;
    if (controller_ != before) {
        listener_.controllerChanged(controller_);
    }
    return Status::Success;
}

// ---- Memory ----

ControlChannel::Answer ControlChannel::readMemory(const Peer& sender, const Request& request) {
    constexpr std::size_t Size = 8;
    if (request.data.size() != Size) {
        return {Status::InvalidParameter, {}};
    }
    const auto address = number<std::uint32_t>(request.data);
    const std::size_t size = number<std::uint16_t>(request.data.subspan(6));
    if (size == 0 || size > MostMemory || size % RegisterSize != 0) {
        return {Status::InvalidParameter, {}};
    }
    if (address % RegisterSize != 0) {
        return {Status::BadAlignment, {}};
    }
    Answer result;
    append(result.data, address);
    result.data.resize(RegisterSize + size);
    const std::span<std::byte> bytes = std::span(result.data).subspan(RegisterSize);
    if (address == PrivilegeAddress && size == RegisterSize) {
        result.status = readRegister(sender, address, bytes);
        return result;
    }
    result.status = mayRead(sender) ? memory_.read(address, bytes) : Status::AccessDenied;
    if (address <= PrivilegeAddress && PrivilegeAddress - address < size) {
        put(bytes.subspan(PrivilegeAddress - address), privilege_);
    }
    return result;
}

ControlChannel::Answer ControlChannel::writeMemory(const Peer& sender, const Request& request) {
    if (request.data.size() <= RegisterSize) {
        return {Status::InvalidParameter, {}};
    }
    const auto address = number<std::uint32_t>(request.data);
    const std::span<const std::byte> bytes = request.data.subspan(RegisterSize);
    if (bytes.size() % RegisterSize != 0) {
        return {Status::InvalidParameter, {}};
    }
    if (address % RegisterSize != 0) {
        return {Status::BadAlignment, {}};
    }
    Answer result;
    const bool isPrivilege = address == PrivilegeAddress && bytes.size() == RegisterSize;
    result.status = isPrivilege            ? writeRegister(sender, address, bytes)
                    : isController(sender) ? memory_.write(address, bytes)
                                           : Status::AccessDenied;
    append(result.data, std::uint16_t{0});
    append(result.data, static_cast<std::uint16_t>(bytes.size()));
    return result;
}

}  // namespace quillon::gige
