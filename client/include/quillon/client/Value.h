#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "quillon/client/Errors.h"
#include "quillon/client/Export.h"

namespace quillon::client {

/// A number or a text on its way into a parameter or out of one. Numbers convert into every type that holds them; texts
/// are texts, in the applet's own bytes (Latin-1), or names of enumerators.
class QUILLON_CLIENT_API Value {
public:
    template <std::signed_integral Number>
    Value(Number number) : held_(std::int64_t{number}) {}
    template <std::unsigned_integral Number>
    Value(Number number) : held_(std::uint64_t{number}) {}
    template <typename Enumeration>
    requires std::is_enum_v<Enumeration> Value(Enumeration number) : held_(std::int64_t{number}) {}
    template <std::floating_point Number>
    Value(Number number) : held_(static_cast<double>(number)) {}
    Value(const char* text) : held_(std::string(text)) {}
    Value(std::string_view text) : held_(std::string(text)) {}
    Value(std::string text) : held_(std::move(text)) {}

    bool isText() const { return std::holds_alternative<std::string>(held_); }

    /// The value as a bool, a number or a std::string; nothing if the type does not hold it: a text is no number, 70000
    /// no std::uint16_t, 0.5 no whole number.
    template <typename Type>
    std::optional<Type> asIf() const;
    /// The same; throws ValueError.
    template <typename Type>
    Type as() const {
        if (const std::optional<Type> held = asIf<Type>()) {
            return *held;
        }
        throw ValueError(inWords() + " is no value of the type that is asked for");
    }

    /// "2048", "0.5", "\"curve.lut\"".
    std::string inWords() const;

private:
    std::variant<std::int64_t, std::uint64_t, double, std::string> held_;
};

template <typename Type>
std::optional<Type> Value::asIf() const {
    if constexpr (std::same_as<Type, std::string>) {
        const auto* const text = std::get_if<std::string>(&held_);
        return text != nullptr ? std::optional(*text) : std::nullopt;
    } else {
        static_assert(std::is_arithmetic_v<Type>, "a value is a bool, a number or a std::string");
        return std::visit(
            [](const auto& held) -> std::optional<Type> {
                using Held = std::decay_t<decltype(held)>;
                if constexpr (std::same_as<Held, std::string>) {
                    return std::nullopt;
                } else if constexpr (std::same_as<Type, bool>) {
                    return held != Held{};
                } else if constexpr (std::floating_point<Type>) {
                    return static_cast<Type>(held);
                } else if constexpr (std::integral<Held>) {
                    return std::in_range<Type>(held) ? std::optional(static_cast<Type>(held)) : std::nullopt;
                } else {
                    // The first double above the type is a power of two, its largest number may be none.
                    constexpr double lowest = static_cast<double>(std::numeric_limits<Type>::min());
                    constexpr double beyond =
                        2.0 * static_cast<double>(std::uint64_t{1} << (std::numeric_limits<Type>::digits - 1U));
                    const bool holds = held >= lowest && held < beyond && std::trunc(held) == held;
                    return holds ? std::optional(static_cast<Type>(held)) : std::nullopt;
                }
            },
            held_);
    }
}

}  // namespace quillon::client
