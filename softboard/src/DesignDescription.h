/// @file
/// What a design holds: its parameters, events and registers, as its description text tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "softboard/tavrt.h"

namespace softboard {

/// How a parameter is accessed; the numbers are the SDK's value types.
enum class ValueType : int { Int32 = 1, UInt32 = 2, Int64 = 3, UInt64 = 4, Double = 5, Text = 6, Table = 4096 };

struct EnumEntry {
    std::string label;
    std::int32_t value = 0;
    std::string name;
};

struct ParameterDescription {
    std::int32_t id = 0;
    std::string name;                 ///< full name, "Device1_Process0_Buffer_0_XLength"
    std::vector<std::string> groups;  ///< labels of the groups from the top, {"Device1", "Process0", "Buffer_0"}
    std::string label;                ///< the last part, "XLength"
    ValueType type = ValueType::UInt32;
    bool anyIntegerType = false;  ///< all four integer types are accepted, as for the SDK's own parameters
    bool readable = true;
    bool writable = true;
    std::string unit;
    std::size_t length = 0;          ///< elements of a table
    std::vector<EnumEntry> entries;  ///< not empty: shown as an enumeration
    std::int64_t minimum = 0;        ///< for UInt64 the bits of the unsigned number; so `maximum` and `integer`
    std::int64_t maximum = 0;
    double realMinimum = 0.0;
    double realMaximum = 0.0;
    std::int64_t integer = 0;  ///< initial value of an integer
    double real = 0.0;         ///< initial value of a double
    std::string text;          ///< initial value of a text
};

/// Directions have the loader's codes.
enum class RegisterDirection : int { ReadOnly = 0, WriteOnly = 1, ReadWrite = 2 };

struct RegisterDescription {
    std::string name;
    std::string transcriptName;  ///< "register NAME"
    int bits = 32;
    RegisterDirection direction = RegisterDirection::ReadWrite;
    std::uint64_t value = 0;  ///< initial value
};

struct EventDescription {
    std::string name;
    std::int32_t kind = 0;
};

struct DesignDescription {
    std::string name;
    std::string version;
    std::size_t fingerprint = 0;  ///< the same for the same description text
    std::int32_t type = 0;        ///< the type number under which the loader accepts the design from a file
    std::vector<ParameterDescription> parameters;  ///< ids are FirstDesignId + position
    std::vector<EventDescription> events;
    std::vector<RegisterDescription> registers;  ///< numbers are position + 1
    std::unordered_map<std::string, std::size_t> parameterByName;
    std::unordered_map<std::string, std::size_t> registerByName;
};

/// Id of the first parameter of a design; the others follow densely.
inline constexpr std::int32_t FirstDesignId = 10000;

/// A description that cannot be used; the text says where and why.
struct DesignError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads a description. Throws DesignError.
std::shared_ptr<const DesignDescription> parseDesign(std::string_view text);

}  // namespace softboard
