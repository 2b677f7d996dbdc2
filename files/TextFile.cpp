#include "files/TextFile.h"

#include <sys/stat.h>

#include <cstring>
#include <utility>

namespace quillon {

namespace {

/// Waiting on a pipe, or on the end of a device, would hold up every caller that waits for the parameter lock. A file
/// that can't be examined is left to fopen, which then says whether it is there.
bool canBeReadFromStartToEnd(const char* fileName) {
    struct stat status = {};
    return ::stat(fileName, &status) != 0 || S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

}  // namespace

void TextFileCloser::operator()(std::FILE* stream) const {
    std::fflush(stream);
    std::fclose(stream);
}

TextFile openTextFile(const char* fileName, const char* mode) {
    if (fileName == nullptr || (mode[0] == 'r' && !canBeReadFromStartToEnd(fileName))) {
        return nullptr;
    }
    return TextFile(std::fopen(fileName, mode));
}

bool readLine(std::FILE* stream, TextLine& line) {
    return stream != nullptr && ::fgets_unlocked(line.data(), static_cast<int>(line.size()), stream) != nullptr;
}

const char* LineSplitter::next(const char* delimiters) {
    return ::strtok_r(std::exchange(start, nullptr), delimiters, &rest);
}

}  // namespace quillon
