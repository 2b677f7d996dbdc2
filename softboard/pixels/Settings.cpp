#include "softboard/pixels/Settings.h"

#include <algorithm>

namespace softboard::pixels {

namespace {

constexpr std::array<std::uint32_t, 5> Widths = {8, 10, 12, 14, 16};  ///< bits, of cameras and of formats

std::uint32_t formatBitsOf(const Settings& settings) {
    return std::find(Widths.begin(), Widths.end(), settings.formatBits) != Widths.end() ? settings.formatBits : 0;
}

}  // namespace

Settings effective(const Settings& settings) {
    Settings result = settings;
    const auto* width = std::lower_bound(Widths.begin(), Widths.end(), settings.bits);
    result.bits = width != Widths.end() ? *width : Widths.back();
    for (std::uint32_t& component : result.order) {
        component = std::min(component, 2U);
    }
    result.ramp.yDivisor = std::max(settings.ramp.yDivisor, 1U);
    result.ramp.frameDivisor = std::max(settings.ramp.frameDivisor, 1U);
    result.sensorWidth = std::min(settings.sensorWidth, MostSensorPixels);
    for (std::size_t colour = 0; colour < Colours; ++colour) {
        result.coefficient[colour] =
            static_cast<double>(coefficientSteps(settings.coefficient[colour])) / CoefficientSteps;
        if (!settings.lookup) {
            result.table[colour] = nullptr;
        }
    }
    result.shift = std::min(settings.shift, 16U);
    result.formatBits = formatBitsOf(settings);
    return result;
}

std::uint32_t coefficientSteps(double coefficient) {
    // Written so that what is no number fails the comparison.
    if (!(coefficient > 0.0)) {
        return 0;
    }
    const double steps = coefficient * CoefficientSteps + 0.5;
    return steps < MostCoefficientSteps ? static_cast<std::uint32_t>(steps) : MostCoefficientSteps;
}

std::size_t lineBytes(const Settings& settings) {
    return (static_cast<std::size_t>(settings.xLength) * Colours * formatBitsOf(settings) + 7) / 8;
}

}  // namespace softboard::pixels
