#pragma once

#include <string>
#include <vector>

#include "cli/Session.h"
#include "quillon/client/Applet.h"

namespace quillon::cli {

/// What the parameters tell of why frames do not come, or not as many as there are images: a sentence each, in the
/// order of the image path. Empty where nothing is in their way. Throws ParameterError for a parameter that cannot be
/// read.
std::vector<std::string> frameObstacles(const client::Applet& applet);
/// The same with what the board's belt does.
std::vector<std::string> frameObstacles(Session& session);

}  // namespace quillon::cli
