#pragma once

#include "design/AppletState.h"
#include "design/DesignParameters.h"

namespace quillon {

/// The white balance coefficients, one per colour: 0 to 3.9990234375, else ValueOutOfRange. They are independent of the
/// lookup tables.
class WhiteBalance {
public:
    WhiteBalance(AppletState& state, DesignParameters& design) : balance_(state.whiteBalance), design_(design) {}

    void setScalingFactorRed(double value, bool reportErrors);
    void setScalingFactorBlue(double value, bool reportErrors);
    void setScalingFactorGreen(double value, bool reportErrors);

private:
    void setCoefficient(double& field, Ix coefficient, double value, bool reportErrors);

    WhiteBalanceState& balance_;
    DesignParameters& design_;
};

}  // namespace quillon
