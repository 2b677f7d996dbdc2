/// @file
/// Designs of a test's own: the maintained description, changed, and packed by the tool. For targets with DESIGN_FILE
/// and PACK_TOOL.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace quillon::test {

/// The description of the software board's own design.
inline nlohmann::ordered_json designDescription() {
    std::ifstream file(DESIGN_FILE);
    return nlohmann::ordered_json::parse(file);
}

/// Packs `description` into the design file `file`. Throws if the tool refuses it.
inline void packDesignFile(const nlohmann::ordered_json& description, const std::filesystem::path& file) {
    const std::filesystem::path text = file.string() + ".json";
    std::ofstream(text) << description;
    const std::string command =
        std::string("'") + PACK_TOOL + "' tav '" + text.string() + "' -o '" + file.string() + "'";
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("the packing tool failed: " + command);
    }
}

}  // namespace quillon::test
