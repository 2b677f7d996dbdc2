#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quillon::client {

/// What a public parameter's value pointer points to.
enum class ParameterKind {
    Int,    ///< 32 bits
    Int64,  ///< 64 bits
    Double,
    String,  ///< a text, ValueType::Buffer or ValueType::String
    Field,   ///< a lookup table, ValueType::Field or ValueType::Element
    Sdk,     ///< answered by the SDK, with 32 bits
};

enum class ParameterAccess { ReadOnly, ReadWrite };

/// A public parameter, as it is known without an open applet.
struct PublicParameter {
    std::string_view name;
    int id;
    ParameterAccess access;
    ParameterKind kind;
};

/// All public parameters in the order of their positions; FG_PARAM_DESCR, which has none, is the last.
std::span<const PublicParameter> publicParameters();
/// The parameter with this name or id, or null.
const PublicParameter* findPublicParameter(std::string_view name);
const PublicParameter* findPublicParameter(int id);

}  // namespace quillon::client
