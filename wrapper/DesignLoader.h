/// @file
/// The functions of the design loader, libtavrt.so. A design is opaque; so is the image that it is loaded from.
#pragma once

#include <cstddef>
#include <cstdint>

#include "wrapper/SdkTypes.h"

extern "C" {
fpga_design* TavLoadDesignFromBuffer(const void* data, std::size_t size, int mode);
fpga_design* TavLoadTavFileWithType(const char* file, int boardType, int mode);
int TavUnloadTavFile(fpga_design* design);

/// Registers are numbered from 1 to TavGetNrOfRegister.
int TavGetNrOfRegister(fpga_design* design);
const char* TavGetRegisterName(fpga_design* design, int number);
int TavGetRegisterByName(fpga_design* design, const char* name);
int TavGetRegisterBitRange(fpga_design* design, int number);  ///< width in bits
int TavGetRegisterDirection(fpga_design* design, int number);

/// Events are numbered from 0; null behind the last.
const void* TavGetEvent(fpga_design* design, int index);
}

namespace quillon {

/// What is known of an event record of the loader: its name and its kind.
struct TavEvent {
    void* reserved;
    const char* name;
    std::int32_t number;
    std::int32_t kind;
};
static_assert(offsetof(TavEvent, name) == 8 && offsetof(TavEvent, kind) == 20);

/// Event `index` of the design, or null.
inline const TavEvent* designEvent(fpga_design* design, int index) {
    return static_cast<const TavEvent*>(TavGetEvent(design, index));
}

}  // namespace quillon
