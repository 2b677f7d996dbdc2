#include "files/TextFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstring>
#include <utility>

namespace quillon {

namespace {

/// Waiting on a pipe would hold up every caller that waits for the parameter lock.
bool isPipe(const char* fileName) {
    struct stat status = {};
    return ::stat(fileName, &status) == 0 && S_ISFIFO(status.st_mode);
}

}  // namespace

void TextFileCloser::operator()(std::FILE* stream) const {
    std::fflush(stream);
    std::fclose(stream);
}

TextFile openTextFile(const char* fileName, const char* mode) {
    if (fileName == nullptr) {
        return nullptr;
    }
    if (mode[0] != 'r') {
        return TextFile(std::fopen(fileName, mode));
    }
    if (isPipe(fileName)) {
        return nullptr;
    }
    const int access = mode[1] == '+' ? O_RDWR : O_RDONLY;
    const int descriptor = ::open(fileName, access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    return descriptor >= 0 ? TextFile(::fdopen(descriptor, mode)) : nullptr;
}

const char* LineSplitter::next(const char* delimiters) {
    return ::strtok_r(std::exchange(start_, nullptr), delimiters, &rest_);
}

}  // namespace quillon
