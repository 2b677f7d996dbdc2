// What drawing a frame costs, against a copy of what the camera delivers for it. Frames have 4096 x 1024 pixels; three
// different curves and coefficients are in use.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <span>
#include <vector>

#include "softboard/pixels/Renderer.h"
#include "softboard/scenes/LitScene.h"
#include "softboard/scenes/PictureScene.h"

namespace {

namespace pixels = softboard::pixels;
namespace scenes = softboard::scenes;

constexpr std::uint32_t Width = 4096;
constexpr std::uint32_t Height = 1024;

enum class Content { Photo, Noise, Ramp };

/// A picture in memory, whose rows the camera takes as they lie there.
class PictureInMemory : public pixels::Scene {
public:
    PictureInMemory(Content content, std::uint32_t bits)
        : row_(std::size_t{Width} * pixels::Colours * pixels::componentBytes(bits)), bytes_(row_ * Height) {
        std::mt19937 random(1);
        std::byte* to = bytes_.data();
        for (std::uint32_t y = 0; y < Height; ++y) {
            for (std::uint32_t x = 0; x < Width; ++x) {
                for (std::size_t component = 0; component < pixels::Colours; ++component) {
                    const auto value = static_cast<std::uint16_t>(
                        at(content, x, y, component, static_cast<std::uint32_t>(random())) >> (16 - bits));
                    std::memcpy(to, &value, pixels::componentBytes(bits));
                    to += pixels::componentBytes(bits);
                }
            }
        }
    }

    std::span<const std::byte> take(const pixels::Line& line, std::uint32_t /*pixels*/, std::uint32_t /*bits*/,
                                    std::span<std::byte> /*memory*/) override {
        return bytes().subspan(static_cast<std::size_t>(line.position) * row_, row_);
    }
    std::span<const std::byte> bytes() const { return bytes_; }

private:
    static std::uint32_t at(Content content, std::uint32_t x, std::uint32_t y, std::size_t component,
                            std::uint32_t random) {
        switch (content) {
            case Content::Photo: {
                // Shapes of a hundred pixels with noise of 8 bits of 16.
                const double shape = std::sin(x / 97.0 + static_cast<double>(component)) * std::cos(y / 131.0);
                return static_cast<std::uint32_t>(32768 + 30000 * shape) + random % 256;
            }
            case Content::Noise: return random % 65536;
            case Content::Ramp: return (x + y) % 256 << 8;
        }
        return 0;
    }

    std::size_t row_;
    std::vector<std::byte> bytes_;
};

std::shared_ptr<const pixels::Settings> settingsOf(std::uint32_t bits, std::uint32_t formatBits,
                                                   bool simulator = false) {
    pixels::Settings settings;
    settings.version = 1;
    settings.bits = bits;
    settings.simulator = simulator;
    settings.sensorWidth = Width;
    settings.xLength = Width;
    settings.coefficient = {1.2, 0.9, 1.1};
    settings.lookup = true;
    for (std::size_t colour = 0; colour < pixels::Colours; ++colour) {
        pixels::Table table{};
        for (std::size_t i = 0; i < table.size(); ++i) {
            table[i] = static_cast<std::uint16_t>(
                65535 * std::pow(static_cast<double>(i) / 16383, 1 / (1.8 + 0.2 * static_cast<double>(colour))));
        }
        settings.table[colour] = std::make_shared<const pixels::Table>(table);
    }
    settings.formatBits = formatBits;
    settings.shift = 16 - formatBits;
    return std::make_shared<const pixels::Settings>(settings);
}

constexpr std::uint32_t Exposure = 10000;  ///< ticks

/// @param pitch  from the position of a line to that of the next
std::vector<pixels::Line> allLines(std::int64_t pitch) {
    std::vector<pixels::Line> lines(Height);
    for (std::uint32_t y = 0; y < Height; ++y) {
        lines[y] = {.tick = std::int64_t{2} * Exposure * y,
                    .position = pixels::simulatorPosition(0, y) * pitch,
                    .settings = 1,
                    .exposure = Exposure,
                    .flash = 0,
                    .inverted = 0};
    }
    return lines;
}

/// The bytes of a frame in memory are written once before any time is taken.
void draw(benchmark::State& state, pixels::Scene& scene, const std::shared_ptr<const pixels::Settings>& settings,
          std::size_t inputBytes, std::int64_t pitch = 1) {
    pixels::Renderer renderer;
    const std::vector<pixels::Line> lines = allLines(pitch);
    std::vector<std::byte> out(pixels::lineBytes(*settings) * Height);
    const auto drawFrame = [&] {
        return renderer.draw(
            lines, [&](std::uint32_t) { return settings; }, scene, out);
    };
    if (drawFrame().bytes != out.size()) {
        state.SkipWithError("the frame is not complete");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(drawFrame());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * inputBytes));
}

template <Content content, std::uint32_t bits, std::uint32_t formatBits>
void drawCamera(benchmark::State& state) {
    PictureInMemory picture(content, bits);
    draw(state, picture, settingsOf(bits, formatBits), picture.bytes().size());
}

/// A photo, as wide as the camera, that moves past it on a belt by one row a line.
template <std::uint32_t bits>
void drawBelt(benchmark::State& state, const scenes::Light& light) {
    constexpr double PixelsPerMm = 10;
    const PictureInMemory photo(Content::Photo, bits);
    scenes::Picture picture{.width = Width, .height = Height, .bits = bits, .pixels = {}};
    picture.pixels.assign(photo.bytes().begin(), photo.bytes().end());
    const auto belt = std::make_shared<scenes::PictureScene>(std::move(picture), true, PixelsPerMm);
    scenes::LitScene scene(belt, light);
    draw(state, scene, settingsOf(bits, 8), photo.bytes().size(), static_cast<std::int64_t>(scene.nanometresPerRow()));
}

/// A copy of a frame of the camera's bytes.
template <std::uint32_t bits>
void copyCamera(benchmark::State& state) {
    const PictureInMemory picture(Content::Noise, bits);
    const std::span<const std::byte> bytes = picture.bytes();
    std::vector<std::byte> out(bytes.begin(), bytes.end());
    for (auto _ : state) {
        std::memcpy(out.data(), bytes.data(), bytes.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void CopyRgb16(benchmark::State& state) {
    copyCamera<16>(state);
}
void CopyRgb8(benchmark::State& state) {
    copyCamera<8>(state);
}
void DrawPhotoRgb16Col24(benchmark::State& state) {
    drawCamera<Content::Photo, 16, 8>(state);
}
void DrawNoiseRgb16Col24(benchmark::State& state) {
    drawCamera<Content::Noise, 16, 8>(state);
}
void DrawRampRgb16Col24(benchmark::State& state) {
    drawCamera<Content::Ramp, 16, 8>(state);
}
void DrawRampRgb8Col24(benchmark::State& state) {
    drawCamera<Content::Ramp, 8, 8>(state);
}
void DrawPhotoRgb16Col48(benchmark::State& state) {
    drawCamera<Content::Photo, 16, 16>(state);
}
void DrawNoiseRgb16Col48(benchmark::State& state) {
    drawCamera<Content::Noise, 16, 16>(state);
}
void DrawPhotoRgb16Col30(benchmark::State& state) {
    drawCamera<Content::Photo, 16, 10>(state);
}
void DrawNoiseRgb16Col30(benchmark::State& state) {
    drawCamera<Content::Noise, 16, 10>(state);
}
void DrawNoiseRgb8Col24(benchmark::State& state) {
    drawCamera<Content::Noise, 8, 8>(state);
}

constexpr scenes::Light Plain{};
constexpr scenes::Light Brighter{.referenceTicks = Exposure / 1.1};
constexpr scenes::Light Noisy{.referenceTicks = Exposure / 1.1, .noise = 0.01};

void DrawBeltRgb16Col24(benchmark::State& state) {
    drawBelt<16>(state, Plain);
}
void DrawBeltInLightRgb16Col24(benchmark::State& state) {
    drawBelt<16>(state, Brighter);
}
void DrawBeltWithNoiseRgb16Col24(benchmark::State& state) {
    drawBelt<16>(state, Noisy);
}
void DrawBeltRgb8Col24(benchmark::State& state) {
    drawBelt<8>(state, Plain);
}
void DrawBeltInLightRgb8Col24(benchmark::State& state) {
    drawBelt<8>(state, Brighter);
}
void DrawBeltWithNoiseRgb8Col24(benchmark::State& state) {
    drawBelt<8>(state, Noisy);
}

/// Bytes and ratio go by a frame of a camera of 16 bits.
void DrawSimulatorCol24(benchmark::State& state) {
    PictureInMemory picture(Content::Ramp, 8);
    draw(state, picture, settingsOf(8, 8, true), std::size_t{Width} * Height * pixels::Colours * 2);
}

BENCHMARK(CopyRgb16);
BENCHMARK(DrawPhotoRgb16Col24);
BENCHMARK(DrawNoiseRgb16Col24);
BENCHMARK(DrawRampRgb16Col24);
BENCHMARK(DrawPhotoRgb16Col48);
BENCHMARK(DrawNoiseRgb16Col48);
BENCHMARK(DrawPhotoRgb16Col30);
BENCHMARK(DrawNoiseRgb16Col30);
BENCHMARK(DrawSimulatorCol24);
BENCHMARK(DrawBeltRgb16Col24);
BENCHMARK(DrawBeltInLightRgb16Col24);
BENCHMARK(DrawBeltWithNoiseRgb16Col24);
BENCHMARK(CopyRgb8);
BENCHMARK(DrawNoiseRgb8Col24);
BENCHMARK(DrawRampRgb8Col24);
BENCHMARK(DrawBeltRgb8Col24);
BENCHMARK(DrawBeltInLightRgb8Col24);
BENCHMARK(DrawBeltWithNoiseRgb8Col24);

}  // namespace
