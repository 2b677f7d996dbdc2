#include "info/CatalogueTables.h"

namespace quillon {

namespace {

using enum CatalogueGroup;

// clang-format off

constexpr std::array<CatalogueGroupRow, CatalogueGroupCount> groups{{
    {"Camera Link HS", None},
    {"Pulse Message Trigger Mapping", CameraLinkHs},
    {"Sensor Geometry", None},
    {"ROI", None},
    {"Digital I/O", None},
    {"Camera", DigitalIo},
    {"GPO", DigitalIo},
    {"GPI", DigitalIo},
    {"Event Source", DigitalIo},
    {"Line Trigger / ExSync", None},
    {"Line Trigger Input", LineTriggerExSync},
    {"Downscale", LineTriggerInput},
    {"Shaft Encoder A/B Filter", LineTriggerExSync},
    {"ExSync Output", LineTriggerExSync},
    {"Image Trigger / Flash", None},
    {"Image Trigger Input", ImageTriggerFlash},
    {"Flash", ImageTriggerInput},
    {"Software Trigger", ImageTriggerInput},
    {"Signal Analyzer", None},
    {"Overflow", None},
    {"Image Selector", None},
    {"White Balance", None},
    {"Lookup Table", None},
    {"Applet Properties", LookupTable},
    {"Processing", None},
    {"Output Format", None},
    {"Camera Simulator", None},
    {"Miscellaneous", None},
    {"Debug", Miscellaneous},
    {"Input", Debug},
    {"Output", Debug},
}};

// The order is the order of the records. A group comes into being in front of the first record in it, so that a group that
// comes back below gets its further records behind its subgroups.
//
// Labels, ranges and units are what users are shown, to the letter: the temperature and voltages of the "FGPA", the microseconds
// of a pulse count, a step of one machine epsilon. The unit of microseconds is Latin-1, one byte for the sign.
constexpr std::array<CatalogueParameter, CatalogueParameterCount> parameters{{
    {PulseMessageTriggerMapping, "CLHS Pulse Message", "FG_CLHS_TRIGGER_PULSE_MESSAGE", 200401, Enumeration{EnumPulseMessage}, 7, 1, ""},

    {CameraLinkHs, "Pixel Format", "FG_PIXELFORMAT", 200368, Enumeration{EnumPixelFormat}, 7, 1, ""},
    {CameraLinkHs, "Line order", "FG_LINEORDER", 920000, Enumeration{EnumLineOrder}, 7, 1, ""},

    {SensorGeometry, "Vantage Point", "FG_VANTAGEPOINT", 300112, Enumeration{EnumVantagePoint}, 3, 1, ""},
    {SensorGeometry, "Sensor Width", "FG_SENSORWIDTH", 200220, UIntRange{4, 16384, 1}, 3, 2, "pixel"},
    {SensorGeometry, "Sensor Height", "FG_SENSORHEIGHT", 200221, UIntRange{1, 1398101, 1}, 3, 2, "pixel"},

    {Roi, "Width", "FG_WIDTH", 100, UIntRange{4, 16384, 4}, 3, 2, "pixel"},
    {Roi, "Height", "FG_HEIGHT", 200, UIntRange{1, 1398101, 1}, 3, 2, "pixel"},
    {Roi, "XOffset", "FG_XOFFSET", 300, UIntRange{0, 16380, 4}, 3, 2, "pixel"},
    {Roi, "YOffset", "FG_YOFFSET", 400, UIntRange{0, 1398100, 1}, 3, 2, "pixel"},

    {DigitalIoCamera, "Camera Trigger Source", "FG_TRIGGERCAMERA_SOURCE", 200338, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoCamera, "Camera Trigger Output Polarity", "FG_TRIGGERCAMERA_POLARITY", 200354, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {DigitalIoGpo, "GPO 0 Source", "FG_TRIGGEROUT_GPO_0_SOURCE", 200384, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 0 Polarity", "FG_TRIGGEROUT_GPO_0_POLARITY", 200410, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 1 Source", "FG_TRIGGEROUT_GPO_1_SOURCE", 200385, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 1 Polarity", "FG_TRIGGEROUT_GPO_1_POLARITY", 200411, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 2 Source", "FG_TRIGGEROUT_GPO_2_SOURCE", 200386, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 2 Polarity", "FG_TRIGGEROUT_GPO_2_POLARITY", 200412, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 3 Source", "FG_TRIGGEROUT_GPO_3_SOURCE", 200387, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 3 Polarity", "FG_TRIGGEROUT_GPO_3_POLARITY", 200413, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 4 Source", "FG_TRIGGEROUT_GPO_4_SOURCE", 200388, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 4 Polarity", "FG_TRIGGEROUT_GPO_4_POLARITY", 200414, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 5 Source", "FG_TRIGGEROUT_GPO_5_SOURCE", 200389, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 5 Polarity", "FG_TRIGGEROUT_GPO_5_POLARITY", 200415, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 6 Source", "FG_TRIGGEROUT_GPO_6_SOURCE", 200390, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 6 Polarity", "FG_TRIGGEROUT_GPO_6_POLARITY", 200416, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 7 Source", "FG_TRIGGEROUT_GPO_7_SOURCE", 200391, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 7 Polarity", "FG_TRIGGEROUT_GPO_7_POLARITY", 200417, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 0 Source", "FG_TRIGGEROUT_FRONT_GPO_0_SOURCE", 200392, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 0 Polarity", "FG_TRIGGEROUT_FRONT_GPO_0_POLARITY", 200418, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 1 Source", "FG_TRIGGEROUT_FRONT_GPO_1_SOURCE", 200393, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 1 Polarity", "FG_TRIGGEROUT_FRONT_GPO_1_POLARITY", 200419, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Legacy Digital Output", "FG_DIGIO_OUTPUT", 14020, IntRange{-1, 3, 1}, 7, 1, ""},

    {DigitalIoGpi, "Digital Input", "FG_DIGIO_INPUT", 14010, UIntRange{0, 4095, 1}, 1, 1, ""},

    {DigitalIoEventSource, "Custom Signal Event 0 Source", "FG_CUSTOM_SIGNAL_EVENT_0_SOURCE", 200440, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 0 Polarity", "FG_CUSTOM_SIGNAL_EVENT_0_POLARITY", 200441, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 1 Source", "FG_CUSTOM_SIGNAL_EVENT_1_SOURCE", 200442, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 1 Polarity", "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", 200443, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {LineTriggerDownscale, "Downscale", "FG_LINE_DOWNSCALE", 24040, UIntRange{1, 255, 1}, 3, 1, "pulses"},
    {LineTriggerDownscale, "Phase", "FG_LINE_DOWNSCALEINIT", 24050, UIntRange{1, 255, 1}, 3, 1, "pulses"},

    {LineTriggerInput, "Source A", "FG_LINETRIGGERINSRC", 8112, Enumeration{EnumTriggerSource}, 7, 1, ""},
    {LineTriggerInput, "Input Polarity", "FG_LINETRIGGERINPOLARITY", 8115, Enumeration{EnumInputPolarity}, 7, 1, ""},
    {LineTriggerInput, "Debouncing Time", "FG_LINETRIGGERDEBOUNCING", 110063, DoubleRange{0.008, 30.0, 0.008}, 7, 1, "\xB5""s"},

    {ShaftEncoderFilter, "Enable", "FG_SHAFTENCODERON", 9110, Enumeration{EnumOnOff}, 7, 1, ""},
    {ShaftEncoderFilter, "Shaft Encoder Mode", "FG_SHAFTENCODERMODE", 110065, Enumeration{EnumShaftEncoderMode}, 7, 1, ""},
    {ShaftEncoderFilter, "Source B", "FG_SHAFTENCODERINSRC", 9100, Enumeration{EnumTriggerSource}, 7, 1, ""},
    {ShaftEncoderFilter, "Leading Signal", "FG_SHAFTENCODERLEADING", 9120, Enumeration{EnumLeadingSignal}, 7, 1, ""},
    {ShaftEncoderFilter, "Compensation Enable", "FG_SHAFTENCODER_COMPENSATION_ENABLE", 200370, Enumeration{EnumOnOff}, 7, 1, ""},
    {ShaftEncoderFilter, "Compensation Count", "FG_SHAFTENCODER_COMPENSATION_COUNT", 200371, UIntRange{0, 1048575, 1}, 7, 1, "pulses"},

    {ExSyncOutput, "Period", "FG_LINEPERIODE", 96, DoubleRange{0.512, 2097.144, 0.008}, 7, 1, "\xB5""s"},
    {ExSyncOutput, "Exposure Time", "FG_LINEEXPOSURE", 10030, DoubleRange{0.512, 1048.0, 0.008}, 7, 2, "\xB5""s"},
    {ExSyncOutput, "Polarity", "FG_EXSYNCPOLARITY", 8420, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {ExSyncOutput, "Delay->Exsync", "FG_LINETRIGGERDELAY", 8900, DoubleRange{0.0, 1048.568, 0.008}, 7, 2, "\xB5""s"},

    {LineTriggerExSync, "Line Trigger Mode", "FG_LINETRIGGERMODE", 8102, Enumeration{EnumLineTriggerMode}, 3, 1, ""},
    {LineTriggerExSync, "Exsync Enable", "FG_EXSYNCON", 8300, Enumeration{EnumOnOff}, 7, 1, ""},

    {Flash, "Flash Polarity", "FG_FLASH_POLARITY", 24060, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {SoftwareTrigger, "Software Trigger Pulse", "FG_SENDSOFTWARETRIGGER", 8800, Enumeration{EnumApply}, 7, 1, ""},
    {SoftwareTrigger, "Software Trigger State", "FG_SETSOFTWARETRIGGER", 8801, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {ImageTriggerInput, "Source", "FG_IMGTRIGGERINSRC", 8113, Enumeration{EnumImageTriggerSource}, 7, 1, ""},
    {ImageTriggerInput, "Polarity", "FG_IMGTRIGGERINPOLARITY", 8116, Enumeration{EnumInputPolarity}, 7, 1, ""},
    {ImageTriggerInput, "Gate Delay", "FG_IMGTRIGGERGATEDELAY", 8118, UIntRange{0, 65535, 1}, 3, 1, "lines"},
    {ImageTriggerInput, "Debouncing Time", "FG_IMGTRIGGERDEBOUNCING", 110064, DoubleRange{0.008, 30.0, 0.008}, 7, 1, "\xB5""s"},
    {ImageTriggerInput, "Flash Delay->Image Trigger", "FG_STROBEPULSEDELAY", 8700, UIntRange{0, 65535, 1}, 3, 1, "lines"},

    {ImageTriggerFlash, "Mode", "FG_IMGTRIGGERMODE", 8104, Enumeration{EnumImageTriggerMode}, 3, 1, ""},
    {ImageTriggerFlash, "Image Trigger Enable", "FG_IMGTRIGGERON", 8106, Enumeration{EnumOnOff}, 7, 1, ""},
    {ImageTriggerFlash, "Flash Enable", "FG_FLASHON", 8600, Enumeration{EnumOnOff}, 7, 1, ""},
    {ImageTriggerFlash, "Async Image Trigger Height", "FG_IMGTRIGGER_ASYNC_HEIGHT", 110067, UIntRange{1, 16777216, 1}, 3, 1, "lines"},
    {ImageTriggerFlash, "Image Trigger is Busy", "FG_IMGTRIGGER_IS_BUSY", 110066, Enumeration{EnumBusy}, 1, 1, ""},

    {SignalAnalyzer, "Signal Analyzer 0 Source", "FG_SIGNAL_ANALYZER_0_SOURCE", 200420, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 0 Polarity", "FG_SIGNAL_ANALYZER_0_POLARITY", 200421, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 0 Current Period", "FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT", 200422, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Max Period", "FG_SIGNAL_ANALYZER_0_PERIOD_MAX", 200423, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Min Period", "FG_SIGNAL_ANALYZER_0_PERIOD_MIN", 200424, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Pulse Count", "FG_SIGNAL_ANALYZER_0_PULSE_COUNT", 200425, UIntRange{0, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Source", "FG_SIGNAL_ANALYZER_1_SOURCE", 200430, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 1 Polarity", "FG_SIGNAL_ANALYZER_1_POLARITY", 200431, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 1 Current Period", "FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT", 200432, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Max Period", "FG_SIGNAL_ANALYZER_1_PERIOD_MAX", 200433, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Min Period", "FG_SIGNAL_ANALYZER_1_PERIOD_MIN", 200434, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Pulse Count", "FG_SIGNAL_ANALYZER_1_PULSE_COUNT", 200435, UIntRange{0, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer Pulse Count Difference", "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE", 200439, Int64Range{-4294967296, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer Clear", "FG_SIGNAL_ANALYZER_CLEAR", 200438, Enumeration{EnumApply}, 7, 1, ""},

    {Overflow, "Buffer fill level", "FG_FILLLEVEL", 110086, UIntRange{0, 100, 1}, 1, 1, "%"},
    {Overflow, "Buffer overflow", "FG_OVERFLOW", 110087, UIntRange{0, 1, 1}, 1, 1, ""},

    {ImageSelector, "Image select period", "FG_IMG_SELECT_PERIOD", 25110, UIntRange{1, 256, 1}, 7, 1, "image"},
    {ImageSelector, "Image select", "FG_IMG_SELECT", 25111, UIntRange{0, 255, 1}, 7, 1, "image"},

    {WhiteBalance, "Red Gain", "FG_SCALINGFACTOR_RED", 13000, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},
    {WhiteBalance, "Blue Gain", "FG_SCALINGFACTOR_BLUE", 13010, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},
    {WhiteBalance, "Green Gain", "FG_SCALINGFACTOR_GREEN", 13030, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},

    {LookupTableProperties, "LUT Implementation Type", "FG_LUT_IMPLEMENTATION_TYPE", 300006, Enumeration{EnumLutImplementation}, 1, 1, ""},
    {LookupTableProperties, "LUT In Bits", "FG_LUT_IN_BITS", 300007, UIntRange{0, 0, 0}, 1, 1, "bit"},
    {LookupTableProperties, "LUT Out Bits", "FG_LUT_OUT_BITS", 300008, UIntRange{0, 0, 0}, 1, 1, "bit"},

    {LookupTable, "Enabled", "FG_LUT_ENABLE", 12030, Enumeration{EnumOnOff}, 7, 1, ""},
    {LookupTable, "Type", "FG_LUT_TYPE", 110017, Enumeration{EnumLutType}, 7, 1, ""},
    {LookupTable, "Red LUT Values", "FG_LUT_VALUE_RED", 300009, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Green LUT Values", "FG_LUT_VALUE_GREEN", 300010, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Blue LUT Values", "FG_LUT_VALUE_BLUE", 300011, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Load File", "FG_LUT_CUSTOM_FILE", 300000, InitialText{"*.lut"}, 7, 1, ""},
    {LookupTable, "Save File", "FG_LUT_SAVE_FILE", 110021, InitialText{"*.lut"}, 7, 1, ""},

    {Processing, "Offset", "FG_PROCESSING_OFFSET", 300004, DoubleRange{-1.0, 1.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Gain", "FG_PROCESSING_GAIN", 300002, DoubleRange{0.0, 16384.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Gamma", "FG_PROCESSING_GAMMA", 300003, DoubleRange{-1000.0, 1000.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Invert", "FG_PROCESSING_INVERT", 300005, Enumeration{EnumOnOff}, 7, 1, ""},

    {OutputFormat, "Output Format", "FG_FORMAT", 700, Enumeration{EnumOutputFormat}, 3, 1, ""},
    {OutputFormat, "Alignment", "FG_BITALIGNMENT", 4010, Enumeration{EnumBitAlignment}, 7, 1, ""},
    {OutputFormat, "Pixel Depth", "FG_PIXELDEPTH", 4000, UIntRange{0, 128, 1}, 1, 1, "bit"},
    {OutputFormat, "Bit Shift Right", "FG_CUSTOM_BIT_SHIFT_RIGHT", 200396, UIntRange{0, 15, 1}, 7, 2, "bit"},

    {CameraSimulator, "Image Source", "FG_CAMERASIMULATOR_ENABLE", 30099, Enumeration{EnumImageSource}, 7, 1, ""},
    {CameraSimulator, "Width", "FG_CAMERASIMULATOR_WIDTH", 30102, UIntRange{1, 294920, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Line Gap", "FG_CAMERASIMULATOR_LINE_GAP", 30105, UIntRange{0, 294920, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Height", "FG_CAMERASIMULATOR_HEIGHT", 200322, UIntRange{1, 65536, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Frame Gap", "FG_CAMERASIMULATOR_FRAME_GAP", 200325, UIntRange{0, 65536, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Pattern", "FG_CAMERASIMULATOR_PATTERN", 200326, Enumeration{EnumSimulatorPattern}, 7, 1, ""},
    {CameraSimulator, "Pattern Offset", "FG_CAMERASIMULATOR_PATTERN_OFFSET", 200356, UIntRange{0, 255, 1}, 7, 2, "pixel value"},
    {CameraSimulator, "Roll", "FG_CAMERASIMULATOR_ROLL", 200327, Enumeration{EnumOnOff}, 7, 1, ""},
    {CameraSimulator, "Speed Mode", "FG_CAMERASIMULATOR_SELECT_MODE", 200328, Enumeration{EnumSimulatorSpeed}, 7, 1, ""},
    {CameraSimulator, "Pixel Frequency", "FG_CAMERASIMULATOR_PIXEL_FREQUENCY", 30106, DoubleRange{0.0, 4000.0, 2.220446049250313e-16}, 7, 2, "MHz"},
    {CameraSimulator, "Line Rate", "FG_CAMERASIMULATOR_LINERATE", 200329, DoubleRange{0.1, 10000000.0, 2.220446049250313e-16}, 7, 2, "Hz"},
    {CameraSimulator, "Framerate", "FG_CAMERASIMULATOR_FRAMERATE", 200352, DoubleRange{0.1, 10000000.0, 2.220446049250313e-16}, 7, 2, "Hz"},
    {CameraSimulator, "Trigger Mode", "FG_CAMERASIMULATOR_TRIGGER_MODE", 200355, Enumeration{EnumSimulatorTrigger}, 7, 1, ""},
    {CameraSimulator, "Active Parts", "FG_CAMERASIMULATOR_ACTIVE", 30101, UIntRange{1, 2000, 1}, 1, 1, "pixel"},
    {CameraSimulator, "Passive Parts", "FG_CAMERASIMULATOR_PASSIVE", 30100, UIntRange{1, 2000, 1}, 1, 1, "pixel"},

    {DebugInput, "Debug Input Mode", "FG_DEBUGINENABLE", 900002, Enumeration{EnumOnOff}, 7, 1, ""},
    {DebugInput, "Debug File", "FG_DEBUGFILE", 900000, InitialText{""}, 7, 1, ""},
    {DebugInput, "Debug Insert Image", "FG_DEBUGINSERT", 900003, Enumeration{EnumApply}, 7, 1, ""},
    {DebugInput, "Debug Write Pixel", "FG_DEBUGWRITEPIXEL", 900010, UInt64Range{0, 144115188075855871, 1}, 7, 2, ""},
    {DebugInput, "Debug Write Flag", "FG_DEBUGWRITEFLAG", 900011, Enumeration{EnumWriteFlag}, 7, 1, ""},
    {DebugInput, "Debug Write Ready", "FG_DEBUGREADY", 900012, Enumeration{EnumYesNo}, 1, 1, ""},

    {DebugOutput, "Debug Output Mode", "FG_DEBUGOUTENABLE", 900004, Enumeration{EnumOnOff}, 7, 1, ""},
    {DebugOutput, "Debug Output XPosition", "FG_DEBUGOUTXPOS", 900007, UIntRange{4, 16384, 1}, 1, 1, "pixel"},
    {DebugOutput, "Debug Output YPosition", "FG_DEBUGOUTYPOS", 900008, UIntRange{1, 1398101, 1}, 1, 1, "pixel"},
    {DebugOutput, "Debug Output Pixel", "FG_DEBUGOUTPIXEL", 900009, UIntRange{0, 4294967295, 1}, 1, 2, "pixel"},

    {Debug, "Debug Source", "FG_DEBUGSOURCE", 900001, UIntRange{0, 10, 1}, 7, 2, ""},
    {Debug, "Debug Source Name", "FG_DEBUGSOURCENAME", 900006, InitialText{""}, 1, 1, ""},
    {Debug, "Debug Save Config", "FG_DEBUGSAVECONFIG", 900013, InitialText{"*.mcf"}, 7, 1, ""},

    {Miscellaneous, "Timeout", "FG_TIMEOUT", 600, UIntRange{2, 2147483646, 1}, 7, 1, "seconds"},
    {Miscellaneous, "Applet version", "FG_APPLET_VERSION", 24020, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Applet revision", "FG_APPLET_REVISION", 24030, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Applet Id", "FG_APPLET_ID", 24010, InitialText{""}, 1, 1, ""},
    {Miscellaneous, "Build Time", "FG_APPLET_BUILD_TIME", 24011, InitialText{""}, 1, 1, ""},
    {Miscellaneous, "TAV file", "FG_TAV_FILE", 24108, InitialText{"*.tav"}, 1, 1, ""},
    {Miscellaneous, "DMA Status", "FG_DMASTATUS", 24092, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Camera Status", "FG_CAMSTATUS", 2000, UIntRange{0, 1, 1}, 1, 1, ""},
    {Miscellaneous, "Camera Status Extended", "FG_CAMSTATUS_EXTENDED", 2050, UIntRange{0, 255, 1}, 1, 1, ""},
    {Miscellaneous, "FGPA Temperature", "FG_SYSTEMMONITOR_FPGA_TEMPERATURE", 200341, DoubleRange{0.0, 1000.0, 0.0}, 1, 1, "Celsius"},
    {Miscellaneous, "FGPA Vcc Int", "FG_SYSTEMMONITOR_FPGA_VCC_INT", 200342, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "FGPA Vcc Aux", "FG_SYSTEMMONITOR_FPGA_VCC_AUX", 200343, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "FGPA Vcc BRAM", "FG_SYSTEMMONITOR_FPGA_VCC_BRAM", 200372, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "Current Link Width", "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH", 200373, UIntRange{0, 15, 0}, 1, 1, "lanes"},
    {Miscellaneous, "Current Link Speed", "FG_SYSTEMMONITOR_CURRENT_LINK_SPEED", 200374, DoubleRange{0.0, 1000.0, 0.0}, 1, 1, "GB/s"},
    {Miscellaneous, "PCIe Link Gen 2 Capable", "FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE", 200375, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "PCIe Link Partner Gen 2 Capable", "FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE", 200376, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "PCIe Trained Payload Size", "FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE", 200377, UIntRange{0, 1024, 0}, 1, 1, "byte"},
    {Miscellaneous, "Extension Connector Present", "FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT", 200378, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "Alternative Board Detection", "FG_ALTERNATIVE_BOARD_DETECTION", 200381, Enumeration{EnumOnOff}, 1, 1, ""},
    {Miscellaneous, "FPGA DNA", "FG_SYSTEMMONITOR_FPGA_DNA", 200349, UInt64Range{0, 144115188075855871, 0}, 1, 1, ""},
}};

// clang-format on

}  // namespace

const std::array<CatalogueGroupRow, CatalogueGroupCount>& catalogueGroups() {
    return groups;
}

const std::array<CatalogueParameter, CatalogueParameterCount>& catalogueParameters() {
    return parameters;
}

}  // namespace quillon
