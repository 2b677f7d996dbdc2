/// @file
/// What lies on the bench beside the applet: a belt with its sensors, picture files, a memory of few lines.
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "softboard/faults.h"
#include "softboard/scene.h"
#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {

constexpr double Forever = std::numeric_limits<double>::infinity();
constexpr double Never = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

/// Moves by how long each lasts, in µs, as softboard_belt takes them by when each ends.
std::vector<softboard_move> profile(const std::vector<std::pair<double, double>>& legs);

/// A file that is gone with the test.
class TemporaryPicture {
public:
    TemporaryPicture(const std::string& name, const std::string& content);
    ~TemporaryPicture();
    TemporaryPicture(const TemporaryPicture&) = delete;
    TemporaryPicture& operator=(const TemporaryPicture&) = delete;
    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

/// A grey picture, 8 bits, of rows that are each of one value.
std::string greyRows(unsigned width, const std::vector<int>& rows);

class Bench : public AppletFrames {
protected:
    static constexpr int Width = 8;
    static constexpr unsigned TrackA = 0;
    static constexpr unsigned TrackB = 1;
    static constexpr unsigned Barrier = 2;

    /// Frames of one line of the camera, so that each line that comes can be counted at once.
    void takeSingleLines(unsigned most = 512);
    /// Lines of the encoder instead of a period.
    void useEncoder(int filter, int leading = SOURCE_A);
    void belt(double countsPerMm, const std::vector<softboard_move>& moves) {
        ASSERT_EQ(softboard_belt(device(), TrackA, TrackB, countsPerMm, moves.data(), moves.size()), 0) << message();
    }
    void pattern(const char* text) { ASSERT_EQ(softboard_scene_pattern(device(), text), 0) << message(); }
    /// Of the board's own memory: 3 * `bits` * 2^`address` bits.
    void memorySize(std::int64_t bits, std::int64_t address);

    std::string message();
    double position();
    std::int64_t lostLines() { return status(SOFTBOARD_STATUS_LOST_LINES); }
    std::int64_t lostFrames() { return status(SOFTBOARD_STATUS_LOST_FRAMES); }
    /// The first component of each line of all frames so far, or of one.
    std::vector<int> rows();
    static std::vector<int> rowsOf(const Frame& frame);

    softboard_memory* memory = nullptr;
};

std::vector<int> fromTo(int first, int last);
std::vector<int> together(std::vector<int> first, const std::vector<int>& second);

}  // namespace quillon::frames_test
