/// @file
/// The enumerators with their names, as a table.
#pragma once

#include <string_view>

namespace quillon {

struct NamedEnumerator {
    std::string_view name;
    int value;
};

/// In the order in which Info enters them.
inline constexpr NamedEnumerator NamedEnumerators[] = {
#define ENUMERATOR(name, value) {#name, value},
#include "quillon/Enumerators.def"
#undef ENUMERATOR
};

/// The enumerator with that name, or null.
constexpr const NamedEnumerator* findEnumerator(std::string_view name) {
    for (const NamedEnumerator& enumerator : NamedEnumerators) {
        if (enumerator.name == name) {
            return &enumerator;
        }
    }
    return nullptr;
}

}  // namespace quillon
