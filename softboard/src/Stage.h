/// @file
/// What stands in front of the camera: a scene in its light, and the belt that moves it.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "softboard/pixels/Scene.h"
#include "softboard/scenes/LitScene.h"
#include "softboard/src/Belt.h"

namespace softboard {

/// Not locked; the board's lock guards it. A board keeps its stage when a design is put on it.
class Stage {
public:
    Belt& belt() { return belt_; }
    const Belt& belt() const { return belt_; }

    void setScene(std::shared_ptr<pixels::Scene> scene) {
        scene_ = std::move(scene);
        nanometresPerRow_ = scene_->nanometresPerRow();
    }
    void setLight(const scenes::Light& light) { light_ = light; }
    const scenes::Light& light() const { return light_; }
    /// What the camera sees from now on.
    std::shared_ptr<pixels::Scene> view() const { return std::make_shared<scenes::LitScene>(scene_, light_); }

    /// Where the scene stands for a line, in nanometres: with the belt, or without one moved by a row with every line.
    /// @param belt  where the belt stood
    /// @param line  how many lines the camera has sent before
    std::int64_t position(double belt, std::int64_t line) const {
        const double place = belt_.exists() ? belt : static_cast<double>(line) * nanometresPerRow_;
        return static_cast<std::int64_t>(place < 0.0 ? place - 0.5 : place + 0.5);
    }

private:
    Belt belt_;
    std::shared_ptr<pixels::Scene> scene_ = std::make_shared<pixels::BarScene>();
    double nanometresPerRow_ = scene_->nanometresPerRow();
    scenes::Light light_;
};

}  // namespace softboard
