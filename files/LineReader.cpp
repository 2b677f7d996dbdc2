#include "files/LineReader.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <utility>

namespace quillon {

namespace {

bool hasAnEnd(int descriptor) {
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

void LineReader::restart(std::FILE* stream) {
    descriptor_ = stream != nullptr ? ::fileno(stream) : -1;
    if (offset_ != filled_) {
        forget();
    }
    begin_ = 0;
    wasRead_ = true;
}

void LineReader::handOver(std::FILE* stream) {
    if (std::exchange(wasRead_, false)) {
        const std::size_t position = offset_ - (filled_ - begin_);
        std::fseek(stream, static_cast<long>(position), SEEK_SET);
        forget();
    }
}

bool LineReader::readOn() {
    if (offset_ >= DeviceLimit && !hasAnEnd(descriptor_)) {
        return false;
    }
    if (filled_ == buffer_.size()) {
        filled_ -= begin_;
        std::memmove(buffer_.data(), buffer_.data() + begin_, filled_);
        begin_ = 0;
    }
    const ssize_t count =
        ::pread(descriptor_, buffer_.data() + filled_, buffer_.size() - filled_, static_cast<off_t>(offset_));
    if (count <= 0) {
        return false;
    }
    filled_ += static_cast<std::size_t>(count);
    offset_ += static_cast<std::size_t>(count);
    return true;
}

}  // namespace quillon
