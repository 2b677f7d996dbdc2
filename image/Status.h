#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// What is read live of buffer, camera and board, and the SDK's timeout. Reads change nothing and fail with the
/// design's or the SDK's code.
class Status {
public:
    Status(AppletState& state, DesignParameters& design, FgIxWrapper& wrapper)
        : state_(state), design_(design), wrapper_(wrapper) {}

    /// FG_TIMEOUT: 2 to 2147483646, else ValueOutOfRange; handed to the SDK.
    void setTimeout(std::int32_t value, bool reportErrors);

    /// FG_FILLLEVEL: percent; 100 after an overflow.
    std::uint32_t readFillLevel();
    /// FG_CAMSTATUS: 1 with a camera, or with the simulator in its place.
    std::uint32_t readCameraStatus();
    /// FG_CAMSTATUS_EXTENDED: bit 0 camera clock to bit 4 trigger, 5 overflow, 6 and 7 the fill level in quarters.
    std::uint32_t readCameraStatusExtended();
    /// FG_ALTERNATIVE_BOARD_DETECTION: the inverse of what the design reads.
    std::uint32_t readAlternativeBoardDetection();

private:
    struct CameraReads {
        std::uint32_t fillLevel, overflow, sdkStatus;
    };
    CameraReads readCamera();

    AppletState& state_;
    DesignParameters& design_;
    FgIxWrapper& wrapper_;
};

}  // namespace quillon
