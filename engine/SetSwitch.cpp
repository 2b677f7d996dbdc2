// The set switch: one line for each parameter that can be written, in the order of their positions.

#include <cstring>
#include <type_traits>

#include "engine/FgIxWrapperImpl.h"

namespace quillon {

namespace {

/// Takes the natural width of the handler's argument, whatever the caller's type says. A text is the pointer itself.
template <class Value>
Value given(const void* value) {
    if constexpr (std::is_same_v<Value, const char*>) {
        return static_cast<const char*>(value);
    } else {
        Value taken;
        std::memcpy(&taken, value, sizeof taken);
        return taken;
    }
}

// What comes through the switch is a caller's write: every refusal is told.

template <class Subject, class Value>
void set(const void* value, Subject& subject, void (Subject::*handler)(Value, bool)) {
    (subject.*handler)(given<Value>(value), Reporting);
}

/// A handler that the switch alone calls, and that always reports.
template <class Subject, class Value>
void set(const void* value, Subject& subject, void (Subject::*handler)(Value)) {
    (subject.*handler)(given<Value>(value));
}

template <class Value>
void set(const void* value, SignalRouting& routing, void (SignalRouting::*handler)(Route, Value, bool), Route route) {
    (routing.*handler)(route, given<Value>(value), Reporting);
}

}  // namespace

void FgIxWrapperImpl::setOnProcess0(int id, const void* value, FgParamTypes type) {
    switch (id) {
        case FG_TIMEOUT: set(value, subjects_.status, &Status::setTimeout); break;
        case FG_DEBUGSOURCE: set(value, subjects_.debug, &DebugInjection::setDebugSource); break;
        case FG_DEBUGINENABLE: set(value, subjects_.debug, &DebugInjection::setDebugInEnable); break;
        case FG_DEBUGFILE: set(value, subjects_.debug, &DebugInjection::setDebugFile); break;
        case FG_DEBUGINSERT: set(value, subjects_.debug, &DebugInjection::setDebugInsert); break;
        case FG_DEBUGWRITEPIXEL: set(value, subjects_.debug, &DebugInjection::setDebugWritePixel); break;
        case FG_DEBUGWRITEFLAG: set(value, subjects_.debug, &DebugInjection::setDebugWriteFlag); break;
        case FG_DEBUGOUTENABLE: set(value, subjects_.debug, &DebugInjection::setDebugOutEnable); break;
        case FG_DEBUGSAVECONFIG: set(value, subjects_.debug, &DebugInjection::setDebugSaveConfig); break;
        case FG_PIXELFORMAT: set(value, subjects_.geometry, &SensorGeometry::setPixelFormat); break;
        case FG_LINEORDER: set(value, subjects_.outputFormat, &OutputFormat::setLineOrder); break;
        case FG_VANTAGEPOINT: set(value, subjects_.geometry, &SensorGeometry::setVantagePoint); break;
        case FG_SENSORWIDTH: set(value, subjects_.geometry, &SensorGeometry::setSensorWidth); break;
        case FG_SENSORHEIGHT: set(value, subjects_.geometry, &SensorGeometry::setSensorHeight); break;
        case FG_WIDTH: set(value, subjects_.geometry, &SensorGeometry::setWidth); break;
        case FG_HEIGHT: set(value, subjects_.geometry, &SensorGeometry::setHeight); break;
        case FG_XOFFSET: set(value, subjects_.geometry, &SensorGeometry::setXOffset); break;
        case FG_YOFFSET: set(value, subjects_.geometry, &SensorGeometry::setYOffset); break;
        case FG_FORMAT: set(value, subjects_.outputFormat, &OutputFormat::setOutputFormat); break;
        case FG_BITALIGNMENT: set(value, subjects_.outputFormat, &OutputFormat::setBitAlignment); break;
        case FG_CUSTOM_BIT_SHIFT_RIGHT: set(value, subjects_.outputFormat, &OutputFormat::setCustomBitShift); break;
        case FG_CAMERASIMULATOR_ENABLE: set(value, subjects_.simulator, &CameraSimulator::setSimulatorEnable); break;
        case FG_CAMERASIMULATOR_WIDTH: set(value, subjects_.simulator, &CameraSimulator::setSimulatorWidth); break;
        case FG_CAMERASIMULATOR_LINE_GAP: set(value, subjects_.simulator, &CameraSimulator::setSimulatorLineGap); break;
        case FG_CAMERASIMULATOR_HEIGHT: set(value, subjects_.simulator, &CameraSimulator::setSimulatorHeight); break;
        case FG_CAMERASIMULATOR_FRAME_GAP:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorFrameGap);
            break;
        case FG_CAMERASIMULATOR_PATTERN: set(value, subjects_.simulator, &CameraSimulator::setSimulatorPattern); break;
        case FG_CAMERASIMULATOR_PATTERN_OFFSET:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorPatternOffset);
            break;
        case FG_CAMERASIMULATOR_ROLL: set(value, subjects_.simulator, &CameraSimulator::setSimulatorRoll); break;
        case FG_CAMERASIMULATOR_SELECT_MODE:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorSelectMode);
            break;
        case FG_CAMERASIMULATOR_PIXEL_FREQUENCY:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorPixelFrequency);
            break;
        case FG_CAMERASIMULATOR_LINERATE:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorLineRate);
            break;
        case FG_CAMERASIMULATOR_FRAMERATE:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorFrameRate);
            break;
        case FG_CAMERASIMULATOR_TRIGGER_MODE:
            set(value, subjects_.simulator, &CameraSimulator::setSimulatorTriggerMode);
            break;
        case FG_IMG_SELECT_PERIOD: set(value, subjects_.imageSelector, &ImageSelector::setImageSelectPeriod); break;
        case FG_IMG_SELECT: set(value, subjects_.imageSelector, &ImageSelector::setImageSelect); break;
        case FG_SCALINGFACTOR_RED: set(value, subjects_.whiteBalance, &WhiteBalance::setScalingFactorRed); break;
        case FG_SCALINGFACTOR_BLUE: set(value, subjects_.whiteBalance, &WhiteBalance::setScalingFactorBlue); break;
        case FG_SCALINGFACTOR_GREEN: set(value, subjects_.whiteBalance, &WhiteBalance::setScalingFactorGreen); break;
        case FG_LUT_ENABLE: set(value, subjects_.lookupTable, &LookupTable::setLutEnable); break;
        case FG_LUT_TYPE: set(value, subjects_.lookupTable, &LookupTable::setLutType); break;
        case FG_LUT_VALUE_RED: writeLut(LookupTableState::lutRed, value, type); break;
        case FG_LUT_VALUE_GREEN: writeLut(LookupTableState::lutGreen, value, type); break;
        case FG_LUT_VALUE_BLUE: writeLut(LookupTableState::lutBlue, value, type); break;
        case FG_LUT_CUSTOM_FILE: set(value, subjects_.lookupTable, &LookupTable::setLutCustomFile); break;
        case FG_LUT_SAVE_FILE: set(value, subjects_.lookupTable, &LookupTable::setLutSaveFile); break;
        case FG_PROCESSING_OFFSET: set(value, subjects_.lookupTable, &LookupTable::setProcessingOffset); break;
        case FG_PROCESSING_GAIN: set(value, subjects_.lookupTable, &LookupTable::setProcessingGain); break;
        case FG_PROCESSING_GAMMA: set(value, subjects_.lookupTable, &LookupTable::setProcessingGamma); break;
        case FG_PROCESSING_INVERT: set(value, subjects_.lookupTable, &LookupTable::setProcessingInvert); break;
        case FG_LINETRIGGERMODE: set(value, subjects_.lineTrigger, &LineTrigger::setLineTriggerMode); break;
        case FG_EXSYNCON: set(value, subjects_.lineTrigger, &LineTrigger::setExsyncOn); break;
        case FG_LINETRIGGERINSRC: set(value, subjects_.lineTrigger, &LineTrigger::setLineTriggerInSrc); break;
        case FG_LINETRIGGERINPOLARITY: set(value, subjects_.lineTrigger, &LineTrigger::setLineTriggerInPolarity); break;
        case FG_LINETRIGGERDEBOUNCING: set(value, subjects_.lineTrigger, &LineTrigger::setLineTriggerDebouncing); break;
        case FG_LINE_DOWNSCALE: set(value, subjects_.lineTrigger, &LineTrigger::setLineDownscale); break;
        case FG_LINE_DOWNSCALEINIT: set(value, subjects_.lineTrigger, &LineTrigger::setLineDownscaleInit); break;
        case FG_SHAFTENCODERON: set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderOn); break;
        case FG_SHAFTENCODERMODE: set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderMode); break;
        case FG_SHAFTENCODERINSRC: set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderInSrc); break;
        case FG_SHAFTENCODERLEADING: set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderLeading); break;
        case FG_SHAFTENCODER_COMPENSATION_ENABLE:
            set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderCompensationEnable);
            break;
        case FG_SHAFTENCODER_COMPENSATION_COUNT:
            set(value, subjects_.lineTrigger, &LineTrigger::setShaftEncoderCompensationCount);
            break;
        case FG_LINEPERIODE: set(value, subjects_.lineTrigger, &LineTrigger::setLinePeriode); break;
        case FG_LINEEXPOSURE: set(value, subjects_.lineTrigger, &LineTrigger::setLineExposure); break;
        case FG_EXSYNCPOLARITY: set(value, subjects_.lineTrigger, &LineTrigger::setExsyncPolarity); break;
        case FG_LINETRIGGERDELAY: set(value, subjects_.lineTrigger, &LineTrigger::setLineTriggerDelay); break;
        case FG_IMGTRIGGERMODE: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerMode); break;
        case FG_IMGTRIGGERON: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerOn); break;
        case FG_FLASHON: set(value, subjects_.imageTrigger, &ImageTrigger::setFlashOn); break;
        case FG_IMGTRIGGER_ASYNC_HEIGHT:
            set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerAsyncHeight);
            break;
        case FG_IMGTRIGGERINSRC: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerInSrc); break;
        case FG_IMGTRIGGERINPOLARITY: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerInPolarity); break;
        case FG_IMGTRIGGERGATEDELAY: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerGateDelay); break;
        case FG_IMGTRIGGERDEBOUNCING: set(value, subjects_.imageTrigger, &ImageTrigger::setImgTriggerDebouncing); break;
        case FG_FLASH_POLARITY: set(value, subjects_.imageTrigger, &ImageTrigger::setFlashPolarity); break;
        case FG_STROBEPULSEDELAY: set(value, subjects_.imageTrigger, &ImageTrigger::setStrobePulseDelay); break;
        case FG_SENDSOFTWARETRIGGER: set(value, subjects_.imageTrigger, &ImageTrigger::setSendSoftwareTrigger); break;
        case FG_SETSOFTWARETRIGGER: set(value, subjects_.imageTrigger, &ImageTrigger::setSetSoftwareTrigger); break;
        case FG_TRIGGERCAMERA_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Camera);
            break;
        case FG_TRIGGERCAMERA_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Camera);
            break;
        case FG_TRIGGEROUT_GPO_0_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo0);
            break;
        case FG_TRIGGEROUT_GPO_0_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo0);
            break;
        case FG_TRIGGEROUT_GPO_1_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo1);
            break;
        case FG_TRIGGEROUT_GPO_1_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo1);
            break;
        case FG_TRIGGEROUT_GPO_2_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo2);
            break;
        case FG_TRIGGEROUT_GPO_2_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo2);
            break;
        case FG_TRIGGEROUT_GPO_3_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo3);
            break;
        case FG_TRIGGEROUT_GPO_3_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo3);
            break;
        case FG_TRIGGEROUT_GPO_4_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo4);
            break;
        case FG_TRIGGEROUT_GPO_4_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo4);
            break;
        case FG_TRIGGEROUT_GPO_5_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo5);
            break;
        case FG_TRIGGEROUT_GPO_5_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo5);
            break;
        case FG_TRIGGEROUT_GPO_6_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo6);
            break;
        case FG_TRIGGEROUT_GPO_6_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo6);
            break;
        case FG_TRIGGEROUT_GPO_7_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Gpo7);
            break;
        case FG_TRIGGEROUT_GPO_7_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Gpo7);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_0_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::FrontGpo0);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_0_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::FrontGpo0);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_1_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::FrontGpo1);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_1_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::FrontGpo1);
            break;
        case FG_DIGIO_OUTPUT: set(value, subjects_.routing, &SignalRouting::setDigioOutput); break;
        case FG_SIGNAL_ANALYZER_0_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Analyzer0);
            break;
        case FG_SIGNAL_ANALYZER_0_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Analyzer0);
            break;
        case FG_SIGNAL_ANALYZER_1_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::Analyzer1);
            break;
        case FG_SIGNAL_ANALYZER_1_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::Analyzer1);
            break;
        case FG_SIGNAL_ANALYZER_CLEAR: set(value, subjects_.routing, &SignalRouting::setAnalyzerClear); break;
        case FG_CLHS_TRIGGER_PULSE_MESSAGE: set(value, subjects_.routing, &SignalRouting::setPulseMessage); break;
        case FG_CUSTOM_SIGNAL_EVENT_0_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::CustomEvent0);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_0_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::CustomEvent0);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_1_SOURCE:
            set(value, subjects_.routing, &SignalRouting::setRouteSource, Route::CustomEvent1);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_1_POLARITY:
            set(value, subjects_.routing, &SignalRouting::setRoutePolarity, Route::CustomEvent1);
            break;
        default: refuseWrite(id);
    }
}

void FgIxWrapperImpl::writeLut(LookupTable::Channel channel, const void* value, FgParamTypes type) {
    if (type == FgTypeFieldAccess) {
        subjects_.lookupTable.setLutValue(channel, static_cast<const FieldParameterAccess*>(value));
    } else {
        subjects_.lookupTable.setLutValue(channel, static_cast<const FieldParameterInt_s*>(value));
    }
}

}  // namespace quillon
