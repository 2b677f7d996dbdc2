/// @file
/// The file that a picture is read from, and what all formats refuse.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

#include "softboard/scenes/Picture.h"

namespace softboard::scenes {

/// Bytes, one behind the other, of a regular file.
class PictureFile {
public:
    static constexpr int End = -1;

    /// Throws PictureError if the file cannot be read or is empty.
    explicit PictureFile(const std::filesystem::path& path);

    /// What follows, up to a few thousand bytes: at least 32, or all.
    std::span<const std::byte> ahead() const { return std::as_bytes(std::span(buffer_).subspan(next_, end_ - next_)); }
    /// The next byte, 0 to 255, or End.
    int peek() { return next_ != end_ || fill() ? static_cast<unsigned char>(buffer_[next_]) : End; }
    int get() {
        const int byte = peek();
        next_ += byte != End ? 1 : 0;
        return byte;
    }
    /// Refuses a file that ends before.
    void read(std::span<std::byte> to);

    /// Throws PictureError with the file's name in front.
    [[noreturn]] void refuse(const std::string& words) const;
    [[noreturn]] void refuseEnd() const;
    /// Refuses a picture without pixels or with more than MostPixels.
    void checkSize(std::uint32_t width, std::uint32_t height) const;
    /// Refuses a picture that takes more bytes than are left.
    void checkHolds(std::uint32_t width, std::uint32_t height, std::uint64_t bytes) const;

private:
    bool fill();

    std::string name_;
    std::ifstream stream_;
    std::uint64_t left_ = 0;  ///< in the file, behind the buffer
    std::array<char, 8192> buffer_{};
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

// The formats: whether a file that begins so has it, and reading it from its first byte on.

bool looksLikePng(std::span<const std::byte> bytes);
Picture readPng(PictureFile& file);
bool looksLikeNetPbm(std::span<const std::byte> bytes);
Picture readNetPbm(PictureFile& file);

/// A picture whose pixels are 0, of a size that has been checked.
Picture emptyPicture(std::uint32_t width, std::uint32_t height, std::uint32_t bits);

}  // namespace softboard::scenes
