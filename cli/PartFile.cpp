#include "cli/PartFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "cli/ExitStatus.h"

namespace quillon::cli {

namespace {

/// Whether a file is to be written itself, as a device and a pipe are, and what a process has open.
bool isDevice(const std::filesystem::path& file) {
    struct stat about {};
    if (stat(file.c_str(), &about) != 0) {
        return false;
    }
    const bool isOrdinary = S_ISREG(about.st_mode) || S_ISDIR(about.st_mode);
    return !isOrdinary || file.string().starts_with("/dev/") || file.string().starts_with("/proc/");
}

/// The file behind a link, which stays one.
std::filesystem::path behindLinks(const std::filesystem::path& file) {
    std::error_code failure;
    std::filesystem::path target = std::filesystem::canonical(file, failure);
    return failure ? file : target;
}

/// Opens a file that did not exist, beside `file` and with its rights.
int openBeside(const std::filesystem::path& file, std::filesystem::path& part) {
    int descriptor = -1;
    int attempt = 0;
    do {
        part = file;
        part += "." + std::to_string(getpid()) + "-" + std::to_string(attempt) + ".part";
        descriptor = open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (descriptor < 0 && errno == EEXIST && ++attempt < 100);
    struct stat former {};
    if (descriptor >= 0 && stat(file.c_str(), &former) == 0) {
        fchmod(descriptor, former.st_mode & 0777U);
    }
    return descriptor;
}

/// Some file systems have nothing to bring to a disk.
bool synchronize(int descriptor) {
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Writes all that `from` holds into a device.
bool copyInto(const std::filesystem::path& device, std::FILE* from) {
    std::rewind(from);
    const int descriptor = open(device.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    bool written = descriptor >= 0;
    std::array<char, 65536> bytes{};
    for (std::size_t count = 0; written && (count = std::fread(bytes.data(), 1, bytes.size(), from)) > 0;) {
        for (std::size_t done = 0; written && done < count;) {
            const ssize_t now = write(descriptor, bytes.data() + done, count - done);
            written = now > 0 || (now < 0 && errno == EINTR);
            done += now > 0 ? static_cast<std::size_t>(now) : 0;
        }
    }
    const int reason = errno;
    const bool closed = descriptor < 0 || close(descriptor) == 0;
    errno = written ? errno : reason;
    return written && closed;
}

}  // namespace

PartFile::PartFile(std::filesystem::path file) : file_(std::move(file)) {
    if (isDevice(file_)) {
        stream_ = std::tmpfile();
        if (stream_ == nullptr) {
            refuse();
        }
        return;
    }
    target_ = behindLinks(file_);
    const int descriptor = openBeside(target_, part_);
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
      target_(std::move(other.target_)),
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
    if (stream_ == nullptr) {
        return;
    }
    if (std::fflush(stream_) != 0) {
        refuse();
    }
    if (exists_ && (!synchronize(fileno(stream_)) || std::fclose(std::exchange(stream_, nullptr)) != 0)) {
        refuse();
    }
}

void PartFile::takePlace() {
    finish();
    if (exists_ ? std::rename(part_.c_str(), target_.c_str()) != 0 : !copyInto(file_, stream_)) {
        refuse();
    }
    exists_ = false;
}

void PartFile::refuse() const {
    const int reason = errno;
    throw RefusedError(file_.string() + " cannot be written: " + std::strerror(reason));
}

void writeWhole(const std::filesystem::path& file, std::string_view content) {
    PartFile part(file);
    part.write(std::as_bytes(std::span(content)));
    part.takePlace();
}

}  // namespace quillon::cli
