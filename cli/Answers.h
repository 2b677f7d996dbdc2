/// @file
/// What answers in JSON are made of, the same in every verb.
#pragma once

#include "cli/Json.h"
#include "cli/Parameters.h"
#include "cli/Values.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// What can be done with a parameter, whatever the mode: "read", "write" or "read-write". The board tells of registers.
const char* accessOf(const client::SoftBoard& board, const Parameter& parameter);
/// Whether a parameter is a register that a read gets nothing from.
bool isWriteOnly(const client::SoftBoard& board, const Parameter& parameter);

/// "integer", "real", "enumeration", "text" or "table".
const char* typeOf(const Parameter& parameter);

/// Adds "value", and what there is of "unit" and "enumerator". A table is a list of the entries that were named, from
/// "index" on; one of which none were named is null, with "table" telling of it.
void putValue(Json& json, const Parameter& parameter, const Value& value);
/// The same as an object.
Json valueOf(const Parameter& parameter, const Value& value);
/// A number with its unit, that is no parameter's.
Json quantity(const Json& number, const std::string& unit);
Json inMicroseconds(double time);
/// A table in short: how many entries, the first and the last, the smallest and the largest.
Json inShort(const std::vector<std::uint32_t>& entries);

/// Adds "accepted" in words and, where there are such, "min", "max" and "step" of a number or of a table's entries.
/// `record` is one that acceptedNow() gave.
void putAccepted(Json& json, const client::ParameterRecord& record);

}  // namespace quillon::cli
