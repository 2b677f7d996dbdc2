#include "tests/image/Simulator.h"

#include <utility>

namespace quillon::image_test {

std::vector<std::string> simulatorLines(std::vector<std::string> lines) {
    const std::pair<std::string, std::string> shorter[] = {{"CameraSimulator_", ""},
                                                           {"PixelFrequency_SequenceLength_ImageWidth", "Sequence"},
                                                           {"PixelFrequency_ActivePixel_Number", "Active"}};
    for (std::string& line : lines) {
        for (const auto& [from, to] : shorter) {
            if (line.starts_with(from)) {
                line.replace(0, from.size(), to);
            }
        }
    }
    return lines;
}

}  // namespace quillon::image_test
