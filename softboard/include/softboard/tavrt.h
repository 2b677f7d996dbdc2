/// @file
/// The design loader, `libtavrt.so`: turns a design image into a design object and answers what the design holds.
///
/// No call crashes on a null, unknown or already unloaded design: it answers null or 0.
#ifndef SOFTBOARD_TAVRT_H
#define SOFTBOARD_TAVRT_H

#include <stddef.h>
#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct fpga_design fpga_design;

/// An event of a design. A mask with the bit of its position addresses it.
typedef struct tav_event {
    uint64_t mask;     ///< 1 shifted left by the position
    const char* name;  ///< at byte 8
    int32_t position;  ///< at byte 16
    int32_t kind;      ///< at byte 20; 1: a signal, known by its own name; others are internal
} tav_event;

/// A new design object of its own for every call. Null if `data` is no whole, undamaged design image.
SOFTBOARD_API fpga_design* TavLoadDesignFromBuffer(const void* data, size_t size, int flags);
/// The same from the file `name`, relative to the working directory; `type` must be the one that the image states.
SOFTBOARD_API fpga_design* TavLoadTavFileWithType(const char* name, int type, int flags);
/// 0, or SOFTBOARD_E_ARGUMENT if `design` is not (or no longer) loaded.
SOFTBOARD_API int TavUnloadTavFile(fpga_design* design);

/// Registers have the numbers 1 to this count.
SOFTBOARD_API int TavGetNrOfRegister(fpga_design* design);
/// The name lives as long as the design. Null for a number outside 1 to the count.
SOFTBOARD_API const char* TavGetRegisterName(fpga_design* design, int number);
/// 0 for an unknown name.
SOFTBOARD_API int TavGetRegisterByName(fpga_design* design, const char* name);
/// Width in bits, 1 to 64; 0 for an unknown number.
SOFTBOARD_API int TavGetRegisterBitRange(fpga_design* design, int number);
/// 0: can only be read, 1: can only be written, 2: both. 0 for an unknown number too.
SOFTBOARD_API int TavGetRegisterDirection(fpga_design* design, int number);

/// The event at `position`, from 0; null behind the last.
SOFTBOARD_API const tav_event* TavGetEvent(fpga_design* design, int position);

#ifdef __cplusplus
}
#endif

#endif
