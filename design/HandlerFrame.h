/// @file
/// The frame that every set handler shares.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <utility>

#include "design/DesignParameters.h"
#include "support/Failure.h"

namespace quillon {

/// Remembers `value` in `field` and lets `apply` do what follows from it.
///
/// `check` refuses a bad value by throwing, before anything has changed. `apply` gets the old value; if it fails,
/// `field` gets the old value back, and nothing else is undone: design parameters that were written keep what was
/// written. With `Reporting` the code is thrown on; with `Quietly` the handler ends as if nothing had happened, so that
/// a start-up or a load goes on with the next parameter.
template <class Field, class Check, class Apply>
void changeField(Field& field, Field value, bool reportErrors, Check&& check, Apply&& apply) {
    try {
        check();
        Field previous = std::exchange(field, std::move(value));
        try {
            apply(previous);
        } catch (...) {
            field = std::move(previous);
            throw;
        }
    } catch (int) {
        if (reportErrors) {
            throw;
        }
    }
}

/// A parameter that is one field and one write of `sent` to one design parameter.
template <class Field, class Check>
void changeFieldAndWrite(Field& field, Field value, bool reportErrors, Check&& check, DesignParameters& design,
                         Ix parameter, std::uint32_t sent) {
    changeField(field, value, reportErrors, std::forward<Check>(check),
                [&](const Field& /*previous*/) { design.writeUnsigned(parameter, sent); });
}

/// Floor under the published maximum of a rate or a time: none is 0.
inline constexpr double SmallestPositiveDouble = std::numeric_limits<double>::min();
static_assert(SmallestPositiveDouble == 2.2250738585072014e-308);

/// Runs one refresh of a published limit. A failure in it, such as a failed design read, leaves that limit as it was
/// and is never reported.
template <class Refresh>
void refreshLimit(Refresh&& refresh) {
    try {
        refresh();
    } catch (int) {
        // The value is in force already; a limit that users are shown is not worth a failed write.
    }
}

/// Fails with ValueOutOfRange unless `low <= value <= high`. A double that is not a number lies in no range.
template <class Value>
void requireRange(Value value, Value low, Value high) {
    require(value >= low && value <= high, ValueOutOfRange);
}

/// Fails with ValueOutOfRange unless `value` is one of `accepted`.
template <class Value>
void requireOneOf(Value value, std::initializer_list<Value> accepted) {
    require(std::find(accepted.begin(), accepted.end(), value) != accepted.end(), ValueOutOfRange);
}

}  // namespace quillon
