/// @file
/// The GenApi document that a device serves, made from the applet's own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::gige {

/// Where the registers of the applet's parameters begin, and how far they are apart. Behind each of them lie the
/// limits that hold at the moment.
inline constexpr std::uint32_t FirstParameterAddress = 0x10000000;
inline constexpr std::uint32_t ParameterStride = 0x2000;
inline constexpr std::uint32_t MinimumOffset = 0x1000;
inline constexpr std::uint32_t MaximumOffset = 0x1008;
inline constexpr std::uint32_t IncrementOffset = 0x1010;

/// What lies in the register of a parameter.
enum class RegisterKind {
    Integer,  ///< 4 or 8 bytes
    Real,     ///< a double
    Text,     ///< characters up to the first 0
};

/// A register that stands for a parameter of the applet.
struct ParameterRegister {
    std::uint32_t address = 0;
    int parameter = 0;  ///< its id
    std::string name;   ///< of the parameter
    RegisterKind kind = RegisterKind::Integer;
    std::uint32_t length = 4;  ///< bytes
    bool isSigned = false;
    bool writable = false;
};

/// What the device has beside the parameters. Each is a register of 4 bytes, a Real of 8, a Text of 64.
enum class DeviceRegister : std::uint32_t {
    PixelFormat = 0x20000,
    PayloadSize = 0x20010,
    AcquisitionMode = 0x20020,
    AcquisitionStart = 0x20030,
    AcquisitionStop = 0x20040,
    AcquisitionFrameCount = 0x20050,
    ParametersLocked = 0x20060,
    TriggerMode = 0x20070,
    ReverseX = 0x20080,
    ReverseY = 0x20090,
    TestPattern = 0x200A0,
    LineRate = 0x200B0,  ///< a Real, and so are those with limits
    FrameRate = 0x200C0,
    UserSet = 0x200D0,
    UserSetLoad = 0x200E0,
    UserSetSave = 0x200F0,
    RefusalCode = 0x20100,
    LineRateMinimum = 0x20110,
    LineRateMaximum = 0x20120,
    FrameRateMinimum = 0x20130,
    FrameRateMaximum = 0x20140,
    Refusal = 0x20200,  ///< a Text
};
inline constexpr std::uint32_t RefusalLength = 512;

struct Description {
    std::string document;
    std::vector<ParameterRegister> registers;  ///< by rising address
};

/// Makes the document of a device from that of the applet (see Applet::xml), whose features all stay under their names:
/// - each register gets an address of its own, FirstParameterAddress and so on, big-endian numbers and the port Device;
///   it may be written if the parameter ever can, whatever the present mode says, and is never cached;
/// - limits are read from registers behind it, so that they are those of the moment;
/// - in front come the categories of the standard feature names, which point at the applet's nodes or at registers of
///   the device.
///
/// Throws std::runtime_error if it is no document of registers.
Description describe(const std::string& document);

}  // namespace quillon::gige
