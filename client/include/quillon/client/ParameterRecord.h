#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "quillon/PublicParameters.h"
#include "quillon/RegisterInfo.h"
#include "quillon/client/Export.h"

namespace quillon::client {

enum class RecordKind { Group, UInt, Int, UInt64, Int64, Double, Enum, String, UIntField, IntField, DoubleField };

/// Bounds and step; a step of 0 means that none is told.
template <typename Number>
struct QUILLON_CLIENT_API Range {
    Number min;
    Number max;
    Number step;
    bool operator==(const Range&) const = default;
};

/// One value of an enumerated parameter.
struct QUILLON_CLIENT_API EnumEntry {
    std::string label;  ///< words for people, "Low Active"
    std::int32_t value;
    std::string name;  ///< symbol, "FG_LOW"
    bool operator==(const EnumEntry&) const = default;
};

/// A copy of what the applet tells of one parameter, or of a group of them, at the time of the call. All texts are in
/// the applet's own bytes, Latin-1; utf8() of client/Text.h turns them for people.
struct QUILLON_CLIENT_API ParameterRecord {
    RecordKind kind = RecordKind::Group;
    std::string label;
    std::string symbol;  ///< the parameter's name; empty for a group
    std::string unit;    ///< empty for none
    std::int32_t id = 0;
    bool readable = false;
    bool writable = false;  ///< in the mode that the applet is in now
    std::int32_t accessFlags = 0;
    std::int32_t displayLevel = 0;
    bool exported = false;
    std::int32_t depth = 0;
    /// The range of a number or of a field's elements, in the widest type of its kind.
    std::variant<std::monostate, Range<std::uint64_t>, Range<std::int64_t>, Range<double>> range;
    std::vector<EnumEntry> entries;         ///< of an Enum, in the order of the applet
    std::int32_t fieldSize = 0;             ///< number of elements of a field
    std::string text;                       ///< initial text of a String
    std::vector<ParameterRecord> children;  ///< of a group, in order

    bool isGroup() const { return kind == RecordKind::Group; }
    ParameterKind valueKind() const;                   ///< what a value pointer points to; Int for a group
    const EnumEntry* entry(std::int32_t value) const;  ///< null if the value is not enumerated
};

/// The record of the parameter (no group) with this id in the applet's own tree, or null.
QUILLON_CLIENT_API const RegisterInfo* findRecord(const RegisterInfo* head, std::int32_t id);

/// Copies a record and all that it holds. Throws Error for a type that the interface does not have.
QUILLON_CLIENT_API ParameterRecord copyRecord(const RegisterInfo& record);

/// The first parameter (no group) with this id in the trees, or null.
QUILLON_CLIENT_API const ParameterRecord* findRecord(const std::vector<ParameterRecord>& trees, std::int32_t id);

}  // namespace quillon::client
