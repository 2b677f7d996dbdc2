/// @file
/// The public parameters' ids, and the values that have names of their own.
#pragma once

namespace quillon {

enum PublicValue : int {
#define ENUMERATOR(name, value) name = value,
#include "quillon/Enumerators.def"
#undef ENUMERATOR
};

enum FgParameterId : int {
#define PUBLIC_PARAMETER(name, id, access, kind, description) name = id,
#include "quillon/Parameters.def"
#undef PUBLIC_PARAMETER
};

}  // namespace quillon
