#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillon/PublicParameters.h"
#include "quillon/client/Applet.h"

namespace quillon::cli {

/// Entries of a lookup table.
inline constexpr std::uint32_t LookupTableSize = 16384;

/// A run of entries of a lookup table.
struct Run {
    std::uint32_t first;
    std::uint32_t count;
};

/// A parameter that a command line names.
struct Parameter {
    std::string name;  ///< the number in words where the applet has no name for it
    int id = 0;
    ParameterKind kind = ParameterKind::Int;
    std::optional<client::ParameterRecord> record;  ///< what the applet publishes of it now
    std::optional<Run> run;                         ///< of a lookup table: the entries that are meant
    bool hasRun = false;                            ///< whether they were named; else all are meant

    bool isEnumerated() const { return record && record->kind == client::RecordKind::Enum; }
    /// Whether a whole number is shown without a sign.
    bool isUnsigned() const;
};

/// Finds a parameter by its name ("FG_WIDTH", case plays no part), by its id in decimal or hexadecimal, and, for a
/// lookup table, with entries: "FG_LUT_VALUE_RED[7]", "FG_LUT_VALUE_RED[0..255]". Ids go to the applet unseen.
/// Throws UsageError for a name that the applet does not know, with the nearest one.
Parameter findParameter(const client::Applet& applet, std::string_view text);
/// The same in the trees of records that applet.parameterInfo() gave.
Parameter findParameter(const client::Applet& applet, std::string_view text,
                        const std::vector<client::ParameterRecord>& trees);

/// All names that the applet lists, by position.
std::vector<std::string> parameterNames(const client::Applet& applet);

}  // namespace quillon::cli
