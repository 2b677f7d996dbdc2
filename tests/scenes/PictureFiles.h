/// @file
/// Files that tests of pictures read.
#pragma once

#include <filesystem>
#include <string>

#include "softboard/scenes/Picture.h"
#include "tests/scenes/Taking.h"

namespace softboard::scenes::testing {

/// A folder of a test's own, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    /// Writes a file into it.
    std::filesystem::path write(const std::string& name, const std::string& content) const;

private:
    std::filesystem::path path_;
};

/// Reads a picture from a file with this content.
Picture pictureOf(const std::string& content);
/// Why it is refused, without the folder; the empty text if it is not.
std::string refusalOf(const std::string& content);
std::string refusalOfFile(const std::filesystem::path& file);

Components componentsOf(const Picture& picture);

}  // namespace softboard::scenes::testing
