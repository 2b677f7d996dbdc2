#include "softboard/src/Monitors.h"

#include <cmath>
#include <string>

namespace softboard {

void Monitors::bind(const Find& find) {
    const std::string status = "Device1_Process0_BoardStatus_";
    monitors_ = {Monitor{watched(find, status + "FpgaTemperature"), 1.5, 0.1, 40.0},
                 Monitor{watched(find, status + "FpgaVccInt"), 0.004, 0.001, 7.0},
                 Monitor{watched(find, status + "FpgaVccAux"), 0.006, 0.001, 11.0},
                 Monitor{watched(find, status + "FpgaVccBram"), 0.004, 0.001, 9.0}};
    for (Monitor& monitor : monitors_) {
        monitor.middle = realOf(monitor.parameter);
    }
}

void Monitors::show(Tick now) {
    constexpr double FullTurn = 6.283185307179586;
    for (const Monitor& monitor : monitors_) {
        if (monitor.parameter == nullptr) {
            continue;
        }
        const double turns = microsecondsOf(now - monitor.since) * 1e-6 / monitor.seconds;
        const double steps = std::round(monitor.swing / monitor.step * std::sin(FullTurn * turns));
        // Without a step the value stays as it was given; with one it is shown in full thousandths.
        const double value =
            steps == 0.0 ? monitor.middle : std::round((monitor.middle + steps * monitor.step) * 1000.0) / 1000.0;
        monitor.parameter->setReal(value);
    }
}

void Monitors::written(const Parameter& parameter, Tick now) {
    for (Monitor& monitor : monitors_) {
        if (monitor.parameter == &parameter) {
            monitor.middle = realOf(&parameter);
            monitor.since = now;
        }
    }
}

}  // namespace softboard
