/// @file
/// What a picture says of where it comes from.
#pragma once

#include <string>
#include <vector>

#include "cli/Session.h"

namespace quillon::cli {

/// The configuration that the applet runs with, and those of the parameters `names` that have been changed since it was
/// loaded: "Configuration: conveyor.mcf, with another FG_LINEPERIODE". Then the values of all of them, in one line. An
/// applet of its own loads the file once more.
std::vector<std::string> provenance(Session& session, const std::vector<std::string>& names);

}  // namespace quillon::cli
