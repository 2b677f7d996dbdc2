/// @file
/// What a function draws.
#pragma once

#include <vector>

#include "softboard/pixels/Scene.h"
#include "softboard/scene.h"

namespace softboard::scenes {

/// The scene of softboard_scene_callback(): the function is called once for each line that is taken.
class CallbackScene : public pixels::Scene {
public:
    using Function = int (*)(void* user, const softboard_line* about, std::uint16_t* rgb, std::uint32_t pixels);

    /// @param function  not null
    /// @param user      is handed to it
    CallbackScene(Function function, void* user) : function_(function), user_(user) {}

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override;

private:
    Function function_;
    void* user_;
    std::vector<std::uint16_t> rgb_;
};

}  // namespace softboard::scenes
