#include "quillon/client/Accepted.h"

#include <algorithm>
#include <array>
#include <type_traits>

#include "quillon/client/Text.h"

namespace quillon::client {

namespace {

struct RangeReason {
    std::string_view name;
    std::string_view text;
};

// clang-format off
constexpr auto RangeReasons = std::to_array<RangeReason>({
    {"FG_WIDTH", "at most 16384 less FG_XOFFSET, a multiple of 4"},
    {"FG_XOFFSET", "at most 16384 less FG_WIDTH, a multiple of 4; with a vantage point on the right at most FG_SENSORWIDTH less FG_WIDTH; at the bottom left the buffer memory may hold less"},
    {"FG_VANTAGEPOINT", "a vantage point on the right needs an FG_SENSORWIDTH of at least FG_WIDTH plus FG_XOFFSET, one at the bottom an FG_SENSORHEIGHT of at least FG_HEIGHT plus FG_YOFFSET"},
    {"FG_SENSORWIDTH", "FG_WIDTH plus FG_XOFFSET must not exceed 16384"},
    {"FG_FORMAT", "only the formats that the loaded design tells of"},
    {"FG_BITALIGNMENT", "FG_CUSTOM_BIT_SHIFT_MODE must leave a shift that FG_FORMAT has room for"},
    {"FG_CUSTOM_BIT_SHIFT_RIGHT", "depends on FG_FORMAT; a value other than 0 counts with FG_BITALIGNMENT at FG_CUSTOM_BIT_SHIFT_MODE"},
    {"FG_LINEEXPOSURE", "with the line trigger modes GRABBER_CONTROLLED and GRABBER_CONTROLLED_GATED at most FG_LINEPERIODE, always at most 1048.568"},
    {"FG_LINETRIGGERDELAY", "at most FG_LINEPERIODE"},
    {"FG_IMG_SELECT_PERIOD", "above FG_IMG_SELECT"},
    {"FG_IMG_SELECT", "below FG_IMG_SELECT_PERIOD"},
    {"FG_CAMERASIMULATOR_SELECT_MODE", "the sizes, gaps and rates that are kept for a mode must fit together"},
    {"FG_DEBUGSOURCE", "the debug points that the loaded design has"},
    {"FG_CAMERASIMULATOR_WIDTH", "together with the line gap at most 294920, and no more than the speed mode's rates leave"},
    {"FG_CAMERASIMULATOR_LINE_GAP", "together with the width at most 294920, and no more than the speed mode's rates leave"},
    {"FG_CAMERASIMULATOR_HEIGHT", "together with the frame gap at most 65536, and no more than the speed mode's rates leave"},
    {"FG_CAMERASIMULATOR_FRAME_GAP", "together with the height at most 65536; 0 in the line rate and frame rate modes"},
    {"FG_CAMERASIMULATOR_LINERATE", "the highest pixel rate of the design divided by the line in use"},
    {"FG_CAMERASIMULATOR_FRAMERATE", "the highest pixel rate of the design divided by the frame in use"},
    {"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", "at most the highest pixel rate of the design"},
});
// clang-format on

constexpr const char* NoValue = "no value at present";

// A step below this is the catalogue's way to say that a double takes any value.
constexpr double AnyStep = 1e-12;

/// The numbers of a range that people read. Both bounds are accepted as they are written.
template <typename Number>
struct RangeWords {
    explicit RangeWords(const Range<Number>& range) {
        if constexpr (std::is_floating_point_v<Number>) {
            min = readableLeast(range.min);
            max = readableMost(range.max);
            step = readable(range.step);
        } else {
            min = std::to_string(range.min);
            max = std::to_string(range.max);
            step = std::to_string(range.step);
        }
    }
    std::string min;
    std::string max;
    std::string step;
};

template <typename Number>
std::string rangeText(const Range<Number>& range, const std::string& unit) {
    if (range.min > range.max) {
        return NoValue;
    }
    const RangeWords words(range);
    if (range.min == range.max) {
        // A read-out without a told range has no step either.
        return range.step == Number{0} ? "" : "only " + words.min;
    }
    std::string text = words.min + " to " + words.max + (unit.empty() ? "" : " " + unit);
    const bool tellsStep =
        std::is_floating_point_v<Number> ? static_cast<double>(range.step) > AnyStep : range.step > Number{1};
    return tellsStep ? text + " in steps of " + words.step : text;
}

std::string enumeratorList(const ParameterRecord& record) {
    std::string list;
    for (const EnumEntry& entry : record.entries) {
        list += (list.empty() ? "" : ", ") + entry.name + " (" + std::to_string(entry.value) + ")";
    }
    return list.empty() ? NoValue : list;
}

bool isField(RecordKind kind) {
    return kind == RecordKind::UIntField || kind == RecordKind::IntField || kind == RecordKind::DoubleField;
}

}  // namespace

std::string acceptedValues(const ParameterRecord& record) {
    if (record.kind == RecordKind::Enum) {
        return enumeratorList(record);
    }
    const std::string range = std::visit(
        [&](const auto& held) -> std::string {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
                return "";
            } else {
                return rangeText(held, readableUnit(record.unit));
            }
        },
        record.range);
    return isField(record.kind) ? std::to_string(record.fieldSize) + " entries of " + range : range;
}

std::string_view rangeReason(std::string_view name) {
    const auto row = std::ranges::find(RangeReasons, name, &RangeReason::name);
    return row != RangeReasons.end() ? row->text : "";
}

}  // namespace quillon::client
