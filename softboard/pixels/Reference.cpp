#include "softboard/pixels/Reference.h"

#include <algorithm>
#include <cstring>

namespace softboard::pixels::reference {

std::vector<Pixel> cameraLine(const Settings& settings, const Line& line, Scene& scene) {
    const std::size_t size = componentBytes(settings.bits);
    std::vector<std::byte> memory(settings.sensorWidth * Colours * size);
    const std::span<const std::byte> taken = scene.take(line, settings.sensorWidth, settings.bits, memory);
    std::vector<std::byte> raw(memory.size());
    std::copy_n(taken.begin(), std::min(taken.size(), raw.size()), raw.begin());

    std::vector<Pixel> pixels(settings.sensorWidth);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        for (std::size_t colour = 0; colour < Colours; ++colour) {
            std::uint16_t value = 0;
            std::memcpy(&value, &raw[(x * Colours + settings.order[colour]) * size], size);
            pixels[x][colour] = static_cast<std::uint16_t>(value << (16 - settings.bits));
        }
    }
    return pixels;
}

std::vector<Pixel> simulatorLine(const Settings& settings, const Line& line) {
    const auto position = static_cast<std::uint64_t>(line.position);
    const std::uint64_t lineNumber = position % SimulatorFrameLines;
    const std::uint64_t frameNumber = position / SimulatorFrameLines;
    std::vector<Pixel> pixels(settings.sensorWidth);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        const std::uint64_t value = (settings.ramp.enableX ? x : 0) + lineNumber % settings.ramp.yDivisor +
                                    frameNumber % settings.ramp.frameDivisor + settings.ramp.offset;
        pixels[x].fill(static_cast<std::uint16_t>(value % 256 << 8));
    }
    return pixels;
}

std::vector<Pixel> region(const Settings& settings, std::vector<Pixel> line) {
    if (settings.xMirror) {
        std::reverse(line.begin(), line.end());
    }
    std::vector<Pixel> pixels(settings.xLength);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        if (settings.xOffset + x < line.size()) {
            pixels[x] = line[settings.xOffset + x];
        }
    }
    return pixels;
}

std::uint16_t process(const Settings& settings, std::size_t colour, std::uint16_t value) {
    const std::uint32_t product = value * coefficientSteps(settings.coefficient[colour]) / CoefficientSteps;
    std::uint32_t result = std::min(product, 65535U);
    if (settings.table[colour] != nullptr) {
        result = (*settings.table[colour])[result >> 2];
    }
    const std::uint32_t mask = (1U << settings.formatBits) - 1;
    return static_cast<std::uint16_t>(result >> settings.shift & mask);
}

std::vector<std::byte> pack(const Settings& settings, const std::vector<Pixel>& line) {
    std::vector<std::byte> bytes(lineBytes(settings));
    std::size_t place = 0;  // bits from the start of the line
    for (const Pixel& pixel : line) {
        for (std::size_t component = 0; component < Colours; ++component) {
            const std::uint16_t value = pixel[settings.redFirst ? component : Colours - 1 - component];
            for (std::uint32_t bit = 0; bit < settings.formatBits; ++bit, ++place) {
                if ((value >> bit & 1) != 0) {
                    bytes[place / 8] |= std::byte{1} << place % 8;
                }
            }
        }
    }
    return bytes;
}

std::vector<std::byte> drawLine(const Settings& settings, const Line& line, Scene& scene) {
    std::vector<Pixel> pixels =
        region(settings, settings.simulator ? simulatorLine(settings, line) : cameraLine(settings, line, scene));
    for (Pixel& pixel : pixels) {
        for (std::size_t colour = 0; colour < Colours; ++colour) {
            pixel[colour] = process(settings, colour, pixel[colour]);
            if (line.inverted != 0) {
                pixel[colour] ^= static_cast<std::uint16_t>((1U << settings.formatBits) - 1);
            }
        }
    }
    return pack(settings, pixels);
}

Drawn draw(std::span<const Line> lines, const SettingsOfVersion& settingsOf, Scene& scene, std::span<std::byte> out) {
    std::vector<Line> order(lines.begin(), lines.end());
    if (!lines.empty()) {
        const std::shared_ptr<const Settings> first = settingsOf(lines.front().settings);
        if (first != nullptr && first->yMirror) {
            std::reverse(order.begin(), order.end());
        }
    }
    Drawn drawn;
    for (const Line& line : order) {
        const std::shared_ptr<const Settings> settings = settingsOf(line.settings);
        const std::size_t bytes = settings != nullptr ? lineBytes(*settings) : 0;
        if (bytes > out.size() - drawn.bytes) {
            drawn.truncated = true;
            break;
        }
        if (bytes != 0) {
            const std::vector<std::byte> picture = drawLine(effective(*settings), line, scene);
            std::copy(picture.begin(), picture.end(), out.begin() + static_cast<std::ptrdiff_t>(drawn.bytes));
        }
        drawn.bytes += bytes;
        ++drawn.lines;
    }
    return drawn;
}

}  // namespace softboard::pixels::reference
