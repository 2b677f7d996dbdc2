#pragma once

#include <map>
#include <string>
#include <vector>

#include "info/DirectRegisterRecords.h"
#include "info/ParameterInfo.h"
#include "info/ParameterRecords.h"

namespace quillon {

/// What the two groups behind the fixed catalogue are made from.
struct CatalogueExtensions {
    bool directRegisterAccess = false;      ///< whether there is a group "Direct Register Access"
    std::vector<DesignRegister> registers;  ///< what it holds, in the design's order
    std::map<std::string, int>
        unwrappedIdByName;  ///< if not empty there is a group "Direct IX Access" (see addDirectIxRecords)
    const RegisterInfo* unwrappedHead = nullptr;  ///< the SDK library's own description, borrowed for the call
};

/// Fills list 0 of the store with the description of all public parameters, and `recordsById` with the records by
/// process 0 and id.
void buildCatalogue(Fg_ParameterInfo& info, RegisterInfoById& recordsById, const CatalogueExtensions& extensions);

}  // namespace quillon
