#include "cli/Units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "cli/Arguments.h"
#include "cli/ExitStatus.h"
#include "quillon/client/Text.h"

namespace quillon::cli {

namespace {

enum class Dimension {
    Time,
    Frequency,
    Ratio,
    Pixels,
    Lines,
    Pulses,
    Images,
    Bits,
    Bytes,
    Voltage,
    Temperature,
    Length,
    Speed,
    Density,
    DataRate
};

struct Unit {
    std::string_view name;
    Dimension dimension;
    int exponent;     ///< of ten: what a number is multiplied by to be in the base unit of its dimension
    int divisor = 1;  ///< what it is divided by besides
};

constexpr auto Units = std::to_array<Unit>({
    {"ns", Dimension::Time, -9},
    {"us", Dimension::Time, -6},
    {"\u00B5s", Dimension::Time, -6},  // the micro sign, as the applet has it
    {"\u03BCs", Dimension::Time, -6},  // the Greek letter
    {"ms", Dimension::Time, -3},
    {"s", Dimension::Time, 0},
    {"seconds", Dimension::Time, 0},
    {"Hz", Dimension::Frequency, 0},
    {"kHz", Dimension::Frequency, 3},
    {"MHz", Dimension::Frequency, 6},
    {"GHz", Dimension::Frequency, 9},
    {"%", Dimension::Ratio, -2},
    {"", Dimension::Ratio, 0},
    {"pixel", Dimension::Pixels, 0},
    {"pixels", Dimension::Pixels, 0},
    {"px", Dimension::Pixels, 0},
    {"lines", Dimension::Lines, 0},
    {"line", Dimension::Lines, 0},
    {"pulses", Dimension::Pulses, 0},
    {"pulse", Dimension::Pulses, 0},
    {"image", Dimension::Images, 0},
    {"images", Dimension::Images, 0},
    {"bit", Dimension::Bits, 0},
    {"bits", Dimension::Bits, 0},
    {"byte", Dimension::Bytes, 0},
    {"bytes", Dimension::Bytes, 0},
    {"B", Dimension::Bytes, 0},
    {"kB", Dimension::Bytes, 3},
    {"MB", Dimension::Bytes, 6},
    {"GB", Dimension::Bytes, 9},
    {"mV", Dimension::Voltage, -3},
    {"V", Dimension::Voltage, 0},
    {"\u00B0C", Dimension::Temperature, 0},
    {"C", Dimension::Temperature, 0},
    {"um", Dimension::Length, -6},
    {"\u00B5m", Dimension::Length, -6},
    {"\u03BCm", Dimension::Length, -6},
    {"mm", Dimension::Length, -3},
    {"m", Dimension::Length, 0},
    {"um/s", Dimension::Speed, -6},
    {"mm/s", Dimension::Speed, -3},
    {"m/s", Dimension::Speed, 0},
    {"m/min", Dimension::Speed, 0, 60},
    {"/um", Dimension::Density, 6},
    {"/mm", Dimension::Density, 3},
    {"/m", Dimension::Density, 0},
    {"B/s", Dimension::DataRate, 0},
    {"kB/s", Dimension::DataRate, 3},
    {"MB/s", Dimension::DataRate, 6},
    {"GB/s", Dimension::DataRate, 9},
});

const Unit* unitOf(std::string_view name) {
    const auto row = std::ranges::find(Units, name, &Unit::name);
    return row != Units.end() ? &*row : nullptr;
}

bool isReciprocal(Dimension one, Dimension other) {
    return std::pair(one, other) == std::pair(Dimension::Time, Dimension::Frequency) ||
           std::pair(one, other) == std::pair(Dimension::Frequency, Dimension::Time);
}

/// Powers of ten up to 22 are exact, and so is a result that a decimal number of few digits has: 8 / 1000 is 0.008.
double scaled(double number, int exponent) {
    const double power = std::pow(10.0, std::abs(exponent));
    return exponent < 0 ? number / power : number * power;
}

double converted(double number, const Unit& from, const Unit& to) {
    return scaled(number, from.exponent - to.exponent) * to.divisor / from.divisor;
}

/// The names of the units that can be taken for `wanted`; other names for one stand behind it in the table.
std::string namesFor(const Unit& wanted) {
    std::string names;
    for (std::size_t i = 0; i < Units.size(); ++i) {
        const Unit& unit = Units[i];
        const bool isOtherName = i > 0 && Units[i - 1].dimension == unit.dimension &&
                                 Units[i - 1].exponent == unit.exponent && Units[i - 1].divisor == unit.divisor;
        const bool fits = unit.dimension == wanted.dimension || isReciprocal(unit.dimension, wanted.dimension);
        if (fits && !isOtherName && !unit.name.empty()) {
            names += (names.empty() ? "" : ", ") + std::string(unit.name);
        }
    }
    return names;
}

/// A number and what stands behind it.
struct Quantity {
    double number;
    std::string unit;
};

std::optional<Quantity> split(std::string_view text) {
    const std::string words = trimmed(text);
    const char* begin = words.data() + (words.starts_with('+') ? 1 : 0);
    double number = 0;
    const auto [end, failure] = std::from_chars(begin, words.data() + words.size(), number);
    if (failure != std::errc{}) {
        return std::nullopt;
    }
    return Quantity{number, trimmed(std::string_view(words).substr(static_cast<std::size_t>(end - words.data())))};
}

}  // namespace

bool hasUnit(std::string_view text) {
    const auto quantity = split(text);
    return quantity && unitOf(quantity->unit) != nullptr && !quantity->unit.empty();
}

double parseQuantity(std::string_view text, std::string_view wanted) {
    const auto quantity = split(text);
    if (!quantity) {
        throw UsageError("it takes a number");
    }
    if (quantity->unit.empty()) {
        return quantity->number;
    }
    const Unit* to = unitOf(wanted);
    const Unit* from = unitOf(quantity->unit);
    if (to == nullptr) {
        throw UsageError(wanted.empty() ? "it takes a number" : "it takes a number in " + std::string(wanted));
    }
    if (from != nullptr && from->dimension == to->dimension) {
        return converted(quantity->number, *from, *to);
    }
    if (from != nullptr && isReciprocal(from->dimension, to->dimension)) {
        return scaled(1, -from->exponent - to->exponent) / quantity->number;
    }
    throw UsageError("it takes a number, alone or with one of the units " + namesFor(*to));
}

double parseTime(std::string_view text) {
    const auto quantity = split(text);
    const Unit* unit = quantity ? unitOf(quantity->unit) : nullptr;
    if (unit == nullptr || unit->dimension != Dimension::Time || !(quantity->number >= 0) ||
        !std::isfinite(quantity->number)) {
        throw UsageError("\"" + trimmed(text) + "\" is no time: it is written with its unit, as 20us, 1.5ms or 2s");
    }
    return scaled(quantity->number, unit->exponent + 6);
}

double parseMeasure(std::string_view text, const Measure& measure) {
    const auto quantity = split(text);
    const Unit& to = *unitOf(measure.unit);
    const Unit* from = quantity ? unitOf(quantity->unit) : nullptr;
    if (quantity && quantity->unit.empty() && quantity->number == 0) {
        return 0;
    }
    const bool fits = from != nullptr && from->dimension == to.dimension;
    const double number = fits ? converted(quantity->number, *from, to) : 0;
    if (!fits || !std::isfinite(number)) {
        throw UsageError("\"" + trimmed(text) + "\" is no " + measure.name + ": it is written with its unit, as " +
                         measure.example + "; units are " + namesFor(to));
    }
    return number;
}

double parseSeconds(std::string_view text) {
    const auto number = parseReal(trimmed(text));
    return number && *number >= 0 && std::isfinite(*number) ? *number : parseTime(text) / 1e6;
}

TimeUnit timeUnitFor(double microseconds) {
    constexpr double enough = 0.9999999;  // what a division leaves of a whole
    for (const TimeUnit& unit : {TimeUnit{"s", 1e6}, TimeUnit{"ms", 1e3}}) {
        if (microseconds >= unit.microseconds * enough) {
            return unit;
        }
    }
    return microseconds >= enough || microseconds == 0 ? TimeUnit{"\u00B5s", 1} : TimeUnit{"ns", 1e-3};
}

std::string timeInWords(double microseconds) {
    const TimeUnit unit = timeUnitFor(microseconds);
    return client::readable(microseconds / unit.microseconds) + " " + unit.name;
}

std::string rateInWords(double rate) {
    constexpr int digits = 7;
    if (!(rate > 0)) {
        return "0";
    }
    const double step = std::pow(10.0, std::floor(std::log10(rate)) + 1 - digits);
    return client::readable(std::round(rate / step) * step);
}

}  // namespace quillon::cli
