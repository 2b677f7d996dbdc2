#pragma once

#include <string>

#include "cli/Parameters.h"
#include "cli/Values.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// A code in words and what would have been accepted.
struct Refusal {
    int code;
    std::string name;      ///< "ValueOutOfRange"; empty for a code of the SDK or the design
    std::string meaning;   ///< the code in a sentence
    std::string accepted;  ///< what would be accepted; empty where that is not the point
    std::string reason;    ///< why the range is as it is now; empty where it is always the same
    std::string nearest;   ///< the accepted value nearest to the refused one; empty where the state plays no part
    std::string first;     ///< what to set first so that the value is accepted; empty where nothing is known to help
    Json nearestValue{};   ///< `nearest` as answers tell a value; null for none
};

/// Explains why the applet answered `code` to a set of `parameter` to `value`; the parameter's record is read anew.
/// The board tells of the design what no parameter does; null where there is nothing to ask.
Refusal explainSet(const client::Applet& applet, const Parameter& parameter, const Value& value, int code,
                   const client::SoftBoard* board = nullptr);
/// The same where the value is none that can be compared.
Refusal explainSet(const client::Applet& applet, const Parameter& parameter, int code);
/// The same for a get, where nothing else could have been accepted.
Refusal explainGet(int code);

/// "was refused: -6000 (ValueOutOfRange), the value is out of range", and lines with what would be accepted.
std::string inWords(const Refusal& refusal);
Json toJson(const Refusal& refusal);
/// Throws a RefusedError that carries the refusal.
[[noreturn]] void refuse(const std::string& text, Refusal refusal);

/// The record with what is accepted at this moment; client::acceptedNow() for a design on a software board.
client::ParameterRecord acceptedNow(const client::Applet& applet, const client::SoftBoard* board,
                                    const client::ParameterRecord& record);

/// What a parameter accepts at this moment: "4 to 16384 pixel in steps of 4", "FG_OFF (0), FG_ON (1)". Empty without a
/// record.
std::string acceptedValues(const client::Applet& applet, const client::SoftBoard* board, const Parameter& parameter);

}  // namespace quillon::cli
