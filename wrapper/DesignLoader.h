/// @file
/// The functions of the design loader, libtavrt.so. A design is opaque; so is the image that it is loaded from.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// Whether there is such an event, and it has that name. Not every event has one.
inline bool hasName(const TavEvent* event, const char* name) {
    return event != nullptr && event->name != nullptr && std::strcmp(event->name, name) == 0;
}

/// Registers that have an id of their own: those behind would run into the ids of the SDK's parameters.
constexpr int RegisterLimit = 1'000'000;

/// Calls `visit(name)` for each register of the design, in the order of their numbers. A number that the loader counts
/// and has no name for is passed over.
template <class Visit>
void forEachRegister(fpga_design* design, Visit&& visit) {
    const int count = std::min(TavGetNrOfRegister(design), RegisterLimit);
    for (int number = 1; number <= count; ++number) {
        if (const char* name = TavGetRegisterName(design, number); name != nullptr) {
            visit(name);
        }
    }
}

}  // namespace quillon
