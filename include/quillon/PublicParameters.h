/// @file
/// The public parameters as a table, in the order of their positions. FG_PARAM_DESCR stands last and has none.
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace quillon {

enum class ParameterAccess { ReadOnly, ReadWrite };

/// What a parameter's value pointer points to.
enum class ParameterKind {
    Int,  ///< 32 bits
    Int64,
    Double,
    String,     ///< a text, FgTypeCharBuffer or FgTypeString
    Field,      ///< entries of a table, FgTypeFieldAccess or FgTypeFieldInt
    Forwarded,  ///< the SDK answers, with 32 bits
};

struct PublicParameter {
    std::string_view name;
    int id;
    ParameterAccess access;
    ParameterKind kind;
    std::string_view description;  ///< what FG_PARAM_DESCR answers
};

inline constexpr auto PublicParameters = std::to_array<PublicParameter>({
#define PUBLIC_PARAMETER(name, id, access, kind, description) \
    {#name, id, ParameterAccess::access, ParameterKind::kind, description},
#include "quillon/Parameters.def"
#undef PUBLIC_PARAMETER
});

/// Those that have a position, which is their place in the table.
inline constexpr std::span<const PublicParameter> PositionedParameters(PublicParameters.data(),
                                                                       PublicParameters.size() - 1);
inline constexpr int PositionCount = static_cast<int>(PositionedParameters.size());

/// The parameter with that id, or null.
constexpr const PublicParameter* findPublicParameter(int id) {
    const auto found = std::ranges::find(PublicParameters, id, &PublicParameter::id);
    return found != PublicParameters.end() ? &*found : nullptr;
}

/// The parameter with that name, or null.
constexpr const PublicParameter* findPublicParameter(std::string_view name) {
    const auto found = std::ranges::find(PublicParameters, name, &PublicParameter::name);
    return found != PublicParameters.end() ? &*found : nullptr;
}

}  // namespace quillon
