/// @file
/// A picture on the belt.
#pragma once

#include "softboard/pixels/Scene.h"
#include "softboard/scenes/Picture.h"

namespace softboard::scenes {

/// Row 0 is at 0 mm of the belt, column 0 at the camera's first pixel. A camera of fewer bits than the picture has gets
/// the upper ones; one of more gets components of 8 bits spread over 16, times 257, and of these the upper bits.
class PictureScene : public pixels::Scene {
public:
    /// @param picture      of 1 x 1 pixel at least
    /// @param wrap         rows and columns repeat in both directions; otherwise all around is black
    /// @param pixelsPerMm  along the belt, 0.001 to 1000
    PictureScene(Picture picture, bool wrap, double pixelsPerMm);

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override;
    double nanometresPerRow() const override;

private:
    std::span<const std::byte> pixelsFor(std::uint32_t bits);

    Picture picture_;
    bool wrap_;
    double pixelsPerMm_;
    std::uint32_t bits_ = 0;            ///< those that the camera had last
    std::vector<std::byte> converted_;  ///< the picture in these, if they are not its own
};

}  // namespace softboard::scenes
