// The start-up push: the whole default state, sent through the handlers in a fixed order.

#include "engine/FgIxWrapperImpl.h"

namespace quillon {

namespace {
/// A step that fails is swallowed by its handler, its field restored, and the push goes on.
constexpr bool Quietly = false;
}  // namespace

void FgIxWrapperImpl::pushDefaultState() {
    Subjects& to = subjects_;
    const AppletState start;

    to.status.setTimeout(start.timeout.timeout, Quietly);
    to.debug.setDebugFile("", Quietly);

    to.geometry.setPixelFormat(start.geometry.pixelFormat, Quietly);
    to.geometry.setVantagePoint(start.geometry.vantagePoint, Quietly);
    to.geometry.setSensorWidth(start.geometry.sensorWidth, Quietly);
    to.geometry.setSensorHeight(start.geometry.sensorHeight, Quietly);
    to.geometry.setWidth(start.geometry.width, Quietly);
    to.geometry.setHeight(start.geometry.height, Quietly);
    to.geometry.setXOffset(start.geometry.xOffset, Quietly);
    to.geometry.setYOffset(start.geometry.yOffset, Quietly);

    to.outputFormat.setOutputFormat(start.outputFormat.outputFormat, Quietly);
    to.outputFormat.setBitAlignment(start.outputFormat.bitAlignment, Quietly);
    to.outputFormat.setCustomBitShift(start.outputFormat.customBitShift, Quietly);

    to.simulator.setSimulatorEnable(start.simulator.simulatorEnable, Quietly);
    to.simulator.setSimulatorPattern(start.simulator.simulatorPattern, Quietly);
    to.simulator.setSimulatorPatternOffset(start.simulator.simulatorPatternOffset, Quietly);
    to.simulator.setSimulatorRoll(start.simulator.simulatorRoll, Quietly);
    to.simulator.setSimulatorSelectMode(start.simulator.simulatorSelectMode, Quietly);
    to.simulator.setSimulatorTriggerMode(start.simulator.simulatorTriggerMode, Quietly);

    to.imageSelector.setImageSelectPeriod(start.imageSelector.imageSelectPeriod, Quietly);
    to.imageSelector.setImageSelect(start.imageSelector.imageSelect, Quietly);

    to.whiteBalance.setScalingFactorRed(start.whiteBalance.scalingFactorRed, Quietly);
    to.whiteBalance.setScalingFactorBlue(start.whiteBalance.scalingFactorBlue, Quietly);
    to.whiteBalance.setScalingFactorGreen(start.whiteBalance.scalingFactorGreen, Quietly);

    to.lookupTable.setLutEnable(start.lookupTable.lutEnable, Quietly);
    to.lookupTable.setLutType(start.lookupTable.lutType, Quietly);

    pushLineTrigger(start.lineTrigger);
    pushImageTrigger(start.imageTrigger);
    pushRouting(start.routing);
}

void FgIxWrapperImpl::pushLineTrigger(const LineTriggerState& start) {
    LineTrigger& to = subjects_.lineTrigger;
    to.setLineTriggerMode(start.mode, Quietly);
    to.setExsyncOn(start.exsyncOn, Quietly);
    to.setLineTriggerInSrc(start.inSrc, Quietly);
    to.setLineTriggerInPolarity(start.inPolarity, Quietly);
    to.setLineTriggerDebouncing(start.debouncing, Quietly);
    to.setLineDownscale(start.downscale, Quietly);
    to.setLineDownscaleInit(start.downscaleInit, Quietly);
    to.setShaftEncoderOn(start.shaftEncoderOn, Quietly);
    to.setShaftEncoderMode(start.shaftEncoderMode, Quietly);
    to.setShaftEncoderInSrc(start.shaftEncoderInSrc, Quietly);
    to.setShaftEncoderLeading(start.shaftEncoderLeading, Quietly);
    to.setShaftEncoderCompensationEnable(start.shaftEncoderCompensationEnable, Quietly);
    to.setShaftEncoderCompensationCount(start.shaftEncoderCompensationCount, Quietly);
    // The maxima are refreshed once more on their own: they follow the remembered period, whether the design took it or
    // not.
    to.setLinePeriode(start.linePeriode, Quietly);
    to.refreshExposureMaximum();
    to.refreshDelayMaximum();
    to.setLineExposure(start.lineExposure, Quietly);
    to.refreshExposureMaximum();
    to.setExsyncPolarity(start.exsyncPolarity, Quietly);
    to.setLineTriggerDelay(start.delay, Quietly);
}

/// All but the software trigger's pulse, which is an action and no state.
void FgIxWrapperImpl::pushImageTrigger(const ImageTriggerState& start) {
    ImageTrigger& to = subjects_.imageTrigger;
    to.setImgTriggerMode(start.mode, Quietly);
    to.setImgTriggerOn(start.on, Quietly);
    to.setFlashOn(start.flashOn, Quietly);
    to.setImgTriggerAsyncHeight(start.asyncHeight, Quietly);
    to.setImgTriggerInSrc(start.inSrc, Quietly);
    to.setImgTriggerInPolarity(start.inPolarity, Quietly);
    to.setImgTriggerGateDelay(start.gateDelay, Quietly);
    to.setImgTriggerDebouncing(start.debouncing, Quietly);
    to.setFlashPolarity(start.flashPolarity, Quietly);
    to.setStrobePulseDelay(start.strobePulseDelay, Quietly);
    to.setSetSoftwareTrigger(start.setSoftwareTrigger, Quietly);
}

void FgIxWrapperImpl::pushRouting(const RoutingState& start) {
    SignalRouting& to = subjects_.routing;
    const auto pushRoutes = [&](Route first, Route last) {
        for (auto i = static_cast<std::size_t>(first); i <= static_cast<std::size_t>(last); ++i) {
            to.setRouteSource(static_cast<Route>(i), start.routes[i].requestedSource, Quietly);
            to.setRoutePolarity(static_cast<Route>(i), start.routes[i].requestedPolarity, Quietly);
        }
    };
    pushRoutes(Route::Camera, Route::FrontGpo1);
    to.setDigioOutput(start.digioOutput, Quietly);
    pushRoutes(Route::Analyzer0, Route::Analyzer1);
    to.setAnalyzerClear(start.analyzerClear, Quietly);
    to.setPulseMessage(start.pulseMessage, Quietly);
    pushRoutes(Route::CustomEvent0, Route::CustomEvent1);
}

}  // namespace quillon
