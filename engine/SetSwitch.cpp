// The set switch: one line a parameter, in the order of their positions.

#include <cstring>

#include "engine/FgIxWrapperImpl.h"

namespace quillon {

namespace {

/// Takes a parameter's natural width, whatever the caller's type says.
template <class Value>
Value load(const void* value) {
    Value given;
    std::memcpy(&given, value, sizeof given);
    return given;
}

}  // namespace

void FgIxWrapperImpl::setOnProcess0(int id, const void* value, FgParamTypes type) {
    const auto* const text = static_cast<const char*>(value);
    switch (id) {
        case FG_TIMEOUT: subjects_.status.setTimeout(load<std::int32_t>(value), true); break;
        case FG_APPLET_VERSION: refuseReadOnly("FG_APPLET_VERSION");
        case FG_APPLET_REVISION: refuseReadOnly("FG_APPLET_REVISION");
        case FG_APPLET_ID: refuseReadOnly("FG_APPLET_ID");
        case FG_APPLET_BUILD_TIME: refuseReadOnly("FG_APPLET_BUILD_TIME");
        case FG_TAV_FILE: refuseReadOnly("FG_TAV_FILE");
        case FG_DMASTATUS: refuseReadOnly("FG_DMASTATUS");
        case FG_CAMSTATUS: refuseReadOnly("FG_CAMSTATUS");
        case FG_CAMSTATUS_EXTENDED: refuseReadOnly("FG_CAMSTATUS_EXTENDED");
        case FG_SYSTEMMONITOR_FPGA_TEMPERATURE: refuseReadOnly("FG_SYSTEMMONITOR_FPGA_TEMPERATURE");
        case FG_SYSTEMMONITOR_FPGA_VCC_INT: refuseReadOnly("FG_SYSTEMMONITOR_FPGA_VCC_INT");
        case FG_SYSTEMMONITOR_FPGA_VCC_AUX: refuseReadOnly("FG_SYSTEMMONITOR_FPGA_VCC_AUX");
        case FG_SYSTEMMONITOR_FPGA_VCC_BRAM: refuseReadOnly("FG_SYSTEMMONITOR_FPGA_VCC_BRAM");
        case FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH: refuseReadOnly("FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH");
        case FG_SYSTEMMONITOR_CURRENT_LINK_SPEED: refuseReadOnly("FG_SYSTEMMONITOR_CURRENT_LINK_SPEED");
        case FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE: refuseReadOnly("FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE");
        case FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE:
            refuseReadOnly("FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE");
        case FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE: refuseReadOnly("FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE");
        case FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT:
            refuseReadOnly("FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT");
        case FG_ALTERNATIVE_BOARD_DETECTION: refuseReadOnly("FG_ALTERNATIVE_BOARD_DETECTION");
        case FG_SYSTEMMONITOR_FPGA_DNA: refuseReadOnly("FG_SYSTEMMONITOR_FPGA_DNA");
        case FG_TRANSFER_LEN: refuseReadOnly("FG_TRANSFER_LEN");
        case FG_NR_OF_PROCESSES: refuseReadOnly("FG_NR_OF_PROCESSES");
        case FG_NR_OF_DMAS: refuseReadOnly("FG_NR_OF_DMAS");
        case FG_NR_OF_CAMS: refuseReadOnly("FG_NR_OF_CAMS");
        case FG_DMA_PORT: refuseReadOnly("FG_DMA_PORT");
        case FG_CAM_PORT: refuseReadOnly("FG_CAM_PORT");
        case FG_APC_STOP_TIMEOUT: refuseReadOnly("FG_APC_STOP_TIMEOUT");
        case FG_DEBUGSOURCE: subjects_.debug.setDebugSource(load<std::uint32_t>(value)); break;
        case FG_DEBUGSOURCENAME: refuseReadOnly("FG_DEBUGSOURCENAME");
        case FG_DEBUGINENABLE: subjects_.debug.setDebugInEnable(load<std::uint32_t>(value), true); break;
        case FG_DEBUGFILE: subjects_.debug.setDebugFile(text, true); break;
        case FG_DEBUGINSERT: subjects_.debug.setDebugInsert(load<std::uint32_t>(value)); break;
        case FG_DEBUGWRITEPIXEL: subjects_.debug.setDebugWritePixel(load<std::uint64_t>(value)); break;
        case FG_DEBUGWRITEFLAG: subjects_.debug.setDebugWriteFlag(load<std::uint32_t>(value), true); break;
        case FG_DEBUGOUTENABLE: subjects_.debug.setDebugOutEnable(load<std::uint32_t>(value)); break;
        case FG_DEBUGOUTXPOS: refuseReadOnly("FG_DEBUGOUTXPOS");
        case FG_DEBUGOUTYPOS: refuseReadOnly("FG_DEBUGOUTYPOS");
        case FG_DEBUGOUTPIXEL: refuseReadOnly("FG_DEBUGOUTPIXEL");
        case FG_DEBUGREADY: refuseReadOnly("FG_DEBUGREADY");
        case FG_DEBUGSAVECONFIG: subjects_.debug.setDebugSaveConfig(text); break;
        case FG_PIXELFORMAT: subjects_.geometry.setPixelFormat(load<std::uint32_t>(value), true); break;
        case FG_LINEORDER: subjects_.outputFormat.setLineOrder(load<std::uint32_t>(value), true); break;
        case FG_VANTAGEPOINT: subjects_.geometry.setVantagePoint(load<std::uint32_t>(value), true); break;
        case FG_SENSORWIDTH: subjects_.geometry.setSensorWidth(load<std::uint32_t>(value), true); break;
        case FG_SENSORHEIGHT: subjects_.geometry.setSensorHeight(load<std::uint32_t>(value), true); break;
        case FG_WIDTH: subjects_.geometry.setWidth(load<std::uint32_t>(value), true); break;
        case FG_HEIGHT: subjects_.geometry.setHeight(load<std::uint32_t>(value), true); break;
        case FG_XOFFSET: subjects_.geometry.setXOffset(load<std::uint32_t>(value), true); break;
        case FG_YOFFSET: subjects_.geometry.setYOffset(load<std::uint32_t>(value), true); break;
        case FG_FILLLEVEL: refuseReadOnly("FG_FILLLEVEL");
        case FG_OVERFLOW: refuseReadOnly("FG_OVERFLOW");
        case FG_FORMAT: subjects_.outputFormat.setOutputFormat(load<std::uint32_t>(value), true); break;
        case FG_BITALIGNMENT: subjects_.outputFormat.setBitAlignment(load<std::uint32_t>(value), true); break;
        case FG_PIXELDEPTH: refuseReadOnly("FG_PIXELDEPTH");
        case FG_CUSTOM_BIT_SHIFT_RIGHT:
            subjects_.outputFormat.setCustomBitShift(load<std::uint32_t>(value), true);
            break;
        case FG_CAMERASIMULATOR_ENABLE: subjects_.simulator.setSimulatorEnable(load<std::uint32_t>(value), true); break;
        case FG_CAMERASIMULATOR_WIDTH: subjects_.simulator.setSimulatorWidth(load<std::uint32_t>(value)); break;
        case FG_CAMERASIMULATOR_LINE_GAP: subjects_.simulator.setSimulatorLineGap(load<std::uint32_t>(value)); break;
        case FG_CAMERASIMULATOR_HEIGHT: subjects_.simulator.setSimulatorHeight(load<std::uint32_t>(value)); break;
        case FG_CAMERASIMULATOR_FRAME_GAP: subjects_.simulator.setSimulatorFrameGap(load<std::uint32_t>(value)); break;
        case FG_CAMERASIMULATOR_PATTERN:
            subjects_.simulator.setSimulatorPattern(load<std::uint32_t>(value), true);
            break;
        case FG_CAMERASIMULATOR_PATTERN_OFFSET:
            subjects_.simulator.setSimulatorPatternOffset(load<std::uint32_t>(value), true);
            break;
        case FG_CAMERASIMULATOR_ROLL: subjects_.simulator.setSimulatorRoll(load<std::uint32_t>(value), true); break;
        case FG_CAMERASIMULATOR_SELECT_MODE:
            subjects_.simulator.setSimulatorSelectMode(load<std::uint32_t>(value), true);
            break;
        case FG_CAMERASIMULATOR_PIXEL_FREQUENCY:
            subjects_.simulator.setSimulatorPixelFrequency(load<double>(value));
            break;
        case FG_CAMERASIMULATOR_LINERATE: subjects_.simulator.setSimulatorLineRate(load<double>(value)); break;
        case FG_CAMERASIMULATOR_FRAMERATE: subjects_.simulator.setSimulatorFrameRate(load<double>(value)); break;
        case FG_CAMERASIMULATOR_TRIGGER_MODE:
            subjects_.simulator.setSimulatorTriggerMode(load<std::uint32_t>(value), true);
            break;
        case FG_CAMERASIMULATOR_ACTIVE: refuseReadOnly("FG_CAMERASIMULATOR_ACTIVE");
        case FG_CAMERASIMULATOR_PASSIVE: refuseReadOnly("FG_CAMERASIMULATOR_PASSIVE");
        case FG_IMG_SELECT_PERIOD: subjects_.imageSelector.setImageSelectPeriod(load<std::int32_t>(value), true); break;
        case FG_IMG_SELECT: subjects_.imageSelector.setImageSelect(load<std::uint32_t>(value), true); break;
        case FG_SCALINGFACTOR_RED: subjects_.whiteBalance.setScalingFactorRed(load<double>(value), true); break;
        case FG_SCALINGFACTOR_BLUE: subjects_.whiteBalance.setScalingFactorBlue(load<double>(value), true); break;
        case FG_SCALINGFACTOR_GREEN: subjects_.whiteBalance.setScalingFactorGreen(load<double>(value), true); break;
        case FG_LUT_ENABLE: subjects_.lookupTable.setLutEnable(load<std::uint32_t>(value), true); break;
        case FG_LUT_TYPE: subjects_.lookupTable.setLutType(load<std::uint32_t>(value), true); break;
        case FG_LUT_IMPLEMENTATION_TYPE: refuseReadOnly("FG_LUT_IMPLEMENTATION_TYPE");
        case FG_LUT_IN_BITS: refuseReadOnly("FG_LUT_IN_BITS");
        case FG_LUT_OUT_BITS: refuseReadOnly("FG_LUT_OUT_BITS");
        case FG_LUT_VALUE_RED: writeLut(LookupTableState::lutRed, value, type); break;
        case FG_LUT_VALUE_GREEN: writeLut(LookupTableState::lutGreen, value, type); break;
        case FG_LUT_VALUE_BLUE: writeLut(LookupTableState::lutBlue, value, type); break;
        case FG_LUT_CUSTOM_FILE: subjects_.lookupTable.setLutCustomFile(text); break;
        case FG_LUT_SAVE_FILE: subjects_.lookupTable.setLutSaveFile(text); break;
        case FG_PROCESSING_OFFSET: subjects_.lookupTable.setProcessingOffset(load<double>(value)); break;
        case FG_PROCESSING_GAIN: subjects_.lookupTable.setProcessingGain(load<double>(value)); break;
        case FG_PROCESSING_GAMMA: subjects_.lookupTable.setProcessingGamma(load<double>(value)); break;
        case FG_PROCESSING_INVERT: subjects_.lookupTable.setProcessingInvert(load<std::uint32_t>(value)); break;
        case FG_LINETRIGGERMODE: subjects_.lineTrigger.setLineTriggerMode(load<std::int32_t>(value), true); break;
        case FG_EXSYNCON: subjects_.lineTrigger.setExsyncOn(load<std::int32_t>(value), true); break;
        case FG_LINETRIGGERINSRC: subjects_.lineTrigger.setLineTriggerInSrc(load<std::int32_t>(value), true); break;
        case FG_LINETRIGGERINPOLARITY:
            subjects_.lineTrigger.setLineTriggerInPolarity(load<std::int32_t>(value), true);
            break;
        case FG_LINETRIGGERDEBOUNCING: subjects_.lineTrigger.setLineTriggerDebouncing(load<double>(value), true); break;
        case FG_LINE_DOWNSCALE: subjects_.lineTrigger.setLineDownscale(load<std::int32_t>(value), true); break;
        case FG_LINE_DOWNSCALEINIT: subjects_.lineTrigger.setLineDownscaleInit(load<std::int32_t>(value), true); break;
        case FG_SHAFTENCODERON: subjects_.lineTrigger.setShaftEncoderOn(load<std::int32_t>(value), true); break;
        case FG_SHAFTENCODERMODE: subjects_.lineTrigger.setShaftEncoderMode(load<std::int32_t>(value), true); break;
        case FG_SHAFTENCODERINSRC: subjects_.lineTrigger.setShaftEncoderInSrc(load<std::int32_t>(value), true); break;
        case FG_SHAFTENCODERLEADING:
            subjects_.lineTrigger.setShaftEncoderLeading(load<std::int32_t>(value), true);
            break;
        case FG_SHAFTENCODER_COMPENSATION_ENABLE:
            subjects_.lineTrigger.setShaftEncoderCompensationEnable(load<std::int32_t>(value), true);
            break;
        case FG_SHAFTENCODER_COMPENSATION_COUNT:
            subjects_.lineTrigger.setShaftEncoderCompensationCount(load<std::uint32_t>(value), true);
            break;
        case FG_LINEPERIODE: subjects_.lineTrigger.setLinePeriode(load<double>(value), true); break;
        case FG_LINEEXPOSURE: subjects_.lineTrigger.setLineExposure(load<double>(value), true); break;
        case FG_EXSYNCPOLARITY: subjects_.lineTrigger.setExsyncPolarity(load<std::int32_t>(value), true); break;
        case FG_LINETRIGGERDELAY: subjects_.lineTrigger.setLineTriggerDelay(load<double>(value), true); break;
        case FG_IMGTRIGGERMODE: subjects_.imageTrigger.setImgTriggerMode(load<std::int32_t>(value), true); break;
        case FG_IMGTRIGGERON: subjects_.imageTrigger.setImgTriggerOn(load<std::int32_t>(value), true); break;
        case FG_FLASHON: subjects_.imageTrigger.setFlashOn(load<std::int32_t>(value), true); break;
        case FG_IMGTRIGGER_ASYNC_HEIGHT:
            subjects_.imageTrigger.setImgTriggerAsyncHeight(load<std::int32_t>(value), true);
            break;
        case FG_IMGTRIGGER_IS_BUSY: refuseReadOnly("FG_IMGTRIGGER_IS_BUSY");
        case FG_IMGTRIGGERINSRC: subjects_.imageTrigger.setImgTriggerInSrc(load<std::int32_t>(value), true); break;
        case FG_IMGTRIGGERINPOLARITY:
            subjects_.imageTrigger.setImgTriggerInPolarity(load<std::int32_t>(value), true);
            break;
        case FG_IMGTRIGGERGATEDELAY:
            subjects_.imageTrigger.setImgTriggerGateDelay(load<std::uint32_t>(value), true);
            break;
        case FG_IMGTRIGGERDEBOUNCING: subjects_.imageTrigger.setImgTriggerDebouncing(load<double>(value), true); break;
        case FG_FLASH_POLARITY: subjects_.imageTrigger.setFlashPolarity(load<std::int32_t>(value), true); break;
        case FG_STROBEPULSEDELAY: subjects_.imageTrigger.setStrobePulseDelay(load<std::uint32_t>(value), true); break;
        case FG_SENDSOFTWARETRIGGER:
            subjects_.imageTrigger.setSendSoftwareTrigger(load<std::int32_t>(value), true);
            break;
        case FG_SETSOFTWARETRIGGER:
            subjects_.imageTrigger.setSetSoftwareTrigger(load<std::int32_t>(value), true);
            break;
        case FG_TRIGGERCAMERA_SOURCE:
            subjects_.routing.setRouteSource(Route::Camera, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGERCAMERA_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Camera, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_0_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo0, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_0_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo0, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_1_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo1, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_1_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo1, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_2_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo2, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_2_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo2, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_3_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo3, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_3_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo3, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_4_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo4, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_4_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo4, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_5_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo5, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_5_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo5, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_6_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo6, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_6_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo6, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_7_SOURCE:
            subjects_.routing.setRouteSource(Route::Gpo7, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_GPO_7_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Gpo7, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_0_SOURCE:
            subjects_.routing.setRouteSource(Route::FrontGpo0, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_0_POLARITY:
            subjects_.routing.setRoutePolarity(Route::FrontGpo0, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_1_SOURCE:
            subjects_.routing.setRouteSource(Route::FrontGpo1, load<std::uint32_t>(value), true);
            break;
        case FG_TRIGGEROUT_FRONT_GPO_1_POLARITY:
            subjects_.routing.setRoutePolarity(Route::FrontGpo1, load<std::uint32_t>(value), true);
            break;
        case FG_DIGIO_OUTPUT: subjects_.routing.setDigioOutput(load<std::int32_t>(value), true); break;
        case FG_DIGIO_INPUT: refuseReadOnly("FG_DIGIO_INPUT");
        case FG_SIGNAL_ANALYZER_0_SOURCE:
            subjects_.routing.setRouteSource(Route::Analyzer0, load<std::uint32_t>(value), true);
            break;
        case FG_SIGNAL_ANALYZER_0_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Analyzer0, load<std::uint32_t>(value), true);
            break;
        case FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT: refuseReadOnly("FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT");
        case FG_SIGNAL_ANALYZER_0_PERIOD_MAX: refuseReadOnly("FG_SIGNAL_ANALYZER_0_PERIOD_MAX");
        case FG_SIGNAL_ANALYZER_0_PERIOD_MIN: refuseReadOnly("FG_SIGNAL_ANALYZER_0_PERIOD_MIN");
        case FG_SIGNAL_ANALYZER_0_PULSE_COUNT: refuseReadOnly("FG_SIGNAL_ANALYZER_0_PULSE_COUNT");
        case FG_SIGNAL_ANALYZER_1_SOURCE:
            subjects_.routing.setRouteSource(Route::Analyzer1, load<std::uint32_t>(value), true);
            break;
        case FG_SIGNAL_ANALYZER_1_POLARITY:
            subjects_.routing.setRoutePolarity(Route::Analyzer1, load<std::uint32_t>(value), true);
            break;
        case FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT: refuseReadOnly("FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT");
        case FG_SIGNAL_ANALYZER_1_PERIOD_MAX: refuseReadOnly("FG_SIGNAL_ANALYZER_1_PERIOD_MAX");
        case FG_SIGNAL_ANALYZER_1_PERIOD_MIN: refuseReadOnly("FG_SIGNAL_ANALYZER_1_PERIOD_MIN");
        case FG_SIGNAL_ANALYZER_1_PULSE_COUNT: refuseReadOnly("FG_SIGNAL_ANALYZER_1_PULSE_COUNT");
        case FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE: refuseReadOnly("FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE");
        case FG_SIGNAL_ANALYZER_CLEAR: subjects_.routing.setAnalyzerClear(load<std::int32_t>(value), true); break;
        case FG_CLHS_TRIGGER_PULSE_MESSAGE: subjects_.routing.setPulseMessage(load<std::int32_t>(value), true); break;
        case FG_CUSTOM_SIGNAL_EVENT_0_SOURCE:
            subjects_.routing.setRouteSource(Route::CustomEvent0, load<std::uint32_t>(value), true);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_0_POLARITY:
            subjects_.routing.setRoutePolarity(Route::CustomEvent0, load<std::uint32_t>(value), true);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_1_SOURCE:
            subjects_.routing.setRouteSource(Route::CustomEvent1, load<std::uint32_t>(value), true);
            break;
        case FG_CUSTOM_SIGNAL_EVENT_1_POLARITY:
            subjects_.routing.setRoutePolarity(Route::CustomEvent1, load<std::uint32_t>(value), true);
            break;
        case FG_PARAM_DESCR: refuseReadOnly("FG_PARAM_DESCR");
        default: refuseUnknown("set", id);
    }
}

void FgIxWrapperImpl::writeLut(LookupTable::Channel channel, const void* value, FgParamTypes type) {
    if (type == TypeFieldAccess) {
        subjects_.lookupTable.setLutValue(channel, static_cast<const FieldParameterAccess*>(value));
    } else {
        subjects_.lookupTable.setLutValue(channel, static_cast<const FieldParameterInt_s*>(value));
    }
}

}  // namespace quillon
