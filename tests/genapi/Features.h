/// @file
/// The features that the document has to have, from the catalogue's tables.
#pragma once

#include <string>
#include <vector>

#include "info/CatalogueTables.h"
#include "tests/genapi/Consumer.h"

namespace quillon::genapi {

struct Feature {
    std::string name;
    std::string category;
    NodeClass nodeClass;
    bool writable;  ///< whether the applet takes writes at all, in whatever mode
    const CatalogueParameter* parameter;

    int id() const { return parameter->id; }
};

/// All parameters of the catalogue but those of 64 bits and the lookup tables, which have no form in the document.
const std::vector<Feature>& features();

/// The parameters of the catalogue that the document leaves out.
std::vector<std::string> parametersWithoutFeature();

}  // namespace quillon::genapi
