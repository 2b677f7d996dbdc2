/// @file
/// Frames as picture files. What a file is follows from its name:
///
///     .png         8 or 16 bits a component, compressed fast
///     .tif, .tiff  8 or 16 bits a component, not compressed
///     .ppm         the values as they are, and the largest one that they can have
///     .pgm         the same as three grey pictures: NAME_r.pgm, NAME_g.pgm, NAME_b.pgm
///     .raw         the frame's bytes as they lie in memory, and NAME.json, which tells what they are
///
/// In PNG and TIFF values of 10, 12 and 14 bits are spread over 16, from black to white: (v << (16 - bits)) |
/// (v >> (2 * bits - 16)).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "quillon/client/Frames.h"

namespace quillon::cli {

/// ".png, .ppm, ...": the suffixes that are known.
std::string frameFileSuffixes();

/// The files that a frame under this name becomes. Throws UsageError for a suffix that is not known.
std::vector<std::filesystem::path> frameFiles(const std::filesystem::path& file);

/// Writes a frame to frameFiles(file). A file appears when it is whole, several that belong together when all are, and
/// replaces one that was there. Throws RefusedError with the reason, also for a frame without a complete line where it
/// is not written raw; UsageError for an unknown suffix.
void writeFrame(const client::Frame& frame, const std::filesystem::path& file);

}  // namespace quillon::cli
