#include "image/Status.h"

#include <algorithm>

#include "design/HandlerFrame.h"

namespace quillon {

void Status::setTimeout(std::int32_t value, bool reportErrors) {
    changeField(
        state_.timeout.timeout, value, reportErrors, [&] { requireRange(value, 2, 2147483646); },
        [&](std::int32_t /*previous*/) {
            const int result = wrapper_.setUnwrappedParameterWithType(FG_TIMEOUT, &value, 0, FgTypeUInt32);
            require(result == Success, result);
        });
}

std::uint32_t Status::readFillLevel() {
    constexpr std::uint32_t full = 100;
    if (design_.readUnsigned(Ix::Overflow_OverflowOccurred) == 1) {
        return full;
    }
    const std::uint32_t first = design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_FillLevel);
    const std::uint32_t second = design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_1_FillLevel);
    const std::uint32_t third = design_.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_2_FillLevel);
    return std::max({first, second, third});
}

/// Both status reads make all three reads, so that a failure of any fails them, whether it enters the result or not.
Status::CameraReads Status::readCamera() {
    CameraReads reads{};
    reads.fillLevel = readFillLevel();
    reads.overflow = design_.readUnsigned(Ix::Overflow_OverflowOccurred);
    const int result = wrapper_.getUnwrappedParameterWithType(FG_CAMSTATUS_EXTENDED, &reads.sdkStatus, 0, FgTypeUInt32);
    require(result == Success, result);
    return reads;
}

std::uint32_t Status::readCameraStatus() {
    const CameraReads reads = readCamera();
    return state_.simulator.simulatorEnable == FG_CAMERASIMULATOR ? 1 : reads.sdkStatus & 1U;
}

std::uint32_t Status::readCameraStatusExtended() {
    const CameraReads reads = readCamera();
    const std::uint32_t camera = reads.sdkStatus | (state_.simulator.simulatorEnable == FG_CAMERASIMULATOR ? 1U : 0U);
    const std::uint32_t quarter = std::min(reads.fillLevel / 25, 3U);
    return (camera & ~0xE0U) | (reads.overflow & 1U) << 5U | quarter << 6U;
}

std::uint32_t Status::readAlternativeBoardDetection() {
    return design_.readUnsigned(Ix::BoardStatus_AlternativeBoardDetection) == 0 ? 1 : 0;
}

}  // namespace quillon
