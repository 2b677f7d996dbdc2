#pragma once

#include <span>

#include "quillon/Vocabulary.h"

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

// An entry takes its number and its name from the enumerator.
#define ENTRY(label, enumerator)       \
    EnumEntry {                        \
        label, enumerator, #enumerator \
    }

inline constexpr EnumEntry EnumApply[] = {
    ENTRY("Apply", FG_APPLY),
};

inline constexpr EnumEntry EnumBitAlignment[] = {
    ENTRY("Left Aligned", FG_LEFT_ALIGNED),
    ENTRY("Right Aligned", FG_RIGHT_ALIGNED),
    ENTRY("Custom Bit Shift", FG_CUSTOM_BIT_SHIFT_MODE),
};

inline constexpr EnumEntry EnumBusy[] = {
    ENTRY("Busy Flag is set", IS_BUSY),
    ENTRY("Busy Flag is not set", IS_NOT_BUSY),
};

inline constexpr EnumEntry EnumImageSource[] = {
    ENTRY("Camera", FG_CAMPORT),
    ENTRY("Simulator", FG_CAMERASIMULATOR),
};

inline constexpr EnumEntry EnumImageTriggerMode[] = {
    ENTRY("Free Run", FREE_RUN),
    ENTRY("Async External Trigger", ASYNC_TRIGGER),
    ENTRY("Async Multi Buffer External Trigger", ASYNC_TRIGGER_MULTIFRAME),
    ENTRY("Gated, External Triggered", ASYNC_GATED),
    ENTRY("Gated Multi Buffer, External Triggered", ASYNC_GATED_MULTIFRAME),
};

inline constexpr EnumEntry EnumImageTriggerSource[] = {
    ENTRY("GPI Trigger Source 0", TRGINSRC_GPI_0),
    ENTRY("GPI Trigger Source 1", TRGINSRC_GPI_1),
    ENTRY("GPI Trigger Source 2", TRGINSRC_GPI_2),
    ENTRY("GPI Trigger Source 3", TRGINSRC_GPI_3),
    ENTRY("GPI Trigger Source 4 (not available on Tarnbridge)", TRGINSRC_GPI_4),
    ENTRY("GPI Trigger Source 5 (not available on Tarnbridge)", TRGINSRC_GPI_5),
    ENTRY("GPI Trigger Source 6 (not available on Tarnbridge)", TRGINSRC_GPI_6),
    ENTRY("GPI Trigger Source 7 (not available on Tarnbridge)", TRGINSRC_GPI_7),
    ENTRY("Front GPI Trigger Source 0", TRGINSRC_FRONT_GPI_0),
    ENTRY("Front GPI Trigger Source 1", TRGINSRC_FRONT_GPI_1),
    ENTRY("Front GPI Trigger Source 2", TRGINSRC_FRONT_GPI_2),
    ENTRY("Front GPI Trigger Source 3", TRGINSRC_FRONT_GPI_3),
    ENTRY("Software Trigger", TRGINSOFTWARE),
};

inline constexpr EnumEntry EnumInputPolarity[] = {
    ENTRY("Low Active", HIGH_ON_ZERO_LOW),
    ENTRY("High Active", HIGH_ON_ZERO_HIGH),
};

inline constexpr EnumEntry EnumLeadingSignal[] = {
    ENTRY("Source A", SOURCE_A),
    ENTRY("Source B", SOURCE_B),
};

inline constexpr EnumEntry EnumLineOrder[] = {
    ENTRY("RGB", FG_LINEORDER_RGB), ENTRY("BGR", FG_LINEORDER_BGR), ENTRY("RBG", FG_LINEORDER_RBG),
    ENTRY("BRG", FG_LINEORDER_BRG), ENTRY("GBR", FG_LINEORDER_GBR), ENTRY("GRB", FG_LINEORDER_GRB),
};

inline constexpr EnumEntry EnumLineTriggerMode[] = {
    ENTRY("Grabber controlled", GRABBER_CONTROLLED),
    ENTRY("Async External Trigger", ASYNC_TRIGGER),
    ENTRY("Gated, Grabber controlled", GRABBER_CONTROLLED_GATED),
    ENTRY("Gated, External Triggered", ASYNC_GATED),
};

inline constexpr EnumEntry EnumLutImplementation[] = {
    ENTRY("Full LUT", LUT_IMPLEMENTATION_FULL_LUT),
    ENTRY("KneeLUT", LUT_IMPLEMENTATION_KNEELUT),
};

inline constexpr EnumEntry EnumLutType[] = {
    ENTRY("Processor", LUT_TYPE_PROCESSING),
    ENTRY("User file", LUT_TYPE_CUSTOM),
};

inline constexpr EnumEntry EnumOnOff[] = {
    ENTRY("On", FG_ON),
    ENTRY("Off", FG_OFF),
};

inline constexpr EnumEntry EnumOutputFormat[] = {
    ENTRY("Color 24bit", FG_COL24), ENTRY("Color 30bit", FG_COL30), ENTRY("Color 36bit", FG_COL36),
    ENTRY("Color 42bit", FG_COL42), ENTRY("Color 48bit", FG_COL48),
};

inline constexpr EnumEntry EnumOutputPolarity[] = {
    ENTRY("Low Active", FG_LOW),
    ENTRY("High Active", FG_HIGH),
};

inline constexpr EnumEntry EnumPixelFormat[] = {
    ENTRY("RGB8", RGB8), ENTRY("RGB10", RGB10), ENTRY("RGB12", RGB12), ENTRY("RGB14", RGB14), ENTRY("RGB16", RGB16),
};

inline constexpr EnumEntry EnumPulseMessage[] = {
    ENTRY("Pulse Immediate", FG_PULSE_IMMEDIATE),
    ENTRY("Pulse Width", FG_PULSE_WIDTH),
};

inline constexpr EnumEntry EnumShaftEncoderMode[] = {
    ENTRY("Filter x1", FILTER_X1),
    ENTRY("Filter x2", FILTER_X2),
    ENTRY("Filter x4", FILTER_X4),
};

inline constexpr EnumEntry EnumSignalSource[] = {
    ENTRY("Gnd", GND),
    ENTRY("Vcc", VCC),
    ENTRY("Cam0 Exsync", FG_SIGNAL_CAM0_EXSYNC),
    ENTRY("Cam0 Exsync2", FG_SIGNAL_CAM0_EXSYNC2),
    ENTRY("Cam0 Flash", FG_SIGNAL_CAM0_FLASH),
    ENTRY("Cam0 LVAL", FG_SIGNAL_CAM0_LVAL),
    ENTRY("Cam0 FVAL", FG_SIGNAL_CAM0_FVAL),
    ENTRY("GPI 0", FG_SIGNAL_GPI_0),
    ENTRY("GPI 1", FG_SIGNAL_GPI_1),
    ENTRY("GPI 2", FG_SIGNAL_GPI_2),
    ENTRY("GPI 3", FG_SIGNAL_GPI_3),
    ENTRY("GPI 4", FG_SIGNAL_GPI_4),
    ENTRY("GPI 5", FG_SIGNAL_GPI_5),
    ENTRY("GPI 6", FG_SIGNAL_GPI_6),
    ENTRY("GPI 7", FG_SIGNAL_GPI_7),
    ENTRY("Front GPI 0", FG_SIGNAL_FRONT_GPI_0),
    ENTRY("Front GPI 1", FG_SIGNAL_FRONT_GPI_1),
    ENTRY("Front GPI 2", FG_SIGNAL_FRONT_GPI_2),
    ENTRY("Front GPI 3", FG_SIGNAL_FRONT_GPI_3),
    ENTRY("Interval Mode", FG_SIGNAL_CAM0_INTERVAL_MODE),
};

inline constexpr EnumEntry EnumSignalSourceFull[] = {
    ENTRY("Gnd", GND),
    ENTRY("Vcc", VCC),
    ENTRY("Cam0 Exsync", FG_SIGNAL_CAM0_EXSYNC),
    ENTRY("Cam0 Exsync2", FG_SIGNAL_CAM0_EXSYNC2),
    ENTRY("Cam0 Flash", FG_SIGNAL_CAM0_FLASH),
    ENTRY("Cam0 LVAL", FG_SIGNAL_CAM0_LVAL),
    ENTRY("Cam0 FVAL", FG_SIGNAL_CAM0_FVAL),
    ENTRY("Cam0 Line Transfer Start", FG_SIGNAL_CAM0_LINE_START),
    ENTRY("Cam0 Line Transfer End", FG_SIGNAL_CAM0_LINE_END),
    ENTRY("Cam0 Frame Transfer Start", FG_SIGNAL_CAM0_FRAME_START),
    ENTRY("Cam0 Frame Transfer End", FG_SIGNAL_CAM0_FRAME_END),
    ENTRY("GPI 0", FG_SIGNAL_GPI_0),
    ENTRY("GPI 1", FG_SIGNAL_GPI_1),
    ENTRY("GPI 2", FG_SIGNAL_GPI_2),
    ENTRY("GPI 3", FG_SIGNAL_GPI_3),
    ENTRY("GPI 4", FG_SIGNAL_GPI_4),
    ENTRY("GPI 5", FG_SIGNAL_GPI_5),
    ENTRY("GPI 6", FG_SIGNAL_GPI_6),
    ENTRY("GPI 7", FG_SIGNAL_GPI_7),
    ENTRY("Front GPI 0", FG_SIGNAL_FRONT_GPI_0),
    ENTRY("Front GPI 1", FG_SIGNAL_FRONT_GPI_1),
    ENTRY("Front GPI 2", FG_SIGNAL_FRONT_GPI_2),
    ENTRY("Front GPI 3", FG_SIGNAL_FRONT_GPI_3),
};

inline constexpr EnumEntry EnumSimulatorPattern[] = {
    ENTRY("Horizontal", FG_HORIZONTAL),
    ENTRY("Vertical", FG_VERTICAL),
    ENTRY("Diagonal", FG_DIAGONAL),
};

inline constexpr EnumEntry EnumSimulatorSpeed[] = {
    ENTRY("Pixel Frequency", FG_PIXEL_FREQUENCY),
    ENTRY("Line Rate", FG_LINERATE),
    ENTRY("Frame Rate", FG_FRAMERATE),
};

inline constexpr EnumEntry EnumSimulatorTrigger[] = {
    ENTRY("Free Run", SIMULATION_FREE_RUN),
    ENTRY("Rising Edge Triggers Line", RISING_EDGE_TRIGGERS_LINE),
    ENTRY("Rising Edge Triggers Frame", RISING_EDGE_TRIGGERS_FRAME),
};

inline constexpr EnumEntry EnumTriggerSource[] = {
    ENTRY("GPI Trigger Source 0", TRGINSRC_GPI_0),
    ENTRY("GPI Trigger Source 1", TRGINSRC_GPI_1),
    ENTRY("GPI Trigger Source 2", TRGINSRC_GPI_2),
    ENTRY("GPI Trigger Source 3", TRGINSRC_GPI_3),
    ENTRY("GPI Trigger Source 4 (not available on Tarnbridge)", TRGINSRC_GPI_4),
    ENTRY("GPI Trigger Source 5 (not available on Tarnbridge)", TRGINSRC_GPI_5),
    ENTRY("GPI Trigger Source 6 (not available on Tarnbridge)", TRGINSRC_GPI_6),
    ENTRY("GPI Trigger Source 7 (not available on Tarnbridge)", TRGINSRC_GPI_7),
    ENTRY("Front GPI Trigger Source 0", TRGINSRC_FRONT_GPI_0),
    ENTRY("Front GPI Trigger Source 1", TRGINSRC_FRONT_GPI_1),
    ENTRY("Front GPI Trigger Source 2", TRGINSRC_FRONT_GPI_2),
    ENTRY("Front GPI Trigger Source 3", TRGINSRC_FRONT_GPI_3),
};

inline constexpr EnumEntry EnumVantagePoint[] = {
    ENTRY("Top-Left", FG_VANTAGEPOINT_TOP_LEFT),
    ENTRY("Top-Right", FG_VANTAGEPOINT_TOP_RIGHT),
    ENTRY("Bottom-Left", FG_VANTAGEPOINT_BOTTOM_LEFT),
    ENTRY("Bottom-Right", FG_VANTAGEPOINT_BOTTOM_RIGHT),
};

inline constexpr EnumEntry EnumWriteFlag[] = {
    ENTRY("EndOfLine", FG_ENDOFLINE),
    ENTRY("EndOfFrame", FG_ENDOFFRAME),
};

inline constexpr EnumEntry EnumYesNo[] = {
    ENTRY("Yes", FG_YES),
    ENTRY("No", FG_NO),
};

#undef ENTRY

}  // namespace quillon
