/// @file
/// How bright a scene is.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "softboard/pixels/Scene.h"

namespace softboard::scenes {

struct Light {
    double referenceTicks =
        0;                   ///< the exposure at which the scene looks as it is, in ticks; 0: exposure does not matter
    double flashGain = 1;    ///< what a line is multiplied by while the flash is active: 0 to 1000
    double noise = 0;        ///< its standard deviation, as a part of full scale: 0 to 1
    std::uint64_t seed = 1;  ///< of the noise
};

/// A scene in this light: each component is multiplied, noise of a normal distribution is added, and the sum rounded to
/// the nearest and limited to what the camera can tell; of 16 bits, what is within 1/100 of the middle between two
/// numbers becomes one of these. The noise of a component follows from the seed, the line's tick and its place in the
/// line: lines may be taken in any order and more than once.
class LitScene : public pixels::Scene {
public:
    LitScene(std::shared_ptr<pixels::Scene> inner, const Light& light);

    /// Lines on which the light has no effect are the inner scene's, where they lie.
    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override;
    double nanometresPerRow() const override;

private:
    double gainOf(const pixels::Line& line) const;
    void prepareNoise(std::uint32_t bits);

    std::shared_ptr<pixels::Scene> inner_;
    Light light_;
    std::uint32_t noiseBits_ = 0;  ///< of the camera that the noise is for
    std::vector<float> noise_;     ///< the normal distribution with its deviation
};

}  // namespace softboard::scenes
