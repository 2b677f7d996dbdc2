#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon::cli {

/// The number of a text such as "1.5ms", "20 kHz", "40%" or "0.2", in the unit `wanted` as the applet writes it ("µs",
/// "pixel", "" for a bare number); a number without a unit is in it already. A frequency is taken for a period and the
/// other way round: "20kHz" is 50 µs. Throws UsageError, telling the units that it takes, for what is no number and a
/// unit of something else.
double parseQuantity(std::string_view text, std::string_view wanted);

/// True for a text with a number in front and something behind it that may be a unit.
bool hasUnit(std::string_view text);

/// The microseconds of a time of 0 or more that says its unit: "10ms". Throws UsageError.
double parseTime(std::string_view text);

/// What is always written with a unit, 0 alone without one.
struct Measure {
    const char* name;     ///< in words
    const char* unit;     ///< in which it is wanted; one that this file knows
    const char* example;  ///< as it may be written
};
inline constexpr Measure Speed{"speed", "mm/s", "500mm/s"};
inline constexpr Measure Way{"way", "mm", "20mm"};
inline constexpr Measure Density{"density", "/mm", "10/mm"};
inline constexpr Measure DataRate{"data rate", "B/s", "1GB/s"};
/// Its finite number in that unit, with its sign. Throws UsageError.
double parseMeasure(std::string_view text, const Measure& measure);

/// The seconds of a time of 0 or more; a number without a unit is one of seconds. Throws UsageError.
double parseSeconds(std::string_view text);

/// The unit in which a time is written, and how many microseconds it is.
struct TimeUnit {
    const char* name;
    double microseconds;
};
TimeUnit timeUnitFor(double microseconds);
/// A time of 0 or more in that unit: "8 ns", "20 µs", "204.8 ms", "3 s".
std::string timeInWords(double microseconds);
/// A rate that comes of a division, with seven digits: "10240.03".
std::string rateInWords(double rate);

}  // namespace quillon::cli
