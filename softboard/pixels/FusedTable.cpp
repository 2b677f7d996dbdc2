#include "softboard/pixels/FusedTable.h"

#include <algorithm>

namespace softboard::pixels {

namespace {

template <typename Entry>
std::vector<Entry> fuse(const Processing& processing) {
    std::vector<Entry> entries(std::size_t{1} << processing.bits);
    const std::uint32_t alignment = 16 - processing.bits;
    const std::uint32_t mask = (1U << processing.formatBits) - 1;
    const std::uint16_t* const table = processing.table != nullptr ? processing.table->data() : nullptr;
    for (std::uint32_t raw = 0; raw < entries.size(); ++raw) {
        std::uint32_t value =
            std::min((raw << alignment) * processing.coefficientSteps / CoefficientSteps, std::uint32_t{65535});
        if (table != nullptr) {
            value = table[value >> 2];
        }
        entries[raw] = static_cast<Entry>(value >> processing.shift & mask);
    }
    return entries;
}

}  // namespace

Processing processingOf(const Settings& settings, std::size_t colour) {
    return {.bits = settings.simulator ? 8 : settings.bits,
            .coefficientSteps = coefficientSteps(settings.coefficient[colour]),
            .table = settings.table[colour],
            .shift = settings.shift,
            .formatBits = settings.formatBits};
}

FusedTable::FusedTable(const Processing& processing) : processing_(processing) {
    if (processing.formatBits == 8) {
        bytes_ = fuse<std::uint8_t>(processing);
    } else {
        words_ = fuse<std::uint16_t>(processing);
    }
}

}  // namespace softboard::pixels
