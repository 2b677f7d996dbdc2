#include "softboard/scenes/Picture.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "softboard/scenes/PictureFile.h"
#include "softboard/scenes/Raw.h"

namespace softboard::scenes {

namespace {

std::string sizeOf(std::uint32_t width, std::uint32_t height) {
    return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

}  // namespace

bool looksLikePicture(std::span<const std::byte> bytes) {
    return looksLikePng(bytes) || looksLikeNetPbm(bytes);
}

Picture readPicture(const std::filesystem::path& file) {
    PictureFile opened(file);
    if (looksLikePng(opened.ahead())) {
        return readPng(opened);
    }
    if (looksLikeNetPbm(opened.ahead())) {
        return readNetPbm(opened);
    }
    opened.refuse("no picture that can be read; PNG and PNM (P2, P3, P5, P6) can");
}

Picture emptyPicture(std::uint32_t width, std::uint32_t height, std::uint32_t bits) {
    return {.width = width,
            .height = height,
            .bits = bits,
            .pixels = std::vector<std::byte>(rawBytes(std::size_t{width} * height, bits))};
}

PictureFile::PictureFile(const std::filesystem::path& path) : name_(path.string()) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        refuse(std::string(std::filesystem::is_directory(status) ? "a folder" : "a pipe or a device") +
               "; a picture is a file");
    }
    errno = 0;
    stream_.open(path, std::ios::binary);
    if (!stream_) {
        refuse(std::generic_category().message(errno != 0 ? errno : EIO));
    }
    left_ = std::filesystem::file_size(path, error);
    if (error) {
        refuse(error.message());
    }
    if (!fill()) {
        refuse("empty; PNG and PNM (P2, P3, P5, P6) can be read");
    }
}

bool PictureFile::fill() {
    stream_.read(buffer_.data(), static_cast<std::streamsize>(std::min<std::uint64_t>(buffer_.size(), left_)));
    next_ = 0;
    end_ = static_cast<std::size_t>(stream_.gcount());
    left_ -= end_;
    return end_ != 0;
}

void PictureFile::read(std::span<std::byte> to) {
    while (!to.empty()) {
        if (peek() == End) {
            refuseEnd();
        }
        const std::size_t size = std::min(to.size(), end_ - next_);
        std::memcpy(to.data(), buffer_.data() + next_, size);
        next_ += size;
        to = to.subspan(size);
    }
}

void PictureFile::refuse(const std::string& words) const {
    throw PictureError(name_ + ": " + words);
}

void PictureFile::refuseEnd() const {
    refuse("the file ends within the picture; a part of it is missing");
}

void PictureFile::checkSize(std::uint32_t width, std::uint32_t height) const {
    if (width == 0 || height == 0) {
        refuse(sizeOf(width, height) + "; a picture has at least 1 x 1");
    }
    if (std::uint64_t{width} * height > MostPixels) {
        refuse(sizeOf(width, height) + "; at most " + std::to_string(MostPixels) + " (2^27) fit");
    }
}

void PictureFile::checkHolds(std::uint32_t width, std::uint32_t height, std::uint64_t bytes) const {
    const std::uint64_t held = end_ - next_ + left_;
    if (bytes > held) {
        refuse(sizeOf(width, height) + " take at least " + std::to_string(bytes) + " bytes; the file has only " +
               std::to_string(held) + " for them");
    }
}

}  // namespace softboard::scenes
