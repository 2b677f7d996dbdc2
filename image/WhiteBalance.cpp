#include "image/WhiteBalance.h"

#include "design/HandlerFrame.h"

namespace quillon {

namespace {
constexpr double MaxCoefficient = 3.9990234375;  // 12 bits, 10 of them behind the point
}

void WhiteBalance::setScalingFactorRed(double value, bool reportErrors) {
    setCoefficient(balance_.scalingFactorRed, Ix::WhiteBalance_White_RedCoefficient, value, reportErrors);
}

void WhiteBalance::setScalingFactorBlue(double value, bool reportErrors) {
    setCoefficient(balance_.scalingFactorBlue, Ix::WhiteBalance_White_BlueCoefficient, value, reportErrors);
}

void WhiteBalance::setScalingFactorGreen(double value, bool reportErrors) {
    setCoefficient(balance_.scalingFactorGreen, Ix::WhiteBalance_White_GreenCoefficient, value, reportErrors);
}

void WhiteBalance::setCoefficient(double& field, Ix coefficient, double value, bool reportErrors) {
    changeField(
        field, value, reportErrors, [&] { requireRange(value, 0.0, MaxCoefficient); },
        [&](double /*previous*/) { design_.writeDouble(coefficient, value); });
}

}  // namespace quillon
