/// @file
/// The SDK's own configuration file: a line "name=value" per parameter.
#pragma once

#include <string>
#include <vector>

#include "softboard/src/Board.h"

namespace softboard {

/// Writes all parameters that can be read and written; tables are left out. 0 or SOFTBOARD_E_FILE. Under the board's
/// lock.
int saveConfigurationLocked(const Board& board, const std::string& fileName);
/// Takes the values of a file over. 0, or SOFTBOARD_E_FILE if it cannot be read or a line makes no sense; the lines
/// before that are taken.
int loadConfigurationLocked(Board& board, const std::string& fileName);

}  // namespace softboard
