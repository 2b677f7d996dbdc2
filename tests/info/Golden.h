/// @file
/// Files of the folder golden/ that tests of the records compare with.
#pragma once

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace quillon {

/// The golden file `name`. Where QUILLON_RECORD_GOLDENS is set, as ./run golden sets it, `actual` becomes that file
/// first.
inline std::string golden(const std::string& name, const std::string& actual) {
    const std::string path = std::string(INFO_GOLDEN_FOLDER "/") + name;
    if (std::getenv("QUILLON_RECORD_GOLDENS") != nullptr) {
        std::ofstream(path, std::ios::binary) << actual;
    }
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace quillon
