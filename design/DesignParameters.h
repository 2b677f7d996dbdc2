/// @file
/// The parameters of the design, bound by name: the only way in which the applet reaches the design.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "wrapper/FgIxWrapper.h"

namespace quillon {

/// What `reportErrors` says of a failure: that it is thrown on to a caller who asked for the access or the write, or
/// that it is kept, so that what goes through many of them, such as a start or a load, goes on with the next.
inline constexpr bool Reporting = true;
inline constexpr bool Quietly = false;

/// A parameter of the design. "Process0" and "Process1" are a part of the design's naming and nothing that this layer
/// acts on.
enum class Ix : std::uint8_t {
#define IX_PARAMETER(enumerator, name, direction) enumerator,
#include "design/IxParameters.def"
#undef IX_PARAMETER
};

inline constexpr std::size_t IxParameterCount = 0
#define IX_PARAMETER(enumerator, name, direction) +1
#include "design/IxParameters.def"
#undef IX_PARAMETER
    ;

/// The access functions of the design's parameters. They hold no policy: nothing is validated, remembered or locked.
///
/// A refused access is logged at level 5 and fails with the SDK's code, unchanged. A successful access allocates
/// nothing.
class DesignParameters {
public:
    explicit DesignParameters(FgIxWrapper& wrapper) : wrapper_(wrapper) {}

    /// Asks the SDK for the id of every name. A name that the design does not know is logged at level 4 and fails at
    /// its first access.
    void lookUpIds();
    /// The id that the SDK gave for the name; valid if it is greater than 0.
    int id(Ix parameter) const { return ids_[static_cast<std::size_t>(parameter)]; }

    /// The primitives: `value` is handed to the SDK as it is, under the id of `parameter`. A null `value` fails with
    /// InvalidParameter. Without `reportErrors` a failure is not thrown; a refusal by the SDK is logged all the same.
    void set(Ix parameter, const void* value, unsigned process, FgParamTypes type, bool reportErrors);
    void get(Ix parameter, void* value, unsigned process, FgParamTypes type, bool reportErrors);

    // The primitives as handlers use them: process 0, failures thrown.
    void writeUnsigned(Ix parameter, std::uint32_t value) { write(parameter, &value, FgTypeUInt32); }
    void writeSigned(Ix parameter, std::int32_t value) { write(parameter, &value, FgTypeInt32); }
    void writeDouble(Ix parameter, double value) { write(parameter, &value, FgTypeDouble); }
    void write(Ix parameter, const void* value, FgParamTypes type) { set(parameter, value, 0, type, Reporting); }
    std::uint32_t readUnsigned(Ix parameter) { return read<std::uint32_t>(parameter, FgTypeUInt32); }
    std::uint64_t readUnsigned64(Ix parameter, FgParamTypes type) { return read<std::uint64_t>(parameter, type); }
    double readDouble(Ix parameter) { return read<double>(parameter, FgTypeDouble); }
    std::string readText(Ix parameter);
    void read(Ix parameter, void* value, FgParamTypes type) { get(parameter, value, 0, type, Reporting); }

    // Parameters whose names are only known at run time, as the design's own texts tell them. These answer codes, throw
    // nothing and log nothing.
    int idByName(const std::string& name) const { return wrapper_.getParameterIdByName(name.c_str()); }
    int setById(int id, const void* value, FgParamTypes type) const {
        return wrapper_.setUnwrappedParameterWithType(id, value, 0, type);
    }
    int getById(int id, void* value, FgParamTypes type) const {
        return wrapper_.getUnwrappedParameterWithType(id, value, 0, type);
    }
    /// Reads a text: 0 or the SDK's code, with an empty text then.
    int readText(const std::string& name, std::string& text) const { return readText(idByName(name), text); }
    int readText(int id, std::string& text) const;

    /// The full name of a parameter, as the design knows it.
    static const char* name(Ix parameter);

private:
    template <class Value>
    Value read(Ix parameter, FgParamTypes type) {
        Value value{};
        get(parameter, &value, 0, type, Reporting);
        return value;
    }

    FgIxWrapper& wrapper_;
    std::array<int, IxParameterCount> ids_{};
};

}  // namespace quillon
