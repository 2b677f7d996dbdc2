#include <array>
#include <string>
#include <vector>

#include "cli/pictures/Formats.h"

namespace quillon::cli {

namespace {

void writeHeader(const client::Frame& frame, const char* magic, PartFile& file) {
    const std::string header = std::string(magic) + "\n" + std::to_string(frame.width()) + " " +
                               std::to_string(frame.lines()) + "\n" + std::to_string(frame.largest()) + "\n";
    file.write(std::as_bytes(std::span(header)));
}

/// Writes `count` components of each pixel, from the given one on; two bytes are in the format's order, high first.
void writeComponents(const client::Frame& frame, std::size_t first, std::size_t count, PartFile& file) {
    std::vector<std::uint16_t> line(std::size_t{3} * frame.width());
    std::vector<std::byte> bytes;
    for (std::uint32_t y = 0; y < frame.lines(); ++y) {
        frame.readLine(y, line);
        bytes.clear();
        for (std::size_t i = 0; i < line.size(); i += 3) {
            for (std::size_t c = first; c < first + count; ++c) {
                if (frame.largest() > 255) {
                    bytes.push_back(static_cast<std::byte>(line[i + c] >> 8));
                }
                bytes.push_back(static_cast<std::byte>(line[i + c] & 0xFF));
            }
        }
        file.write(bytes);
    }
}

}  // namespace

void writePpm(const client::Frame& frame, PartFile& file) {
    writeHeader(frame, "P6", file);
    writeComponents(frame, 0, 3, file);
}

void writePgm(const client::Frame& frame, client::Component component, PartFile& file) {
    writeHeader(frame, "P5", file);
    writeComponents(frame, static_cast<std::size_t>(component), 1, file);
}

}  // namespace quillon::cli
