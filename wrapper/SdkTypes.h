/// @file
/// The types that cross the border between the applet, the SDK and the application.
#pragma once

#include <cstddef>
#include <cstdint>

struct Fg_Struct_s;    ///< a grabber handle of the SDK
struct IXdevice;       ///< a board; belongs to the caller of Std_entry
struct fpga_design;    ///< a loaded design
struct ShadingMaster;  ///< a shading handle; this applet has none

namespace quillon {

/// What `value` points to in a parameter call.
enum FgParamTypes : std::int32_t {
    TypeInt32 = 1,
    TypeUInt32 = 2,
    TypeInt64 = 3,
    TypeUInt64 = 4,
    TypeDouble = 5,
    TypeCharBuffer = 6,  ///< a character buffer that the callee fills; no length is known
    TypeString = 22,     ///< a `char*` that is stored by a read and released with Fg_freeParameterStringWithType
    TypeFieldAccess = 4096,
    TypeFieldInt = 4098
};

/// One entry of a table of 32-bit values.
struct FieldParameterInt_s {
    std::uint32_t value;
    std::uint32_t index;
};

/// One entry of a table of doubles.
struct FieldParameterDouble_s {
    double value;
    std::uint32_t index;
};

/// `count` entries from `index` on; the values stay the caller's.
struct FieldParameterAccess {
    FgParamTypes
        vtype;  ///< width of the values: TypeInt32, TypeUInt32: 4 bytes; TypeInt64, TypeUInt64, TypeDouble: 8 bytes
    std::uint32_t index;
    std::uint32_t count;
    void* value;
};
static_assert(offsetof(FieldParameterAccess, value) == 16 && sizeof(FieldParameterAccess) == 24);

}  // namespace quillon
