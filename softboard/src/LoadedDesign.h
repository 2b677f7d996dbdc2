/// @file
/// Designs that the loader has handed out.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "softboard/export.h"
#include "softboard/src/DesignDescription.h"

/// The loader's design object. It is constant from its creation to its unloading, so no lock guards it.
struct fpga_design {
    std::shared_ptr<const softboard::DesignDescription> description;
    std::vector<bool> hidden;       ///< per parameter of the description: left out of this load
    std::vector<tav_event> events;  ///< what TavGetEvent shows; the names belong to the description
};

namespace softboard {

/// A new design object from an image. Null if the image is damaged or foreign, or if `expectedType` is not negative and
/// is not the image's. The names that the environment variable SOFTBOARD_HIDE lists, separated by commas, are left out.
/// The last image is kept, so that loading it again costs a comparison only.
SOFTBOARD_API std::unique_ptr<fpga_design> loadDesign(const void* data, std::size_t size, int expectedType);

}  // namespace softboard
