#pragma once

#include <string>
#include <string_view>

#include "quillon/client/Export.h"

namespace quillon::client {

/// The applet's texts are Latin-1 (the unit of the times has the byte 0xB5); this is the same text in UTF-8.
QUILLON_CLIENT_API std::string utf8(std::string_view latin1);

/// The shortest decimal form that reads back as the same number: "0.1", "1e+300", "nan".
QUILLON_CLIENT_API std::string shortest(double number);

/// A number as people write it: with twelve digits, as many as a configuration keeps, and without an exponent where it
/// is of an ordinary size: "10000000", "4000" for 3999.9999999999995.
QUILLON_CLIENT_API std::string readable(double number);

/// The bounds of a range, as readable() writes numbers, or the next such number inside the range.
QUILLON_CLIENT_API std::string readableLeast(double bound);
QUILLON_CLIENT_API std::string readableMost(double bound);

/// A unit of the applet in UTF-8, as people write it: "µs", "°C" for "Celsius".
QUILLON_CLIENT_API std::string readableUnit(std::string_view unit);

}  // namespace quillon::client
