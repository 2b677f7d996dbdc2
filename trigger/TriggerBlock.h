#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// The trigger unit's vertical window: offset and length in lines, which follow the region of interest and the image
/// trigger mode.
class TriggerBlock {
public:
    TriggerBlock(const AppletState& state, DesignParameters& design)
        : geometry_(state.geometry), trigger_(state.imageTrigger), design_(design) {}

    static constexpr std::uint32_t MaxRoiHeight = 1398101;  ///< lines; hexadecimal 155555

    /// Sends offset 0, the length of the mode, the offset and the image height. ValueOutOfRange for a mode that is
    /// none.
    void send() const;
    /// Sends offset 0, `length` and the offset.
    void sendLength(std::uint32_t length) const;

private:
    std::uint32_t lengthOfMode() const;

    const GeometryState& geometry_;
    const ImageTriggerState& trigger_;
    DesignParameters& design_;
};

}  // namespace quillon
