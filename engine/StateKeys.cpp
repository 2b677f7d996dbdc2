// The state as a list of keys, walked in the same order by all who handle it whole: the push of a start, a save, and
// both passes of a load.

#include <array>
#include <type_traits>

#include "engine/FgIxWrapperImpl.h"
#include "files/ConfigFileParser.h"
#include "support/Failure.h"

namespace quillon {

namespace {

// A start and a load report no refusal: the handler puts its field back, and the next one goes on.

/// A handler of `subject` as the visitors call it.
template <class Subject, class Value>
auto through(Subject& subject, void (Subject::*handler)(Value, bool)) {
    return [&subject, handler](const auto& value, bool reportErrors) {
        if constexpr (std::is_same_v<Value, const char*>) {
            (subject.*handler)(value.c_str(), reportErrors);
        } else {
            (subject.*handler)(value, reportErrors);
        }
    };
}

template <class Value>
auto through(SignalRouting& routing, void (SignalRouting::*handler)(Route, Value, bool), Route route) {
    return
        [&routing, handler, route](Value value, bool reportErrors) { (routing.*handler)(route, value, reportErrors); };
}

/// Sends the state to the design as it stands in the fields.
class PushedKeys {
public:
    template <class Field, class Handler>
    void applied(const char* /*key*/, const Field& field, Handler&& handler) {
        handler(Field(field), Quietly);
    }
    template <class Field, class Source, class Handler>
    void applied(const char* key, const Field& field, Source&& /*source*/, Handler&& handler) {
        applied(key, field, handler);
    }
    template <class Refresh>
    void refreshed(Refresh&& refresh) {
        refresh();
    }
    template <class... Arguments>
    void stored(const Arguments&... /*unused*/) {}
    template <class... Arguments>
    void savedOnly(const Arguments&... /*unused*/) {}
};

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

    template <class Refresh>
    void refreshed(Refresh&& /*refresh*/) {}

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
            handler(value, Quietly);
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

    template <class Refresh>
    void refreshed(Refresh&& /*refresh*/) {}

private:
    template <class Value>
    bool read(const char* key, Value& value) {
        foundAll_ = foundAll_ && lookUp(key, value);
        return foundAll_;
    }
    bool lookUp(const char* key, std::string& value) {
        std::array<char, ConfigurationTextSize> text{};
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

/// Shows `keys` every key of a port in the order of the file: `applied` has a handler that a start and a load call,
/// `stored` is only put into its field by a load, `savedOnly` no load reads. A source behind the field is where a save
/// takes the value, if not from the field. `refreshed` is for a start alone.
template <class Keys>
void FgIxWrapperImpl::visitStateKeys(Keys& keys) {
    const auto route = [&](const char* sourceKey, const char* polarityKey, Route number) {
        RouteState& state = state_.routing.routes[static_cast<std::size_t>(number)];
        keys.applied(
            sourceKey, state.requestedSource, [&] { return subjects_.routing.source(number); },
            through(subjects_.routing, &SignalRouting::setRouteSource, number));
        keys.applied(
            polarityKey, state.requestedPolarity, [&] { return subjects_.routing.polarity(number); },
            through(subjects_.routing, &SignalRouting::setRoutePolarity, number));
    };
    keys.applied("FG_TIMEOUT", state_.timeout.timeout, through(subjects_.status, &Status::setTimeout));
    keys.savedOnly("FG_DEBUGSOURCE", [&] { return state_.debug.debugSource; });
    keys.savedOnly("FG_DEBUGINENABLE", [&] { return subjects_.debug.readInEnable(); });
    keys.applied(
        "FG_DEBUGFILE", state_.debug.debugFile, [&] { return subjects_.debug.readFile(); },
        through(subjects_.debug, &DebugInjection::setDebugFile));
    keys.savedOnly("FG_DEBUGOUTENABLE", [&] { return subjects_.debug.readOutEnable(); });
    keys.applied("FG_PIXELFORMAT", state_.geometry.pixelFormat,
                 through(subjects_.geometry, &SensorGeometry::setPixelFormat));
    keys.applied("FG_VANTAGEPOINT", state_.geometry.vantagePoint,
                 through(subjects_.geometry, &SensorGeometry::setVantagePoint));
    keys.applied("FG_SENSORWIDTH", state_.geometry.sensorWidth,
                 through(subjects_.geometry, &SensorGeometry::setSensorWidth));
    keys.applied("FG_SENSORHEIGHT", state_.geometry.sensorHeight,
                 through(subjects_.geometry, &SensorGeometry::setSensorHeight));
    keys.applied("FG_WIDTH", state_.geometry.width, through(subjects_.geometry, &SensorGeometry::setWidth));
    keys.applied("FG_HEIGHT", state_.geometry.height, through(subjects_.geometry, &SensorGeometry::setHeight));
    keys.applied("FG_XOFFSET", state_.geometry.xOffset, through(subjects_.geometry, &SensorGeometry::setXOffset));
    keys.applied("FG_YOFFSET", state_.geometry.yOffset, through(subjects_.geometry, &SensorGeometry::setYOffset));
    keys.applied("FG_FORMAT", state_.outputFormat.outputFormat,
                 through(subjects_.outputFormat, &OutputFormat::setOutputFormat));
    keys.applied("FG_BITALIGNMENT", state_.outputFormat.bitAlignment,
                 through(subjects_.outputFormat, &OutputFormat::setBitAlignment));
    keys.applied("FG_CUSTOM_BIT_SHIFT_RIGHT", state_.outputFormat.customBitShift,
                 through(subjects_.outputFormat, &OutputFormat::setCustomBitShift));
    keys.applied("FG_CAMERASIMULATOR_ENABLE", state_.simulator.simulatorEnable,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorEnable));
    keys.stored("FG_CAMERASIMULATOR_WIDTH", state_.simulator.simulatorWidth);
    keys.stored("FG_CAMERASIMULATOR_LINE_GAP", state_.simulator.simulatorLineGap);
    keys.stored("FG_CAMERASIMULATOR_HEIGHT", state_.simulator.simulatorHeight);
    keys.stored("FG_CAMERASIMULATOR_FRAME_GAP", state_.simulator.simulatorFrameGap);
    keys.applied("FG_CAMERASIMULATOR_PATTERN", state_.simulator.simulatorPattern,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorPattern));
    keys.applied("FG_CAMERASIMULATOR_PATTERN_OFFSET", state_.simulator.simulatorPatternOffset,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorPatternOffset));
    keys.applied("FG_CAMERASIMULATOR_ROLL", state_.simulator.simulatorRoll,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorRoll));
    keys.applied("FG_CAMERASIMULATOR_SELECT_MODE", state_.simulator.simulatorSelectMode,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorSelectMode));
    keys.stored("FG_CAMERASIMULATOR_PIXEL_FREQUENCY", state_.simulator.simulatorPixelFrequency,
                [&] { return subjects_.simulator.pixelFrequency(); });
    keys.stored("FG_CAMERASIMULATOR_LINERATE", state_.simulator.simulatorLineRate,
                [&] { return subjects_.simulator.lineRate(); });
    keys.stored("FG_CAMERASIMULATOR_FRAMERATE", state_.simulator.simulatorFrameRate,
                [&] { return subjects_.simulator.frameRate(); });
    keys.applied("FG_CAMERASIMULATOR_TRIGGER_MODE", state_.simulator.simulatorTriggerMode,
                 through(subjects_.simulator, &CameraSimulator::setSimulatorTriggerMode));
    keys.savedOnly("FG_CAMERASIMULATOR_ACTIVE", [&] { return subjects_.simulator.activeCyclesForSaving(); });
    keys.savedOnly("FG_CAMERASIMULATOR_PASSIVE", [&] { return subjects_.simulator.passiveCyclesForSaving(); });
    keys.applied("FG_IMG_SELECT_PERIOD", state_.imageSelector.imageSelectPeriod,
                 through(subjects_.imageSelector, &ImageSelector::setImageSelectPeriod));
    keys.applied("FG_IMG_SELECT", state_.imageSelector.imageSelect,
                 through(subjects_.imageSelector, &ImageSelector::setImageSelect));
    keys.applied("FG_SCALINGFACTOR_RED", state_.whiteBalance.scalingFactorRed,
                 through(subjects_.whiteBalance, &WhiteBalance::setScalingFactorRed));
    keys.applied("FG_SCALINGFACTOR_BLUE", state_.whiteBalance.scalingFactorBlue,
                 through(subjects_.whiteBalance, &WhiteBalance::setScalingFactorBlue));
    keys.applied("FG_SCALINGFACTOR_GREEN", state_.whiteBalance.scalingFactorGreen,
                 through(subjects_.whiteBalance, &WhiteBalance::setScalingFactorGreen));
    keys.applied("FG_LUT_ENABLE", state_.lookupTable.lutEnable,
                 through(subjects_.lookupTable, &LookupTable::setLutEnable));
    keys.applied("FG_LUT_TYPE", state_.lookupTable.lutType, through(subjects_.lookupTable, &LookupTable::setLutType));
    keys.stored("FG_LUT_CUSTOM_FILE", state_.lookupTable.lutCustomFile);
    keys.stored("FG_PROCESSING_OFFSET", state_.lookupTable.processingOffset);
    keys.stored("FG_PROCESSING_GAIN", state_.lookupTable.processingGain);
    keys.stored("FG_PROCESSING_GAMMA", state_.lookupTable.processingGamma);
    keys.stored("FG_PROCESSING_INVERT", state_.lookupTable.processingInvert);
    keys.applied("FG_LINETRIGGERMODE", state_.lineTrigger.mode,
                 through(subjects_.lineTrigger, &LineTrigger::setLineTriggerMode));
    keys.applied("FG_EXSYNCON", state_.lineTrigger.exsyncOn, through(subjects_.lineTrigger, &LineTrigger::setExsyncOn));
    keys.applied("FG_LINETRIGGERINSRC", state_.lineTrigger.inSrc,
                 through(subjects_.lineTrigger, &LineTrigger::setLineTriggerInSrc));
    keys.applied("FG_LINETRIGGERINPOLARITY", state_.lineTrigger.inPolarity,
                 through(subjects_.lineTrigger, &LineTrigger::setLineTriggerInPolarity));
    keys.applied("FG_LINETRIGGERDEBOUNCING", state_.lineTrigger.debouncing,
                 through(subjects_.lineTrigger, &LineTrigger::setLineTriggerDebouncing));
    keys.applied("FG_LINE_DOWNSCALE", state_.lineTrigger.downscale,
                 through(subjects_.lineTrigger, &LineTrigger::setLineDownscale));
    keys.applied("FG_LINE_DOWNSCALEINIT", state_.lineTrigger.downscaleInit,
                 through(subjects_.lineTrigger, &LineTrigger::setLineDownscaleInit));
    keys.applied("FG_SHAFTENCODERON", state_.lineTrigger.shaftEncoderOn,
                 through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderOn));
    keys.applied("FG_SHAFTENCODERMODE", state_.lineTrigger.shaftEncoderMode,
                 through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderMode));
    keys.applied("FG_SHAFTENCODERINSRC", state_.lineTrigger.shaftEncoderInSrc,
                 through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderInSrc));
    keys.applied("FG_SHAFTENCODERLEADING", state_.lineTrigger.shaftEncoderLeading,
                 through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderLeading));
    keys.applied("FG_SHAFTENCODER_COMPENSATION_ENABLE", state_.lineTrigger.shaftEncoderCompensationEnable,
                 through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderCompensationEnable));
    keys.applied(
        "FG_SHAFTENCODER_COMPENSATION_COUNT", state_.lineTrigger.shaftEncoderCompensationCount,
        [&] { return design_.readUnsigned(Ix::Trigger_Trigger_EncoderCompensationCount); },
        through(subjects_.lineTrigger, &LineTrigger::setShaftEncoderCompensationCount));
    keys.applied("FG_LINEPERIODE", state_.lineTrigger.linePeriode,
                 through(subjects_.lineTrigger, &LineTrigger::setLinePeriode));
    // The limits follow the remembered period, whether the design took it or not, and at a start once more.
    keys.refreshed([&] {
        subjects_.lineTrigger.refreshExposureMaximum();
        subjects_.lineTrigger.refreshDelayMaximum();
    });
    keys.applied("FG_LINEEXPOSURE", state_.lineTrigger.lineExposure,
                 through(subjects_.lineTrigger, &LineTrigger::setLineExposure));
    keys.refreshed([&] { subjects_.lineTrigger.refreshExposureMaximum(); });
    keys.applied("FG_EXSYNCPOLARITY", state_.lineTrigger.exsyncPolarity,
                 through(subjects_.lineTrigger, &LineTrigger::setExsyncPolarity));
    keys.applied("FG_LINETRIGGERDELAY", state_.lineTrigger.delay,
                 through(subjects_.lineTrigger, &LineTrigger::setLineTriggerDelay));
    keys.applied("FG_IMGTRIGGERMODE", state_.imageTrigger.mode,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerMode));
    keys.applied("FG_IMGTRIGGERON", state_.imageTrigger.on,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerOn));
    keys.applied("FG_FLASHON", state_.imageTrigger.flashOn, through(subjects_.imageTrigger, &ImageTrigger::setFlashOn));
    keys.applied("FG_IMGTRIGGER_ASYNC_HEIGHT", state_.imageTrigger.asyncHeight,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerAsyncHeight));
    keys.applied("FG_IMGTRIGGERINSRC", state_.imageTrigger.inSrc,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerInSrc));
    keys.applied("FG_IMGTRIGGERINPOLARITY", state_.imageTrigger.inPolarity,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerInPolarity));
    keys.applied("FG_IMGTRIGGERGATEDELAY", state_.imageTrigger.gateDelay,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerGateDelay));
    keys.applied("FG_IMGTRIGGERDEBOUNCING", state_.imageTrigger.debouncing,
                 through(subjects_.imageTrigger, &ImageTrigger::setImgTriggerDebouncing));
    keys.applied("FG_FLASH_POLARITY", state_.imageTrigger.flashPolarity,
                 through(subjects_.imageTrigger, &ImageTrigger::setFlashPolarity));
    keys.applied("FG_STROBEPULSEDELAY", state_.imageTrigger.strobePulseDelay,
                 through(subjects_.imageTrigger, &ImageTrigger::setStrobePulseDelay));
    keys.applied("FG_SETSOFTWARETRIGGER", state_.imageTrigger.setSoftwareTrigger,
                 through(subjects_.imageTrigger, &ImageTrigger::setSetSoftwareTrigger));
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
        through(subjects_.routing, &SignalRouting::setDigioOutput));
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
                 through(subjects_.routing, &SignalRouting::setAnalyzerClear));
    keys.applied("FG_CLHS_TRIGGER_PULSE_MESSAGE", state_.routing.pulseMessage,
                 through(subjects_.routing, &SignalRouting::setPulseMessage));
    route("FG_CUSTOM_SIGNAL_EVENT_0_SOURCE", "FG_CUSTOM_SIGNAL_EVENT_0_POLARITY", Route::CustomEvent0);
    route("FG_CUSTOM_SIGNAL_EVENT_1_SOURCE", "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY", Route::CustomEvent1);
}

void FgIxWrapperImpl::pushDefaultState() {
    PushedKeys keys;
    visitStateKeys(keys);
}

void FgIxWrapperImpl::saveState(Fg_ConfigFileParser* parser) {
    parser->writeConfigFileByPort(OnlyPort);
    SavedKeys keys(*parser);
    visitStateKeys(keys);
}

bool FgIxWrapperImpl::loadState(Fg_ConfigFileParser* parser) {
    for (const auto pass : {LoadedKeys::Pass::Store, LoadedKeys::Pass::Apply}) {
        LoadedKeys keys(*parser, pass);
        visitStateKeys(keys);
        if (!keys.foundAll()) {
            return false;
        }
    }
    return true;
}

}  // namespace quillon
