/// @file
/// What a parameter would accept, in words.
#pragma once

#include <string>
#include <string_view>

#include "quillon/client/ParameterRecord.h"

namespace quillon::client {

/// "4 to 16384 pixel in steps of 4", "FG_OFF (0), FG_ON (1)", "16384 entries of 0 to 65535"; empty where nothing is
/// told. In UTF-8.
std::string acceptedValues(const ParameterRecord& record);

/// Why the range of a parameter is what it is now, for those whose range follows other parameters; empty for all
/// others.
std::string_view rangeReason(std::string_view name);

}  // namespace quillon::client
