#include "softboard/pixels/Renderer.h"

#include <algorithm>
#include <cstring>

#include "softboard/pixels/Repeat.h"

namespace softboard::pixels {

namespace {

constexpr std::size_t MostPaths = 8;

constexpr std::size_t RampPeriod = 256;        ///< pixels; whole bytes in every format
constexpr std::size_t RampPeriodsAtOnce = 16;  ///< of one copy; with one more they stay in the nearest cache

constexpr std::size_t bytesOf(std::size_t pixels, std::uint32_t formatBits) {
    return pixels * Colours * formatBits / 8;
}

/// Where the region begins in the sensor, not mirrored; some pixel of the region lies in the sensor.
std::size_t firstInSensor(const Settings& settings) {
    return settings.xMirror ? settings.sensorWidth - 1 - settings.xOffset : settings.xOffset;
}

/// Inverts each bit of a line's pixels, and leaves those that fill the last byte at 0.
void invert(const Settings& settings, std::span<std::byte> line) {
    for (std::byte& byte : line) {
        byte = ~byte;
    }
    const std::size_t used = settings.xLength * Colours * settings.formatBits % 8;
    if (used != 0) {
        line.back() &= static_cast<std::byte>((1U << used) - 1);
    }
}

}  // namespace

Drawn Renderer::draw(std::span<const Line> lines, const SettingsOfVersion& settingsOf, Scene& scene,
                     std::span<std::byte> out) {
    Drawn drawn;
    if (lines.empty()) {
        return drawn;
    }
    std::uint32_t version = lines.front().settings;
    Path* path = pathOf(settingsOf(version));
    const bool reverse = path != nullptr && path->settings.yMirror;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[reverse ? lines.size() - 1 - i : i];
        if (line.settings != version) {
            version = line.settings;
            path = pathOf(settingsOf(version));
        }
        const std::size_t bytes = path != nullptr ? path->lineBytes : 0;
        if (bytes > out.size() - drawn.bytes) {
            drawn.truncated = true;
            break;
        }
        if (bytes != 0) {
            drawLine(*path, line, scene, out.data() + drawn.bytes);
            if (line.inverted != 0) {
                invert(path->settings, out.subspan(drawn.bytes, bytes));
            }
        }
        drawn.bytes += bytes;
        ++drawn.lines;
    }
    return drawn;
}

Renderer::Path* Renderer::pathOf(const std::shared_ptr<const Settings>& settings) {
    if (settings == nullptr) {
        return nullptr;
    }
    auto found = std::find_if(paths_.begin(), paths_.end(), [&](const auto& path) { return path->origin == settings; });
    if (found == paths_.end()) {
        std::unique_ptr<Path> path = makePath(settings);
        if (paths_.size() < MostPaths) {
            found = paths_.insert(paths_.end(), std::move(path));
        } else {
            found = std::min_element(paths_.begin(), paths_.end(),
                                     [](const auto& a, const auto& b) { return a->used < b->used; });
            *found = std::move(path);
        }
    }
    (*found)->used = ++uses_;
    return found->get();
}

std::unique_ptr<Renderer::Path> Renderer::makePath(const std::shared_ptr<const Settings>& origin) const {
    auto path = std::make_unique<Path>();
    path->origin = origin;
    path->settings = effective(*origin);
    const Settings& settings = path->settings;
    path->lineBytes = lineBytes(settings);
    if (path->lineBytes == 0) {
        return path;
    }
    if (settings.xOffset < settings.sensorWidth) {
        path->sensorPixels = std::min(settings.xLength, settings.sensorWidth - settings.xOffset);
    }
    path->groupPixels = isPacked(settings.formatBits) ? PackedGroup : 1;
    path->groupedPixels = path->sensorPixels - path->sensorPixels % path->groupPixels;
    for (std::size_t i = 0; i < Colours; ++i) {
        const std::size_t colour = settings.redFirst ? i : Colours - 1 - i;
        path->tables[i] = tableFor(processingOf(settings, colour), *path);
        path->channels.component[i] = settings.order[colour];
        path->channels.entries[i] = path->tables[i]->entries();
    }
    path->channels.bits = settings.bits;
    path->drawPixels = drawPixelsFor(settings.bits, settings.formatBits, settings.xMirror);
    return path;
}

/// One that is there already, be it for another colour: a change of the settings seldom concerns all.
std::shared_ptr<const FusedTable> Renderer::tableFor(const Processing& processing, const Path& unfinished) const {
    const auto in = [&](const Path& path) -> std::shared_ptr<const FusedTable> {
        for (const auto& table : path.tables) {
            if (table != nullptr && table->processing() == processing) {
                return table;
            }
        }
        return nullptr;
    };
    if (auto table = in(unfinished); table != nullptr) {
        return table;
    }
    for (const auto& path : paths_) {
        if (auto table = in(*path); table != nullptr) {
            return table;
        }
    }
    return std::make_shared<const FusedTable>(processing);
}

void Renderer::drawLine(Path& path, const Line& line, Scene& scene, std::byte* out) {
    if (path.settings.simulator) {
        drawSimulatorLine(path, line, out);
    } else {
        drawCameraLine(path, line, scene, out);
    }
}

void Renderer::drawCameraLine(const Path& path, const Line& line, Scene& scene, std::byte* out) {
    const Settings& settings = path.settings;
    const std::size_t size = componentBytes(settings.bits);
    const std::size_t needed = settings.sensorWidth * Colours * size;
    if (memory_.size() < needed) {
        memory_.resize(needed);
    }
    std::span<const std::byte> raw =
        scene.take(line, settings.sensorWidth, settings.bits, std::span(memory_).first(needed));
    if (raw.size() < needed) {
        if (!raw.empty()) {
            std::memmove(memory_.data(), raw.data(), raw.size());
        }
        std::fill(memory_.begin() + static_cast<std::ptrdiff_t>(raw.size()), memory_.end(), std::byte{0});
        raw = memory_;
    }

    const std::size_t written = bytesOf(path.groupedPixels, settings.formatBits);
    if (path.groupedPixels != 0) {
        path.drawPixels(raw.data() + firstInSensor(settings) * Colours * size, path.groupedPixels, path.channels, out);
    }
    BitWriter writer(out + written);
    for (std::size_t i = path.groupedPixels; i < path.sensorPixels; ++i) {
        const std::size_t x = settings.xMirror ? firstInSensor(settings) - i : firstInSensor(settings) + i;
        for (std::size_t channel = 0; channel < Colours; ++channel) {
            std::uint16_t value = 0;
            std::memcpy(&value, raw.data() + (x * Colours + path.channels.component[channel]) * size, size);
            const std::size_t mask = (std::size_t{1} << settings.bits) - 1;
            writer.put(path.tables[channel]->entry(value & mask), settings.formatBits);
        }
    }
    putBeyondSensor(path, writer);
}

void Renderer::drawSimulatorLine(Path& path, const Line& line, std::byte* out) {
    const Settings& settings = path.settings;
    const auto position = static_cast<std::uint64_t>(line.position);
    std::size_t first = position % SimulatorFrameLines % settings.ramp.yDivisor +
                        position / SimulatorFrameLines % settings.ramp.frameDivisor + settings.ramp.offset;
    std::size_t step = 0;
    if (settings.ramp.enableX && path.sensorPixels != 0) {
        first += firstInSensor(settings);
        step = settings.xMirror ? RampPeriod - 1 : 1;
    }
    first %= RampPeriod;

    const std::size_t written = bytesOf(path.groupedPixels, settings.formatBits);
    if (step != 0) {
        copyRamp(path, first, step, {out, written});
    } else if (written != 0) {
        BitWriter writer(out);
        for (std::size_t i = 0; i < path.groupPixels; ++i) {
            putGrey(path, writer, first);
        }
        repeat(out, bytesOf(path.groupPixels, settings.formatBits), written);
    }
    BitWriter writer(out + written);
    for (std::size_t i = path.groupedPixels; i < path.sensorPixels; ++i) {
        putGrey(path, writer, (first + i * step) % RampPeriod);
    }
    putBeyondSensor(path, writer);
}

void Renderer::copyRamp(Path& path, std::size_t first, std::size_t step, std::span<std::byte> out) {
    const std::uint32_t formatBits = path.settings.formatBits;
    const std::size_t period = bytesOf(RampPeriod, formatBits);
    const std::size_t begin = first % path.groupPixels;
    std::vector<std::byte>& ramp = path.ramps[begin];
    if (ramp.empty()) {
        ramp.resize((RampPeriodsAtOnce + 1) * period);
        BitWriter writer(ramp.data());
        for (std::size_t i = 0; i < RampPeriod; ++i) {
            putGrey(path, writer, (begin + i * step) % RampPeriod);
        }
        repeat(ramp.data(), period, ramp.size());
    }
    // Pixels from the ramp's begin; to the left it falls.
    const std::size_t distance = step == 1 ? first - begin : (RampPeriod + begin - first) % RampPeriod;
    const std::byte* const from = ramp.data() + bytesOf(distance, formatBits);
    while (!out.empty()) {
        const std::size_t size = std::min(out.size(), RampPeriodsAtOnce * period);
        std::memcpy(out.data(), from, size);
        out = out.subspan(size);
    }
}

void Renderer::putGrey(const Path& path, BitWriter& writer, std::size_t raw) {
    for (const auto& table : path.tables) {
        writer.put(table->entry(raw), path.settings.formatBits);
    }
}

void Renderer::putBeyondSensor(const Path& path, BitWriter& writer) {
    for (std::size_t i = path.sensorPixels; i < path.settings.xLength; ++i) {
        putGrey(path, writer, 0);
    }
    writer.end();
}

}  // namespace softboard::pixels
