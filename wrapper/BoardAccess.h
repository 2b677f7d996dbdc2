/// @file
/// The functions of board access, liborlo_hw.so. They answer 0 or a code of their own.
#pragma once

#include <cstdint>

#include "wrapper/SdkTypes.h"

extern "C" {
int OrloRegisterRead(IXdevice* device, int number, std::uint64_t* word);
int OrloRegisterWrite(IXdevice* device, int number, std::uint64_t word);
}
