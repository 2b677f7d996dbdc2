#include "softboard/scenes/LitScene.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "softboard/scenes/Normal.h"
#include "softboard/scenes/Random.h"
#include "softboard/scenes/Raw.h"

namespace softboard::scenes {

namespace {

/// Components that are lit at once, in arrays of a known size beside which nothing else lies: so loops become vector
/// instructions.
constexpr std::size_t BlockSize = 1024;

constexpr double GreatestGain = 65536;  ///< leaves nothing between black and white

template <typename Raw>
using Block = std::array<Raw, BlockSize>;

template <typename Raw>
void illuminate(Block<Raw>& components, const Block<float>& noise, float gain, std::uint32_t full) {
    const auto white = static_cast<float>(full);
    for (std::size_t i = 0; i < BlockSize; ++i) {
        const auto raw = static_cast<std::int32_t>(components[i] & full);
        float value = static_cast<float>(raw) * gain + noise[i];
        value = value > 0 ? value : 0;
        value = value < white ? value : white;
        components[i] = static_cast<Raw>(static_cast<std::int32_t>(value + 0.5F));
    }
}

/// @param fillNoise  called with the noise of a block, the key of its first component, and how many there are
template <typename Raw, typename FillNoise>
void illuminate(std::span<const std::byte> raw, float gain, std::uint32_t full, const FillNoise& fillNoise,
                std::byte* to) {
    Block<Raw> components{};
    Block<float> noise{};
    for (std::size_t first = 0; first < raw.size(); first += sizeof components) {
        const std::size_t size = std::min(sizeof components, raw.size() - first);
        std::memcpy(components.data(), raw.data() + first, size);
        fillNoise(noise, size / sizeof(Raw));
        illuminate(components, noise, gain, full);
        std::memcpy(to + first, components.data(), size);
    }
}

/// A line whose pixels are all there: what was not delivered is black.
std::span<const std::byte> completed(std::span<const std::byte> raw, std::span<std::byte> memory) {
    if (raw.size() >= memory.size()) {
        return raw.first(memory.size());
    }
    if (!raw.empty()) {
        std::memmove(memory.data(), raw.data(), raw.size());
    }
    std::fill(memory.begin() + static_cast<std::ptrdiff_t>(raw.size()), memory.end(), std::byte{0});
    return memory;
}

}  // namespace

LitScene::LitScene(std::shared_ptr<pixels::Scene> inner, const Light& light)
    : inner_(std::move(inner)), light_(light) {}

std::span<const std::byte> LitScene::take(const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits,
                                          std::span<std::byte> memory) {
    std::span<const std::byte> raw = inner_->take(line, pixels, bits, memory);
    const double gain = gainOf(line);
    if (gain == 1 && light_.noise == 0) {
        return raw;
    }
    if (light_.noise != 0) {
        raw = completed(raw, memory.first(rawBytes(pixels, bits)));
        prepareNoise(bits);
    }
    std::uint64_t key = lineKey(light_.seed, line.tick);
    const auto fillNoise = [&](Block<float>& noise, std::size_t count) {
        if (light_.noise != 0) {
            key = forRandomWords(key, count, [&](std::size_t i, std::uint16_t word) { noise[i] = noise_[word]; });
        }
    };
    withRaw(bits, [&](auto type) {
        illuminate<decltype(type)>(raw, static_cast<float>(gain), (1U << bits) - 1, fillNoise, memory.data());
    });
    return memory.first(raw.size());
}

double LitScene::nanometresPerRow() const {
    return inner_->nanometresPerRow();
}

double LitScene::gainOf(const pixels::Line& line) const {
    const double exposed = light_.referenceTicks > 0 ? line.exposure / light_.referenceTicks : 1;
    return std::min(line.flash != 0 ? exposed * light_.flashGain : exposed, GreatestGain);
}

void LitScene::prepareNoise(std::uint32_t bits) {
    if (bits == noiseBits_) {
        return;
    }
    noiseBits_ = bits;
    const NormalTable& normal = normalTable();
    const auto deviation = static_cast<float>(light_.noise * ((1U << bits) - 1));
    noise_.resize(normal.size());
    std::transform(normal.begin(), normal.end(), noise_.begin(), [&](float value) { return value * deviation; });
}

}  // namespace softboard::scenes
