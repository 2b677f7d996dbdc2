#include "cli/PartFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

/// Opens a file that did not exist, beside `file`.
int openBeside(const std::filesystem::path& file, std::filesystem::path& part) {
    int descriptor = -1;
    int attempt = 0;
    do {
        part = file;
        part += "." + std::to_string(getpid()) + "-" + std::to_string(attempt) + ".part";
        descriptor = open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (descriptor < 0 && errno == EEXIST && ++attempt < 100);
    return descriptor;
}

}  // namespace

PartFile::PartFile(std::filesystem::path file) : file_(std::move(file)) {
    const int descriptor = openBeside(file_, part_);
    if (descriptor < 0) {
        refuse();
    }
    exists_ = true;
    stream_ = fdopen(descriptor, "wb");
    if (stream_ == nullptr) {
        close(descriptor);
        unlink(part_.c_str());
        refuse();
    }
}

PartFile::PartFile(PartFile&& other) noexcept
    : file_(std::move(other.file_)),
      part_(std::move(other.part_)),
      stream_(std::exchange(other.stream_, nullptr)),
      exists_(std::exchange(other.exists_, false)) {}

PartFile::~PartFile() {
    if (stream_ != nullptr) {
        std::fclose(stream_);
    }
    if (exists_) {
        unlink(part_.c_str());
    }
}

void PartFile::write(std::span<const std::byte> bytes) {
    // Nothing may lie nowhere, which the C library does not take.
    if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size()) {
        refuse();
    }
}

void PartFile::seek(std::size_t place) {
    if (fseeko(stream_, static_cast<off_t>(place), SEEK_SET) != 0) {
        refuse();
    }
}

std::size_t PartFile::size() {
    const off_t place = ftello(stream_);
    if (place < 0 || fseeko(stream_, 0, SEEK_END) != 0) {
        refuse();
    }
    const off_t end = ftello(stream_);
    if (end < 0 || fseeko(stream_, place, SEEK_SET) != 0) {
        refuse();
    }
    return static_cast<std::size_t>(end);
}

void PartFile::finish() {
    if (stream_ != nullptr && std::fclose(std::exchange(stream_, nullptr)) != 0) {
        refuse();
    }
}

void PartFile::takePlace() {
    finish();
    if (std::rename(part_.c_str(), file_.c_str()) != 0) {
        refuse();
    }
    exists_ = false;
}

void PartFile::refuse() const {
    const int reason = errno;
    throw RefusedError(file_.string() + " cannot be written: " + std::strerror(reason));
}

}  // namespace quillon::cli
