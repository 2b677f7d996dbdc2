/// @file
/// The control interface of scenes, light and belts.

#include "softboard/scene.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "softboard/scenes/CallbackScene.h"
#include "softboard/scenes/Patterns.h"
#include "softboard/scenes/Picture.h"
#include "softboard/scenes/PictureScene.h"
#include "softboard/src/OnBoard.h"

namespace {

using softboard::Message;
using softboard::onBoard;
using softboard::refuse;
namespace scenes = softboard::scenes;

/// False for what is no number, too.
bool isWithin(double value, double least, double most) {
    return value >= least && value <= most;
}

}  // namespace

int softboard_scene_pattern(IXdevice* board, const char* pattern) {
    return onBoard(board, [&]() -> Message {
        auto scene = pattern != nullptr ? scenes::makePattern(pattern) : nullptr;
        if (scene == nullptr) {
            return refuse(
                (pattern != nullptr ? "\"" + std::string(pattern) + "\"" : std::string("null")) +
                ": the patterns are bars, ramp, checker, noise, noise:SEED, grey and grey:V, V from 0 to 255");
        }
        board->setScene(std::move(scene));
        return {};
    });
}

int softboard_scene_picture(IXdevice* board, const char* file, int wrap, double pixels_per_mm) {
    return onBoard(board, [&]() -> Message {
        if (file == nullptr) {
            return refuse("a picture has the name of a file");
        }
        if (!isWithin(pixels_per_mm, 0.001, 1000.0)) {
            return refuse("a picture has 0.001 to 1000 pixels per mm");
        }
        try {
            board->setScene(
                std::make_shared<scenes::PictureScene>(scenes::readPicture(file), wrap != 0, pixels_per_mm));
            return {};
        } catch (const scenes::PictureError& error) {
            return {SOFTBOARD_E_FILE, error.what()};
        }
    });
}

int softboard_scene_callback(IXdevice* board,
                             int (*line)(void* user, const softboard_line* about, uint16_t* rgb, uint32_t pixels),
                             void* user) {
    return onBoard(board, [&]() -> Message {
        if (line == nullptr) {
            return refuse("a scene that is drawn by a function needs the function");
        }
        board->setScene(std::make_shared<scenes::CallbackScene>(line, user));
        return {};
    });
}

int softboard_scene_light(IXdevice* board, double reference_us, double flash_gain, double noise) {
    return onBoard(board, [&]() -> Message {
        constexpr double longest = 1e6;  // microseconds, as long as any time of the design
        constexpr double brightest = 1000.0;
        if (!isWithin(reference_us, 0.0, longest)) {
            return refuse("the reference exposure is 0 to 1000000 us");
        }
        if (!isWithin(flash_gain, 0.0, brightest)) {
            return refuse("the gain of the flash is 0 to 1000");
        }
        if (!isWithin(noise, 0.0, 1.0)) {
            return refuse("noise is a part of full scale, 0 to 1");
        }
        scenes::Light light = board->light();
        light.referenceTicks = reference_us * softboard::TicksPerMicrosecond;
        light.flashGain = flash_gain;
        light.noise = noise;
        board->setLight(light);
        return {};
    });
}

int softboard_scene_seed(IXdevice* board, uint64_t seed) {
    return onBoard(board, [&]() -> Message {
        scenes::Light light = board->light();
        light.seed = seed;
        board->setLight(light);
        return {};
    });
}

int softboard_belt(IXdevice* board, unsigned a, unsigned b, double counts_per_mm, const softboard_move* moves,
                   size_t count) {
    return onBoard(board, [&]() -> Message {
        if (moves == nullptr && count != 0) {
            return refuse("no moves are there");
        }
        std::vector<softboard_move> all;
        all.assign(moves, moves + count);
        return board->setBelt(a, b, counts_per_mm, std::move(all));
    });
}

int softboard_barrier(IXdevice* board, unsigned input, double mm_first, double mm_pitch, double mm_length) {
    return onBoard(board, [&] { return board->setBarrier(input, mm_first, mm_pitch, mm_length); });
}

int softboard_belt_position(IXdevice* board, double* mm) {
    return onBoard(board, [&]() -> Message {
        if (mm == nullptr) {
            return refuse("no place for the position");
        }
        *mm = board->beltPosition();
        return {};
    });
}

int softboard_last_message(IXdevice* board, char* buffer, size_t size) {
    return softboard::guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        if (buffer == nullptr || !softboard::Process::instance().isBoard(board)) {
            return SOFTBOARD_E_ARGUMENT;
        }
        const std::string message = board->lastMessage();
        if (message.size() >= size) {
            return SOFTBOARD_E_RANGE;
        }
        std::memcpy(buffer, message.c_str(), message.size() + 1);
        return SOFTBOARD_OK;
    });
}
