#include "trigger/TriggerBlock.h"

#include "support/Failure.h"

namespace quillon {

void TriggerBlock::send() const {
    sendLength(lengthOfMode());
    design_.writeUnsigned(Ix::ImageHeight_ImageHeight, geometry_.height);
}

void TriggerBlock::sendLength(std::uint32_t length) const {
    // The offset is 0 while the length changes.
    design_.writeUnsigned(Ix::Trigger_Trigger_YOffset, 0);
    design_.writeUnsigned(Ix::Trigger_Trigger_YLength, length);
    design_.writeUnsigned(Ix::Trigger_Trigger_YOffset, geometry_.yOffset);
}

std::uint32_t TriggerBlock::lengthOfMode() const {
    switch (trigger_.mode) {
        case FREE_RUN:
        case ASYNC_TRIGGER:
        case ASYNC_GATED: return geometry_.height;
        case ASYNC_GATED_MULTIFRAME: return MaxRoiHeight;
        case ASYNC_TRIGGER_MULTIFRAME: return static_cast<std::uint32_t>(trigger_.asyncHeight);
        default: fail(ValueOutOfRange);
    }
}

}  // namespace quillon
