/// @file
/// The software board's functions, as its library is loaded.
#pragma once

#include <string>
#include <vector>

#include "client/SharedLibrary.h"
#include "quillon/client/Errors.h"
#include "quillon/client/SoftBoard.h"
#include "softboard/clock.h"
#include "softboard/faults.h"
#include "softboard/frames.h"
#include "softboard/recording.h"
#include "softboard/scene.h"
#include "softboard/softboard.h"

namespace quillon::client {

/// Throws CallError for a code other than 0.
inline void expectOk(const std::string& function, int code) {
    if (code != SOFTBOARD_OK) {
        throw CallError("softboard_" + function, code);
    }
}

// The functions of softboard.h and of the headers beside it, by their names without the prefix.
// clang-format off
#define SOFTBOARD_FUNCTIONS(FUNCTION)                                                                                  \
    FUNCTION(open) FUNCTION(close)                                                                                     \
    FUNCTION(transcript_size) FUNCTION(transcript_get) FUNCTION(transcript_clear) FUNCTION(transcript_record)          \
    FUNCTION(plan_fault) FUNCTION(plan_fault_at) FUNCTION(clear_faults)                                                \
    FUNCTION(set_integer) FUNCTION(get_integer) FUNCTION(set_double) FUNCTION(get_double)                              \
    FUNCTION(set_text) FUNCTION(get_text) FUNCTION(set_element) FUNCTION(get_element) FUNCTION(hide_parameter)         \
    FUNCTION(set_register) FUNCTION(get_register) FUNCTION(get_register_direction)                                     \
    FUNCTION(deliver_pictures) FUNCTION(set_sdk_error)                                                                 \
    FUNCTION(advance_signals) FUNCTION(get_signal_time) FUNCTION(set_input) FUNCTION(get_output) FUNCTION(get_signal)  \
    FUNCTION(advance_to_event) FUNCTION(event_count) FUNCTION(clock)                                                   \
    FUNCTION(record_signals) FUNCTION(recording_size) FUNCTION(recorded_changes)                                       \
    FUNCTION(scene_pattern) FUNCTION(scene_picture) FUNCTION(scene_callback) FUNCTION(scene_light) FUNCTION(scene_seed)\
    FUNCTION(belt) FUNCTION(barrier) FUNCTION(belt_position) FUNCTION(last_message)                                    \
    FUNCTION(plan_line_fault) FUNCTION(plan_frame_fault) FUNCTION(plan_outage)                                         \
    FUNCTION(camera) FUNCTION(link) FUNCTION(dma_rate)                                                                 \
    FUNCTION(memory_open) FUNCTION(memory_close) FUNCTION(memory_mode) FUNCTION(memory_data) FUNCTION(memory_release)  \
    FUNCTION(byte_order) FUNCTION(call_count) FUNCTION(live_designs) FUNCTION(live_handles)
// clang-format on

struct SoftBoardLibrary::Loaded {
    explicit Loaded(const std::filesystem::path& file) : library(file) {
#define SOFTBOARD_RESOLVE(function) library.resolve("softboard_" #function, function);
        SOFTBOARD_FUNCTIONS(SOFTBOARD_RESOLVE)
#undef SOFTBOARD_RESOLVE
    }

    SharedLibrary library;
#define SOFTBOARD_MEMBER(function) decltype(&::softboard_##function) function = nullptr;
    SOFTBOARD_FUNCTIONS(SOFTBOARD_MEMBER)
#undef SOFTBOARD_MEMBER

    std::vector<Access> transcript(IXdevice* board) const {
        std::vector<Access> entries;
        const std::size_t size = transcript_size(board);
        entries.reserve(size);
        for (std::size_t i = 0; i < size; ++i) {
            softboard_access entry{};
            expectOk("transcript_get", transcript_get(board, i, &entry));
            entries.push_back({entry.sequence, static_cast<Direction>(entry.direction), entry.id, entry.dma, entry.type,
                               entry.result, entry.name, entry.value});
        }
        return entries;
    }
};

#undef SOFTBOARD_FUNCTIONS

}  // namespace quillon::client
