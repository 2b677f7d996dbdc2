#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "design/DesignClock.h"
#include "quillon/Vocabulary.h"

namespace quillon {

// How long an input has to hold a level until it counts, microseconds.
inline constexpr double ShortestDebouncing = Tick;
inline constexpr double LongestDebouncing = 30.0;

/// A trigger input and the number under which the design's input select knows it. The select counts without the gap of
/// the public values at 8 to 15.
struct TriggerInput {
    std::int32_t source;
    std::uint32_t inputSelect;
};

inline constexpr std::array<TriggerInput, 12> TriggerInputs = {{
    {TRGINSRC_GPI_0, 0},
    {TRGINSRC_GPI_1, 1},
    {TRGINSRC_GPI_2, 2},
    {TRGINSRC_GPI_3, 3},
    {TRGINSRC_GPI_4, 4},
    {TRGINSRC_GPI_5, 5},
    {TRGINSRC_GPI_6, 6},
    {TRGINSRC_GPI_7, 7},
    {TRGINSRC_FRONT_GPI_0, 8},
    {TRGINSRC_FRONT_GPI_1, 9},
    {TRGINSRC_FRONT_GPI_2, 10},
    {TRGINSRC_FRONT_GPI_3, 11},
}};

/// The input select of `source`, nothing if it is no trigger input.
constexpr std::optional<std::uint32_t> inputSelectOf(std::int32_t source) {
    for (const TriggerInput& input : TriggerInputs) {
        if (input.source == source) {
            return input.inputSelect;
        }
    }
    return std::nullopt;
}

}  // namespace quillon
