/// @file
/// The public parameters as a table, in the order of their positions. FG_PARAM_DESCR stands last and has none.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace quillon {

enum class ParameterAccess { ReadOnly, ReadWrite };

struct PublicParameter {
    const char* name;
    int id;
    ParameterAccess access;
    const char* description;  ///< what FG_PARAM_DESCR answers
};

inline constexpr auto PublicParameters = std::to_array<PublicParameter>({
#define SDK_PARAMETER(name, id, access, kind, description) {#name, id, ParameterAccess::access, description},
#include "design/SdkParameters.def"
#undef SDK_PARAMETER
});

/// How many of them have a position: it is their place in the table.
inline constexpr std::size_t PositionCount = PublicParameters.size() - 1;
static_assert(PositionCount == 163);

/// The parameter with that id, or null.
constexpr const PublicParameter* findPublicParameter(int id) {
    const auto* const found = std::find_if(PublicParameters.begin(), PublicParameters.end(),
                                           [id](const PublicParameter& parameter) { return parameter.id == id; });
    return found != PublicParameters.end() ? found : nullptr;
}

}  // namespace quillon
