/// @file
/// What this applet is called, and the numbers that it answers for itself.
#pragma once

#include <cstdint>

namespace quillon {

inline constexpr const char* VendorName = "Veltrix";
inline constexpr const char* AppletName = "Quillon";
inline constexpr const char* WrapperVersion = "2.4";
inline constexpr const char* DesignFileName = "Quillon.tav";
inline constexpr int BoardType = 1874;  ///< the board that the design is for, as the loader and Info know it
inline constexpr std::int32_t NumberOfProcesses = 1;
inline constexpr std::int32_t AppletVersion = 2;
inline constexpr std::int32_t AppletRevision = 1;
inline constexpr std::int32_t PixelDepth = 16;  ///< bits per component inside the design
inline constexpr std::int32_t LutInBits = 14;
inline constexpr std::int32_t LutOutBits = 16;

}  // namespace quillon
