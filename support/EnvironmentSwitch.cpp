#include "support/EnvironmentSwitch.h"

#include <algorithm>
#include <array>
#include <boost/algorithm/string/predicate.hpp>
#include <cstdlib>
#include <locale>

namespace quillon {

bool isSwitchedOn(std::string_view value) {
    constexpr std::array<std::string_view, 4> on = {"yes", "true", "on", "1"};
    // The classic locale: the host's locale must not decide what "ON" means.
    return std::any_of(on.begin(), on.end(), [value](std::string_view word) {
        return boost::algorithm::iequals(value, word, std::locale::classic());
    });
}

bool environmentSwitch(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && isSwitchedOn(value);
}

}  // namespace quillon
