#include "gige/Device.h"

#include <poll.h>

#include <array>
#include <chrono>

namespace quillon::gige {
namespace {

Identity identityOf(const Interface& interface, const DeviceOptions& options, const client::Applet& applet) {
    Identity identity;
    identity.vendor = "Quillon";
    identity.model = "Quillon";
    identity.version =
        std::to_string(applet.readInt(FG_APPLET_VERSION)) + "." + std::to_string(applet.readInt(FG_APPLET_REVISION));
    identity.information = "applet on a software board";
    identity.serial = options.serial;
    identity.address = interface.address;
    identity.mask = interface.mask;
    identity.mac = interface.mac;
    return identity;
}

}  // namespace

Device::Device(client::Applet& applet, client::SoftBoard& board, const DeviceOptions& options)
    : options_(options),
      interface_(findInterface(options.interface)),
      control_(interface_, ControlPort, true),
      streamer_(applet, board, interface_, options.bytesPerSecond),
      memory_(applet, board, identityOf(interface_, options, applet), *this),
      channel_(memory_, *this),
      pending_([this](const Peer& to, std::span<const std::byte> packet) { control_.send(to, packet); }) {
    memory_.setStreamPort(streamer_.port());
}

Device::~Device() = default;

void Device::run(const std::function<bool()>& goesOn) {
    constexpr int Patience = 100;  // ms
    while (goesOn()) {
        pollfd waiting{control_.descriptor(), POLLIN, 0};
        if (poll(&waiting, 1, Patience) > 0) {
            receive();
        }
        channel_.expire(std::chrono::milliseconds(memory_.heartbeat()));
    }
    streamer_.stop();
}

/// A few datagrams at most: whoever sends without end does not keep the device from looking at the time.
void Device::receive() {
    constexpr int MostAtOnce = 32;
    std::array<std::byte, 2048> buffer;  // longer than any request
    Peer sender;
    for (int i = 0; i < MostAtOnce; ++i) {
        const auto size = control_.receive(buffer, sender);
        if (!size) {
            return;
        }
        if (*size > buffer.size() || !isNear(sender, interface_)) {
            continue;
        }
        const std::span<const std::byte> datagram = std::span(buffer).first(*size);
        pending_.begin(sender, datagram);
        const auto answer = channel_.receive(sender, datagram);
        pending_.end();
        if (answer) {
            control_.send(sender, *answer);
        }
    }
}

/// Controllers ask from the socket of their stream, or from that of their control channel.
void Device::resend(const Peer& sender, const ResendRequest& request) {
    const StreamSettings stream = memory_.stream();
    if (channel_.controller() == sender || Peer{stream.address, stream.port} == sender) {
        streamer_.resend(request);
    }
}

void Device::controllerChanged(const std::optional<Peer>& controller) {
    streamer_.stop();
    memory_.setController(controller);
    const std::lock_guard guard(mutex_);
    controller_ = controller;
}

Status Device::startAcquisition(std::int64_t frames) {
    const StreamSettings settings = memory_.stream();
    if (settings.port == 0 || settings.address == 0) {
        return Status::Error;
    }
    streamer_.start(frames, memory_.pixelFormat(), settings);
    return Status::Success;
}

void Device::sendTestPacket(std::uint32_t size) {
    streamer_.sendTestPacket(memory_.stream(), size);
}

DeviceState Device::state() const {
    DeviceState state;
    {
        const std::lock_guard guard(mutex_);
        state.controller = controller_;
    }
    state.streaming = streamer_.running();
    state.stream = streamer_.statistics();
    state.refusals = memory_.refusals();
    state.refusal = memory_.refusal();
    return state;
}

}  // namespace quillon::gige
