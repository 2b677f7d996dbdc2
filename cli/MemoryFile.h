#pragma once

#include <filesystem>
#include <string>

namespace quillon::cli {

/// A file in memory under a name of the file system, for what the applet writes: it does not tell when a disk is full.
class MemoryFile {
public:
    /// `name`: the last part of the path, which tells the applet what kind of file it is. Throws RefusedError.
    explicit MemoryFile(const std::string& name);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    const std::filesystem::path& path() const { return path_; }
    /// What `file` is to get. Throws RefusedError if a limit of the process has cut it off.
    std::string contentFor(const std::filesystem::path& file) const;

private:
    int descriptor_;
    std::filesystem::path path_;
};

}  // namespace quillon::cli
