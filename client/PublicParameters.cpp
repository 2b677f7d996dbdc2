#include "client/PublicParameters.h"

#include <algorithm>
#include <array>

namespace quillon::client {

namespace {

constexpr std::array parameters{
#define SDK_PARAMETER(name, id, access, kind, description) \
    PublicParameter{#name, id, ParameterAccess::access, ParameterKind::kind},
#include "design/SdkParameters.def"
#undef SDK_PARAMETER
};

const PublicParameter* find(auto&& matches) {
    const auto found = std::find_if(parameters.begin(), parameters.end(), matches);
    return found != parameters.end() ? &*found : nullptr;
}

}  // namespace

std::span<const PublicParameter> publicParameters() {
    return parameters;
}

const PublicParameter* findPublicParameter(std::string_view name) {
    return find([&](const PublicParameter& parameter) { return parameter.name == name; });
}

const PublicParameter* findPublicParameter(int id) {
    return find([&](const PublicParameter& parameter) { return parameter.id == id; });
}

}  // namespace quillon::client
