#pragma once

#include <map>
#include <string>

#include "info/ParameterInfo.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// What stands in front of the SDK's own names.
inline constexpr const char* DirectIxPrefix = "DIXA_";

/// Adds the top-level group "Direct IX Access", which repeats parameters of the design out of the SDK library's
/// description.
///
/// `unwrappedHead` is the head of that description, or null. `unwrappedIdByName` maps a name to the design's parameter
/// id plus 2,000,000, which becomes the id of the record; its key is another 2,000,000 higher. A parameter is repeated
/// in copies of the groups that hold it, under the symbol "DIXA_" plus its own. Fields, and parameters that stand in no
/// group, are not repeated.
void addDirectIxRecords(Fg_ParameterInfo& info, RegisterInfoById& recordsById, const RegisterInfo* unwrappedHead,
                        const std::map<std::string, int>& unwrappedIdByName);

}  // namespace quillon
