/// @file
/// The formats of picture files, each into a file that is open. They throw RefusedError.
#pragma once

#include "cli/PartFile.h"
#include "quillon/client/Frames.h"

namespace quillon::cli {

void writePng(const client::Frame& frame, PartFile& file);
void writeTiff(const client::Frame& frame, PartFile& file);
void writePpm(const client::Frame& frame, PartFile& file);
void writePgm(const client::Frame& frame, client::Component component, PartFile& file);
/// Size, packing and origin of a frame as JSON: all that a reader of its bytes needs.
void writeDescription(const client::Frame& frame, PartFile& file);

/// A value of `bits` bits spread over 16, the largest one becoming 65535; 8 bits stay as they are.
constexpr std::uint16_t spread(std::uint16_t value, std::uint32_t bits) {
    return static_cast<std::uint16_t>(bits == 8 ? value : value << (16 - bits) | value >> (2 * bits - 16));
}

}  // namespace quillon::cli
