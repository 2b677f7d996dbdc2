/// @file
/// The events of the design that have a public name, in the order in which they are entered.
#pragma once

#include <array>

namespace quillon {

struct PublicEvent {
    const char* designName;
    const char* publicName;
};

// clang-format off

inline constexpr auto PublicEvents = std::to_array<PublicEvent>({
    {"Device1_Process0_Overflow_Overflow", "FG_OVERFLOW_CAM0"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0", "FG_TRIGGER_INPUT0_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin0", "FG_TRIGGER_INPUT0_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin1", "FG_TRIGGER_INPUT1_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin1", "FG_TRIGGER_INPUT1_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin2", "FG_TRIGGER_INPUT2_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin2", "FG_TRIGGER_INPUT2_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin3", "FG_TRIGGER_INPUT3_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin3", "FG_TRIGGER_INPUT3_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin4", "FG_TRIGGER_INPUT4_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin4", "FG_TRIGGER_INPUT4_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin5", "FG_TRIGGER_INPUT5_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin5", "FG_TRIGGER_INPUT5_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin6", "FG_TRIGGER_INPUT6_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin6", "FG_TRIGGER_INPUT6_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin7", "FG_TRIGGER_INPUT7_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin7", "FG_TRIGGER_INPUT7_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin0", "FG_TRIGGER_FRONT_GPI0_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin0", "FG_TRIGGER_FRONT_GPI0_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin1", "FG_TRIGGER_FRONT_GPI1_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin1", "FG_TRIGGER_FRONT_GPI1_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin2", "FG_TRIGGER_FRONT_GPI2_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin2", "FG_TRIGGER_FRONT_GPI2_FALLING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin3", "FG_TRIGGER_FRONT_GPI3_RISING"},
    {"Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin3", "FG_TRIGGER_FRONT_GPI3_FALLING"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameStart", "FG_START_OF_FRAME_CAM_PORT_0"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameEnd", "FG_END_OF_FRAME_CAM_PORT_0"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineStart", "FG_START_OF_LINE_CAM_PORT_0"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd", "FG_END_OF_LINE_CAM_PORT_0"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent0", "FG_CUSTOM_SIGNAL_EVENT_0"},
    {"Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent1", "FG_CUSTOM_SIGNAL_EVENT_1"},
});

// clang-format on

}  // namespace quillon
