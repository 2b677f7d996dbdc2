/// @file
/// The keys of a configuration file's port, in the order of the file: where a save takes the value from, and what a
/// load does with it.
#pragma once

#include <array>
#include <string_view>

namespace quillon::state {

enum class Source {
    Field,     ///< what the applet remembers
    Applied,   ///< of a route: what the design accepted last
    Digio,     ///< the levels of two routes
    Computed,  ///< from what the design's camera simulator runs with
    Design,    ///< a live value
};

enum class Load {
    Applied,  ///< stored, and handed to the parameter's handler
    Stored,   ///< stored only
    NotRead,
};

struct ConfigurationKey {
    std::string_view name;
    Source source;
    Load load;
};

// clang-format off
inline constexpr auto ConfigurationKeys = std::to_array<ConfigurationKey>({
    {"FG_TIMEOUT", Source::Field, Load::Applied},
    {"FG_DEBUGSOURCE", Source::Field, Load::NotRead},
    {"FG_DEBUGINENABLE", Source::Design, Load::NotRead},
    {"FG_DEBUGFILE", Source::Design, Load::Applied},
    {"FG_DEBUGOUTENABLE", Source::Design, Load::NotRead},
    {"FG_PIXELFORMAT", Source::Field, Load::Applied},
    {"FG_VANTAGEPOINT", Source::Field, Load::Applied},
    {"FG_SENSORWIDTH", Source::Field, Load::Applied},
    {"FG_SENSORHEIGHT", Source::Field, Load::Applied},
    {"FG_WIDTH", Source::Field, Load::Applied},
    {"FG_HEIGHT", Source::Field, Load::Applied},
    {"FG_XOFFSET", Source::Field, Load::Applied},
    {"FG_YOFFSET", Source::Field, Load::Applied},
    {"FG_FORMAT", Source::Field, Load::Applied},
    {"FG_BITALIGNMENT", Source::Field, Load::Applied},
    {"FG_CUSTOM_BIT_SHIFT_RIGHT", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_ENABLE", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_WIDTH", Source::Field, Load::Stored},
    {"FG_CAMERASIMULATOR_LINE_GAP", Source::Field, Load::Stored},
    {"FG_CAMERASIMULATOR_HEIGHT", Source::Field, Load::Stored},
    {"FG_CAMERASIMULATOR_FRAME_GAP", Source::Field, Load::Stored},
    {"FG_CAMERASIMULATOR_PATTERN", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_PATTERN_OFFSET", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_ROLL", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_SELECT_MODE", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", Source::Computed, Load::Stored},
    {"FG_CAMERASIMULATOR_LINERATE", Source::Computed, Load::Stored},
    {"FG_CAMERASIMULATOR_FRAMERATE", Source::Computed, Load::Stored},
    {"FG_CAMERASIMULATOR_TRIGGER_MODE", Source::Field, Load::Applied},
    {"FG_CAMERASIMULATOR_ACTIVE", Source::Computed, Load::NotRead},
    {"FG_CAMERASIMULATOR_PASSIVE", Source::Computed, Load::NotRead},
    {"FG_IMG_SELECT_PERIOD", Source::Field, Load::Applied},
    {"FG_IMG_SELECT", Source::Field, Load::Applied},
    {"FG_SCALINGFACTOR_RED", Source::Field, Load::Applied},
    {"FG_SCALINGFACTOR_BLUE", Source::Field, Load::Applied},
    {"FG_SCALINGFACTOR_GREEN", Source::Field, Load::Applied},
    {"FG_LUT_ENABLE", Source::Field, Load::Applied},
    {"FG_LUT_TYPE", Source::Field, Load::Applied},
    {"FG_LUT_CUSTOM_FILE", Source::Field, Load::Stored},
    {"FG_PROCESSING_OFFSET", Source::Field, Load::Stored},
    {"FG_PROCESSING_GAIN", Source::Field, Load::Stored},
    {"FG_PROCESSING_GAMMA", Source::Field, Load::Stored},
    {"FG_PROCESSING_INVERT", Source::Field, Load::Stored},
    {"FG_LINETRIGGERMODE", Source::Field, Load::Applied},
    {"FG_EXSYNCON", Source::Field, Load::Applied},
    {"FG_LINETRIGGERINSRC", Source::Field, Load::Applied},
    {"FG_LINETRIGGERINPOLARITY", Source::Field, Load::Applied},
    {"FG_LINETRIGGERDEBOUNCING", Source::Field, Load::Applied},
    {"FG_LINE_DOWNSCALE", Source::Field, Load::Applied},
    {"FG_LINE_DOWNSCALEINIT", Source::Field, Load::Applied},
    {"FG_SHAFTENCODERON", Source::Field, Load::Applied},
    {"FG_SHAFTENCODERMODE", Source::Field, Load::Applied},
    {"FG_SHAFTENCODERINSRC", Source::Field, Load::Applied},
    {"FG_SHAFTENCODERLEADING", Source::Field, Load::Applied},
    {"FG_SHAFTENCODER_COMPENSATION_ENABLE", Source::Field, Load::Applied},
    {"FG_SHAFTENCODER_COMPENSATION_COUNT", Source::Design, Load::Applied},
    {"FG_LINEPERIODE", Source::Field, Load::Applied},
    {"FG_LINEEXPOSURE", Source::Field, Load::Applied},
    {"FG_EXSYNCPOLARITY", Source::Field, Load::Applied},
    {"FG_LINETRIGGERDELAY", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERMODE", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERON", Source::Field, Load::Applied},
    {"FG_FLASHON", Source::Field, Load::Applied},
    {"FG_IMGTRIGGER_ASYNC_HEIGHT", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERINSRC", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERINPOLARITY", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERGATEDELAY", Source::Field, Load::Applied},
    {"FG_IMGTRIGGERDEBOUNCING", Source::Field, Load::Applied},
    {"FG_FLASH_POLARITY", Source::Field, Load::Applied},
    {"FG_STROBEPULSEDELAY", Source::Field, Load::Applied},
    {"FG_SETSOFTWARETRIGGER", Source::Field, Load::Applied},
    {"FG_TRIGGERCAMERA_SOURCE", Source::Field, Load::Applied},
    {"FG_TRIGGERCAMERA_POLARITY", Source::Field, Load::Applied},
    {"FG_TRIGGEROUT_GPO_0_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_0_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_1_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_1_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_2_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_2_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_3_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_3_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_4_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_4_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_5_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_5_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_6_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_6_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_7_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_GPO_7_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_FRONT_GPO_0_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_FRONT_GPO_0_POLARITY", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_FRONT_GPO_1_SOURCE", Source::Applied, Load::Applied},
    {"FG_TRIGGEROUT_FRONT_GPO_1_POLARITY", Source::Applied, Load::Applied},
    {"FG_DIGIO_OUTPUT", Source::Digio, Load::Applied},
    {"FG_DIGIO_INPUT", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_0_SOURCE", Source::Applied, Load::Applied},
    {"FG_SIGNAL_ANALYZER_0_POLARITY", Source::Applied, Load::Applied},
    {"FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_0_PERIOD_MAX", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_0_PERIOD_MIN", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_0_PULSE_COUNT", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_1_SOURCE", Source::Applied, Load::Applied},
    {"FG_SIGNAL_ANALYZER_1_POLARITY", Source::Applied, Load::Applied},
    {"FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_1_PERIOD_MAX", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_1_PERIOD_MIN", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_1_PULSE_COUNT", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", Source::Design, Load::NotRead},
    {"FG_SIGNAL_ANALYZER_CLEAR", Source::Field, Load::Applied},
    {"FG_CLHS_TRIGGER_PULSE_MESSAGE", Source::Field, Load::Applied},
    {"FG_CUSTOM_SIGNAL_EVENT_0_SOURCE", Source::Applied, Load::Applied},
    {"FG_CUSTOM_SIGNAL_EVENT_0_POLARITY", Source::Applied, Load::Applied},
    {"FG_CUSTOM_SIGNAL_EVENT_1_SOURCE", Source::Applied, Load::Applied},
    {"FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", Source::Applied, Load::Applied},
});
// clang-format on

}  // namespace quillon::state
