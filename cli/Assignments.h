#pragma once

#include <string>
#include <vector>

#include "cli/Parameters.h"
#include "cli/Values.h"

namespace quillon::cli {

/// A value on its way to a parameter.
struct Assignment {
    Parameter parameter;
    Value value;
    std::string text;  ///< the value as it was written
};

/// Throws UsageError for a name that is none, and a text that is no value of the parameter.
Assignment parseAssignment(const client::Applet& applet, const std::string& name, const std::string& text);

/// Carries out "NAME=VALUE" words in their order, once all have been understood. Throws UsageError, and RefusedError
/// for the first value that the applet refuses.
void assign(client::Applet& applet, const std::vector<std::string>& words);

}  // namespace quillon::cli
