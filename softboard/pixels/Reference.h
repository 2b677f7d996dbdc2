/// @file
/// The image path of the design as its definition: one pixel at a time through one stage after the other. The tests
/// compare the renderer with it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "softboard/pixels/Line.h"
#include "softboard/pixels/Scene.h"
#include "softboard/pixels/Settings.h"

namespace softboard::pixels::reference {

/// Red, green, blue.
using Pixel = std::array<std::uint16_t, Colours>;

// The stages, in their order. All settings are effective ones.

/// The camera's line of sensorWidth pixels: components left aligned in 16 bits and put into the line order.
std::vector<Pixel> cameraLine(const Settings& settings, const Line& line, Scene& scene);
/// The simulator's: the ramp of 8 bits at the top of the word in all three colours.
std::vector<Pixel> simulatorLine(const Settings& settings, const Line& line);
/// The mirror over the sensor width, then the region, which is 0 beyond the sensor.
std::vector<Pixel> region(const Settings& settings, std::vector<Pixel> line);
/// White balance, lookup table, shift and the bits of the format for one component.
std::uint16_t process(const Settings& settings, std::size_t colour, std::uint16_t value);
/// The line's pixels as one stream of bits, filled from the low bit of each byte, to the end of the last byte.
std::vector<std::byte> pack(const Settings& settings, const std::vector<Pixel>& line);

/// All stages.
std::vector<std::byte> drawLine(const Settings& settings, const Line& line, Scene& scene);

/// A frame, as Renderer::draw draws it.
Drawn draw(std::span<const Line> lines, const SettingsOfVersion& settingsOf, Scene& scene, std::span<std::byte> out);

}  // namespace softboard::pixels::reference
