/// @file
/// The board's monitors: a temperature and voltages that swing a little.
#pragma once

#include <array>

#include "softboard/src/BoundParameters.h"
#include "softboard/src/Ticks.h"

namespace softboard {

/// Not locked; the board's lock guards it.
///
/// A monitor swings around the value that it was last given, from the moment in which it was given: the temperature by
/// 1.5 °C in 40 s, the voltages by a few mV in some seconds, in steps of 0.1 °C and 1 mV.
class Monitors {
public:
    void bind(const Find& find);
    /// Shows the values of this moment.
    void show(Tick now);
    /// To be told of a changed parameter.
    void written(const Parameter& parameter, Tick now);

private:
    struct Monitor {
        Parameter* parameter = nullptr;
        double swing = 0.0;
        double step = 1.0;
        double seconds = 1.0;  ///< of one swing
        double middle = 0.0;
        Tick since = 0;
    };
    std::array<Monitor, 4> monitors_;
};

}  // namespace softboard
