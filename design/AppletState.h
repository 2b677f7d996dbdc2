/// @file
/// All that the applet remembers. The member initialisers are the state in which an applet starts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "quillon/Vocabulary.h"

namespace quillon {

/// FG_TIMEOUT, in microseconds as the SDK counts them.
struct TimeoutState {
    std::int32_t timeout = 1'000'000;
};

struct DebugState {
    std::uint32_t debugSource = 0;  ///< index of the chosen debug point
    std::uint32_t debugInEnable = FG_OFF;
    std::string debugFile;
    std::uint32_t debugInsert = FG_APPLY;
    std::uint64_t debugWritePixel = 0;
    std::uint32_t debugWriteFlag = FG_ENDOFLINE;
    std::uint32_t debugOutEnable = FG_OFF;
    std::string debugSaveConfig;
};

/// Sensor and region of interest in pixels and lines.
struct GeometryState {
    std::uint32_t pixelFormat = RGB8;
    std::uint32_t vantagePoint = FG_VANTAGEPOINT_TOP_LEFT;
    std::uint32_t sensorWidth = 1024;
    std::uint32_t sensorHeight = 1024;
    std::uint32_t width = 1024;
    std::uint32_t height = 1024;
    std::uint32_t xOffset = 0;
    std::uint32_t yOffset = 0;
};

struct OutputFormatState {
    std::uint32_t lineOrder = FG_LINEORDER_RGB;
    std::uint32_t outputFormat = FG_COL24;
    std::uint32_t bitAlignment = FG_LEFT_ALIGNED;
    std::uint32_t customBitShift = 0;
};

/// One output branch of the design.
struct OutputFormatEntry {
    std::int32_t format = 0;  ///< an FG_FORMAT code
    std::int32_t bits = 0;    ///< bits per component
    std::int32_t alternative = 0;
    bool hasTrash = false;
    std::int32_t trashParameterId = 0;  ///< 0 where there is no trash
};

/// The output branches as the design's texts tell them, read once at start-up.
struct OutputFormatTable {
    static constexpr int MaxInputs = 9;  ///< the count is told by one digit
    static constexpr int BlockSize = 5;  ///< an entry's alternatives lie 5 and 10 positions behind it

    std::int32_t inputCount = 0;
    std::int32_t maxBits = 0;  ///< width of the internal pixel word
    std::array<OutputFormatEntry, MaxInputs + 2 * BlockSize> entries{};
};

/// A point of the design that takes injected pixels, and may show those that pass.
struct DebugEntry {
    std::int32_t kind = 0;  ///< 0 "Inject", 1 "InjectMonitor"
    std::string name;       ///< what FG_DEBUGSOURCENAME shows
    std::string path;       ///< the point's part of its parameter names
};

/// The debug points as the design's texts tell them, read once at start-up.
struct DebugTable {
    static constexpr int MaxEntries = 9;  ///< the count is told by one digit

    std::int32_t debugEntryCount = 0;
    std::array<DebugEntry, MaxEntries> entries{};
};

/// What the user asked of the camera simulator, and what the design is running with.
struct SimulatorState {
    std::uint32_t simulatorEnable = FG_CAMPORT;
    std::uint32_t simulatorWidth = 1024;   ///< pixels, as asked for
    std::uint32_t simulatorLineGap = 0;    ///< pixels, as asked for
    std::uint32_t simulatorHeight = 1024;  ///< lines
    std::uint32_t simulatorFrameGap = 0;   ///< lines
    std::uint32_t simulatorPattern = FG_DIAGONAL;
    std::uint32_t simulatorPatternOffset = 0;
    std::uint32_t simulatorRoll = FG_ON;
    std::uint32_t simulatorSelectMode = FG_LINERATE;
    double simulatorPixelFrequency = 40.0;  ///< MHz
    double simulatorLineRate = 10240.0;     ///< lines per second
    double simulatorFrameRate = 10.0;       ///< frames per second
    std::uint32_t simulatorTriggerMode = SIMULATION_FREE_RUN;

    std::uint32_t activeWidth = 1024;   ///< `simulatorWidth` rounded up to a multiple of 32
    std::uint32_t activeLineGap = 0;    ///< the line gap rounded up to a multiple of 32
    std::uint32_t activeHeight = 1024;  ///< frame height sent to the design
    std::uint32_t activeFrameGap = 0;   ///< frame gap sent to the design
    double cachedFrameRate = 10.0;      ///< the frame rate last computed, frames per second
    double maxPixelRate = 0.0;          ///< pixels per second; set at start-up
};

struct ImageSelectorState {
    std::int32_t imageSelectPeriod = 1;
    std::uint32_t imageSelect = 0;
};

struct WhiteBalanceState {
    double scalingFactorRed = 1.0;
    double scalingFactorBlue = 1.0;
    double scalingFactorGreen = 1.0;
};

/// The lookup tables as the applet mirrors them: one of 16384 entries per colour, from 14 bits to 16 bits.
struct LookupTableState {
    static constexpr std::uint32_t EntryCount = 16384;
    using Table = std::array<std::uint32_t, EntryCount>;

    /// The colour of a table.
    enum Channel : std::uint8_t { lutRed, lutGreen, lutBlue };

    std::uint32_t lutEnable = FG_OFF;
    std::uint32_t lutType = LUT_TYPE_PROCESSING;
    std::array<Table, 3> tables{};  ///< red, green, blue: one block
    std::string lutCustomFile;
    std::string lutSaveFile;
    double processingOffset = 0.0;
    double processingGain = 1.0;
    double processingGamma = 1.0;
    std::uint32_t processingInvert = FG_OFF;
};

/// Times in microseconds; the design runs them on a tick of 8 ns.
struct LineTriggerState {
    std::int32_t mode = GRABBER_CONTROLLED;
    std::int32_t exsyncOn = FG_ON;
    std::int32_t inSrc = TRGINSRC_GPI_1;
    std::int32_t inPolarity = HIGH_ON_ZERO_HIGH;
    double debouncing = 0.112;
    std::int32_t downscale = 1;      ///< pulses
    std::int32_t downscaleInit = 1;  ///< pulses
    std::int32_t shaftEncoderOn = FG_OFF;
    std::int32_t shaftEncoderMode = FILTER_X1;
    std::int32_t shaftEncoderInSrc = TRGINSRC_GPI_2;
    std::int32_t shaftEncoderLeading = SOURCE_A;
    std::int32_t shaftEncoderCompensationEnable = FG_ON;
    std::uint32_t shaftEncoderCompensationCount = 0;  ///< pulses
    double linePeriode = 200.0;
    double lineExposure = 19.0;
    std::int32_t exsyncPolarity = FG_HIGH;
    double delay = 0.0;
};

struct ImageTriggerState {
    std::int32_t mode = FREE_RUN;
    std::int32_t on = FG_ON;
    std::int32_t flashOn = FG_ON;
    std::int32_t asyncHeight = 1024;  ///< lines
    std::int32_t inSrc = TRGINSRC_GPI_0;
    std::int32_t inPolarity = HIGH_ON_ZERO_HIGH;
    std::uint32_t gateDelay = 0;  ///< lines
    double debouncing = 0.112;    ///< microseconds
    std::int32_t flashPolarity = FG_HIGH;
    std::uint32_t strobePulseDelay = 0;  ///< lines
    std::int32_t sendSoftwareTrigger = FG_APPLY;
    std::int32_t setSoftwareTrigger = FG_LOW;
};

/// What feeds one output of the switchboard: as the last write or load asked, and as the design last accepted it. The
/// camera's route goes by what was requested alone.
struct RouteState {
    constexpr explicit RouteState(std::uint32_t source) : requestedSource(source), appliedSource(source) {}

    std::uint32_t requestedSource;
    std::uint32_t requestedPolarity = FG_HIGH;
    std::uint32_t appliedSource;
    std::uint32_t appliedPolarity = FG_HIGH;
};

/// The outputs of the switchboard, in the order of the start-up push.
enum class Route : std::uint8_t {
    Camera,
    Gpo0,
    Gpo1,
    Gpo2,
    Gpo3,
    Gpo4,
    Gpo5,
    Gpo6,
    Gpo7,
    FrontGpo0,
    FrontGpo1,
    Analyzer0,
    Analyzer1,
    CustomEvent0,
    CustomEvent1
};
inline constexpr std::size_t RouteCount = 15;

struct RoutingState {
    std::array<RouteState, RouteCount> routes = {{
        RouteState{FG_SIGNAL_CAM0_EXSYNC},      // Camera
        RouteState{FG_SIGNAL_CAM0_FLASH},       // Gpo0
        RouteState{FG_SIGNAL_CAM0_EXSYNC2},     // Gpo1
        RouteState{FG_SIGNAL_CAM0_EXSYNC},      // Gpo2
        RouteState{VCC},                        // Gpo3
        RouteState{VCC},                        // Gpo4
        RouteState{VCC},                        // Gpo5
        RouteState{VCC},                        // Gpo6
        RouteState{VCC},                        // Gpo7
        RouteState{FG_SIGNAL_CAM0_FLASH},       // FrontGpo0
        RouteState{FG_SIGNAL_CAM0_EXSYNC2},     // FrontGpo1
        RouteState{FG_SIGNAL_CAM0_EXSYNC},      // Analyzer0
        RouteState{FG_SIGNAL_CAM0_LINE_START},  // Analyzer1
        RouteState{FG_SIGNAL_CAM0_EXSYNC},      // CustomEvent0
        RouteState{FG_SIGNAL_CAM0_FLASH},       // CustomEvent1
    }};

    std::int32_t digioOutput = 3;
    std::int32_t analyzerClear = FG_APPLY;
    std::int32_t pulseMessage = FG_PULSE_IMMEDIATE;
};

struct AppletState {
    TimeoutState timeout;
    DebugState debug;
    DebugTable debugTable;
    GeometryState geometry;
    OutputFormatState outputFormat;
    OutputFormatTable outputFormatTable;
    SimulatorState simulator;
    ImageSelectorState imageSelector;
    WhiteBalanceState whiteBalance;
    LookupTableState lookupTable;
    LineTriggerState lineTrigger;
    ImageTriggerState imageTrigger;
    RoutingState routing;
};

}  // namespace quillon
