#include "tests/soak/Counts.h"

namespace quillon::soak {

namespace {

std::string inWords(std::uint64_t number, const char* what) {
    return std::to_string(number) + " " + what;
}

}  // namespace

std::uint64_t passed(std::uint64_t frames, Selection selection) {
    // Of 0 to `frames` - 1, those that are the phase modulo the period.
    return (frames + selection.period - 1 - selection.phase) / selection.period;
}

std::vector<std::string> imbalances(const Counts& counts, Selection selection, bool everyLineCounts) {
    std::vector<std::string> found;
    if (counts.lost > counts.closed || counts.delivered != passed(counts.closed - counts.lost, selection)) {
        found.push_back(inWords(counts.closed, "frames closed, ") + inWords(counts.delivered, "delivered, ") +
                        inWords(counts.lost, "lost, and one of ") + inWords(selection.period, "selected"));
    }
    if (counts.lastImage > counts.closed) {
        found.push_back("the last frame is image " + inWords(counts.lastImage, "of ") +
                        inWords(counts.closed, "that were closed"));
    }
    if (counts.lostBefore > counts.lost) {
        found.push_back(inWords(counts.lostBefore, "frames lost before others, and ") + inWords(counts.lost, "lost"));
    }
    const std::uint64_t known = counts.deliveredLines + counts.lostLines;
    if (everyLineCounts ? counts.lines != known : counts.lines < known) {
        found.push_back(inWords(counts.lines, "lines, ") + inWords(counts.deliveredLines, "delivered and ") +
                        inWords(counts.lostLines, "lost"));
    }
    return found;
}

}  // namespace quillon::soak
