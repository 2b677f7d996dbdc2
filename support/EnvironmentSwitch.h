#pragma once

#include <string_view>

namespace quillon {

/// Whether `value` is "yes", "true", "on" or "1", in any case.
bool isSwitchedOn(std::string_view value);

/// Whether the environment variable `name` is set to a value that isSwitchedOn.
bool environmentSwitch(const char* name);

}  // namespace quillon
