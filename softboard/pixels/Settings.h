/// @file
/// All that decides what becomes of a line's pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace softboard::pixels {

class Scene;

/// Red, green, blue: the index of a colour in all arrays here.
enum Colour : std::size_t { Red = 0, Green = 1, Blue = 2 };
inline constexpr std::size_t Colours = 3;

/// A lookup table: 14 bits in, 16 bits out.
using Table = std::array<std::uint16_t, 16384>;

/// The simulator's 8-bit ramp, the sum of four terms modulo 256.
struct Ramp {
    bool enableX = true;               ///< the term x, the pixel in the sensor
    std::uint32_t yDivisor = 256;      ///< the term line modulo this; 0 and 1: none
    std::uint32_t frameDivisor = 256;  ///< the term frame modulo this; 0 and 1: none
    std::uint32_t offset = 0;

    bool operator==(const Ramp&) const = default;
};

/// One state of the design's image path, from the camera to the output format. It does not change once it is shared,
/// and a later state has a greater version.
///
/// A design can be handed any numbers, so every value of every field means something; effective() tells what.
struct Settings {
    std::uint32_t version = 0;
    std::shared_ptr<Scene> scene;  ///< in front of the camera; for whoever calls the renderer

    std::uint32_t bits = 8;                                ///< of a component from the camera: 8, 10, 12, 14 or 16
    std::array<std::uint32_t, Colours> order = {0, 1, 2};  ///< colour c is the camera's component order[c]
    bool simulator = false;  ///< the simulator's ramp stands in for the camera; it has no order and its own bits
    Ramp ramp;

    std::uint32_t sensorWidth = 1024;  ///< pixels
    bool xMirror = false;              ///< over the sensor width, before the region is cut out
    bool yMirror = false;              ///< of a frame's first line: the frame's lines come in reverse
    std::uint32_t xOffset = 0;         ///< of the region in the mirrored line; what lies beyond the sensor is 0
    std::uint32_t xLength = 1024;      ///< pixels of the region, and so of a line of the frame

    std::array<double, Colours> coefficient = {1.0, 1.0, 1.0};  ///< white balance
    bool lookup = false;                                        ///< the tables are in use
    std::array<std::shared_ptr<const Table>, Colours> table;

    std::uint32_t shift = 0;       ///< to the right, 0 to 15
    std::uint32_t formatBits = 8;  ///< of a component in the frame: 8, 10, 12, 14 or 16; 0: lines have no bytes
    bool redFirst = false;         ///< in the frame red is a pixel's first component instead of blue
};

/// Finds settings by their version; null for a version that is not known, whose lines have no bytes.
using SettingsOfVersion = std::function<std::shared_ptr<const Settings>(std::uint32_t)>;

inline constexpr std::uint32_t MostSensorPixels = 65536;  ///< four times what the buffer takes

/// The same settings with a value that makes sense in each field:
/// - bits between two widths count as the wider one, more than 16 as 16;
/// - order: more than 2 counts as 2;
/// - a divisor of 0 counts as 1;
/// - the sensor has no more than MostSensorPixels;
/// - a coefficient counts as the nearest step that there is (see coefficientSteps);
/// - a table that is missing counts as one that is not in use, and without lookup no table is there;
/// - a shift above 15 counts as 16, which leaves nothing;
/// - format bits that no format has count as 0.
Settings effective(const Settings& settings);

inline constexpr std::uint32_t CoefficientSteps = 1024;  ///< in 1.0
inline constexpr std::uint32_t MostCoefficientSteps = 4095;

/// A white balance coefficient as the design holds it, in 1/1024: the nearest, from 0 to 4095; 0 for what is no number.
std::uint32_t coefficientSteps(double coefficient);

/// Bytes of a component as a camera of so many bits delivers it.
constexpr std::size_t componentBytes(std::uint32_t bits) {
    return bits <= 8 ? 1 : 2;
}

/// Bytes of a line in the frame. A line begins at a whole byte; the step of the width, four pixels, fills whole bytes
/// in all formats, and other widths end with bits of 0.
std::size_t lineBytes(const Settings& settings);

}  // namespace softboard::pixels
