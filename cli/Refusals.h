#pragma once

#include <string>

#include "cli/Parameters.h"
#include "cli/Values.h"

namespace quillon::cli {

/// A code in words and what would have been accepted.
struct Refusal {
    int code;
    std::string name;      ///< "ValueOutOfRange"; empty for a code of the SDK or the design
    std::string meaning;   ///< the code in a sentence
    std::string accepted;  ///< what would be accepted; empty where that is not the point
    std::string reason;    ///< why the range is as it is now; empty where it is always the same
};

/// Explains why the applet answered `code` to a set of `parameter`; the parameter's record is read anew.
Refusal explainSet(const client::Applet& applet, const Parameter& parameter, int code);
/// The same for a get, where nothing else could have been accepted.
Refusal explainGet(int code);

/// "was refused: -6000 (ValueOutOfRange), the value is out of range", and lines with what would be accepted.
std::string inWords(const Refusal& refusal);
Json toJson(const Refusal& refusal);

/// What a parameter accepts by its record: "4 to 16384 pixel in steps of 4", "FG_OFF (0), FG_ON (1)". Empty without
/// one.
std::string acceptedValues(const Parameter& parameter);

}  // namespace quillon::cli
