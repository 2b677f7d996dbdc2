/// @file
/// How the models of the board's digital side reach the parameters of a design.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "softboard/src/Parameter.h"

namespace softboard {

/// Looks up a parameter of the design on the board; null if the design lacks it.
using Find = std::function<Parameter*(std::string_view name)>;

/// Looks up a parameter and asks that Signals::written is called when it changes.
inline Parameter* watched(const Find& find, const std::string& name) {
    Parameter* const parameter = find(name);
    if (parameter != nullptr) {
        parameter->watch();
    }
    return parameter;
}

/// The value of an integer; 0 if the design lacks it.
inline std::int64_t integerOf(const Parameter* parameter) {
    return parameter != nullptr ? parameter->integer() : 0;
}

/// The value of a double; 0 if the design lacks it.
inline double realOf(const Parameter* parameter) {
    return parameter != nullptr ? parameter->real() : 0.0;
}

}  // namespace softboard
