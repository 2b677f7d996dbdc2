/// @file
/// The patterns that a board can show without a file.
#pragma once

#include <memory>
#include <string_view>

#include "softboard/pixels/Scene.h"

namespace softboard::scenes {

/// The pattern that softboard_scene_pattern() describes under this text: "bars", "ramp", "checker", "noise",
/// "noise:SEED" (0 to 2^64 - 1; "noise" is "noise:1"), "grey", "grey:V". Null for any other text.
///
/// At row 0 the ramp begins with black, and the first square of the checker is black.
std::shared_ptr<pixels::Scene> makePattern(std::string_view pattern);

}  // namespace softboard::scenes
