/// @file
/// Draws frames: the bytes of the reference, as fast as memory lets it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "softboard/pixels/FusedTable.h"
#include "softboard/pixels/Line.h"
#include "softboard/pixels/Packing.h"
#include "softboard/pixels/Scene.h"
#include "softboard/pixels/Settings.h"

namespace softboard::pixels {

/// What it has made of the last few settings it keeps, and makes only what a change asks for. One thread uses it at a
/// time; settings and tables may be in use elsewhere.
class Renderer {
public:
    /// Writes a frame into `out`: its lines one behind the other, in reverse if the first line's settings have yMirror.
    /// Settings may change from line to line. Drawing ends in front of the first line for which there is no room.
    Drawn draw(std::span<const Line> lines, const SettingsOfVersion& settingsOf, Scene& scene,
               std::span<std::byte> out);

private:
    /// The image path under one kind of settings.
    struct Path {
        std::shared_ptr<const Settings> origin;
        Settings settings;  ///< the effective ones
        std::size_t lineBytes = 0;
        std::size_t sensorPixels = 0;   ///< of the region; those behind lie beyond the sensor
        std::size_t groupPixels = 1;    ///< as many as it takes to fill whole bytes
        std::size_t groupedPixels = 0;  ///< of the sensor pixels, those in whole groups
        std::array<std::shared_ptr<const FusedTable>, Colours> tables;  ///< in the order of the frame
        Channels channels{};
        DrawPixels drawPixels = nullptr;
        /// The simulator's ramp in the frame's format, periods of it that begin with 0, 1, 2 and 3: in a packed format
        /// only each fourth pixel begins at a whole byte. Those that no line has used are empty.
        std::array<std::vector<std::byte>, PackedGroup> ramps;
        std::uint64_t used = 0;
    };

    Path* pathOf(const std::shared_ptr<const Settings>& settings);
    std::unique_ptr<Path> makePath(const std::shared_ptr<const Settings>& origin) const;
    std::shared_ptr<const FusedTable> tableFor(const Processing& processing, const Path& unfinished) const;
    void drawLine(Path& path, const Line& line, Scene& scene, std::byte* out);
    void drawCameraLine(const Path& path, const Line& line, Scene& scene, std::byte* out);
    static void drawSimulatorLine(Path& path, const Line& line, std::byte* out);
    static void copyRamp(Path& path, std::size_t first, std::size_t step, std::span<std::byte> out);
    static void putGrey(const Path& path, BitWriter& writer, std::size_t raw);
    static void putBeyondSensor(const Path& path, BitWriter& writer);

    std::vector<std::unique_ptr<Path>> paths_;  ///< the last few that were used
    std::uint64_t uses_ = 0;
    std::vector<std::byte> memory_;  ///< for a raw line
};

}  // namespace softboard::pixels
