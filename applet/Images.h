#pragma once

#include <cstddef>

namespace quillon {

inline constexpr std::size_t DesignImageSize = 8'255'782;
inline constexpr std::size_t IconSize = 4'676;

/// The carried design, opaque, once for the process. It lies in writable data: the loader may work in it.
unsigned char* designImage();
/// The applet's icon, a PNG.
unsigned char* icon();

}  // namespace quillon
