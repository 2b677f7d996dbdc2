#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quillon {

/// One value of an enumerated parameter: the words for people, the number, and the symbolic name.
struct EnumEntry {
    const char* label;
    int value;
    const char* name;
};

/// The values of an enumerated parameter, in the order in which its description lists them.
using Enumeration = std::span<const EnumEntry>;

/// Whether `value` is one of the enumeration's.
constexpr bool holds(Enumeration entries, int value) {
    for (const EnumEntry& entry : entries) {
        if (entry.value == value) {
            return true;
        }
    }
    return false;
}

/// The symbolic name of `value`, or null.
constexpr const char* nameOf(Enumeration entries, int value) {
    for (const EnumEntry& entry : entries) {
        if (entry.value == value) {
            return entry.name;
        }
    }
    return nullptr;
}

/// The value with the symbolic name `name`.
constexpr std::optional<int> valueOf(Enumeration entries, std::string_view name) {
    for (const EnumEntry& entry : entries) {
        if (name == entry.name) {
            return entry.value;
        }
    }
    return std::nullopt;
}

inline constexpr EnumEntry EnumApply[] = {
    {"Apply", 1, "FG_APPLY"},
};

inline constexpr EnumEntry EnumBitAlignment[] = {
    {"Left Aligned", 1, "FG_LEFT_ALIGNED"},
    {"Right Aligned", 0, "FG_RIGHT_ALIGNED"},
    {"Custom Bit Shift", 2, "FG_CUSTOM_BIT_SHIFT_MODE"},
};

inline constexpr EnumEntry EnumBusy[] = {
    {"Busy Flag is set", 1, "IS_BUSY"},
    {"Busy Flag is not set", 0, "IS_NOT_BUSY"},
};

inline constexpr EnumEntry EnumImageSource[] = {
    {"Camera", 0, "FG_CAMPORT"},
    {"Simulator", 1, "FG_CAMERASIMULATOR"},
};

inline constexpr EnumEntry EnumImageTriggerMode[] = {
    {"Free Run", 0, "FREE_RUN"},
    {"Async External Trigger", 2, "ASYNC_TRIGGER"},
    {"Async Multi Buffer External Trigger", 8, "ASYNC_TRIGGER_MULTIFRAME"},
    {"Gated, External Triggered", 5, "ASYNC_GATED"},
    {"Gated Multi Buffer, External Triggered", 6, "ASYNC_GATED_MULTIFRAME"},
};

inline constexpr EnumEntry EnumImageTriggerSource[] = {
    {"GPI Trigger Source 0", 0, "TRGINSRC_GPI_0"},
    {"GPI Trigger Source 1", 1, "TRGINSRC_GPI_1"},
    {"GPI Trigger Source 2", 2, "TRGINSRC_GPI_2"},
    {"GPI Trigger Source 3", 3, "TRGINSRC_GPI_3"},
    {"GPI Trigger Source 4 (not available on Tarnbridge)", 4, "TRGINSRC_GPI_4"},
    {"GPI Trigger Source 5 (not available on Tarnbridge)", 5, "TRGINSRC_GPI_5"},
    {"GPI Trigger Source 6 (not available on Tarnbridge)", 6, "TRGINSRC_GPI_6"},
    {"GPI Trigger Source 7 (not available on Tarnbridge)", 7, "TRGINSRC_GPI_7"},
    {"Front GPI Trigger Source 0", 16, "TRGINSRC_FRONT_GPI_0"},
    {"Front GPI Trigger Source 1", 17, "TRGINSRC_FRONT_GPI_1"},
    {"Front GPI Trigger Source 2", 18, "TRGINSRC_FRONT_GPI_2"},
    {"Front GPI Trigger Source 3", 19, "TRGINSRC_FRONT_GPI_3"},
    {"Software Trigger", -1, "TRGINSOFTWARE"},
};

inline constexpr EnumEntry EnumInputPolarity[] = {
    {"Low Active", 1, "HIGH_ON_ZERO_LOW"},
    {"High Active", 0, "HIGH_ON_ZERO_HIGH"},
};

inline constexpr EnumEntry EnumLeadingSignal[] = {
    {"Source A", 0, "SOURCE_A"},
    {"Source B", 1, "SOURCE_B"},
};

inline constexpr EnumEntry EnumLineOrder[] = {
    {"RGB", 0, "FG_LINEORDER_RGB"}, {"BGR", 1, "FG_LINEORDER_BGR"}, {"RBG", 2, "FG_LINEORDER_RBG"},
    {"BRG", 3, "FG_LINEORDER_BRG"}, {"GBR", 4, "FG_LINEORDER_GBR"}, {"GRB", 5, "FG_LINEORDER_GRB"},
};

inline constexpr EnumEntry EnumLineTriggerMode[] = {
    {"Grabber controlled", 1, "GRABBER_CONTROLLED"},
    {"Async External Trigger", 2, "ASYNC_TRIGGER"},
    {"Gated, Grabber controlled", 6, "GRABBER_CONTROLLED_GATED"},
    {"Gated, External Triggered", 5, "ASYNC_GATED"},
};

inline constexpr EnumEntry EnumLutImplementation[] = {
    {"Full LUT", 0, "LUT_IMPLEMENTATION_FULL_LUT"},
    {"KneeLUT", 1, "LUT_IMPLEMENTATION_KNEELUT"},
};

inline constexpr EnumEntry EnumLutType[] = {
    {"Processor", 3, "LUT_TYPE_PROCESSING"},
    {"User file", 0, "LUT_TYPE_CUSTOM"},
};

inline constexpr EnumEntry EnumOnOff[] = {
    {"On", 1, "FG_ON"},
    {"Off", 0, "FG_OFF"},
};

inline constexpr EnumEntry EnumOutputFormat[] = {
    {"Color 24bit", 2, "FG_COL24"}, {"Color 30bit", 5, "FG_COL30"}, {"Color 36bit", 7, "FG_COL36"},
    {"Color 42bit", 9, "FG_COL42"}, {"Color 48bit", 6, "FG_COL48"},
};

inline constexpr EnumEntry EnumOutputPolarity[] = {
    {"Low Active", 0, "FG_LOW"},
    {"High Active", 1, "FG_HIGH"},
};

inline constexpr EnumEntry EnumPixelFormat[] = {
    {"RGB8", 1025, "RGB8"},   {"RGB10", 1026, "RGB10"}, {"RGB12", 1027, "RGB12"},
    {"RGB14", 1028, "RGB14"}, {"RGB16", 1029, "RGB16"},
};

inline constexpr EnumEntry EnumPulseMessage[] = {
    {"Pulse Immediate", 1, "FG_PULSE_IMMEDIATE"},
    {"Pulse Width", 23, "FG_PULSE_WIDTH"},
};

inline constexpr EnumEntry EnumShaftEncoderMode[] = {
    {"Filter x1", 1, "FILTER_X1"},
    {"Filter x2", 2, "FILTER_X2"},
    {"Filter x4", 3, "FILTER_X4"},
};

inline constexpr EnumEntry EnumSignalSource[] = {
    {"Gnd", 4, "GND"},
    {"Vcc", 5, "VCC"},
    {"Cam0 Exsync", 2000, "FG_SIGNAL_CAM0_EXSYNC"},
    {"Cam0 Exsync2", 2001, "FG_SIGNAL_CAM0_EXSYNC2"},
    {"Cam0 Flash", 2002, "FG_SIGNAL_CAM0_FLASH"},
    {"Cam0 LVAL", 2007, "FG_SIGNAL_CAM0_LVAL"},
    {"Cam0 FVAL", 2008, "FG_SIGNAL_CAM0_FVAL"},
    {"GPI 0", 1001, "FG_SIGNAL_GPI_0"},
    {"GPI 1", 1011, "FG_SIGNAL_GPI_1"},
    {"GPI 2", 1021, "FG_SIGNAL_GPI_2"},
    {"GPI 3", 1031, "FG_SIGNAL_GPI_3"},
    {"GPI 4", 1041, "FG_SIGNAL_GPI_4"},
    {"GPI 5", 1051, "FG_SIGNAL_GPI_5"},
    {"GPI 6", 1061, "FG_SIGNAL_GPI_6"},
    {"GPI 7", 1071, "FG_SIGNAL_GPI_7"},
    {"Front GPI 0", 1081, "FG_SIGNAL_FRONT_GPI_0"},
    {"Front GPI 1", 1091, "FG_SIGNAL_FRONT_GPI_1"},
    {"Front GPI 2", 1101, "FG_SIGNAL_FRONT_GPI_2"},
    {"Front GPI 3", 1111, "FG_SIGNAL_FRONT_GPI_3"},
    {"Interval Mode", 1, "FG_SIGNAL_CAM0_INTERVAL_MODE"},
};

inline constexpr EnumEntry EnumSignalSourceFull[] = {
    {"Gnd", 4, "GND"},
    {"Vcc", 5, "VCC"},
    {"Cam0 Exsync", 2000, "FG_SIGNAL_CAM0_EXSYNC"},
    {"Cam0 Exsync2", 2001, "FG_SIGNAL_CAM0_EXSYNC2"},
    {"Cam0 Flash", 2002, "FG_SIGNAL_CAM0_FLASH"},
    {"Cam0 LVAL", 2007, "FG_SIGNAL_CAM0_LVAL"},
    {"Cam0 FVAL", 2008, "FG_SIGNAL_CAM0_FVAL"},
    {"Cam0 Line Transfer Start", 2100, "FG_SIGNAL_CAM0_LINE_START"},
    {"Cam0 Line Transfer End", 2101, "FG_SIGNAL_CAM0_LINE_END"},
    {"Cam0 Frame Transfer Start", 2102, "FG_SIGNAL_CAM0_FRAME_START"},
    {"Cam0 Frame Transfer End", 2103, "FG_SIGNAL_CAM0_FRAME_END"},
    {"GPI 0", 1001, "FG_SIGNAL_GPI_0"},
    {"GPI 1", 1011, "FG_SIGNAL_GPI_1"},
    {"GPI 2", 1021, "FG_SIGNAL_GPI_2"},
    {"GPI 3", 1031, "FG_SIGNAL_GPI_3"},
    {"GPI 4", 1041, "FG_SIGNAL_GPI_4"},
    {"GPI 5", 1051, "FG_SIGNAL_GPI_5"},
    {"GPI 6", 1061, "FG_SIGNAL_GPI_6"},
    {"GPI 7", 1071, "FG_SIGNAL_GPI_7"},
    {"Front GPI 0", 1081, "FG_SIGNAL_FRONT_GPI_0"},
    {"Front GPI 1", 1091, "FG_SIGNAL_FRONT_GPI_1"},
    {"Front GPI 2", 1101, "FG_SIGNAL_FRONT_GPI_2"},
    {"Front GPI 3", 1111, "FG_SIGNAL_FRONT_GPI_3"},
};

inline constexpr EnumEntry EnumSimulatorPattern[] = {
    {"Horizontal", 1, "FG_HORIZONTAL"},
    {"Vertical", 2, "FG_VERTICAL"},
    {"Diagonal", 3, "FG_DIAGONAL"},
};

inline constexpr EnumEntry EnumSimulatorSpeed[] = {
    {"Pixel Frequency", 0, "FG_PIXEL_FREQUENCY"},
    {"Line Rate", 1, "FG_LINERATE"},
    {"Frame Rate", 2, "FG_FRAMERATE"},
};

inline constexpr EnumEntry EnumSimulatorTrigger[] = {
    {"Free Run", 0, "SIMULATION_FREE_RUN"},
    {"Rising Edge Triggers Line", 8, "RISING_EDGE_TRIGGERS_LINE"},
    {"Rising Edge Triggers Frame", 9, "RISING_EDGE_TRIGGERS_FRAME"},
};

inline constexpr EnumEntry EnumTriggerSource[] = {
    {"GPI Trigger Source 0", 0, "TRGINSRC_GPI_0"},
    {"GPI Trigger Source 1", 1, "TRGINSRC_GPI_1"},
    {"GPI Trigger Source 2", 2, "TRGINSRC_GPI_2"},
    {"GPI Trigger Source 3", 3, "TRGINSRC_GPI_3"},
    {"GPI Trigger Source 4 (not available on Tarnbridge)", 4, "TRGINSRC_GPI_4"},
    {"GPI Trigger Source 5 (not available on Tarnbridge)", 5, "TRGINSRC_GPI_5"},
    {"GPI Trigger Source 6 (not available on Tarnbridge)", 6, "TRGINSRC_GPI_6"},
    {"GPI Trigger Source 7 (not available on Tarnbridge)", 7, "TRGINSRC_GPI_7"},
    {"Front GPI Trigger Source 0", 16, "TRGINSRC_FRONT_GPI_0"},
    {"Front GPI Trigger Source 1", 17, "TRGINSRC_FRONT_GPI_1"},
    {"Front GPI Trigger Source 2", 18, "TRGINSRC_FRONT_GPI_2"},
    {"Front GPI Trigger Source 3", 19, "TRGINSRC_FRONT_GPI_3"},
};

inline constexpr EnumEntry EnumVantagePoint[] = {
    {"Top-Left", 0, "FG_VANTAGEPOINT_TOP_LEFT"},
    {"Top-Right", 1, "FG_VANTAGEPOINT_TOP_RIGHT"},
    {"Bottom-Left", 2, "FG_VANTAGEPOINT_BOTTOM_LEFT"},
    {"Bottom-Right", 3, "FG_VANTAGEPOINT_BOTTOM_RIGHT"},
};

inline constexpr EnumEntry EnumWriteFlag[] = {
    {"EndOfLine", 0, "FG_ENDOFLINE"},
    {"EndOfFrame", 1, "FG_ENDOFFRAME"},
};

inline constexpr EnumEntry EnumYesNo[] = {
    {"Yes", 1, "FG_YES"},
    {"No", 0, "FG_NO"},
};

}  // namespace quillon
