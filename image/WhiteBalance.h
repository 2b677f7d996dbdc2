#pragma once

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// The white balance coefficients, one per colour: 0 to 3.9990234375, else ValueOutOfRange. They are independent of the
/// lookup tables.
class WhiteBalance {
public:
    WhiteBalance(AppletState& state, DesignParameters& design) : balance_(state.whiteBalance), design_(design) {}

    /// FG_SCALINGFACTOR_RED: a factor.
    void setScalingFactorRed(double value, bool reportErrors);
    /// FG_SCALINGFACTOR_BLUE: a factor.
    void setScalingFactorBlue(double value, bool reportErrors);
    /// FG_SCALINGFACTOR_GREEN: a factor.
    void setScalingFactorGreen(double value, bool reportErrors);

private:
    void setCoefficient(double& field, Ix coefficient, double value, bool reportErrors);

    WhiteBalanceState& balance_;
    DesignParameters& design_;
};

}  // namespace quillon
