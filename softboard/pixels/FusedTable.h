/// @file
/// All that happens to a component's value as one look-up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "softboard/pixels/Settings.h"

namespace softboard::pixels {

/// What a fused table is made from.
struct Processing {
    std::uint32_t bits = 0;
    std::uint32_t coefficientSteps = 0;
    std::shared_ptr<const Table> table;  ///< null: none
    std::uint32_t shift = 0;
    std::uint32_t formatBits = 0;

    bool operator==(const Processing&) const = default;
};

/// Of effective settings. The simulator's 8 bits are processed as those of a camera.
Processing processingOf(const Settings& settings, std::size_t colour);

/// Alignment, white balance, lookup table, shift and the cut to the format's bits, for every raw component. It is
/// indexed by the raw value as it comes: aligned values of few bits would lie far apart and share a few sets of the
/// cache.
class FusedTable {
public:
    explicit FusedTable(const Processing& processing);

    const Processing& processing() const { return processing_; }
    /// 2^bits entries: of one byte for a format of 8 bits, and of a word otherwise.
    const void* entries() const { return bytes_.empty() ? static_cast<const void*>(words_.data()) : bytes_.data(); }
    std::uint16_t entry(std::size_t raw) const { return bytes_.empty() ? words_[raw] : bytes_[raw]; }

private:
    Processing processing_;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint16_t> words_;
};

}  // namespace softboard::pixels
