/// @file
/// Board access.

#include "softboard/orlo_hw.h"

#include "softboard/softboard.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/Process.h"

namespace {

template <class Body>
int onBoard(IXdevice* device, Body body) {
    return softboard::guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        return softboard::Process::instance().isBoard(device) ? body() : SOFTBOARD_E_ARGUMENT;
    });
}

}  // namespace

int OrloRegisterRead(IXdevice* device, int number, uint64_t* value) {
    return onBoard(device, [&] { return device->readRegister(number, value); });
}

int OrloRegisterWrite(IXdevice* device, int number, uint64_t value) {
    return onBoard(device, [&] { return device->writeRegister(number, value); });
}
