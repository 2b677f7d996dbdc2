/// @file
/// The exported interface of libQuillon.so as plain C types: for callers who want to pass exactly what they choose,
/// null handles included. Everyone else uses Applet.
#pragma once

#include <cstddef>
#include <cstdint>

struct IXdevice;  ///< a board; a software board is one (softboard.h)

namespace quillon::client {

/// A pointer to a location that holds what Std_entry returned.
using Handle = void*;

/// The type that a value pointer is passed with. The applet looks at it for texts and fields only.
using Type = int;

namespace ValueType {
constexpr Type Int = 1;         ///< pointer to a signed 32-bit integer
constexpr Type Unsigned = 2;    ///< pointer to an unsigned 32-bit integer
constexpr Type Int64 = 3;       ///< pointer to a signed 64-bit integer
constexpr Type Unsigned64 = 4;  ///< pointer to an unsigned 64-bit integer
constexpr Type Double = 5;      ///< pointer to a double
constexpr Type Buffer = 6;      ///< a character buffer that a get fills, or the text that a set passes
constexpr Type String = 22;     ///< pointer to a char* that a get fills with a string to be released
constexpr Type Field = 4096;    ///< pointer to a FieldAccess
constexpr Type Element = 4098;  ///< pointer to a FieldElement
}  // namespace ValueType

/// One entry of a lookup table.
struct FieldElement {
    std::uint32_t value;
    std::uint32_t index;
};

/// A run of entries of a lookup table.
struct FieldAccess {
    Type elementType;     ///< ValueType of the entries at `values`
    std::uint32_t index;  ///< first entry
    std::uint32_t count;  ///< number of entries
    void* values;         ///< `count` entries of the caller
};
static_assert(sizeof(FieldElement) == 8 && sizeof(FieldAccess) == 24 && offsetof(FieldAccess, values) == 16);

/// The exported functions, by their names.
struct Functions {
#define QUILLON_EXPORT(result, name, arguments) result(*name) arguments = nullptr;
#include "client/Exports.def"
#undef QUILLON_EXPORT
};

}  // namespace quillon::client
