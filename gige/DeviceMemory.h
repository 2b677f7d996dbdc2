/// @file
/// All that a device lets be read and written: the bootstrap registers of the protocol, the document, the applet's
/// parameters, and the registers behind the standard features.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "gige/ControlChannel.h"
#include "gige/Description.h"
#include "gige/PixelFormats.h"
#include "quillon/client/Applet.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::gige {

/// Who the device is.
struct Identity {
    std::string vendor;
    std::string model;
    std::string version;
    std::string information;
    std::string serial;
    std::uint32_t address = 0;             ///< of the network
    std::uint32_t mask = 0;                ///< of the network
    std::array<std::uint8_t, 6> mac = {};  ///< of the interface
};

/// Where and how the stream goes.
struct StreamSettings {
    std::uint32_t address = 0;
    std::uint16_t port = 0;           ///< 0: nowhere
    std::uint32_t packetSize = 1400;  ///< with the heads of IP and UDP
    std::uint32_t delay = 0;          ///< ticks between packets
};

inline constexpr std::uint32_t LeastPacketSize = 220;
inline constexpr std::uint32_t MostPacketSize = 9000;
inline constexpr std::uint32_t TicksPerSecond = 125'000'000;

/// What writes set off.
class DeviceActions {
public:
    DeviceActions() = default;
    DeviceActions(const DeviceActions&) = delete;
    DeviceActions& operator=(const DeviceActions&) = delete;
    virtual ~DeviceActions() = default;

    /// -1: without end.
    virtual Status startAcquisition(std::int64_t frames) = 0;
    virtual void stopAcquisition() = 0;
    virtual bool acquiring() const = 0;
    /// One packet of that size, heads included, goes to where the stream goes.
    virtual void sendTestPacket(std::uint32_t size) = 0;
    /// The file of the user set; empty if there is none.
    virtual std::string userSet() const = 0;
};

class DeviceMemory final : public AddressSpace {
public:
    DeviceMemory(client::Applet& applet, client::SoftBoard& board, const Identity& identity, DeviceActions& actions);

    Status read(std::uint32_t address, std::span<std::byte> bytes) override;
    Status write(std::uint32_t address, std::span<const std::byte> bytes) override;

    const std::string& document() const { return description_.document; }
    const std::vector<ParameterRegister>& parameters() const { return description_.registers; }
    StreamSettings stream() const;
    std::uint32_t heartbeat() const;  ///< milliseconds
    /// The port that the stream comes from.
    void setStreamPort(std::uint16_t port);
    /// Only to there may a stream go; nothing: nowhere, it is closed, and the next controller finds none of its
    /// settings.
    void setController(const std::optional<Peer>& controller);
    /// The one that was set, as long as FG_FORMAT is its own; otherwise the first that FG_FORMAT is.
    const PixelFormat& pixelFormat() const;
    /// The bytes of a frame in the format of the stream, as the parameters are now.
    std::uint64_t payloadSize() const;
    /// How many values the applet has refused, and what it said of the last one.
    std::uint64_t refusals() const;
    std::string refusal() const;

private:
    Status readBootstrap(std::uint32_t address, std::span<std::byte> bytes);
    Status writeBootstrap(std::uint32_t address, std::span<const std::byte> bytes);
    Status writePacketSize(std::uint32_t value);
    Status readDocument(std::uint32_t address, std::span<std::byte> bytes) const;
    Status readDevice(std::uint32_t address, std::span<std::byte> bytes) const;
    Status writeDevice(std::uint32_t address, std::span<const std::byte> bytes);
    std::optional<std::uint32_t> deviceNumber(DeviceRegister reg) const;
    std::optional<double> deviceReal(DeviceRegister reg) const;
    Status setDeviceNumber(DeviceRegister reg, std::uint32_t value);
    bool simulating() const;
    double lineRate() const;
    client::Range<double> lineRates() const;
    Status setLineRate(double rate);
    Status setDeviceReal(DeviceRegister reg, double value);

    const ParameterRegister* parameterAt(std::uint32_t address, std::uint32_t& offset) const;
    Status readParameter(const ParameterRegister& reg, std::uint32_t offset, std::span<std::byte> bytes) const;
    Status readLimit(const ParameterRegister& reg, std::uint32_t offset, std::span<std::byte> bytes) const;
    Status writeParameter(const ParameterRegister& reg, std::uint32_t offset, std::span<const std::byte> bytes);
    Status writeText(const ParameterRegister& reg, std::uint32_t offset, std::span<const std::byte> bytes);
    /// Sets a parameter; what is refused is remembered.
    Status set(int parameter, const client::Value& value);
    template <class Call>
    Status remembering(Call call);
    void refuse(int code, const std::string& words);

    /// Of the next acquisition; -1: without end.
    std::int64_t framesWanted() const;
    Status startAcquisition();
    Status setPixelFormat(std::uint32_t code);
    Status setReverse(bool horizontal, bool reverse);
    Status useUserSet(bool load);

    void putText(std::uint32_t address, std::size_t size, const std::string& text);
    void putNumber(std::uint32_t address, std::uint32_t value);
    std::uint32_t numberAt(std::uint32_t address) const;

    client::Applet& applet_;
    client::SoftBoard& board_;
    DeviceActions& actions_;
    Description description_;
    std::atomic<const PixelFormat*> chosenFormat_;
    std::optional<Peer> controller_;

    mutable std::mutex mutex_;
    std::vector<std::byte> bootstrap_;
    std::uint64_t refusals_ = 0;
    int refusalCode_ = 0;
    std::string refusal_;

    std::uint32_t acquisitionMode_ = 0;
    std::uint32_t frameCount_ = 1;
    std::uint32_t locked_ = 0;
    std::vector<std::byte> text_;  ///< of the text that comes piece by piece
    int textParameter_ = 0;
};

}  // namespace quillon::gige
