/// @file
/// The applet as a GigE Vision device: viewers find it, set its parameters and receive the frames of its board.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "gige/ControlChannel.h"
#include "gige/DeviceMemory.h"
#include "gige/PendingTeller.h"
#include "gige/Sockets.h"
#include "gige/Streamer.h"

namespace quillon::gige {

struct DeviceOptions {
    std::string interface = "lo";
    std::string serial = "QUILLON-0";
    std::string userSet;            ///< the file that UserSetLoad and UserSetSave use; empty: none
    double bytesPerSecond = 400e6;  ///< of the stream, at most
};

/// What a device is doing.
struct DeviceState {
    std::optional<Peer> controller;
    bool streaming = false;
    StreamStatistics stream;
    std::uint64_t refusals = 0;  ///< values that the applet has refused
    std::string refusal;         ///< the last one, with the applet's code
};

/// Applet and board must outlive it. Other threads may use them at the same time.
class Device final : private ControlListener, private DeviceActions {
public:
    /// Throws std::runtime_error if there is no such interface, or its port is taken.
    Device(client::Applet& applet, client::SoftBoard& board, const DeviceOptions& options);
    ~Device() override;

    const Interface& interface() const { return interface_; }
    const std::string& serial() const { return options_.serial; }
    const std::string& document() const { return memory_.document(); }

    /// Serves, until `goesOn` says no; it is asked several times a second.
    void run(const std::function<bool()>& goesOn);
    DeviceState state() const;

private:
    void receive();

    // ControlListener
    void controllerChanged(const std::optional<Peer>& controller) override;
    void resend(const Peer& sender, const ResendRequest& request) override;

    // DeviceActions
    Status startAcquisition(std::int64_t frames) override;
    void stopAcquisition() override { streamer_.stop(); }
    bool acquiring() const override { return streamer_.running(); }
    void sendTestPacket(std::uint32_t size) override;
    std::string userSet() const override { return options_.userSet; }

    DeviceOptions options_;
    Interface interface_;
    Socket control_;
    Streamer streamer_;
    DeviceMemory memory_;
    ControlChannel channel_;
    PendingTeller pending_;
    mutable std::mutex mutex_;
    std::optional<Peer> controller_;
};

}  // namespace quillon::gige
