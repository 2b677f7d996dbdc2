/// @file
/// The public parameters' ids, and the values that have names of their own.
#pragma once

namespace quillon {

enum PublicValue : int {
#define PUBLIC_VALUE(name, value) name = value,
#include "design/PublicValues.def"
#undef PUBLIC_VALUE
};

enum ParameterId : int {
#define SDK_PARAMETER(name, id, access, kind, description) name = id,
#include "design/SdkParameters.def"
#undef SDK_PARAMETER
};

}  // namespace quillon
