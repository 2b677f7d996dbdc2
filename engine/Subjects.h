#pragma once

#include "debug/DebugInjection.h"
#include "image/CameraSimulator.h"
#include "image/ImageSelector.h"
#include "image/LookupTable.h"
#include "image/OutputFormat.h"
#include "image/SensorGeometry.h"
#include "image/Status.h"
#include "image/WhiteBalance.h"
#include "trigger/ImageTrigger.h"
#include "trigger/LineTrigger.h"
#include "trigger/SignalRouting.h"
#include "trigger/TriggerBlock.h"

namespace quillon {

/// The handlers of all parameters, one object a subject. They have no state of their own and work on what they are
/// given here.
struct Subjects {
    Subjects(AppletState& state, DesignParameters& design, ParameterRecords& records, FgIxWrapper& wrapper)
        : triggerBlock(state, design),
          geometry(state, design, records, triggerBlock),
          outputFormat(state, design, records),
          simulator(state, design, records),
          imageSelector(state, design),
          whiteBalance(state, design),
          lookupTable(state, design, records),
          status(state, design, wrapper),
          lineTrigger(state, design, records),
          imageTrigger(state, design, records, triggerBlock),
          routing(state, design),
          debug(state, design, records, wrapper) {}

    TriggerBlock triggerBlock;
    SensorGeometry geometry;
    OutputFormat outputFormat;
    CameraSimulator simulator;
    ImageSelector imageSelector;
    WhiteBalance whiteBalance;
    LookupTable lookupTable;
    Status status;
    LineTrigger lineTrigger;
    ImageTrigger imageTrigger;
    SignalRouting routing;
    DebugInjection debug;
};

}  // namespace quillon
