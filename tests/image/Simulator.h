/// @file
/// The camera simulator of an applet, for its tests.
#pragma once

#include <string>
#include <vector>

#include "tests/image/ImagePath.h"

namespace quillon::image_test {

inline constexpr int PixelFrequencyMode = 0, LineRateMode = 1, FrameRateMode = 2;

/// One cycle of the design's clock, and 32 pixels in each of them.
inline constexpr double ClockPeriod = 8e-9;
inline constexpr double MaxPixelRate = 3999999999.9999995;  ///< pixels per second

/// Lines of the transcript leave out "CameraSimulator_", and the long names of the sequence are shortened to "Sequence"
/// and "Active".
std::vector<std::string> simulatorLines(std::vector<std::string> lines);

struct Simulator : ImagePath {
    std::vector<std::string> accesses() const { return simulatorLines(ImagePath::accesses()); }
    std::vector<std::string> writes() const { return simulatorLines(ImagePath::writes()); }
    /// Goes to a speed mode and forgets how.
    void enter(int mode) {
        ASSERT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, mode), 0);
        forget();
    }
    /// The hardware's side of one of the simulator's parameters.
    std::int64_t design(const std::string& name) const {
        return board.integer("Device1_Process0_CameraSimulator_" + name);
    }
    void lie(const std::string& name, std::int64_t value) {
        board.setInteger("Device1_Process0_CameraSimulator_" + name, value);
    }
};

}  // namespace quillon::image_test
