/// @file
/// The parameters that the SDK has by itself, whatever the design.
#pragma once

#include <vector>

#include "softboard/src/DesignDescription.h"

namespace softboard {

/// In the order of their ids. They take all four integer types; texts take the types 6 and 22.
const std::vector<ParameterDescription>& sdkParameters();

/// Ids that the board itself works with.
inline constexpr std::int32_t SdkCameraStatus = 2050;  ///< bit 0: the camera sends pixels
inline constexpr std::int32_t SdkDmaStatus = 24092;    ///< 1 while an acquisition runs

}  // namespace softboard
