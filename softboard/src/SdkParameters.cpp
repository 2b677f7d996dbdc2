#include "softboard/src/SdkParameters.h"

namespace softboard {
namespace {

ParameterDescription integerParameter(std::int32_t id, const char* name, bool writable, std::int64_t minimum,
                                      std::int64_t maximum, std::int64_t value, const char* unit = "") {
    ParameterDescription parameter;
    parameter.id = id;
    parameter.name = name;
    parameter.groups = {"Sdk"};
    parameter.label = name;
    parameter.anyIntegerType = true;
    parameter.writable = writable;
    parameter.unit = unit;
    parameter.minimum = minimum;
    parameter.maximum = maximum;
    parameter.integer = value;
    return parameter;
}

ParameterDescription textParameter(std::int32_t id, const char* name, const char* value) {
    ParameterDescription parameter;
    parameter.id = id;
    parameter.name = name;
    parameter.groups = {"Sdk"};
    parameter.label = name;
    parameter.type = ValueType::Text;
    parameter.writable = false;
    parameter.text = value;
    return parameter;
}

}  // namespace

const std::vector<ParameterDescription>& sdkParameters() {
    constexpr std::int64_t MaxUInt32 = 4294967295;
    static const std::vector<ParameterDescription> parameters = {
        integerParameter(600, "FG_TIMEOUT", true, 2, 2147483646, 1000000, "s"),
        integerParameter(601, "FG_APC_STOP_TIMEOUT", true, 0, MaxUInt32, 1000, "ms"),
        // Pixel clock, line valid and frame valid: a camera is there and runs.
        integerParameter(SdkCameraStatus, "FG_CAMSTATUS_EXTENDED", false, 0, 255, 7),
        integerParameter(3050, "FG_NR_OF_DMAS", false, 1, 1, 1),
        integerParameter(3060, "FG_NR_OF_CAMS", false, 1, 1, 1),
        integerParameter(3080, "FG_DMA_PORT", false, 0, 0, 0),
        integerParameter(3090, "FG_CAM_PORT", false, 0, 0, 0),
        integerParameter(5210, "FG_TRANSFER_LEN", false, 0, MaxUInt32, 0, "byte"),
        integerParameter(SdkDmaStatus, "FG_DMASTATUS", false, 0, 1, 0),
        textParameter(27001, "FG_DRIVER_VERSION", "5.7.0 (software board)"),
    };
    return parameters;
}

}  // namespace softboard
