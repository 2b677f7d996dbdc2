#pragma once

#include <cstdint>

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// Lets one image through in a period of images. The selected image stays below the period; to widen both, write the
/// period first.
class ImageSelector {
public:
    ImageSelector(AppletState& state, DesignParameters& design) : selector_(state.imageSelector), design_(design) {}

    /// FG_IMG_SELECT_PERIOD: 1 to 256, above the selected image.
    void setImageSelectPeriod(std::int32_t value, bool reportErrors);
    /// FG_IMG_SELECT: 0 to 255, below the period.
    void setImageSelect(std::uint32_t value, bool reportErrors);

private:
    ImageSelectorState& selector_;
    DesignParameters& design_;
};

}  // namespace quillon
