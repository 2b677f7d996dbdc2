#include "info/CatalogueTables.h"

#include <array>

namespace quillon {

namespace {

using enum CatalogueGroup;

// clang-format off

constexpr auto groups = std::to_array<CatalogueGroupRow>({
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
});
static_assert(groups.size() == CatalogueGroupCount);

// The order is the order of the records. A group comes into being in front of the first record in it, so that a group that
// comes back below gets its further records behind its subgroups.
//
// Labels, ranges and units are what users are shown, to the letter: the temperature and voltages of the "FGPA", the microseconds
// of a pulse count, a step of one machine epsilon. The unit of microseconds is Latin-1, one byte for the sign.
constexpr auto parameters = std::to_array<CatalogueParameter>({
    {PulseMessageTriggerMapping, "CLHS Pulse Message", FG_CLHS_TRIGGER_PULSE_MESSAGE, Enumeration{EnumPulseMessage}, 7, 1, ""},

    {CameraLinkHs, "Pixel Format", FG_PIXELFORMAT, Enumeration{EnumPixelFormat}, 7, 1, ""},
    {CameraLinkHs, "Line order", FG_LINEORDER, Enumeration{EnumLineOrder}, 7, 1, ""},

    {SensorGeometry, "Vantage Point", FG_VANTAGEPOINT, Enumeration{EnumVantagePoint}, 3, 1, ""},
    {SensorGeometry, "Sensor Width", FG_SENSORWIDTH, UIntRange{4, 16384, 1}, 3, 2, "pixel"},
    {SensorGeometry, "Sensor Height", FG_SENSORHEIGHT, UIntRange{1, 1398101, 1}, 3, 2, "pixel"},

    {Roi, "Width", FG_WIDTH, UIntRange{4, 16384, 4}, 3, 2, "pixel"},
    {Roi, "Height", FG_HEIGHT, UIntRange{1, 1398101, 1}, 3, 2, "pixel"},
    {Roi, "XOffset", FG_XOFFSET, UIntRange{0, 16380, 4}, 3, 2, "pixel"},
    {Roi, "YOffset", FG_YOFFSET, UIntRange{0, 1398100, 1}, 3, 2, "pixel"},

    {DigitalIoCamera, "Camera Trigger Source", FG_TRIGGERCAMERA_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoCamera, "Camera Trigger Output Polarity", FG_TRIGGERCAMERA_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {DigitalIoGpo, "GPO 0 Source", FG_TRIGGEROUT_GPO_0_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 0 Polarity", FG_TRIGGEROUT_GPO_0_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 1 Source", FG_TRIGGEROUT_GPO_1_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 1 Polarity", FG_TRIGGEROUT_GPO_1_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 2 Source", FG_TRIGGEROUT_GPO_2_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 2 Polarity", FG_TRIGGEROUT_GPO_2_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 3 Source", FG_TRIGGEROUT_GPO_3_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 3 Polarity", FG_TRIGGEROUT_GPO_3_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 4 Source", FG_TRIGGEROUT_GPO_4_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 4 Polarity", FG_TRIGGEROUT_GPO_4_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 5 Source", FG_TRIGGEROUT_GPO_5_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 5 Polarity", FG_TRIGGEROUT_GPO_5_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 6 Source", FG_TRIGGEROUT_GPO_6_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 6 Polarity", FG_TRIGGEROUT_GPO_6_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "GPO 7 Source", FG_TRIGGEROUT_GPO_7_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "GPO 7 Polarity", FG_TRIGGEROUT_GPO_7_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 0 Source", FG_TRIGGEROUT_FRONT_GPO_0_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 0 Polarity", FG_TRIGGEROUT_FRONT_GPO_0_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 1 Source", FG_TRIGGEROUT_FRONT_GPO_1_SOURCE, Enumeration{EnumSignalSource}, 7, 1, ""},
    {DigitalIoGpo, "Front GPO 1 Polarity", FG_TRIGGEROUT_FRONT_GPO_1_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoGpo, "Legacy Digital Output", FG_DIGIO_OUTPUT, IntRange{-1, 3, 1}, 7, 1, ""},

    {DigitalIoGpi, "Digital Input", FG_DIGIO_INPUT, UIntRange{0, 4095, 1}, 1, 1, ""},

    {DigitalIoEventSource, "Custom Signal Event 0 Source", FG_CUSTOM_SIGNAL_EVENT_0_SOURCE, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 0 Polarity", FG_CUSTOM_SIGNAL_EVENT_0_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 1 Source", FG_CUSTOM_SIGNAL_EVENT_1_SOURCE, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {DigitalIoEventSource, "Custom Signal Event 1 Polarity", FG_CUSTOM_SIGNAL_EVENT_1_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {LineTriggerDownscale, "Downscale", FG_LINE_DOWNSCALE, UIntRange{1, 255, 1}, 3, 1, "pulses"},
    {LineTriggerDownscale, "Phase", FG_LINE_DOWNSCALEINIT, UIntRange{1, 255, 1}, 3, 1, "pulses"},

    {LineTriggerInput, "Source A", FG_LINETRIGGERINSRC, Enumeration{EnumTriggerSource}, 7, 1, ""},
    {LineTriggerInput, "Input Polarity", FG_LINETRIGGERINPOLARITY, Enumeration{EnumInputPolarity}, 7, 1, ""},
    {LineTriggerInput, "Debouncing Time", FG_LINETRIGGERDEBOUNCING, DoubleRange{0.008, 30.0, 0.008}, 7, 1, "\xB5""s"},

    {ShaftEncoderFilter, "Enable", FG_SHAFTENCODERON, Enumeration{EnumOnOff}, 7, 1, ""},
    {ShaftEncoderFilter, "Shaft Encoder Mode", FG_SHAFTENCODERMODE, Enumeration{EnumShaftEncoderMode}, 7, 1, ""},
    {ShaftEncoderFilter, "Source B", FG_SHAFTENCODERINSRC, Enumeration{EnumTriggerSource}, 7, 1, ""},
    {ShaftEncoderFilter, "Leading Signal", FG_SHAFTENCODERLEADING, Enumeration{EnumLeadingSignal}, 7, 1, ""},
    {ShaftEncoderFilter, "Compensation Enable", FG_SHAFTENCODER_COMPENSATION_ENABLE, Enumeration{EnumOnOff}, 7, 1, ""},
    {ShaftEncoderFilter, "Compensation Count", FG_SHAFTENCODER_COMPENSATION_COUNT, UIntRange{0, 1048575, 1}, 7, 1, "pulses"},

    {ExSyncOutput, "Period", FG_LINEPERIODE, DoubleRange{0.512, 2097.144, 0.008}, 7, 1, "\xB5""s"},
    {ExSyncOutput, "Exposure Time", FG_LINEEXPOSURE, DoubleRange{0.512, 1048.0, 0.008}, 7, 2, "\xB5""s"},
    {ExSyncOutput, "Polarity", FG_EXSYNCPOLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {ExSyncOutput, "Delay->Exsync", FG_LINETRIGGERDELAY, DoubleRange{0.0, 1048.568, 0.008}, 7, 2, "\xB5""s"},

    {LineTriggerExSync, "Line Trigger Mode", FG_LINETRIGGERMODE, Enumeration{EnumLineTriggerMode}, 3, 1, ""},
    {LineTriggerExSync, "Exsync Enable", FG_EXSYNCON, Enumeration{EnumOnOff}, 7, 1, ""},

    {Flash, "Flash Polarity", FG_FLASH_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {SoftwareTrigger, "Software Trigger Pulse", FG_SENDSOFTWARETRIGGER, Enumeration{EnumApply}, 7, 1, ""},
    {SoftwareTrigger, "Software Trigger State", FG_SETSOFTWARETRIGGER, Enumeration{EnumOutputPolarity}, 7, 1, ""},

    {ImageTriggerInput, "Source", FG_IMGTRIGGERINSRC, Enumeration{EnumImageTriggerSource}, 7, 1, ""},
    {ImageTriggerInput, "Polarity", FG_IMGTRIGGERINPOLARITY, Enumeration{EnumInputPolarity}, 7, 1, ""},
    {ImageTriggerInput, "Gate Delay", FG_IMGTRIGGERGATEDELAY, UIntRange{0, 65535, 1}, 3, 1, "lines"},
    {ImageTriggerInput, "Debouncing Time", FG_IMGTRIGGERDEBOUNCING, DoubleRange{0.008, 30.0, 0.008}, 7, 1, "\xB5""s"},
    {ImageTriggerInput, "Flash Delay->Image Trigger", FG_STROBEPULSEDELAY, UIntRange{0, 65535, 1}, 3, 1, "lines"},

    {ImageTriggerFlash, "Mode", FG_IMGTRIGGERMODE, Enumeration{EnumImageTriggerMode}, 3, 1, ""},
    {ImageTriggerFlash, "Image Trigger Enable", FG_IMGTRIGGERON, Enumeration{EnumOnOff}, 7, 1, ""},
    {ImageTriggerFlash, "Flash Enable", FG_FLASHON, Enumeration{EnumOnOff}, 7, 1, ""},
    {ImageTriggerFlash, "Async Image Trigger Height", FG_IMGTRIGGER_ASYNC_HEIGHT, UIntRange{1, 16777216, 1}, 3, 1, "lines"},
    {ImageTriggerFlash, "Image Trigger is Busy", FG_IMGTRIGGER_IS_BUSY, Enumeration{EnumBusy}, 1, 1, ""},

    {SignalAnalyzer, "Signal Analyzer 0 Source", FG_SIGNAL_ANALYZER_0_SOURCE, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 0 Polarity", FG_SIGNAL_ANALYZER_0_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 0 Current Period", FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Max Period", FG_SIGNAL_ANALYZER_0_PERIOD_MAX, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Min Period", FG_SIGNAL_ANALYZER_0_PERIOD_MIN, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 0 Pulse Count", FG_SIGNAL_ANALYZER_0_PULSE_COUNT, UIntRange{0, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Source", FG_SIGNAL_ANALYZER_1_SOURCE, Enumeration{EnumSignalSourceFull}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 1 Polarity", FG_SIGNAL_ANALYZER_1_POLARITY, Enumeration{EnumOutputPolarity}, 7, 1, ""},
    {SignalAnalyzer, "Signal Analyzer 1 Current Period", FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Max Period", FG_SIGNAL_ANALYZER_1_PERIOD_MAX, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Min Period", FG_SIGNAL_ANALYZER_1_PERIOD_MIN, DoubleRange{0.008, 34359738.36, 0.008}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer 1 Pulse Count", FG_SIGNAL_ANALYZER_1_PULSE_COUNT, UIntRange{0, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer Pulse Count Difference", FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE, Int64Range{-4294967296, 4294967295, 1}, 1, 1, "\xB5""s"},
    {SignalAnalyzer, "Signal Analyzer Clear", FG_SIGNAL_ANALYZER_CLEAR, Enumeration{EnumApply}, 7, 1, ""},

    {Overflow, "Buffer fill level", FG_FILLLEVEL, UIntRange{0, 100, 1}, 1, 1, "%"},
    {Overflow, "Buffer overflow", FG_OVERFLOW, UIntRange{0, 1, 1}, 1, 1, ""},

    {ImageSelector, "Image select period", FG_IMG_SELECT_PERIOD, UIntRange{1, 256, 1}, 7, 1, "image"},
    {ImageSelector, "Image select", FG_IMG_SELECT, UIntRange{0, 255, 1}, 7, 1, "image"},

    {WhiteBalance, "Red Gain", FG_SCALINGFACTOR_RED, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},
    {WhiteBalance, "Blue Gain", FG_SCALINGFACTOR_BLUE, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},
    {WhiteBalance, "Green Gain", FG_SCALINGFACTOR_GREEN, DoubleRange{0.0, 3.9990234375, 0.0009765625}, 7, 1, ""},

    {LookupTableProperties, "LUT Implementation Type", FG_LUT_IMPLEMENTATION_TYPE, Enumeration{EnumLutImplementation}, 1, 1, ""},
    {LookupTableProperties, "LUT In Bits", FG_LUT_IN_BITS, UIntRange{0, 0, 0}, 1, 1, "bit"},
    {LookupTableProperties, "LUT Out Bits", FG_LUT_OUT_BITS, UIntRange{0, 0, 0}, 1, 1, "bit"},

    {LookupTable, "Enabled", FG_LUT_ENABLE, Enumeration{EnumOnOff}, 7, 1, ""},
    {LookupTable, "Type", FG_LUT_TYPE, Enumeration{EnumLutType}, 7, 1, ""},
    {LookupTable, "Red LUT Values", FG_LUT_VALUE_RED, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Green LUT Values", FG_LUT_VALUE_GREEN, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Blue LUT Values", FG_LUT_VALUE_BLUE, UIntFieldRange{16384, 0, 65535}, 7, 1, ""},
    {LookupTable, "Load File", FG_LUT_CUSTOM_FILE, InitialText{"*.lut"}, 7, 1, ""},
    {LookupTable, "Save File", FG_LUT_SAVE_FILE, InitialText{"*.lut"}, 7, 1, ""},

    {Processing, "Offset", FG_PROCESSING_OFFSET, DoubleRange{-1.0, 1.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Gain", FG_PROCESSING_GAIN, DoubleRange{0.0, 16384.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Gamma", FG_PROCESSING_GAMMA, DoubleRange{-1000.0, 1000.0, 2.220446049250313e-16}, 7, 1, ""},
    {Processing, "Invert", FG_PROCESSING_INVERT, Enumeration{EnumOnOff}, 7, 1, ""},

    {OutputFormat, "Output Format", FG_FORMAT, Enumeration{EnumOutputFormat}, 3, 1, ""},
    {OutputFormat, "Alignment", FG_BITALIGNMENT, Enumeration{EnumBitAlignment}, 7, 1, ""},
    {OutputFormat, "Pixel Depth", FG_PIXELDEPTH, UIntRange{0, 128, 1}, 1, 1, "bit"},
    {OutputFormat, "Bit Shift Right", FG_CUSTOM_BIT_SHIFT_RIGHT, UIntRange{0, 15, 1}, 7, 2, "bit"},

    {CameraSimulator, "Image Source", FG_CAMERASIMULATOR_ENABLE, Enumeration{EnumImageSource}, 7, 1, ""},
    {CameraSimulator, "Width", FG_CAMERASIMULATOR_WIDTH, UIntRange{1, 294920, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Line Gap", FG_CAMERASIMULATOR_LINE_GAP, UIntRange{0, 294920, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Height", FG_CAMERASIMULATOR_HEIGHT, UIntRange{1, 65536, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Frame Gap", FG_CAMERASIMULATOR_FRAME_GAP, UIntRange{0, 65536, 1}, 7, 2, "pixel"},
    {CameraSimulator, "Pattern", FG_CAMERASIMULATOR_PATTERN, Enumeration{EnumSimulatorPattern}, 7, 1, ""},
    {CameraSimulator, "Pattern Offset", FG_CAMERASIMULATOR_PATTERN_OFFSET, UIntRange{0, 255, 1}, 7, 2, "pixel value"},
    {CameraSimulator, "Roll", FG_CAMERASIMULATOR_ROLL, Enumeration{EnumOnOff}, 7, 1, ""},
    {CameraSimulator, "Speed Mode", FG_CAMERASIMULATOR_SELECT_MODE, Enumeration{EnumSimulatorSpeed}, 7, 1, ""},
    {CameraSimulator, "Pixel Frequency", FG_CAMERASIMULATOR_PIXEL_FREQUENCY, DoubleRange{0.0, 4000.0, 2.220446049250313e-16}, 7, 2, "MHz"},
    {CameraSimulator, "Line Rate", FG_CAMERASIMULATOR_LINERATE, DoubleRange{0.1, 10000000.0, 2.220446049250313e-16}, 7, 2, "Hz"},
    {CameraSimulator, "Framerate", FG_CAMERASIMULATOR_FRAMERATE, DoubleRange{0.1, 10000000.0, 2.220446049250313e-16}, 7, 2, "Hz"},
    {CameraSimulator, "Trigger Mode", FG_CAMERASIMULATOR_TRIGGER_MODE, Enumeration{EnumSimulatorTrigger}, 7, 1, ""},
    {CameraSimulator, "Active Parts", FG_CAMERASIMULATOR_ACTIVE, UIntRange{1, 2000, 1}, 1, 1, "pixel"},
    {CameraSimulator, "Passive Parts", FG_CAMERASIMULATOR_PASSIVE, UIntRange{1, 2000, 1}, 1, 1, "pixel"},

    {DebugInput, "Debug Input Mode", FG_DEBUGINENABLE, Enumeration{EnumOnOff}, 7, 1, ""},
    {DebugInput, "Debug File", FG_DEBUGFILE, InitialText{""}, 7, 1, ""},
    {DebugInput, "Debug Insert Image", FG_DEBUGINSERT, Enumeration{EnumApply}, 7, 1, ""},
    {DebugInput, "Debug Write Pixel", FG_DEBUGWRITEPIXEL, UInt64Range{0, 144115188075855871, 1}, 7, 2, ""},
    {DebugInput, "Debug Write Flag", FG_DEBUGWRITEFLAG, Enumeration{EnumWriteFlag}, 7, 1, ""},
    {DebugInput, "Debug Write Ready", FG_DEBUGREADY, Enumeration{EnumYesNo}, 1, 1, ""},

    {DebugOutput, "Debug Output Mode", FG_DEBUGOUTENABLE, Enumeration{EnumOnOff}, 7, 1, ""},
    {DebugOutput, "Debug Output XPosition", FG_DEBUGOUTXPOS, UIntRange{4, 16384, 1}, 1, 1, "pixel"},
    {DebugOutput, "Debug Output YPosition", FG_DEBUGOUTYPOS, UIntRange{1, 1398101, 1}, 1, 1, "pixel"},
    {DebugOutput, "Debug Output Pixel", FG_DEBUGOUTPIXEL, UIntRange{0, 4294967295, 1}, 1, 2, "pixel"},

    {Debug, "Debug Source", FG_DEBUGSOURCE, UIntRange{0, 10, 1}, 7, 2, ""},
    {Debug, "Debug Source Name", FG_DEBUGSOURCENAME, InitialText{""}, 1, 1, ""},
    {Debug, "Debug Save Config", FG_DEBUGSAVECONFIG, InitialText{"*.mcf"}, 7, 1, ""},

    {Miscellaneous, "Timeout", FG_TIMEOUT, UIntRange{2, 2147483646, 1}, 7, 1, "seconds"},
    {Miscellaneous, "Applet version", FG_APPLET_VERSION, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Applet revision", FG_APPLET_REVISION, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Applet Id", FG_APPLET_ID, InitialText{""}, 1, 1, ""},
    {Miscellaneous, "Build Time", FG_APPLET_BUILD_TIME, InitialText{""}, 1, 1, ""},
    {Miscellaneous, "TAV file", FG_TAV_FILE, InitialText{"*.tav"}, 1, 1, ""},
    {Miscellaneous, "DMA Status", FG_DMASTATUS, UIntRange{0, 0, 0}, 1, 1, ""},
    {Miscellaneous, "Camera Status", FG_CAMSTATUS, UIntRange{0, 1, 1}, 1, 1, ""},
    {Miscellaneous, "Camera Status Extended", FG_CAMSTATUS_EXTENDED, UIntRange{0, 255, 1}, 1, 1, ""},
    {Miscellaneous, "FGPA Temperature", FG_SYSTEMMONITOR_FPGA_TEMPERATURE, DoubleRange{0.0, 1000.0, 0.0}, 1, 1, "Celsius"},
    {Miscellaneous, "FGPA Vcc Int", FG_SYSTEMMONITOR_FPGA_VCC_INT, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "FGPA Vcc Aux", FG_SYSTEMMONITOR_FPGA_VCC_AUX, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "FGPA Vcc BRAM", FG_SYSTEMMONITOR_FPGA_VCC_BRAM, DoubleRange{-1000.0, 1000.0, 0.0}, 1, 1, "V"},
    {Miscellaneous, "Current Link Width", FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH, UIntRange{0, 15, 0}, 1, 1, "lanes"},
    {Miscellaneous, "Current Link Speed", FG_SYSTEMMONITOR_CURRENT_LINK_SPEED, DoubleRange{0.0, 1000.0, 0.0}, 1, 1, "GB/s"},
    {Miscellaneous, "PCIe Link Gen 2 Capable", FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "PCIe Link Partner Gen 2 Capable", FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "PCIe Trained Payload Size", FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE, UIntRange{0, 1024, 0}, 1, 1, "byte"},
    {Miscellaneous, "Extension Connector Present", FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT, Enumeration{EnumYesNo}, 1, 1, ""},
    {Miscellaneous, "Alternative Board Detection", FG_ALTERNATIVE_BOARD_DETECTION, Enumeration{EnumOnOff}, 1, 1, ""},
    {Miscellaneous, "FPGA DNA", FG_SYSTEMMONITOR_FPGA_DNA, UInt64Range{0, 144115188075855871, 0}, 1, 1, ""},
});

// clang-format on

}  // namespace

std::span<const CatalogueGroupRow> catalogueGroups() {
    return groups;
}

std::span<const CatalogueParameter> catalogueParameters() {
    return parameters;
}

}  // namespace quillon
