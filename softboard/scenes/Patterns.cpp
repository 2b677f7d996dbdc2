#include "softboard/scenes/Patterns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <vector>

#include "softboard/scene.h"
#include "softboard/scenes/Random.h"
#include "softboard/scenes/Raw.h"
#include "softboard/scenes/Rows.h"

namespace softboard::scenes {

namespace {

std::int64_t patternRow(const pixels::Line& line) {
    return rowAt(line.position, SOFTBOARD_PATTERN_PIXELS_PER_MM);
}

/// Grey values that repeat to the right. The rows are in groups; the rows of a group look the same, and each group
/// begins as many pixels further on as it has rows.
class RepeatedGreys : public pixels::Scene {
public:
    /// @param period     greys of 8 bits
    /// @param groupRows  a divisor of their number
    RepeatedGreys(std::vector<std::uint8_t> period, std::int64_t groupRows)
        : period_(std::move(period)), groupRows_(groupRows) {}

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> /*memory*/) override {
        if (pixels != pixels_ || bits != bits_) {
            draw(pixels, bits);
        }
        const std::int64_t row = wrapped(patternRow(line), static_cast<std::int64_t>(period_.size()));
        const auto first = static_cast<std::size_t>(row / groupRows_ * groupRows_);
        return std::span(greys_).subspan(rawBytes(first, bits), rawBytes(pixels, bits));
    }

private:
    /// A line from the first grey on, as much longer as the last group begins later.
    void draw(std::uint32_t pixels, std::uint32_t bits) {
        pixels_ = pixels;
        bits_ = bits;
        const std::size_t length = pixels + period_.size();
        greys_.resize(rawBytes(length, bits));
        withRaw(bits, [&](auto raw) {
            using Raw = decltype(raw);
            for (std::size_t i = 0; i < length * pixels::Colours; ++i) {
                const std::uint16_t grey = widened(period_[i / pixels::Colours % period_.size()]);
                storeRaw(greys_.data(), i, static_cast<Raw>(grey >> (16 - bits)));
            }
        });
    }

    std::vector<std::uint8_t> period_;
    std::int64_t groupRows_;
    std::uint32_t pixels_ = 0;
    std::uint32_t bits_ = 0;
    std::vector<std::byte> greys_;
};

/// Every component at random. A camera of fewer bits sees the upper bits of the same components.
class RandomScene : public pixels::Scene {
public:
    explicit RandomScene(std::uint64_t seed) : seed_(seed) {}

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                    std::span<std::byte> memory) override {
        withRaw(bits, [&](auto raw) {
            using Raw = decltype(raw);
            forRandomWords(lineKey(seed_, patternRow(line)), pixels * pixels::Colours,
                           [&](std::size_t i, std::uint16_t word) {
                               storeRaw(memory.data(), i, static_cast<Raw>(word >> (16 - bits)));
                           });
        });
        return memory.first(rawBytes(pixels, bits));
    }

private:
    std::uint64_t seed_;
};

std::shared_ptr<pixels::Scene> makeBars(std::uint64_t /*number*/) {
    return std::make_shared<pixels::BarScene>();
}

std::shared_ptr<pixels::Scene> makeRamp(std::uint64_t /*number*/) {
    std::vector<std::uint8_t> greys(256);
    for (std::size_t i = 0; i < greys.size(); ++i) {
        greys[i] = static_cast<std::uint8_t>(i);
    }
    return std::make_shared<RepeatedGreys>(std::move(greys), 1);
}

std::shared_ptr<pixels::Scene> makeChecker(std::uint64_t /*number*/) {
    constexpr std::size_t Square = 32;
    std::vector<std::uint8_t> greys(2 * Square, 255);
    std::fill_n(greys.begin(), Square, std::uint8_t{0});
    return std::make_shared<RepeatedGreys>(std::move(greys), Square);
}

std::shared_ptr<pixels::Scene> makeNoise(std::uint64_t seed) {
    return std::make_shared<RandomScene>(seed);
}

std::shared_ptr<pixels::Scene> makeGrey(std::uint64_t grey) {
    return std::make_shared<RepeatedGreys>(std::vector<std::uint8_t>{static_cast<std::uint8_t>(grey)}, 1);
}

struct Pattern {
    std::string_view name;
    std::uint64_t number;  ///< what it has without one
    std::uint64_t most;    ///< of its number; 0: it takes none
    std::shared_ptr<pixels::Scene> (*make)(std::uint64_t number);
};

constexpr std::array Patterns = {
    Pattern{"bars", 0, 0, makeBars},       Pattern{"ramp", 0, 0, makeRamp},
    Pattern{"checker", 0, 0, makeChecker}, Pattern{"noise", 1, std::numeric_limits<std::uint64_t>::max(), makeNoise},
    Pattern{"grey", 128, 255, makeGrey},
};

/// Whether the text behind the colon is a number that the pattern takes.
bool takes(const Pattern& pattern, std::string_view text, std::uint64_t& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return pattern.most != 0 && error == std::errc() && stop == end && number <= pattern.most;
}

}  // namespace

std::shared_ptr<pixels::Scene> makePattern(std::string_view pattern) {
    const std::size_t colon = pattern.find(':');
    const auto found = std::find_if(Patterns.begin(), Patterns.end(),
                                    [&](const Pattern& each) { return each.name == pattern.substr(0, colon); });
    if (found == Patterns.end()) {
        return nullptr;
    }
    std::uint64_t number = found->number;
    if (colon != std::string_view::npos && !takes(*found, pattern.substr(colon + 1), number)) {
        return nullptr;
    }
    return found->make(number);
}

}  // namespace softboard::scenes
