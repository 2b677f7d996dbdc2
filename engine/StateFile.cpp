// The state in a configuration file: one list of keys, which a save and both passes of a load walk in the same order.

#include <array>
#include <type_traits>

#include "engine/FgIxWrapperImpl.h"
#include "files/ConfigFileParser.h"
#include "support/ErrorCode.h"

namespace quillon {

namespace {

constexpr int OnlyPort = 0;
constexpr std::size_t TextSize = 1024;

/// Writes every key. A value that the design does not give is left out, and the save goes on.
class SavedKeys {
public:
    explicit SavedKeys(Fg_ConfigFileParser& file) : file_(file) {}

    template <class Field, class Handler>
    void applied(const char* key, const Field& field, Handler&& /*handler*/) {
        write(key, field);
    }
    template <class Field, class Source, class Handler>
    void applied(const char* key, const Field& /*field*/, Source&& source, Handler&& /*handler*/) {
        savedOnly(key, source);
    }
    template <class Field>
    void stored(const char* key, const Field& field) {
        write(key, field);
    }
    template <class Field, class Source>
    void stored(const char* key, const Field& /*field*/, Source&& source) {
        savedOnly(key, source);
    }
    template <class Source>
    void savedOnly(const char* key, Source&& source) {
        try {
            write(key, source());
        } catch (int) {
            // Told by the log line of the failed read; a file without a key that a load needs can't be loaded.
        }
    }

private:
    template <class Value>
    void write(const char* key, const Value& value) {
        if constexpr (std::is_same_v<Value, std::string>) {
            file_.writeConfigFile(key, value);
        } else if constexpr (std::is_same_v<Value, double>) {
            file_.writeConfigFileDoubleKey(key, value);
        } else if constexpr (sizeof(Value) == sizeof(std::int64_t)) {
            file_.writeConfigFileInt64Key(key, value);
        } else {
            file_.writeConfigFileIntKey(key, static_cast<int>(value));
        }
    }

    Fg_ConfigFileParser& file_;
};

/// A pass of a load: reads every key that a load reads, and stops looking at the first that is missing.
class LoadedKeys {
public:
    enum class Pass {
        Store,  ///< all values into the fields, unchecked
        Apply   ///< those with a handler through it, which computes everything that follows
    };

    LoadedKeys(Fg_ConfigFileParser& file, Pass pass) : file_(file), pass_(pass) {}

    bool foundAll() const { return foundAll_; }

    template <class Field, class Handler>
    void applied(const char* key, Field& field, Handler&& handler) {
        Field value{};
        if (!read(key, value)) {
            return;
        }
        if (pass_ == Pass::Store) {
            field = value;
        } else {
            handler(value);
        }
    }
    template <class Field, class Source, class Handler>
    void applied(const char* key, Field& field, Source&& /*source*/, Handler&& handler) {
        applied(key, field, handler);
    }
    template <class Field>
    void stored(const char* key, Field& field) {
        Field value{};
        if (pass_ == Pass::Store && read(key, value)) {
            field = value;
        }
    }
    template <class Field, class Source>
    void stored(const char* key, Field& field, Source&& /*source*/) {
        stored(key, field);
    }
    template <class Source>
    void savedOnly(const char* /*key*/, Source&& /*source*/) {}

private:
    template <class Value>
    bool read(const char* key, Value& value) {
        foundAll_ = foundAll_ && lookUp(key, value);
        return foundAll_;
    }
    bool lookUp(const char* key, std::string& value) {
        std::array<char, TextSize> text{};
        const bool found = file_.parseKeySection(OnlyPort, key, text.data()) == Success;
        value = text.data();
        return found;
    }
    bool lookUp(const char* key, double& value) {
        return file_.parseDoubleKeySection(OnlyPort, key, &value) == Success;
    }
    template <class Integer>
    bool lookUp(const char* key, Integer& value) {
        static_assert(sizeof(Integer) == sizeof(int));
        int number = 0;
        const bool found = file_.parseIntKeySection(OnlyPort, key, &number) == Success;
        value = static_cast<Integer>(number);
        return found;
    }

    Fg_ConfigFileParser& file_;
    Pass pass_;
    bool foundAll_ = true;
};

}  // namespace

/// Shows `keys` every key of a port in the order of the file: `applied` has a handler that a load calls, `stored` is
/// only put into its field by a load, `savedOnly` no load reads. A source behind the field is where a save takes the
/// value, if not from the field.
template <class Keys>
void FgIxWrapperImpl::visitConfigurationKeys(Keys& keys) {
    const auto route = [&](const char* sourceKey, const char* polarityKey, Route number) {
        RouteState& state = state_.routing.routes[static_cast<std::size_t>(number)];
        keys.applied(
            sourceKey, state.requestedSource, [&] { return subjects_.routing.source(number); },
            [&](auto value) { subjects_.routing.setRouteSource(number, value, false); });
        keys.applied(
            polarityKey, state.requestedPolarity, [&] { return subjects_.routing.polarity(number); },
            [&](auto value) { subjects_.routing.setRoutePolarity(number, value, false); });
    };
    keys.applied("FG_TIMEOUT", state_.timeout.timeout, [&](auto value) { subjects_.status.setTimeout(value, false); });
    keys.savedOnly("FG_DEBUGSOURCE", [&] { return state_.debug.debugSource; });
    keys.savedOnly("FG_DEBUGINENABLE", [&] { return subjects_.debug.readInEnable(); });
    keys.applied(
        "FG_DEBUGFILE", state_.debug.debugFile, [&] { return subjects_.debug.readFile(); },
        [&](const std::string& value) { subjects_.debug.setDebugFile(value.c_str(), false); });
    keys.savedOnly("FG_DEBUGOUTENABLE", [&] { return subjects_.debug.readOutEnable(); });
    keys.applied("FG_PIXELFORMAT", state_.geometry.pixelFormat,
                 [&](auto value) { subjects_.geometry.setPixelFormat(value, false); });
    keys.applied("FG_VANTAGEPOINT", state_.geometry.vantagePoint,
                 [&](auto value) { subjects_.geometry.setVantagePoint(value, false); });
    keys.applied("FG_SENSORWIDTH", state_.geometry.sensorWidth,
                 [&](auto value) { subjects_.geometry.setSensorWidth(value, false); });
    keys.applied("FG_SENSORHEIGHT", state_.geometry.sensorHeight,
                 [&](auto value) { subjects_.geometry.setSensorHeight(value, false); });
    keys.applied("FG_WIDTH", state_.geometry.width, [&](auto value) { subjects_.geometry.setWidth(value, false); });
    keys.applied("FG_HEIGHT", state_.geometry.height, [&](auto value) { subjects_.geometry.setHeight(value, false); });
    keys.applied("FG_XOFFSET", state_.geometry.xOffset,
                 [&](auto value) { subjects_.geometry.setXOffset(value, false); });
    keys.applied("FG_YOFFSET", state_.geometry.yOffset,
                 [&](auto value) { subjects_.geometry.setYOffset(value, false); });
    keys.applied("FG_FORMAT", state_.outputFormat.outputFormat,
                 [&](auto value) { subjects_.outputFormat.setOutputFormat(value, false); });
    keys.applied("FG_BITALIGNMENT", state_.outputFormat.bitAlignment,
                 [&](auto value) { subjects_.outputFormat.setBitAlignment(value, false); });
    keys.applied("FG_CUSTOM_BIT_SHIFT_RIGHT", state_.outputFormat.customBitShift,
                 [&](auto value) { subjects_.outputFormat.setCustomBitShift(value, false); });
    keys.applied("FG_CAMERASIMULATOR_ENABLE", state_.simulator.simulatorEnable,
                 [&](auto value) { subjects_.simulator.setSimulatorEnable(value, false); });
    keys.stored("FG_CAMERASIMULATOR_WIDTH", state_.simulator.simulatorWidth);
    keys.stored("FG_CAMERASIMULATOR_LINE_GAP", state_.simulator.simulatorLineGap);
    keys.stored("FG_CAMERASIMULATOR_HEIGHT", state_.simulator.simulatorHeight);
    keys.stored("FG_CAMERASIMULATOR_FRAME_GAP", state_.simulator.simulatorFrameGap);
    keys.applied("FG_CAMERASIMULATOR_PATTERN", state_.simulator.simulatorPattern,
                 [&](auto value) { subjects_.simulator.setSimulatorPattern(value, false); });
    keys.applied("FG_CAMERASIMULATOR_PATTERN_OFFSET", state_.simulator.simulatorPatternOffset,
                 [&](auto value) { subjects_.simulator.setSimulatorPatternOffset(value, false); });
    keys.applied("FG_CAMERASIMULATOR_ROLL", state_.simulator.simulatorRoll,
                 [&](auto value) { subjects_.simulator.setSimulatorRoll(value, false); });
    keys.applied("FG_CAMERASIMULATOR_SELECT_MODE", state_.simulator.simulatorSelectMode,
                 [&](auto value) { subjects_.simulator.setSimulatorSelectMode(value, false); });
    keys.stored("FG_CAMERASIMULATOR_PIXEL_FREQUENCY", state_.simulator.simulatorPixelFrequency,
                [&] { return subjects_.simulator.pixelFrequency(); });
    keys.stored("FG_CAMERASIMULATOR_LINERATE", state_.simulator.simulatorLineRate,
                [&] { return subjects_.simulator.lineRate(); });
    keys.stored("FG_CAMERASIMULATOR_FRAMERATE", state_.simulator.simulatorFrameRate,
                [&] { return subjects_.simulator.frameRate(); });
    keys.applied("FG_CAMERASIMULATOR_TRIGGER_MODE", state_.simulator.simulatorTriggerMode,
                 [&](auto value) { subjects_.simulator.setSimulatorTriggerMode(value, false); });
    keys.savedOnly("FG_CAMERASIMULATOR_ACTIVE", [&] { return subjects_.simulator.activeCyclesForSaving(); });
    keys.savedOnly("FG_CAMERASIMULATOR_PASSIVE", [&] { return subjects_.simulator.passiveCyclesForSaving(); });
    keys.applied("FG_IMG_SELECT_PERIOD", state_.imageSelector.imageSelectPeriod,
                 [&](auto value) { subjects_.imageSelector.setImageSelectPeriod(value, false); });
    keys.applied("FG_IMG_SELECT", state_.imageSelector.imageSelect,
                 [&](auto value) { subjects_.imageSelector.setImageSelect(value, false); });
    keys.applied("FG_SCALINGFACTOR_RED", state_.whiteBalance.scalingFactorRed,
                 [&](auto value) { subjects_.whiteBalance.setScalingFactorRed(value, false); });
    keys.applied("FG_SCALINGFACTOR_BLUE", state_.whiteBalance.scalingFactorBlue,
                 [&](auto value) { subjects_.whiteBalance.setScalingFactorBlue(value, false); });
    keys.applied("FG_SCALINGFACTOR_GREEN", state_.whiteBalance.scalingFactorGreen,
                 [&](auto value) { subjects_.whiteBalance.setScalingFactorGreen(value, false); });
    keys.applied("FG_LUT_ENABLE", state_.lookupTable.lutEnable,
                 [&](auto value) { subjects_.lookupTable.setLutEnable(value, false); });
    keys.applied("FG_LUT_TYPE", state_.lookupTable.lutType,
                 [&](auto value) { subjects_.lookupTable.setLutType(value, false); });
    keys.stored("FG_LUT_CUSTOM_FILE", state_.lookupTable.lutCustomFile);
    keys.stored("FG_PROCESSING_OFFSET", state_.lookupTable.processingOffset);
    keys.stored("FG_PROCESSING_GAIN", state_.lookupTable.processingGain);
    keys.stored("FG_PROCESSING_GAMMA", state_.lookupTable.processingGamma);
    keys.stored("FG_PROCESSING_INVERT", state_.lookupTable.processingInvert);
    keys.applied("FG_LINETRIGGERMODE", state_.lineTrigger.mode,
                 [&](auto value) { subjects_.lineTrigger.setLineTriggerMode(value, false); });
    keys.applied("FG_EXSYNCON", state_.lineTrigger.exsyncOn,
                 [&](auto value) { subjects_.lineTrigger.setExsyncOn(value, false); });
    keys.applied("FG_LINETRIGGERINSRC", state_.lineTrigger.inSrc,
                 [&](auto value) { subjects_.lineTrigger.setLineTriggerInSrc(value, false); });
    keys.applied("FG_LINETRIGGERINPOLARITY", state_.lineTrigger.inPolarity,
                 [&](auto value) { subjects_.lineTrigger.setLineTriggerInPolarity(value, false); });
    keys.applied("FG_LINETRIGGERDEBOUNCING", state_.lineTrigger.debouncing,
                 [&](auto value) { subjects_.lineTrigger.setLineTriggerDebouncing(value, false); });
    keys.applied("FG_LINE_DOWNSCALE", state_.lineTrigger.downscale,
                 [&](auto value) { subjects_.lineTrigger.setLineDownscale(value, false); });
    keys.applied("FG_LINE_DOWNSCALEINIT", state_.lineTrigger.downscaleInit,
                 [&](auto value) { subjects_.lineTrigger.setLineDownscaleInit(value, false); });
    keys.applied("FG_SHAFTENCODERON", state_.lineTrigger.shaftEncoderOn,
                 [&](auto value) { subjects_.lineTrigger.setShaftEncoderOn(value, false); });
    keys.applied("FG_SHAFTENCODERMODE", state_.lineTrigger.shaftEncoderMode,
                 [&](auto value) { subjects_.lineTrigger.setShaftEncoderMode(value, false); });
    keys.applied("FG_SHAFTENCODERINSRC", state_.lineTrigger.shaftEncoderInSrc,
                 [&](auto value) { subjects_.lineTrigger.setShaftEncoderInSrc(value, false); });
    keys.applied("FG_SHAFTENCODERLEADING", state_.lineTrigger.shaftEncoderLeading,
                 [&](auto value) { subjects_.lineTrigger.setShaftEncoderLeading(value, false); });
    keys.applied("FG_SHAFTENCODER_COMPENSATION_ENABLE", state_.lineTrigger.shaftEncoderCompensationEnable,
                 [&](auto value) { subjects_.lineTrigger.setShaftEncoderCompensationEnable(value, false); });
    keys.applied(
        "FG_SHAFTENCODER_COMPENSATION_COUNT", state_.lineTrigger.shaftEncoderCompensationCount,
        [&] { return design_.readUnsigned(Ix::Trigger_Trigger_EncoderCompensationCount); },
        [&](auto value) { subjects_.lineTrigger.setShaftEncoderCompensationCount(value, false); });
    keys.applied("FG_LINEPERIODE", state_.lineTrigger.linePeriode,
                 [&](auto value) { subjects_.lineTrigger.setLinePeriode(value, false); });
    keys.applied("FG_LINEEXPOSURE", state_.lineTrigger.lineExposure,
                 [&](auto value) { subjects_.lineTrigger.setLineExposure(value, false); });
    keys.applied("FG_EXSYNCPOLARITY", state_.lineTrigger.exsyncPolarity,
                 [&](auto value) { subjects_.lineTrigger.setExsyncPolarity(value, false); });
    keys.applied("FG_LINETRIGGERDELAY", state_.lineTrigger.delay,
                 [&](auto value) { subjects_.lineTrigger.setLineTriggerDelay(value, false); });
    keys.applied("FG_IMGTRIGGERMODE", state_.imageTrigger.mode,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerMode(value, false); });
    keys.applied("FG_IMGTRIGGERON", state_.imageTrigger.on,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerOn(value, false); });
    keys.applied("FG_FLASHON", state_.imageTrigger.flashOn,
                 [&](auto value) { subjects_.imageTrigger.setFlashOn(value, false); });
    keys.applied("FG_IMGTRIGGER_ASYNC_HEIGHT", state_.imageTrigger.asyncHeight,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerAsyncHeight(value, false); });
    keys.applied("FG_IMGTRIGGERINSRC", state_.imageTrigger.inSrc,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerInSrc(value, false); });
    keys.applied("FG_IMGTRIGGERINPOLARITY", state_.imageTrigger.inPolarity,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerInPolarity(value, false); });
    keys.applied("FG_IMGTRIGGERGATEDELAY", state_.imageTrigger.gateDelay,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerGateDelay(value, false); });
    keys.applied("FG_IMGTRIGGERDEBOUNCING", state_.imageTrigger.debouncing,
                 [&](auto value) { subjects_.imageTrigger.setImgTriggerDebouncing(value, false); });
    keys.applied("FG_FLASH_POLARITY", state_.imageTrigger.flashPolarity,
                 [&](auto value) { subjects_.imageTrigger.setFlashPolarity(value, false); });
    keys.applied("FG_STROBEPULSEDELAY", state_.imageTrigger.strobePulseDelay,
                 [&](auto value) { subjects_.imageTrigger.setStrobePulseDelay(value, false); });
    keys.applied("FG_SETSOFTWARETRIGGER", state_.imageTrigger.setSoftwareTrigger,
                 [&](auto value) { subjects_.imageTrigger.setSetSoftwareTrigger(value, false); });
    route("FG_TRIGGERCAMERA_SOURCE", "FG_TRIGGERCAMERA_POLARITY", Route::Camera);
    route("FG_TRIGGEROUT_GPO_0_SOURCE", "FG_TRIGGEROUT_GPO_0_POLARITY", Route::Gpo0);
    route("FG_TRIGGEROUT_GPO_1_SOURCE", "FG_TRIGGEROUT_GPO_1_POLARITY", Route::Gpo1);
    route("FG_TRIGGEROUT_GPO_2_SOURCE", "FG_TRIGGEROUT_GPO_2_POLARITY", Route::Gpo2);
    route("FG_TRIGGEROUT_GPO_3_SOURCE", "FG_TRIGGEROUT_GPO_3_POLARITY", Route::Gpo3);
    route("FG_TRIGGEROUT_GPO_4_SOURCE", "FG_TRIGGEROUT_GPO_4_POLARITY", Route::Gpo4);
    route("FG_TRIGGEROUT_GPO_5_SOURCE", "FG_TRIGGEROUT_GPO_5_POLARITY", Route::Gpo5);
    route("FG_TRIGGEROUT_GPO_6_SOURCE", "FG_TRIGGEROUT_GPO_6_POLARITY", Route::Gpo6);
    route("FG_TRIGGEROUT_GPO_7_SOURCE", "FG_TRIGGEROUT_GPO_7_POLARITY", Route::Gpo7);
    route("FG_TRIGGEROUT_FRONT_GPO_0_SOURCE", "FG_TRIGGEROUT_FRONT_GPO_0_POLARITY", Route::FrontGpo0);
    route("FG_TRIGGEROUT_FRONT_GPO_1_SOURCE", "FG_TRIGGEROUT_FRONT_GPO_1_POLARITY", Route::FrontGpo1);
    keys.applied(
        "FG_DIGIO_OUTPUT", state_.routing.digioOutput, [&] { return subjects_.routing.digioOutput(); },
        [&](auto value) { subjects_.routing.setDigioOutput(value, false); });
    keys.savedOnly("FG_DIGIO_INPUT", [&] { return design_.readUnsigned(Ix::Trigger_Inputs_InputStatus_Status); });
    route("FG_SIGNAL_ANALYZER_0_SOURCE", "FG_SIGNAL_ANALYZER_0_POLARITY", Route::Analyzer0);
    keys.savedOnly("FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer0_PeriodCurrent); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_0_PERIOD_MAX",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer0_PeriodMax); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_0_PERIOD_MIN",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer0_PeriodMin); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_0_PULSE_COUNT",
                   [&] { return design_.readUnsigned(Ix::Trigger_Analyzer_Analyzer0_PulseCountSignal_Status); });
    route("FG_SIGNAL_ANALYZER_1_SOURCE", "FG_SIGNAL_ANALYZER_1_POLARITY", Route::Analyzer1);
    keys.savedOnly("FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer1_PeriodCurrent); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_1_PERIOD_MAX",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer1_PeriodMax); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_1_PERIOD_MIN",
                   [&] { return design_.readDouble(Ix::Trigger_Analyzer_Analyzer1_PeriodMin); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_1_PULSE_COUNT",
                   [&] { return design_.readUnsigned(Ix::Trigger_Analyzer_Analyzer1_PulseCountSignal_Status); });
    keys.savedOnly("FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE",
                   [&] { return subjects_.routing.pulseCountDifference(); });
    keys.applied("FG_SIGNAL_ANALYZER_CLEAR", state_.routing.analyzerClear,
                 [&](auto value) { subjects_.routing.setAnalyzerClear(value, false); });
    keys.applied("FG_CLHS_TRIGGER_PULSE_MESSAGE", state_.routing.pulseMessage,
                 [&](auto value) { subjects_.routing.setPulseMessage(value, false); });
    route("FG_CUSTOM_SIGNAL_EVENT_0_SOURCE", "FG_CUSTOM_SIGNAL_EVENT_0_POLARITY", Route::CustomEvent0);
    route("FG_CUSTOM_SIGNAL_EVENT_1_SOURCE", "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", Route::CustomEvent1);
}

void FgIxWrapperImpl::saveState(Fg_ConfigFileParser* parser) {
    parser->writeConfigFileByPort(OnlyPort);
    SavedKeys keys(*parser);
    visitConfigurationKeys(keys);
}

bool FgIxWrapperImpl::loadState(Fg_ConfigFileParser* parser) {
    for (const auto pass : {LoadedKeys::Pass::Store, LoadedKeys::Pass::Apply}) {
        LoadedKeys keys(*parser, pass);
        visitConfigurationKeys(keys);
        if (!keys.foundAll()) {
            return false;
        }
    }
    return true;
}

}  // namespace quillon
