/// @file
/// Board access, `liborlo_hw.so`: the registers of the design that a board runs.
#ifndef SOFTBOARD_ORLO_HW_H
#define SOFTBOARD_ORLO_HW_H

#include <stdint.h>

#include "softboard/export.h"

#ifdef __cplusplus
extern "C" {
#endif

struct IXdevice;

/// Reads register `number` (from 1). 0, or a SOFTBOARD_E_... code; `*value` is changed on success only.
SOFTBOARD_API int OrloRegisterRead(struct IXdevice* device, int number, uint64_t* value);
/// Writes register `number`; bits above the register's width are dropped.
SOFTBOARD_API int OrloRegisterWrite(struct IXdevice* device, int number, uint64_t value);

#ifdef __cplusplus
}
#endif

#endif
