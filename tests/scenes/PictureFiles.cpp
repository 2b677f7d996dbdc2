#include "tests/scenes/PictureFiles.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <fstream>

#include "softboard/pixels/Settings.h"

namespace softboard::scenes::testing {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quillon-scenes-XXXXXX").string();
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::remove_all(path_);
}

std::filesystem::path TemporaryFolder::write(const std::string& name, const std::string& content) const {
    std::ofstream file(path_ / name, std::ios::binary | std::ios::trunc);
    file << content;
    EXPECT_TRUE(file.flush());
    return path_ / name;
}

Picture pictureOf(const std::string& content) {
    const TemporaryFolder folder;
    return readPicture(folder.write("part", content));
}

std::string refusalOfFile(const std::filesystem::path& file) {
    try {
        readPicture(file);
    } catch (const PictureError& error) {
        const std::string words = error.what();
        const std::string folder = file.parent_path().string() + "/";
        EXPECT_EQ(words.rfind(folder, 0), 0U) << words;
        return words.substr(folder.size());
    }
    return "";
}

std::string refusalOf(const std::string& content) {
    const TemporaryFolder folder;
    return refusalOfFile(folder.write("part", content));
}

Components componentsOf(const Picture& picture) {
    const std::size_t size = pixels::componentBytes(picture.bits);
    EXPECT_EQ(picture.pixels.size(), std::size_t{picture.width} * picture.height * pixels::Colours * size);
    Components components;
    for (std::size_t i = 0; i < picture.pixels.size(); i += size) {
        std::uint16_t value = 0;
        std::memcpy(&value, picture.pixels.data() + i, size);
        components.push_back(value);
    }
    return components;
}

}  // namespace softboard::scenes::testing
