#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string_view>

namespace quillon::cli {

/// A file that is written beside the one that it is to be, and takes its place when it is whole: nobody sees a torn
/// one, and what stood there before stays if the writing fails. It is on the disk before it takes its place. A device
/// or a pipe stays what it is, and gets what was written when that is whole.
///
/// All functions throw RefusedError with the file's name and the system's reason.
class PartFile {
public:
    explicit PartFile(std::filesystem::path file);
    PartFile(PartFile&& other) noexcept;
    PartFile& operator=(PartFile&&) = delete;
    /// Takes away what was written, unless it has taken its place.
    ~PartFile();

    const std::filesystem::path& file() const { return file_; }
    void write(std::span<const std::byte> bytes);
    /// Goes back to byte `place`, or on to it.
    void seek(std::size_t place);
    std::size_t size();
    /// Ends the writing. With several files that belong together all are finished before the first takes its place.
    void finish();
    /// Takes its place; finishes before if that has not been done.
    void takePlace();

private:
    [[noreturn]] void refuse() const;

    std::filesystem::path file_;
    std::filesystem::path target_;  ///< `file_` without links
    std::filesystem::path part_;
    std::FILE* stream_ = nullptr;
    bool exists_ = false;  ///< whether there is a file `part_`; never for a device
};

/// Writes a file in one go.
void writeWhole(const std::filesystem::path& file, std::string_view content);

}  // namespace quillon::cli
