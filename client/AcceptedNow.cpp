#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "quillon/Vocabulary.h"
#include "quillon/client/Accepted.h"
#include "quillon/client/Applet.h"
#include "quillon/client/Text.h"

namespace quillon::client {

namespace {

constexpr std::uint64_t MaxRoiWidth = 16384;
constexpr std::uint64_t RoiAlignment = 4;
constexpr std::uint64_t MaxSelectPeriod = 256;
constexpr std::uint64_t NoWhole = std::numeric_limits<std::uint64_t>::max() / 4;  ///< above every bound
constexpr double LongestPeriod = 2097.144;
constexpr double LongestExposure = 1048.568;

// The camera simulator's line is made of cycles of 32 pixels, active part and gap each rounded up.
constexpr std::uint64_t CyclePixels = 32;
constexpr std::uint64_t MaxLinePixels = 294920;
constexpr std::uint64_t MaxFrameLines = 65536;
constexpr double MaxPixelRate = 3999999999.9999995;
constexpr double ClockPeriod = 8e-9;
constexpr double LowestRate = 0.1;
constexpr double HighestPixelFrequency = 4000.0;

std::uint64_t roundDown(std::uint64_t value, std::uint64_t step) {
    return value - value % step;
}

std::uint64_t roundUpToCycle(std::uint64_t pixels) {
    return roundDown(pixels + CyclePixels - 1, CyclePixels);
}

/// What is left of `whole` behind `part`; nothing where the part is the larger.
std::optional<std::uint64_t> rest(std::uint64_t whole, std::uint64_t part) {
    return part <= whole ? std::optional(whole - part) : std::nullopt;
}

/// A limit of the simulator as the applet forms it: truncated, and one below 0 binds nothing.
std::uint64_t simulatorLimit(double limit, std::uint64_t most) {
    const bool binds = limit >= 0.0 && limit < static_cast<double>(most);
    return binds ? static_cast<std::uint64_t>(limit) : most;
}

struct FormatBits {
    std::uint32_t format;
    std::uint32_t bits;
};
constexpr std::array Formats{FormatBits{FG_COL24, 8}, FormatBits{FG_COL30, 10}, FormatBits{FG_COL36, 12},
                             FormatBits{FG_COL42, 14}, FormatBits{FG_COL48, 16}};

/// Bits of a component; 0 for a format that is none of the applet's.
std::uint32_t bitsOf(std::uint32_t format) {
    const auto* const row = std::ranges::find(Formats, format, &FormatBits::format);
    return row != Formats.end() ? row->bits : 0;
}

bool isOutputRoute(std::int32_t id) {
    constexpr std::array outputs{
        FG_TRIGGERCAMERA_SOURCE,          FG_TRIGGEROUT_GPO_0_SOURCE,      FG_TRIGGEROUT_GPO_1_SOURCE,
        FG_TRIGGEROUT_GPO_2_SOURCE,       FG_TRIGGEROUT_GPO_3_SOURCE,      FG_TRIGGEROUT_GPO_4_SOURCE,
        FG_TRIGGEROUT_GPO_5_SOURCE,       FG_TRIGGEROUT_GPO_6_SOURCE,      FG_TRIGGEROUT_GPO_7_SOURCE,
        FG_TRIGGEROUT_FRONT_GPO_0_SOURCE, FG_TRIGGEROUT_FRONT_GPO_1_SOURCE};
    return std::ranges::find(outputs, id) != outputs.end();
}

/// What the applet holds of the parameters that bound others.
class State {
public:
    explicit State(const Applet& applet) : applet_(applet) {}

    std::uint64_t whole(FgParameterId id) const {
        std::uint32_t value = 0;
        return applet_.getUnsigned(id, value) == 0 ? value : 0;
    }
    double real(FgParameterId id) const {
        double value = 0;
        return applet_.getDouble(id, value) == 0 ? value : 0;
    }

    std::uint64_t roiRight() const { return whole(FG_WIDTH) + whole(FG_XOFFSET); }
    std::uint64_t roiBottom() const { return whole(FG_HEIGHT) + whole(FG_YOFFSET); }
    bool isVantagePointRight() const { return (whole(FG_VANTAGEPOINT) & 1U) != 0; }
    bool hasCustomShift() const { return whole(FG_BITALIGNMENT) == FG_CUSTOM_BIT_SHIFT_MODE; }
    std::uint64_t shift() const { return whole(FG_CUSTOM_BIT_SHIFT_RIGHT); }
    std::uint32_t formatBits() const { return bitsOf(static_cast<std::uint32_t>(whole(FG_FORMAT))); }
    bool isPeriodBound() const {
        const std::uint64_t mode = whole(FG_LINETRIGGERMODE);
        return mode == GRABBER_CONTROLLED || mode == GRABBER_CONTROLLED_GATED;
    }
    double longestExposure() const {
        return isPeriodBound() ? std::min(real(FG_LINEPERIODE), LongestExposure) : LongestExposure;
    }

    std::uint64_t simulatorMode() const { return whole(FG_CAMERASIMULATOR_SELECT_MODE); }
    std::uint64_t simulatorWidth() const { return whole(FG_CAMERASIMULATOR_WIDTH); }
    std::uint64_t simulatorHeight() const { return whole(FG_CAMERASIMULATOR_HEIGHT); }
    double highestLineRate() const { return MaxPixelRate / (static_cast<double>(simulatorWidth()) + CyclePixels); }
    double highestFrameRate() const {
        // The pixels of a frame are counted in 32 bits.
        return MaxPixelRate / static_cast<std::uint32_t>((simulatorWidth() + CyclePixels) * simulatorHeight());
    }
    /// Pixels in the time of a line.
    double linePixels() const {
        const double rate = simulatorMode() == FG_FRAMERATE
                                ? static_cast<double>(simulatorHeight()) * real(FG_CAMERASIMULATOR_FRAMERATE)
                                : real(FG_CAMERASIMULATOR_LINERATE);
        return MaxPixelRate / rate;
    }
    std::uint64_t simulatorWidthLimit() const {
        constexpr std::uint64_t most = MaxLinePixels - MaxLinePixels % CyclePixels;
        if (simulatorMode() == FG_PIXEL_FREQUENCY) {
            return rest(most, whole(FG_CAMERASIMULATOR_LINE_GAP)).value_or(0);
        }
        return simulatorLimit(linePixels() - CyclePixels, most);
    }
    std::uint64_t simulatorLineGapLimit() const {
        const std::uint64_t width = simulatorWidth();
        const std::uint64_t most = roundDown(rest(MaxLinePixels, width).value_or(0), CyclePixels);
        switch (simulatorMode()) {
            case FG_PIXEL_FREQUENCY: return most;
            case FG_LINERATE: return simulatorLimit(linePixels() - static_cast<double>(width) - CyclePixels, most);
            default: return 0;
        }
    }
    std::uint64_t simulatorHeightLimit() const {
        if (simulatorMode() != FG_FRAMERATE) {
            return rest(MaxFrameLines, whole(FG_CAMERASIMULATOR_FRAME_GAP)).value_or(0);
        }
        // The rate reads back rounded to whole cycles of a line. The one that was asked for, which the new height is
        // measured against, may be higher by half a cycle.
        const double height = static_cast<double>(simulatorHeight());
        const double cycles = 1.0 / (real(FG_CAMERASIMULATOR_FRAMERATE) * height * ClockPeriod);
        const double highestAsked = 1.0 / ((cycles - 0.5) * height * ClockPeriod);
        return simulatorLimit(MaxPixelRate / ((static_cast<double>(simulatorWidth()) + CyclePixels) * highestAsked),
                              MaxFrameLines);
    }
    std::uint64_t simulatorFrameGapLimit() const {
        return simulatorMode() == FG_PIXEL_FREQUENCY ? rest(MaxFrameLines, simulatorHeight()).value_or(0) : 0;
    }

private:
    const Applet& applet_;
};

using WholeRange = Range<std::uint64_t>;
using RealRange = Range<double>;

void bound(ParameterRecord& record, std::optional<std::uint64_t> most) {
    if (auto* const range = std::get_if<WholeRange>(&record.range)) {
        range->max = most.value_or(0);
        if (!most) {
            range->min = 1;  // an empty range
        }
    }
}

void boundBelow(ParameterRecord& record, std::uint64_t least) {
    if (auto* const range = std::get_if<WholeRange>(&record.range)) {
        range->min = least;
    }
}

void bound(ParameterRecord& record, double least, double most) {
    if (auto* const range = std::get_if<RealRange>(&record.range)) {
        range->min = least;
        range->max = most;
    }
}

/// The applet publishes more debug points than a design has; the one that is chosen is there.
void boundDebugSource(ParameterRecord& record, std::uint64_t chosen, std::optional<std::uint64_t> debugPoints) {
    if (!debugPoints) {
        boundBelow(record, chosen);
    }
    if (!debugPoints || *debugPoints > 0) {  // a design without points refuses none
        bound(record, debugPoints ? *debugPoints - 1 : chosen);
    }
}

template <typename Accepted>
void keepEntries(ParameterRecord& record, Accepted accepted) {
    std::erase_if(record.entries, [&](const EnumEntry& entry) { return !accepted(entry.value); });
}

/// The offsets that leave the region inside the line, and inside the sensor or the memory at the vantage points that
/// count from their other side.
std::optional<std::uint64_t> offsetLimit(const State& state, const ParameterRecord& record) {
    const auto* const published = std::get_if<WholeRange>(&record.range);
    const auto room = rest(MaxRoiWidth, state.whole(FG_WIDTH));
    if (!room || published == nullptr) {
        return std::nullopt;
    }
    return roundDown(std::min(*room, published->max), RoiAlignment);
}

bool isVantagePointAccepted(const State& state, std::int32_t value) {
    const bool right = (value & 1) != 0;
    const bool bottom = (value & 2) != 0;
    return state.roiRight() <= (right ? state.whole(FG_SENSORWIDTH) : MaxRoiWidth) &&
           (!bottom || state.roiBottom() <= state.whole(FG_SENSORHEIGHT));
}

std::string atMost(const char* name, std::uint64_t limit) {
    return std::string(name) + " to " + (limit == 0 ? "" : "at most ") + std::to_string(limit);
}
std::string atLeast(const char* name, std::uint64_t limit) {
    return std::string(name) + " to at least " + std::to_string(limit);
}
std::string orElse(const std::string& first, const std::string& second) {
    return first.empty() || second.empty() ? first + second : first + " or " + second;
}
/// The largest number of `limit` and below that prints with few digits and is not above it.
std::string atMostReal(const char* name, double limit) {
    const double scale = std::pow(10.0, 5 - std::ceil(std::log10(limit)));
    return std::string(name) + " to at most " + shortest(std::floor(limit * scale) / scale);
}

std::string formatsFor(std::uint64_t shift) {
    for (const FormatBits& row : Formats) {
        if (row.bits > shift) {
            return row.bits == 16
                       ? "FG_FORMAT to FG_COL48"
                       : "FG_FORMAT to a format of at least " + std::to_string(row.bits) + " bits a component";
        }
    }
    return "";
}

std::string stepBeforeOffset(const State& state, std::uint64_t value) {
    const std::uint64_t width = state.whole(FG_WIDTH);
    if (value + 4 > MaxRoiWidth || value % RoiAlignment != 0) {
        return "";
    }
    if (value + width > MaxRoiWidth) {
        return atMost("FG_WIDTH", MaxRoiWidth - value);
    }
    return state.isVantagePointRight() ? atLeast("FG_SENSORWIDTH", value + width)
                                       : "FG_VANTAGEPOINT to FG_VANTAGEPOINT_TOP_LEFT";
}

std::string stepBeforeVantagePoint(const State& state, std::uint64_t value) {
    const std::uint64_t roiRight = state.roiRight();
    const std::uint64_t roiBottom = state.roiBottom();
    const bool lacksWidth = (value & 1U) != 0 && roiRight > state.whole(FG_SENSORWIDTH);
    const bool lacksHeight = (value & 2U) != 0 && roiBottom > state.whole(FG_SENSORHEIGHT);
    const std::string width = lacksWidth ? atLeast("FG_SENSORWIDTH", roiRight) : "";
    const std::string height = lacksHeight ? atLeast("FG_SENSORHEIGHT", roiBottom) : "";
    return width.empty() || height.empty() ? width + height : width + " and " + height;
}

/// The rate that leaves a line of the simulator room for `pixels`.
std::string slowerFor(const State& state, double pixels) {
    // The time of a line is whole clock cycles, of 32 pixels each.
    const double lineRate = MaxPixelRate / (pixels + 2.0 * CyclePixels);
    return state.simulatorMode() == FG_FRAMERATE
               ? atMostReal("FG_CAMERASIMULATOR_FRAMERATE", lineRate / static_cast<double>(state.simulatorHeight()))
               : atMostReal("FG_CAMERASIMULATOR_LINERATE", lineRate);
}

std::string stepBeforeSimulatorWidth(const State& state, std::uint64_t value) {
    if (roundUpToCycle(value) > MaxLinePixels || value == 0) {
        return "";
    }
    return state.simulatorMode() == FG_PIXEL_FREQUENCY
               ? atMost("FG_CAMERASIMULATOR_LINE_GAP", roundDown(MaxLinePixels - roundUpToCycle(value), CyclePixels))
               : slowerFor(state, static_cast<double>(value));
}

std::string stepBeforeSimulatorLineGap(const State& state, std::uint64_t value) {
    if (roundUpToCycle(value) + CyclePixels > MaxLinePixels) {
        return "";
    }
    if (state.simulatorMode() != FG_PIXEL_FREQUENCY) {
        return "FG_CAMERASIMULATOR_SELECT_MODE to FG_PIXEL_FREQUENCY";
    }
    return atMost("FG_CAMERASIMULATOR_WIDTH", roundDown(MaxLinePixels - roundUpToCycle(value), CyclePixels));
}

std::string stepBeforeSimulatorHeight(const State& state, std::uint64_t value) {
    if (value == 0 || value > MaxFrameLines) {
        return "";
    }
    if (state.simulatorMode() != FG_FRAMERATE) {
        return atMost("FG_CAMERASIMULATOR_FRAME_GAP", MaxFrameLines - value);
    }
    const double pixels =
        (static_cast<double>(state.simulatorWidth()) + CyclePixels) * (static_cast<double>(value) + 1.0);
    return atMostReal("FG_CAMERASIMULATOR_FRAMERATE", MaxPixelRate / pixels);
}

std::string stepBeforeSimulatorFrameGap(const State& state, std::uint64_t value) {
    if (value >= MaxFrameLines) {
        return "";
    }
    return state.simulatorMode() != FG_PIXEL_FREQUENCY ? "FG_CAMERASIMULATOR_SELECT_MODE to FG_PIXEL_FREQUENCY"
                                                       : atMost("FG_CAMERASIMULATOR_HEIGHT", MaxFrameLines - value);
}

std::string stepBeforeLineRate(double value) {
    const double width = MaxPixelRate / value - CyclePixels;
    return value >= LowestRate && width >= CyclePixels
               ? atMost("FG_CAMERASIMULATOR_WIDTH", roundDown(static_cast<std::uint64_t>(width), CyclePixels))
               : "";
}

std::string stepBeforeFrameRate(const State& state, double value) {
    if (!(value >= LowestRate)) {
        return "";
    }
    const double height = MaxPixelRate / value / (static_cast<double>(state.simulatorWidth()) + CyclePixels);
    const double width = MaxPixelRate / value / static_cast<double>(state.simulatorHeight()) - CyclePixels;
    return orElse(height >= 1.0 ? atMost("FG_CAMERASIMULATOR_HEIGHT", static_cast<std::uint64_t>(height)) : "",
                  width >= CyclePixels
                      ? atMost("FG_CAMERASIMULATOR_WIDTH", roundDown(static_cast<std::uint64_t>(width), CyclePixels))
                      : "");
}

}  // namespace

ParameterRecord acceptedNow(const Applet& applet, ParameterRecord record, std::optional<std::uint64_t> debugPoints) {
    const State state(applet);
    switch (record.id) {
        case FG_WIDTH: bound(record, rest(MaxRoiWidth, state.whole(FG_XOFFSET))); break;
        case FG_XOFFSET: bound(record, offsetLimit(state, record)); break;
        case FG_SENSORWIDTH:
            bound(record, state.roiRight() <= MaxRoiWidth ? std::optional(MaxRoiWidth) : std::nullopt);
            break;
        case FG_VANTAGEPOINT:
            keepEntries(record, [&](std::int32_t value) { return isVantagePointAccepted(state, value); });
            break;
        case FG_FORMAT:
            keepEntries(record, [&](std::int32_t value) {
                return !state.hasCustomShift() || state.shift() < bitsOf(static_cast<std::uint32_t>(value));
            });
            break;
        case FG_BITALIGNMENT:
            keepEntries(record, [&](std::int32_t value) {
                return value != FG_CUSTOM_BIT_SHIFT_MODE || state.shift() < state.formatBits();
            });
            break;
        case FG_CUSTOM_BIT_SHIFT_RIGHT: bound(record, rest(state.formatBits(), 1)); break;
        case FG_LINEEXPOSURE: bound(record, 0.512, state.longestExposure()); break;
        case FG_LINETRIGGERDELAY: bound(record, 0.0, state.real(FG_LINEPERIODE)); break;
        case FG_IMG_SELECT_PERIOD: boundBelow(record, state.whole(FG_IMG_SELECT) + 1); break;
        case FG_IMG_SELECT: bound(record, rest(std::min(state.whole(FG_IMG_SELECT_PERIOD), MaxSelectPeriod), 1)); break;
        case FG_CAMERASIMULATOR_WIDTH: bound(record, state.simulatorWidthLimit()); break;
        case FG_CAMERASIMULATOR_LINE_GAP: bound(record, state.simulatorLineGapLimit()); break;
        case FG_CAMERASIMULATOR_HEIGHT: bound(record, state.simulatorHeightLimit()); break;
        case FG_CAMERASIMULATOR_FRAME_GAP: bound(record, state.simulatorFrameGapLimit()); break;
        case FG_CAMERASIMULATOR_PIXEL_FREQUENCY: bound(record, 0.0, HighestPixelFrequency); break;
        case FG_CAMERASIMULATOR_LINERATE: bound(record, LowestRate, state.highestLineRate()); break;
        case FG_CAMERASIMULATOR_FRAMERATE: bound(record, LowestRate, state.highestFrameRate()); break;
        case FG_DEBUGSOURCE: boundDebugSource(record, state.whole(FG_DEBUGSOURCE), debugPoints); break;
        default:
            if (isOutputRoute(record.id)) {
                // On offer for outputs, but no output of this design takes it.
                keepEntries(record, [](std::int32_t value) { return value != FG_SIGNAL_CAM0_INTERVAL_MODE; });
            }
    }
    return record;
}

std::string stepBefore(const Applet& applet, int id, double value) {
    const State state(applet);
    const auto whole = value >= 0.0 && value < 4294967296.0 ? static_cast<std::uint64_t>(value) : NoWhole;
    switch (id) {
        case FG_WIDTH:
            return whole >= RoiAlignment && whole <= MaxRoiWidth && whole % RoiAlignment == 0
                       ? atMost("FG_XOFFSET", MaxRoiWidth - whole)
                       : "";
        case FG_XOFFSET: return stepBeforeOffset(state, whole);
        case FG_VANTAGEPOINT: return whole <= 3 ? stepBeforeVantagePoint(state, whole) : "";
        case FG_FORMAT: {
            const std::uint32_t bits = bitsOf(static_cast<std::uint32_t>(whole));
            return bits != 0
                       ? orElse("FG_BITALIGNMENT to FG_LEFT_ALIGNED", atMost("FG_CUSTOM_BIT_SHIFT_RIGHT", bits - 1))
                       : "";
        }
        case FG_BITALIGNMENT:
            return whole == FG_CUSTOM_BIT_SHIFT_MODE && state.formatBits() != 0
                       ? atMost("FG_CUSTOM_BIT_SHIFT_RIGHT", state.formatBits() - 1)
                       : "";
        case FG_CUSTOM_BIT_SHIFT_RIGHT: return formatsFor(whole);
        case FG_LINEEXPOSURE:
            return value >= 0.512 && value <= LongestExposure ? "FG_LINEPERIODE to at least " + shortest(value) : "";
        case FG_LINETRIGGERDELAY:
            return value >= 0.0 && value <= LongestPeriod ? "FG_LINEPERIODE to at least " + shortest(value) : "";
        case FG_IMG_SELECT_PERIOD:
            return whole >= 1 && whole <= MaxSelectPeriod ? atMost("FG_IMG_SELECT", whole - 1) : "";
        case FG_IMG_SELECT: return whole < MaxSelectPeriod ? atLeast("FG_IMG_SELECT_PERIOD", whole + 1) : "";
        case FG_CAMERASIMULATOR_WIDTH: return stepBeforeSimulatorWidth(state, whole);
        case FG_CAMERASIMULATOR_LINE_GAP: return stepBeforeSimulatorLineGap(state, whole);
        case FG_CAMERASIMULATOR_HEIGHT: return stepBeforeSimulatorHeight(state, whole);
        case FG_CAMERASIMULATOR_FRAME_GAP: return stepBeforeSimulatorFrameGap(state, whole);
        case FG_CAMERASIMULATOR_LINERATE: return stepBeforeLineRate(value);
        case FG_CAMERASIMULATOR_FRAMERATE: return stepBeforeFrameRate(state, value);
        default: return "";
    }
}

std::optional<double> nearestAccepted(const ParameterRecord& accepted, double value) {
    return std::visit(
        [&](const auto& range) -> std::optional<double> {
            if constexpr (std::is_same_v<std::decay_t<decltype(range)>, std::monostate>) {
                return std::nullopt;
            } else {
                if (range.min > range.max || std::isnan(value)) {
                    return std::nullopt;
                }
                const auto least = static_cast<double>(range.min);
                const auto most = static_cast<double>(range.max);
                if constexpr (std::is_floating_point_v<decltype(range.min)>) {
                    return std::clamp(value, least, most);
                } else {
                    const double step = std::max(static_cast<double>(range.step), 1.0);
                    const double held = std::clamp(value, least, most);
                    return std::clamp(std::round(held / step) * step, least, std::floor(most / step) * step);
                }
            }
        },
        accepted.range);
}

}  // namespace quillon::client
