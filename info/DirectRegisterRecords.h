#pragma once

#include <string>
#include <vector>

#include "info/ParameterInfo.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// The label of the group of registers; its records are kept out of the XML document.
inline constexpr const char* DirectRegisterGroupLabel = "Direct Register Access";

/// What stands in front of the registers' names.
inline constexpr const char* DirectRegisterPrefix = "DRA_";

inline constexpr int RegisterWordBits = 32;  ///< a wider register is exchanged as 64 bits

/// A register of the design.
struct DesignRegister {
    std::string name;
    int number;     ///< under which it is read and written
    int bits;       ///< width
    int direction;  ///< 0: can only be read
};

/// Adds the top-level group of the design's registers, one record "DRA_NAME" a register, with the register's number
/// plus 1,000,000 as id and key. Up to 32 bits make a UInt, more a UInt64.
void addDirectRegisterRecords(Fg_ParameterInfo& info, RegisterInfoById& recordsById,
                              const std::vector<DesignRegister>& registers);

}  // namespace quillon
