/// @file
/// What a round of the soak test counts, and what has to balance.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::soak {

/// Of one acquisition, from its start to its stop.
struct Counts {
    std::uint64_t closed = 0;          ///< frames that the trigger unit closed, by its own counter
    std::uint64_t lines = 0;           ///< lines that came from the camera, by the counter of lines
    std::uint64_t delivered = 0;       ///< frames that came to the host
    std::uint64_t lost = 0;            ///< frames that the board tells as lost
    std::uint64_t lostBefore = 0;      ///< the sum of what delivered frames tell of those before them
    std::uint64_t deliveredLines = 0;  ///< in delivered frames
    std::uint64_t lostLines = 0;       ///< that the board tells as lost
    std::uint64_t faults = 0;          ///< planned ones that struck
    std::uint64_t lastImage = 0;       ///< of the last frame that was delivered
    std::uint64_t overflows = 0;       ///< events
};

/// How the image selector was set meanwhile: of `period` frames it passes number `phase`.
struct Selection {
    std::uint64_t period = 1;
    std::uint64_t phase = 0;
};

/// How many of `frames` frames the selector passes.
std::uint64_t passed(std::uint64_t frames, Selection selection);

/// Where the counts do not balance, a sentence each; empty where they do.
///
///     closed = delivered + lost + left out     left out: those of the closed - lost that the selector does not pass
///     image number of the last frame <= closed, and the frames lost before delivered ones <= lost
///     lines >= delivered lines + lost lines    equal where every line belongs to a frame and no frame is left out
std::vector<std::string> imbalances(const Counts& counts, Selection selection, bool everyLineCounts);

}  // namespace quillon::soak
