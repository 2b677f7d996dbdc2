/// @file
/// A lookup table file (.lut) as a person wants it explained. The applet reads any file as a table: what it does not
/// find stays as it was, and what it finds is not measured.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillon::cli {

/// Something to say about a lookup table file.
struct TableFinding {
    int line;          ///< from 1; 0 for what is not there
    std::string text;  ///< what is wrong, and what comes of it
};

/// What keeps a file from being the table that it should be, in the order of the lines; of many alike the first, with
/// their number. Empty for a table that loads as it stands. A file that cannot be read is a finding, too.
std::vector<TableFinding> inspectTable(const std::filesystem::path& file);

/// Throws RefusedError with the first finding; a file that cannot be read is left to the applet's own answer.
void requireTable(const std::filesystem::path& file);

}  // namespace quillon::cli
