/// @file
/// Frames as a terminal shows them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "quillon/client/Frames.h"

namespace quillon::cli {

/// A small picture of 8 bits a component.
struct Thumbnail {
    using Pixel = std::array<std::uint8_t, 3>;  ///< red, green, blue

    unsigned width = 0;
    unsigned height = 0;
    std::vector<Pixel> pixels;  ///< line by line

    const Pixel& at(unsigned x, unsigned y) const { return pixels[std::size_t{y} * width + x]; }
};

/// A frame in at most this many pixels across and down, with its own proportions and never larger than it is. A pixel
/// is the mean of those that it stands for; of many lines, of some of them.
Thumbnail shrink(const client::Frame& frame, unsigned mostAcross, unsigned mostDown);

/// Lines of characters in 24-bit colour, each character two pixels above one another.
std::vector<std::string> asHalfBlocks(const Thumbnail& picture);

/// The picture as sixel graphics in 216 colours; the difference to a pixel's colour is spread over its neighbours.
std::string asSixels(const Thumbnail& picture);

}  // namespace quillon::cli
