#include "gige/DeviceMemory.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <exception>
#include <sstream>

#include "gige/Bytes.h"
#include "gige/StreamPackets.h"
#include "quillon/PublicParameters.h"
#include "quillon/client/Errors.h"

namespace quillon::gige {
namespace {

constexpr std::uint32_t BootstrapEnd = 0x10000;
constexpr std::uint32_t DocumentAddress = 0x100000;

// Bootstrap registers.
constexpr std::uint32_t Version = 0x0;
constexpr std::uint32_t DeviceMode = 0x4;
constexpr std::uint32_t MacHigh = 0x8;
constexpr std::uint32_t MacLow = 0xC;
constexpr std::uint32_t SupportedIpConfiguration = 0x10;
constexpr std::uint32_t CurrentIpConfiguration = 0x14;
constexpr std::uint32_t Address = 0x24;
constexpr std::uint32_t Mask = 0x34;
constexpr std::uint32_t VendorName = 0x48;
constexpr std::uint32_t ModelName = 0x68;
constexpr std::uint32_t DeviceVersion = 0x88;
constexpr std::uint32_t ManufacturerInformation = 0xA8;
constexpr std::uint32_t SerialNumber = 0xD8;
constexpr std::uint32_t UserName = 0xE8;
constexpr std::uint32_t FirstUrl = 0x200;
constexpr std::uint32_t SecondUrl = 0x400;
constexpr std::uint32_t NetworkInterfaces = 0x600;
constexpr std::uint32_t StreamChannels = 0x904;
constexpr std::uint32_t Capabilities = 0x934;
constexpr std::uint32_t Heartbeat = 0x938;
constexpr std::uint32_t TickFrequencyHigh = 0x93C;
constexpr std::uint32_t TickFrequencyLow = 0x940;
constexpr std::uint32_t TimestampControl = 0x944;
constexpr std::uint32_t TimestampHigh = 0x948;
constexpr std::uint32_t TimestampLow = 0x94C;
constexpr std::uint32_t StreamPort = 0xD00;
constexpr std::uint32_t StreamPacketSize = 0xD04;
constexpr std::uint32_t StreamPacketDelay = 0xD08;
constexpr std::uint32_t StreamAddress = 0xD18;
constexpr std::uint32_t StreamSourcePort = 0xD1C;

constexpr std::size_t NameSize = 16;
constexpr std::size_t LongNameSize = 32;
constexpr std::size_t InformationSize = 48;
constexpr std::size_t UrlSize = 512;

constexpr std::uint32_t Version12 = 0x00010002;
constexpr std::uint32_t BigEndianUtf8 = 0x80000001;
constexpr std::uint32_t PersistentIp = 5;  // and link-local
constexpr std::uint32_t AllCapabilities = 0xC0000007;
constexpr std::uint32_t ShortestHeartbeat = 500;    // ms
constexpr std::uint32_t LongestHeartbeat = 600000;  // ms: a viewer under a debugger, but no device is lost for ever
constexpr std::uint32_t UsualHeartbeat = 3000;      // ms
constexpr std::uint32_t LatchTimestamp = 2;
constexpr std::uint32_t FireTestPacket = 0x80000000;
constexpr std::uint32_t DoNotFragment = 0x40000000;
constexpr std::uint32_t SizeMask = 0xFFFF;

constexpr double MicrosecondsPerSecond = 1e6;

/// Values of AcquisitionMode in the document.
enum class AcquisitionMode : std::uint32_t { Continuous, SingleFrame, MultiFrame };

// Of the formats of FG_COL24 the coloured one that viewers can show.
constexpr const PixelFormat& FirstFormat = PixelFormats[5];
static_assert(FirstFormat.name == "RGB8");

std::string hexadecimal(std::size_t number) {
    std::ostringstream text;
    text << std::hex << number;
    return text.str();
}

/// Copies what of `from`, from `offset` on, lies in `to`; zeros behind its end.
void copyPart(std::span<const std::byte> from, std::size_t offset, std::span<std::byte> to) {
    for (std::size_t i = 0; i < to.size(); ++i) {
        to[i] = offset + i < from.size() ? from[offset + i] : std::byte{0};
    }
}

}  // namespace

DeviceMemory::DeviceMemory(client::Applet& applet, client::SoftBoard& board, const Identity& identity,
                           DeviceActions& actions)
    : applet_(applet),
      board_(board),
      actions_(actions),
      description_(describe(applet.xml())),
      chosenFormat_(&FirstFormat),
      bootstrap_(BootstrapEnd) {
    putNumber(Version, Version12);
    putNumber(DeviceMode, BigEndianUtf8);
    putNumber(MacHigh, std::uint32_t{identity.mac[0]} << 8 | identity.mac[1]);
    putNumber(MacLow, std::uint32_t{identity.mac[2]} << 24 | std::uint32_t{identity.mac[3]} << 16 |
                          std::uint32_t{identity.mac[4]} << 8 | identity.mac[5]);
    putNumber(SupportedIpConfiguration, PersistentIp);
    putNumber(CurrentIpConfiguration, PersistentIp);
    putNumber(Address, identity.address);
    putNumber(Mask, identity.mask);
    putText(VendorName, LongNameSize, identity.vendor);
    putText(ModelName, LongNameSize, identity.model);
    putText(DeviceVersion, LongNameSize, identity.version);
    putText(ManufacturerInformation, InformationSize, identity.information);
    putText(SerialNumber, NameSize, identity.serial);
    const std::string url =
        "Local:Quillon.xml;" + hexadecimal(DocumentAddress) + ";" + hexadecimal(description_.document.size());
    putText(FirstUrl, UrlSize, url);
    putText(SecondUrl, UrlSize, url);
    putNumber(NetworkInterfaces, 1);
    putNumber(StreamChannels, 1);
    putNumber(Capabilities, AllCapabilities);
    putNumber(Heartbeat, UsualHeartbeat);
    putNumber(TickFrequencyHigh, 0);
    putNumber(TickFrequencyLow, TicksPerSecond);
    putNumber(StreamPacketSize, StreamSettings().packetSize);
    board.setRedFirst(FirstFormat.redFirst);
}

// ---- Which part an access lies in ----

Status DeviceMemory::read(std::uint32_t address, std::span<std::byte> bytes) {
    const std::uint64_t end = std::uint64_t{address} + bytes.size();
    if (end <= BootstrapEnd) {
        return readBootstrap(address, bytes);
    }
    if (address >= FirstParameterAddress) {
        std::uint32_t offset = 0;
        const ParameterRegister* const reg = parameterAt(address, offset);
        return reg != nullptr ? readParameter(*reg, offset, bytes) : Status::InvalidAddress;
    }
    if (address >= DocumentAddress) {
        return readDocument(address, bytes);
    }
    return readDevice(address, bytes);
}

Status DeviceMemory::write(std::uint32_t address, std::span<const std::byte> bytes) {
    const std::uint64_t end = std::uint64_t{address} + bytes.size();
    if (end <= BootstrapEnd) {
        return writeBootstrap(address, bytes);
    }
    if (address >= FirstParameterAddress) {
        std::uint32_t offset = 0;
        const ParameterRegister* const reg = parameterAt(address, offset);
        return reg != nullptr ? writeParameter(*reg, offset, bytes) : Status::InvalidAddress;
    }
    if (address >= DocumentAddress) {
        return Status::WriteProtected;
    }
    return writeDevice(address, bytes);
}

// ---- Bootstrap registers ----

void DeviceMemory::putText(std::uint32_t address, std::size_t size, const std::string& text) {
    const std::size_t length = std::min(text.size(), size - 1);  // a 0 ends it
    std::fill_n(bootstrap_.begin() + address, size, std::byte{0});
    std::memcpy(bootstrap_.data() + address, text.data(), length);
}

void DeviceMemory::putNumber(std::uint32_t address, std::uint32_t value) {
    put(std::span(bootstrap_).subspan(address), value);
}

std::uint32_t DeviceMemory::numberAt(std::uint32_t address) const {
    return number<std::uint32_t>(std::span(bootstrap_).subspan(address));
}

Status DeviceMemory::readBootstrap(std::uint32_t address, std::span<std::byte> bytes) {
    const std::lock_guard guard(mutex_);
    copyPart(bootstrap_, address, bytes);
    return Status::Success;
}

Status DeviceMemory::writeBootstrap(std::uint32_t address, std::span<const std::byte> bytes) {
    if (address >= UserName && address + bytes.size() <= UserName + NameSize) {
        const std::lock_guard guard(mutex_);
        std::copy(bytes.begin(), bytes.end(), bootstrap_.begin() + address);
        return Status::Success;
    }
    if (bytes.size() != sizeof(std::uint32_t)) {
        return Status::WriteProtected;
    }
    const auto value = number<std::uint32_t>(bytes);
    if (address == StreamPacketSize) {
        return writePacketSize(value);
    }
    if ((address == StreamPort || address == StreamAddress) && value == 0) {
        actions_.stopAcquisition();  // the stream is closed
    }
    const std::lock_guard guard(mutex_);
    switch (address) {
        case Heartbeat:
            putNumber(Heartbeat, std::clamp(value, ShortestHeartbeat, LongestHeartbeat));
            return Status::Success;
        case TimestampControl:
            if ((value & LatchTimestamp) != 0) {
                const auto ticks = static_cast<std::uint64_t>(board_.signalTime() * (TicksPerSecond / 1e6));
                putNumber(TimestampHigh, static_cast<std::uint32_t>(ticks >> 32));
                putNumber(TimestampLow, static_cast<std::uint32_t>(ticks));
            }
            return Status::Success;
        case StreamPort: putNumber(StreamPort, value & SizeMask); return Status::Success;
        case StreamPacketDelay: putNumber(StreamPacketDelay, value); return Status::Success;
        case StreamAddress:
            // Nobody else is sent what the controller asks for.
            if (value != 0 && (!controller_ || value != controller_->address)) {
                return Status::InvalidParameter;
            }
            putNumber(StreamAddress, value);
            return Status::Success;
        default: return Status::WriteProtected;
    }
}

Status DeviceMemory::writePacketSize(std::uint32_t value) {
    constexpr std::uint32_t Step = 4;
    const std::uint32_t size = std::clamp(value & SizeMask, LeastPacketSize, MostPacketSize) / Step * Step;
    {
        const std::lock_guard guard(mutex_);
        putNumber(StreamPacketSize, size | (value & DoNotFragment));
    }
    if ((value & FireTestPacket) != 0 && (value & SizeMask) <= MostPacketSize) {
        actions_.sendTestPacket(value & SizeMask);
    }
    return Status::Success;
}

StreamSettings DeviceMemory::stream() const {
    const std::lock_guard guard(mutex_);
    return {numberAt(StreamAddress), static_cast<std::uint16_t>(numberAt(StreamPort)),
            numberAt(StreamPacketSize) & SizeMask, numberAt(StreamPacketDelay)};
}

std::uint32_t DeviceMemory::heartbeat() const {
    const std::lock_guard guard(mutex_);
    return numberAt(Heartbeat);
}

void DeviceMemory::setStreamPort(std::uint16_t port) {
    const std::lock_guard guard(mutex_);
    putNumber(StreamSourcePort, port);
}

void DeviceMemory::setController(const std::optional<Peer>& controller) {
    const std::lock_guard guard(mutex_);
    controller_ = controller;
    if (!controller) {
        putNumber(StreamPort, 0);
        putNumber(StreamAddress, 0);
        putNumber(StreamPacketSize, StreamSettings().packetSize);
        putNumber(StreamPacketDelay, 0);
        putNumber(Heartbeat, UsualHeartbeat);
        locked_ = 0;
        textParameter_ = 0;
        text_.clear();
    }
}

// ---- The document ----

Status DeviceMemory::readDocument(std::uint32_t address, std::span<std::byte> bytes) const {
    constexpr std::size_t Alignment = 4;
    const std::size_t offset = address - DocumentAddress;
    const std::size_t size = (description_.document.size() + Alignment - 1) / Alignment * Alignment;
    // A last piece may be asked for in the size of all others.
    if (offset >= size) {
        return Status::InvalidAddress;
    }
    copyPart(std::as_bytes(std::span(description_.document)), offset, bytes);
    return Status::Success;
}

// ---- Parameters of the applet ----

const ParameterRegister* DeviceMemory::parameterAt(std::uint32_t address, std::uint32_t& offset) const {
    const std::uint32_t position = (address - FirstParameterAddress) / ParameterStride;
    offset = (address - FirstParameterAddress) % ParameterStride;
    return position < description_.registers.size() ? &description_.registers[position] : nullptr;
}

Status DeviceMemory::readParameter(const ParameterRegister& reg, std::uint32_t offset,
                                   std::span<std::byte> bytes) const {
    if (offset >= MinimumOffset) {
        return readLimit(reg, offset, bytes);
    }
    if (offset + bytes.size() > reg.length) {
        return Status::InvalidAddress;
    }
    try {
        std::vector<std::byte> content(reg.length);
        if (reg.kind == RegisterKind::Real) {
            put(content, std::bit_cast<std::uint64_t>(applet_.readDouble(reg.parameter)));
        } else if (reg.kind == RegisterKind::Text) {
            const std::string text = applet_.readText(reg.parameter);
            std::memcpy(content.data(), text.data(), std::min<std::size_t>(text.size(), reg.length - 1));
        } else if (reg.length == sizeof(std::uint64_t)) {
            put(content, applet_.readUnsigned64(reg.parameter));
        } else {
            put(content, applet_.readUnsigned(reg.parameter));
        }
        copyPart(content, offset, bytes);
        return Status::Success;
    } catch (const client::Error&) {
        return Status::Error;
    }
}

namespace {

/// The limit of a record at an offset of its register, in the bytes of that register; nothing if none is told.
struct LimitBytes {
    std::uint32_t offset;

    template <typename Number>
    std::uint64_t operator()(const client::Range<Number>& range) const {
        const Number number = offset == MinimumOffset   ? range.min
                              : offset == MaximumOffset ? range.max
                                                        : std::max(range.step, Number{1});
        if constexpr (std::floating_point<Number>) {
            return std::bit_cast<std::uint64_t>(static_cast<double>(number));
        } else {
            return static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
        }
    }
    std::uint64_t operator()(const auto& /*other*/) const { return 0; }
};

}  // namespace

Status DeviceMemory::readLimit(const ParameterRegister& reg, std::uint32_t offset, std::span<std::byte> bytes) const {
    if (reg.kind == RegisterKind::Text || offset > IncrementOffset || bytes.size() > sizeof(std::uint64_t) ||
        offset % sizeof(std::uint64_t) != 0) {
        return Status::InvalidAddress;
    }
    const auto record = applet_.record(reg.parameter);
    if (!record) {
        return Status::InvalidAddress;
    }
    std::array<std::byte, sizeof(std::uint64_t)> content{};
    put(content, std::visit(LimitBytes{offset}, record->range));
    copyPart(content, 0, bytes);
    return Status::Success;
}

Status DeviceMemory::writeParameter(const ParameterRegister& reg, std::uint32_t offset,
                                    std::span<const std::byte> bytes) {
    if (offset >= MinimumOffset || !reg.writable) {
        return Status::WriteProtected;
    }
    if (offset + bytes.size() > reg.length) {
        return Status::InvalidAddress;
    }
    if (reg.kind == RegisterKind::Text) {
        return writeText(reg, offset, bytes);
    }
    if (offset != 0 || bytes.size() != reg.length) {
        return Status::InvalidParameter;  // a number is written whole
    }
    if (reg.kind == RegisterKind::Real) {
        return set(reg.parameter, std::bit_cast<double>(number<std::uint64_t>(bytes)));
    }
    if (reg.length == sizeof(std::uint64_t)) {
        return set(reg.parameter, number<std::uint64_t>(bytes));
    }
    const auto value = number<std::uint32_t>(bytes);
    return reg.isSigned ? set(reg.parameter, static_cast<std::int32_t>(value)) : set(reg.parameter, value);
}

/// A text ends with its first 0, whatever comes behind that; it is set when it has ended.
Status DeviceMemory::writeText(const ParameterRegister& reg, std::uint32_t offset, std::span<const std::byte> bytes) {
    if (offset == 0) {
        text_.clear();
        textParameter_ = reg.parameter;
    }
    if (textParameter_ != reg.parameter || offset != text_.size()) {
        return offset == 0 || textParameter_ == reg.parameter ? Status::InvalidParameter : Status::Success;
    }
    text_.insert(text_.end(), bytes.begin(), bytes.end());
    const auto end = std::find(text_.begin(), text_.end(), std::byte{0});
    if (end == text_.end() && text_.size() < reg.length) {
        return Status::Success;
    }
    std::string text;
    for (auto at = text_.begin(); at != end; ++at) {
        text += static_cast<char>(*at);
    }
    textParameter_ = 0;
    text_.clear();
    return set(reg.parameter, text);
}

template <class Call>
Status DeviceMemory::remembering(Call call) {
    try {
        call();
        return Status::Success;
    } catch (const client::CallError& error) {
        refuse(error.code, error.what());
    } catch (const std::exception& error) {
        refuse(QuillonInvalidParameter, error.what());
    }
    return Status::Error;
}

Status DeviceMemory::set(int parameter, const client::Value& value) {
    return remembering([&] { applet_.set(parameter, value); });
}

void DeviceMemory::refuse(int code, const std::string& words) {
    const std::lock_guard guard(mutex_);
    ++refusals_;
    refusalCode_ = code;
    refusal_ = words;
}

std::uint64_t DeviceMemory::refusals() const {
    const std::lock_guard guard(mutex_);
    return refusals_;
}

std::string DeviceMemory::refusal() const {
    const std::lock_guard guard(mutex_);
    return refusal_;
}

// ---- Registers of the device ----

Status DeviceMemory::readDevice(std::uint32_t address, std::span<std::byte> bytes) const {
    const auto text = static_cast<std::uint32_t>(DeviceRegister::Refusal);
    if (address >= text && address + bytes.size() <= text + RefusalLength) {
        const std::string words = refusal().substr(0, RefusalLength - 1);
        copyPart(std::as_bytes(std::span(words)), address - text, bytes);
        return Status::Success;
    }
    try {
        const auto reg = static_cast<DeviceRegister>(address);
        if (const auto value = deviceNumber(reg); value && bytes.size() == sizeof(std::uint32_t)) {
            put(bytes, *value);
            return Status::Success;
        }
        if (const auto value = deviceReal(reg); value && bytes.size() == sizeof(std::uint64_t)) {
            put(bytes, std::bit_cast<std::uint64_t>(*value));
            return Status::Success;
        }
        return Status::InvalidAddress;
    } catch (const client::Error&) {
        return Status::Error;
    }
}

Status DeviceMemory::writeDevice(std::uint32_t address, std::span<const std::byte> bytes) {
    const auto reg = static_cast<DeviceRegister>(address);
    try {
        if (bytes.size() == sizeof(std::uint32_t) && deviceNumber(reg)) {
            return setDeviceNumber(reg, number<std::uint32_t>(bytes));
        }
        if (bytes.size() == sizeof(std::uint64_t) && deviceReal(reg)) {
            return setDeviceReal(reg, std::bit_cast<double>(number<std::uint64_t>(bytes)));
        }
        return Status::InvalidAddress;
    } catch (const client::Error&) {
        return Status::Error;
    }
}

std::optional<std::uint32_t> DeviceMemory::deviceNumber(DeviceRegister reg) const {
    switch (reg) {
        case DeviceRegister::PixelFormat: return pixelFormat().code;
        case DeviceRegister::PayloadSize:
            return static_cast<std::uint32_t>(std::min<std::uint64_t>(payloadSize(), 0xFFFFFFFF));
        case DeviceRegister::AcquisitionMode: return acquisitionMode_;
        case DeviceRegister::AcquisitionStart:
        case DeviceRegister::AcquisitionStop:
        case DeviceRegister::UserSetLoad:
        case DeviceRegister::UserSetSave: return 0;
        case DeviceRegister::AcquisitionFrameCount: return frameCount_;
        case DeviceRegister::ParametersLocked: return locked_;
        case DeviceRegister::TriggerMode: return applet_.readInt(FG_IMGTRIGGERMODE) == FREE_RUN ? 0 : 1;
        case DeviceRegister::ReverseX: return applet_.readUnsigned(FG_VANTAGEPOINT) & 1U;
        case DeviceRegister::ReverseY: return applet_.readUnsigned(FG_VANTAGEPOINT) >> 1U & 1U;
        case DeviceRegister::TestPattern: return simulating() ? applet_.readUnsigned(FG_CAMERASIMULATOR_PATTERN) : 0;
        case DeviceRegister::UserSet: return 1;
        case DeviceRegister::RefusalCode: {
            const std::lock_guard guard(mutex_);
            return static_cast<std::uint32_t>(refusalCode_);
        }
        default: return std::nullopt;
    }
}

std::optional<double> DeviceMemory::deviceReal(DeviceRegister reg) const {
    const double lines = applet_.readUnsigned(FG_HEIGHT);
    switch (reg) {
        case DeviceRegister::LineRate: return lineRate();
        case DeviceRegister::LineRateMinimum: return lineRates().min;
        case DeviceRegister::LineRateMaximum: return lineRates().max;
        case DeviceRegister::FrameRate: return lineRate() / lines;
        case DeviceRegister::FrameRateMinimum: return lineRates().min / lines;
        case DeviceRegister::FrameRateMaximum: return lineRates().max / lines;
        default: return std::nullopt;
    }
}

// ---- Lines and frames a second: of the camera, or of the simulator where that is in its place ----

bool DeviceMemory::simulating() const {
    return applet_.readInt(FG_CAMERASIMULATOR_ENABLE) == FG_CAMERASIMULATOR;
}

double DeviceMemory::lineRate() const {
    return simulating() ? applet_.readDouble(FG_CAMERASIMULATOR_LINERATE)
                        : MicrosecondsPerSecond / applet_.readDouble(FG_LINEPERIODE);
}

client::Range<double> DeviceMemory::lineRates() const {
    const bool ofSimulator = simulating();
    const auto record = applet_.record(ofSimulator ? FG_CAMERASIMULATOR_LINERATE : FG_LINEPERIODE);
    const auto* const range = record ? std::get_if<client::Range<double>>(&record->range) : nullptr;
    if (range == nullptr) {
        throw client::Error("the limits of the line rate are not told");
    }
    return ofSimulator
               ? *range
               : client::Range<double>{MicrosecondsPerSecond / range->max, MicrosecondsPerSecond / range->min, 0.0};
}

Status DeviceMemory::setLineRate(double rate) {
    if (!simulating()) {
        return set(FG_LINEPERIODE, MicrosecondsPerSecond / rate);
    }
    const Status status = set(FG_CAMERASIMULATOR_SELECT_MODE, FG_LINERATE);
    return status == Status::Success ? set(FG_CAMERASIMULATOR_LINERATE, rate) : status;
}

Status DeviceMemory::setDeviceNumber(DeviceRegister reg, std::uint32_t value) {
    switch (reg) {
        case DeviceRegister::PixelFormat: return setPixelFormat(value);
        case DeviceRegister::AcquisitionMode:
            if (value > static_cast<std::uint32_t>(AcquisitionMode::MultiFrame)) {
                return Status::InvalidParameter;
            }
            acquisitionMode_ = value;
            return Status::Success;
        case DeviceRegister::AcquisitionStart: return startAcquisition();
        case DeviceRegister::AcquisitionStop: actions_.stopAcquisition(); return Status::Success;
        case DeviceRegister::AcquisitionFrameCount:
            if (value == 0) {
                return Status::InvalidParameter;
            }
            frameCount_ = value;
            return Status::Success;
        case DeviceRegister::ParametersLocked: locked_ = value; return Status::Success;
        case DeviceRegister::TriggerMode:
            if ((value != 0) == (deviceNumber(reg) != 0U)) {
                return Status::Success;  // one of the triggered modes stays
            }
            return set(FG_IMGTRIGGERMODE, value == 0 ? FREE_RUN : ASYNC_TRIGGER);
        case DeviceRegister::ReverseX: return setReverse(true, value != 0);
        case DeviceRegister::ReverseY: return setReverse(false, value != 0);
        case DeviceRegister::TestPattern: {
            const Status status =
                value != 0 ? set(FG_CAMERASIMULATOR_PATTERN, static_cast<std::int32_t>(value)) : Status::Success;
            return status == Status::Success
                       ? set(FG_CAMERASIMULATOR_ENABLE, value != 0 ? FG_CAMERASIMULATOR : FG_CAMPORT)
                       : status;
        }
        case DeviceRegister::UserSet: return value == 1 ? Status::Success : Status::InvalidParameter;
        case DeviceRegister::UserSetLoad: return useUserSet(true);
        case DeviceRegister::UserSetSave: return useUserSet(false);
        default: return Status::WriteProtected;
    }
}

std::int64_t DeviceMemory::framesWanted() const {
    switch (static_cast<AcquisitionMode>(acquisitionMode_)) {
        case AcquisitionMode::SingleFrame: return 1;
        case AcquisitionMode::MultiFrame: return frameCount_;
        default: return -1;
    }
}

Status DeviceMemory::startAcquisition() {
    const std::uint64_t size = payloadSize();
    if (packetsOf(size, stream().packetSize) > MostPacketNumber + 1) {
        refuse(QuillonInvalidParameter, "a frame of " + std::to_string(size) + " bytes takes more than " +
                                            std::to_string(MostPacketNumber + 1) + " packets");
        return Status::Error;
    }
    Status status = Status::Error;
    const Status called = remembering([&] { status = actions_.startAcquisition(framesWanted()); });
    return called == Status::Success ? status : called;
}

Status DeviceMemory::setDeviceReal(DeviceRegister reg, double value) {
    switch (reg) {
        case DeviceRegister::LineRate: return setLineRate(value);
        case DeviceRegister::FrameRate: return setLineRate(value * applet_.readUnsigned(FG_HEIGHT));
        default: return Status::WriteProtected;
    }
}

Status DeviceMemory::setPixelFormat(std::uint32_t code) {
    const PixelFormat* const format = pixelFormatOf(code);
    if (format == nullptr) {
        return Status::InvalidParameter;
    }
    if (actions_.acquiring()) {
        return Status::Busy;
    }
    const Status status = set(FG_FORMAT, format->format);
    if (status == Status::Success) {
        board_.setRedFirst(format->redFirst);
        chosenFormat_ = format;
    }
    return status;
}

const PixelFormat& DeviceMemory::pixelFormat() const {
    const int format = applet_.readInt(FG_FORMAT);
    return formatThatFits(*chosenFormat_.load(), [format](const PixelFormat& it) { return it.format == format; });
}

Status DeviceMemory::setReverse(bool horizontal, bool reverse) {
    const std::uint32_t bit = horizontal ? 1 : 2;
    const std::uint32_t now = applet_.readUnsigned(FG_VANTAGEPOINT);
    return set(FG_VANTAGEPOINT, reverse ? now | bit : now & ~bit);
}

Status DeviceMemory::useUserSet(bool load) {
    const std::string file = actions_.userSet();
    if (file.empty()) {
        refuse(QuillonInvalidParameter, "the device was started without a configuration file");
        return Status::Error;
    }
    const int code = load ? applet_.loadConfig(file) : applet_.saveConfig(file);
    if (code != 0) {
        refuse(code, file + ": " + client::describeCode(code));
    }
    return code == 0 ? Status::Success : Status::Error;
}

std::uint64_t DeviceMemory::payloadSize() const {
    constexpr unsigned BitsPerByte = 8;
    constexpr unsigned Colours = 3;
    const PixelFormat& format = pixelFormat();
    const std::uint64_t pixels = std::uint64_t{applet_.readUnsigned(FG_WIDTH)} * applet_.readUnsigned(FG_HEIGHT);
    const unsigned bits = format.packed ? format.bits : 2 * BitsPerByte;
    return pixels * bits * (format.grey ? 1 : Colours) / BitsPerByte;
}

}  // namespace quillon::gige
