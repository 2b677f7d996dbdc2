// The get switch: one line a parameter, in the order of their positions.

#include <algorithm>
#include <cstring>

#include "engine/AppletProperties.h"
#include "engine/FgIxWrapperImpl.h"
#include "support/Failure.h"

namespace quillon {

namespace {

/// Stores a parameter's natural width, whatever the caller's type says.
template <class Value>
void store(void* value, Value answer) {
    require(value != nullptr, InvalidParameter);
    std::memcpy(value, &answer, sizeof answer);
}

}  // namespace

void FgIxWrapperImpl::getOnProcess0(int id, void* value, unsigned dma, FgParamTypes type) {
    if (id == FG_NR_OF_PROCESSES) {  // asked before it is known which processes there are
        store(value, NumberOfProcesses);
        return;
    }
    requireProcess(dma, id, "get");
    switch (id) {
        case FG_TIMEOUT: store(value, state_.timeout.timeout); break;
        case FG_APPLET_VERSION: store(value, AppletVersion); break;
        case FG_APPLET_REVISION: store(value, AppletRevision); break;
        case FG_APPLET_ID: readDesignText(Ix::AppletProperties_AppletUid, value, type); break;
        case FG_APPLET_BUILD_TIME: readDesignText(Ix::AppletProperties_BuildTime, value, type); break;
        case FG_TAV_FILE: readText(value, type, DesignFileName); break;
        case FG_DMASTATUS: readDmaStatus(value); break;
        case FG_CAMSTATUS: store(value, subjects_.status.readCameraStatus()); break;
        case FG_CAMSTATUS_EXTENDED: store(value, subjects_.status.readCameraStatusExtended()); break;
        case FG_SYSTEMMONITOR_FPGA_TEMPERATURE:
            design_.read(Ix::BoardStatus_FpgaTemperature, value, FgTypeDouble);
            break;
        case FG_SYSTEMMONITOR_FPGA_VCC_INT: design_.read(Ix::BoardStatus_FpgaVccInt, value, FgTypeDouble); break;
        case FG_SYSTEMMONITOR_FPGA_VCC_AUX: design_.read(Ix::BoardStatus_FpgaVccAux, value, FgTypeDouble); break;
        case FG_SYSTEMMONITOR_FPGA_VCC_BRAM: design_.read(Ix::BoardStatus_FpgaVccBram, value, FgTypeDouble); break;
        case FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH:
            design_.read(Ix::BoardStatus_PcieCurrentLinkWidth, value, FgTypeUInt32);
            break;
        case FG_SYSTEMMONITOR_CURRENT_LINK_SPEED:
            design_.read(Ix::BoardStatus_PcieCurrentLinkSpeed, value, FgTypeDouble);
            break;
        case FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE:
            design_.read(Ix::BoardStatus_PcieLinkGen2Capable, value, FgTypeUInt32);
            break;
        case FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE:
            design_.read(Ix::BoardStatus_PcieLinkPartnerGen2Capable, value, FgTypeUInt32);
            break;
        case FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE:
            design_.read(Ix::BoardStatus_PcieTrainedPayloadSize, value, FgTypeUInt32);
            break;
        case FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT:
            design_.read(Ix::BoardStatus_ExtensionConnectorPresent, value, FgTypeUInt32);
            break;
        case FG_ALTERNATIVE_BOARD_DETECTION: store(value, subjects_.status.readAlternativeBoardDetection()); break;
        case FG_SYSTEMMONITOR_FPGA_DNA: design_.read(Ix::BoardStatus_FpgaDNA, value, FgTypeUInt64); break;
        case FG_TRANSFER_LEN: forwardToSdk(id, value, dma, type); break;
        case FG_NR_OF_DMAS: forwardToSdk(id, value, dma, type); break;
        case FG_NR_OF_CAMS: forwardToSdk(id, value, dma, type); break;
        case FG_DMA_PORT: forwardToSdk(id, value, dma, type); break;
        case FG_CAM_PORT: forwardToSdk(id, value, dma, type); break;
        case FG_APC_STOP_TIMEOUT: forwardToSdk(id, value, dma, type); break;
        case FG_DEBUGSOURCE: store(value, state_.debug.debugSource); break;
        case FG_DEBUGSOURCENAME: readText(value, type, subjects_.debug.sourceName()); break;
        case FG_DEBUGINENABLE: store(value, subjects_.debug.readInEnable()); break;
        case FG_DEBUGFILE: readText(value, type, subjects_.debug.readFile()); break;
        case FG_DEBUGINSERT: store(value, state_.debug.debugInsert); break;
        case FG_DEBUGWRITEPIXEL: store(value, state_.debug.debugWritePixel); break;
        case FG_DEBUGWRITEFLAG: store(value, state_.debug.debugWriteFlag); break;
        case FG_DEBUGOUTENABLE: store(value, subjects_.debug.readOutEnable()); break;
        case FG_DEBUGOUTXPOS: store(value, subjects_.debug.readOutXPosition()); break;
        case FG_DEBUGOUTYPOS: store(value, subjects_.debug.readOutYPosition()); break;
        case FG_DEBUGOUTPIXEL: store(value, subjects_.debug.readOutPixel()); break;
        case FG_DEBUGREADY: store(value, subjects_.debug.readReady()); break;
        case FG_DEBUGSAVECONFIG: readText(value, type, state_.debug.debugSaveConfig); break;
        case FG_PIXELFORMAT: store(value, state_.geometry.pixelFormat); break;
        case FG_LINEORDER: store(value, state_.outputFormat.lineOrder); break;
        case FG_VANTAGEPOINT: store(value, state_.geometry.vantagePoint); break;
        case FG_SENSORWIDTH: store(value, state_.geometry.sensorWidth); break;
        case FG_SENSORHEIGHT: store(value, state_.geometry.sensorHeight); break;
        case FG_WIDTH: store(value, state_.geometry.width); break;
        case FG_HEIGHT: store(value, state_.geometry.height); break;
        case FG_XOFFSET: store(value, state_.geometry.xOffset); break;
        case FG_YOFFSET: store(value, state_.geometry.yOffset); break;
        case FG_FILLLEVEL: store(value, subjects_.status.readFillLevel()); break;
        case FG_OVERFLOW: design_.read(Ix::Overflow_OverflowOccurred, value, FgTypeUInt32); break;
        case FG_FORMAT: store(value, state_.outputFormat.outputFormat); break;
        case FG_BITALIGNMENT: store(value, state_.outputFormat.bitAlignment); break;
        case FG_PIXELDEPTH: store(value, PixelDepth); break;
        case FG_CUSTOM_BIT_SHIFT_RIGHT: store(value, state_.outputFormat.customBitShift); break;
        case FG_CAMERASIMULATOR_ENABLE: store(value, state_.simulator.simulatorEnable); break;
        case FG_CAMERASIMULATOR_WIDTH: store(value, state_.simulator.activeWidth); break;
        case FG_CAMERASIMULATOR_LINE_GAP: store(value, subjects_.simulator.lineGap()); break;
        case FG_CAMERASIMULATOR_HEIGHT: store(value, state_.simulator.simulatorHeight); break;
        case FG_CAMERASIMULATOR_FRAME_GAP: store(value, subjects_.simulator.frameGap()); break;
        case FG_CAMERASIMULATOR_PATTERN: store(value, state_.simulator.simulatorPattern); break;
        case FG_CAMERASIMULATOR_PATTERN_OFFSET: store(value, state_.simulator.simulatorPatternOffset); break;
        case FG_CAMERASIMULATOR_ROLL: store(value, state_.simulator.simulatorRoll); break;
        case FG_CAMERASIMULATOR_SELECT_MODE: store(value, state_.simulator.simulatorSelectMode); break;
        case FG_CAMERASIMULATOR_PIXEL_FREQUENCY: store(value, subjects_.simulator.pixelFrequency()); break;
        case FG_CAMERASIMULATOR_LINERATE: store(value, subjects_.simulator.lineRate()); break;
        case FG_CAMERASIMULATOR_FRAMERATE: store(value, subjects_.simulator.frameRate()); break;
        case FG_CAMERASIMULATOR_TRIGGER_MODE: store(value, state_.simulator.simulatorTriggerMode); break;
        case FG_CAMERASIMULATOR_ACTIVE: readSimulatorCycles(value, false); break;
        case FG_CAMERASIMULATOR_PASSIVE: readSimulatorCycles(value, true); break;
        case FG_IMG_SELECT_PERIOD: store(value, state_.imageSelector.imageSelectPeriod); break;
        case FG_IMG_SELECT: store(value, state_.imageSelector.imageSelect); break;
        case FG_SCALINGFACTOR_RED: store(value, state_.whiteBalance.scalingFactorRed); break;
        case FG_SCALINGFACTOR_BLUE: store(value, state_.whiteBalance.scalingFactorBlue); break;
        case FG_SCALINGFACTOR_GREEN: store(value, state_.whiteBalance.scalingFactorGreen); break;
        case FG_LUT_ENABLE: store(value, state_.lookupTable.lutEnable); break;
        case FG_LUT_TYPE: store(value, state_.lookupTable.lutType); break;
        case FG_LUT_IMPLEMENTATION_TYPE: store(value, std::int32_t{LUT_IMPLEMENTATION_FULL_LUT}); break;
        case FG_LUT_IN_BITS: store(value, LutInBits); break;
        case FG_LUT_OUT_BITS: store(value, LutOutBits); break;
        case FG_LUT_VALUE_RED: readLut(LookupTableState::lutRed, value, type); break;
        case FG_LUT_VALUE_GREEN: readLut(LookupTableState::lutGreen, value, type); break;
        case FG_LUT_VALUE_BLUE: readLut(LookupTableState::lutBlue, value, type); break;
        case FG_LUT_CUSTOM_FILE: readText(value, type, state_.lookupTable.lutCustomFile); break;
        case FG_LUT_SAVE_FILE: readText(value, type, state_.lookupTable.lutSaveFile); break;
        case FG_PROCESSING_OFFSET: store(value, state_.lookupTable.processingOffset); break;
        case FG_PROCESSING_GAIN: store(value, state_.lookupTable.processingGain); break;
        case FG_PROCESSING_GAMMA: store(value, state_.lookupTable.processingGamma); break;
        case FG_PROCESSING_INVERT: store(value, state_.lookupTable.processingInvert); break;
        case FG_LINETRIGGERMODE: store(value, state_.lineTrigger.mode); break;
        case FG_EXSYNCON: store(value, state_.lineTrigger.exsyncOn); break;
        case FG_LINETRIGGERINSRC: store(value, state_.lineTrigger.inSrc); break;
        case FG_LINETRIGGERINPOLARITY: store(value, state_.lineTrigger.inPolarity); break;
        case FG_LINETRIGGERDEBOUNCING: store(value, state_.lineTrigger.debouncing); break;
        case FG_LINE_DOWNSCALE: store(value, state_.lineTrigger.downscale); break;
        case FG_LINE_DOWNSCALEINIT: store(value, state_.lineTrigger.downscaleInit); break;
        case FG_SHAFTENCODERON: store(value, state_.lineTrigger.shaftEncoderOn); break;
        case FG_SHAFTENCODERMODE: store(value, state_.lineTrigger.shaftEncoderMode); break;
        case FG_SHAFTENCODERINSRC: store(value, state_.lineTrigger.shaftEncoderInSrc); break;
        case FG_SHAFTENCODERLEADING: store(value, state_.lineTrigger.shaftEncoderLeading); break;
        case FG_SHAFTENCODER_COMPENSATION_ENABLE:
            store(value, state_.lineTrigger.shaftEncoderCompensationEnable);
            break;
        case FG_SHAFTENCODER_COMPENSATION_COUNT:
            design_.read(Ix::Trigger_Trigger_EncoderCompensationCount, value, FgTypeUInt32);
            break;
        case FG_LINEPERIODE: store(value, state_.lineTrigger.linePeriode); break;
        case FG_LINEEXPOSURE: store(value, state_.lineTrigger.lineExposure); break;
        case FG_EXSYNCPOLARITY: store(value, state_.lineTrigger.exsyncPolarity); break;
        case FG_LINETRIGGERDELAY: store(value, state_.lineTrigger.delay); break;
        case FG_IMGTRIGGERMODE: store(value, state_.imageTrigger.mode); break;
        case FG_IMGTRIGGERON: store(value, state_.imageTrigger.on); break;
        case FG_FLASHON: store(value, state_.imageTrigger.flashOn); break;
        case FG_IMGTRIGGER_ASYNC_HEIGHT: store(value, state_.imageTrigger.asyncHeight); break;
        case FG_IMGTRIGGER_IS_BUSY: design_.read(Ix::Trigger_Trigger_ImgTrgIsBusy, value, FgTypeUInt32); break;
        case FG_IMGTRIGGERINSRC: store(value, state_.imageTrigger.inSrc); break;
        case FG_IMGTRIGGERINPOLARITY: store(value, state_.imageTrigger.inPolarity); break;
        case FG_IMGTRIGGERGATEDELAY: store(value, state_.imageTrigger.gateDelay); break;
        case FG_IMGTRIGGERDEBOUNCING: store(value, state_.imageTrigger.debouncing); break;
        case FG_FLASH_POLARITY: store(value, state_.imageTrigger.flashPolarity); break;
        case FG_STROBEPULSEDELAY: store(value, state_.imageTrigger.strobePulseDelay); break;
        case FG_SENDSOFTWARETRIGGER: store(value, state_.imageTrigger.sendSoftwareTrigger); break;
        case FG_SETSOFTWARETRIGGER: store(value, state_.imageTrigger.setSoftwareTrigger); break;
        case FG_TRIGGERCAMERA_SOURCE: store(value, subjects_.routing.source(Route::Camera)); break;
        case FG_TRIGGERCAMERA_POLARITY: store(value, subjects_.routing.polarity(Route::Camera)); break;
        case FG_TRIGGEROUT_GPO_0_SOURCE: store(value, subjects_.routing.source(Route::Gpo0)); break;
        case FG_TRIGGEROUT_GPO_0_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo0)); break;
        case FG_TRIGGEROUT_GPO_1_SOURCE: store(value, subjects_.routing.source(Route::Gpo1)); break;
        case FG_TRIGGEROUT_GPO_1_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo1)); break;
        case FG_TRIGGEROUT_GPO_2_SOURCE: store(value, subjects_.routing.source(Route::Gpo2)); break;
        case FG_TRIGGEROUT_GPO_2_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo2)); break;
        case FG_TRIGGEROUT_GPO_3_SOURCE: store(value, subjects_.routing.source(Route::Gpo3)); break;
        case FG_TRIGGEROUT_GPO_3_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo3)); break;
        case FG_TRIGGEROUT_GPO_4_SOURCE: store(value, subjects_.routing.source(Route::Gpo4)); break;
        case FG_TRIGGEROUT_GPO_4_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo4)); break;
        case FG_TRIGGEROUT_GPO_5_SOURCE: store(value, subjects_.routing.source(Route::Gpo5)); break;
        case FG_TRIGGEROUT_GPO_5_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo5)); break;
        case FG_TRIGGEROUT_GPO_6_SOURCE: store(value, subjects_.routing.source(Route::Gpo6)); break;
        case FG_TRIGGEROUT_GPO_6_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo6)); break;
        case FG_TRIGGEROUT_GPO_7_SOURCE: store(value, subjects_.routing.source(Route::Gpo7)); break;
        case FG_TRIGGEROUT_GPO_7_POLARITY: store(value, subjects_.routing.polarity(Route::Gpo7)); break;
        case FG_TRIGGEROUT_FRONT_GPO_0_SOURCE: store(value, subjects_.routing.source(Route::FrontGpo0)); break;
        case FG_TRIGGEROUT_FRONT_GPO_0_POLARITY: store(value, subjects_.routing.polarity(Route::FrontGpo0)); break;
        case FG_TRIGGEROUT_FRONT_GPO_1_SOURCE: store(value, subjects_.routing.source(Route::FrontGpo1)); break;
        case FG_TRIGGEROUT_FRONT_GPO_1_POLARITY: store(value, subjects_.routing.polarity(Route::FrontGpo1)); break;
        case FG_DIGIO_OUTPUT: store(value, subjects_.routing.digioOutput()); break;
        case FG_DIGIO_INPUT: design_.read(Ix::Trigger_Inputs_InputStatus_Status, value, FgTypeUInt32); break;
        case FG_SIGNAL_ANALYZER_0_SOURCE: store(value, subjects_.routing.source(Route::Analyzer0)); break;
        case FG_SIGNAL_ANALYZER_0_POLARITY: store(value, subjects_.routing.polarity(Route::Analyzer0)); break;
        case FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT:
            design_.read(Ix::Trigger_Analyzer_Analyzer0_PeriodCurrent, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_0_PERIOD_MAX:
            design_.read(Ix::Trigger_Analyzer_Analyzer0_PeriodMax, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_0_PERIOD_MIN:
            design_.read(Ix::Trigger_Analyzer_Analyzer0_PeriodMin, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_0_PULSE_COUNT:
            design_.read(Ix::Trigger_Analyzer_Analyzer0_PulseCountSignal_Status, value, FgTypeUInt32);
            break;
        case FG_SIGNAL_ANALYZER_1_SOURCE: store(value, subjects_.routing.source(Route::Analyzer1)); break;
        case FG_SIGNAL_ANALYZER_1_POLARITY: store(value, subjects_.routing.polarity(Route::Analyzer1)); break;
        case FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT:
            design_.read(Ix::Trigger_Analyzer_Analyzer1_PeriodCurrent, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_1_PERIOD_MAX:
            design_.read(Ix::Trigger_Analyzer_Analyzer1_PeriodMax, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_1_PERIOD_MIN:
            design_.read(Ix::Trigger_Analyzer_Analyzer1_PeriodMin, value, FgTypeDouble);
            break;
        case FG_SIGNAL_ANALYZER_1_PULSE_COUNT:
            design_.read(Ix::Trigger_Analyzer_Analyzer1_PulseCountSignal_Status, value, FgTypeUInt32);
            break;
        case FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE: store(value, subjects_.routing.pulseCountDifference()); break;
        case FG_SIGNAL_ANALYZER_CLEAR: store(value, state_.routing.analyzerClear); break;
        case FG_CLHS_TRIGGER_PULSE_MESSAGE: store(value, state_.routing.pulseMessage); break;
        case FG_CUSTOM_SIGNAL_EVENT_0_SOURCE: store(value, subjects_.routing.source(Route::CustomEvent0)); break;
        case FG_CUSTOM_SIGNAL_EVENT_0_POLARITY: store(value, subjects_.routing.polarity(Route::CustomEvent0)); break;
        case FG_CUSTOM_SIGNAL_EVENT_1_SOURCE: store(value, subjects_.routing.source(Route::CustomEvent1)); break;
        case FG_CUSTOM_SIGNAL_EVENT_1_POLARITY: store(value, subjects_.routing.polarity(Route::CustomEvent1)); break;
        case FG_PARAM_DESCR: readDescription(value, type); break;
        default: refuseUnknown("get", id);
    }
}

void FgIxWrapperImpl::forwardToSdk(int id, void* value, unsigned dma, FgParamTypes type) const {
    const int result = getUnwrappedParameterWithType(id, value, static_cast<int>(dma), type);
    require(result == Success, result);
}

/// The SDK fills this parameter through one pointer more: it gets the address of the caller's pointer.
void FgIxWrapperImpl::readDmaStatus(void* value) const {
    void* callersPlace = value;
    const int result = getUnwrappedParameterWithType(FG_DMASTATUS, &callersPlace, 0, FgTypeUInt32);
    require(result == Success, result);
}

/// Outside the pixel-frequency mode the sequence says nothing, and the caller's value stays as it is.
void FgIxWrapperImpl::readSimulatorCycles(void* value, bool passive) {
    if (state_.simulator.simulatorSelectMode == FG_PIXEL_FREQUENCY) {
        const std::uint32_t active = subjects_.simulator.activeCycles();
        store(value, passive ? CameraSimulator::SequenceCycles - active : active);
    }
}

/// With FgTypeString the caller gets a copy to give back, built in the scratch buffer; with any other type the text
/// goes to a buffer of the caller's own, of which no length is known.
void FgIxWrapperImpl::readText(void* value, FgParamTypes type, std::string_view text) {
    const bool handedOut = type == FgTypeString;
    char* const place = handedOut ? fieldScratchString.data() : static_cast<char*>(value);
    const std::size_t length = handedOut ? std::min(text.size(), fieldScratchString.size() - 1) : text.size();
    std::memcpy(place, text.data(), length);
    place[length] = '\0';
    if (handedOut) {
        store(value, outstandingStrings.handOut(place));
    }
}

void FgIxWrapperImpl::readDesignText(Ix parameter, void* value, FgParamTypes type) {
    if (type == FgTypeString) {
        readText(value, type, design_.readText(parameter));
    } else {
        design_.read(parameter, value, FgTypeCharBuffer);
    }
}

/// The one read with an input: the description replaces the name that `value` points to.
void FgIxWrapperImpl::readDescription(void* value, FgParamTypes type) {
    const auto& descriptions = tables_.parameterDescriptionByName();
    const auto found = descriptions.find(static_cast<const char*>(value));
    readText(value, type, found != descriptions.end() ? std::string_view(found->second) : "-");
}

void FgIxWrapperImpl::readLut(LookupTable::Channel channel, void* value, FgParamTypes type) const {
    if (type == FgTypeFieldAccess) {
        subjects_.lookupTable.getLutValue(channel, static_cast<const FieldParameterAccess*>(value));
    } else {
        subjects_.lookupTable.getLutValue(channel, static_cast<FieldParameterInt_s*>(value));
    }
}

}  // namespace quillon
