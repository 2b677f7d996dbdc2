#include "quillon/client/Value.h"

#include "quillon/client/Text.h"

namespace quillon::client {

std::string Value::inWords() const {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::string>) {
                return "\"" + utf8(held) + "\"";
            } else if constexpr (std::is_same_v<Held, double>) {
                return shortest(held);
            } else {
                return std::to_string(held);
            }
        },
        held_);
}

}  // namespace quillon::client
