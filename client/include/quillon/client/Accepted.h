/// @file
/// What a parameter would accept, in words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "quillon/client/Export.h"
#include "quillon/client/ParameterRecord.h"

namespace quillon::client {

class Applet;

/// "4 to 16384 pixel in steps of 4", "FG_OFF (0), FG_ON (1)", "16384 entries of 0 to 65535"; empty where nothing is
/// told. In UTF-8.
QUILLON_CLIENT_API std::string acceptedValues(const ParameterRecord& record);

/// Why the range of a parameter is what it is now, for those whose range follows other parameters; empty for all
/// others.
QUILLON_CLIENT_API std::string_view rangeReason(std::string_view name);

/// The record with the bounds and enumerators that a write would be accepted with at this moment, as far as other
/// parameters decide. What the applet publishes may be wider: a limit that it refreshes late, an enumerator that no
/// output takes. A range whose minimum is above its maximum accepts nothing. It reads what the bounds hang on.
/// How many debug points a design has no parameter tells: without `debugPoints` the chosen one is all that is known.
QUILLON_CLIENT_API ParameterRecord acceptedNow(const Applet& applet, ParameterRecord record,
                                               std::optional<std::uint64_t> debugPoints = std::nullopt);

/// What would have to be set first so that the parameter takes `value`: "FG_XOFFSET to at most 4096"; empty where
/// nothing else stands in its way, or nothing helps.
QUILLON_CLIENT_API std::string stepBefore(const Applet& applet, int id, double value);

/// The number nearest to `value` that a record as acceptedNow() gives it accepts; nothing for what is no number.
QUILLON_CLIENT_API std::optional<double> nearestAccepted(const ParameterRecord& accepted, double value);

}  // namespace quillon::client
