/// @file
/// A folder that a test fills, and that is gone after it.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace quillon {

class TemporaryFolder : public testing::Test {
protected:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "quillon-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        folder = name;
    }

    ~TemporaryFolder() override { std::filesystem::remove_all(folder); }

    /// The full name of a file of the folder, which need not be there.
    std::string path(const std::string& name) const { return (folder / name).string(); }

    /// Writes a file and returns its full name.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    /// All bytes of a file of the folder.
    std::string bytesOf(const std::string& name) const {
        std::ifstream stream(path(name), std::ios::binary);
        EXPECT_TRUE(stream.is_open()) << name;
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path folder;
};

}  // namespace quillon
