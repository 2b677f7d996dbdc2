#include "wrapper/TemporaryFile.h"

#include <fcntl.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillon {

namespace {

constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::string_view Placeholder = "XXXXXX";
constexpr int Attempts = 62 * 62 * 62;
constexpr std::uint64_t Step = 7777;

// Only spreads the names; O_EXCL keeps two callers apart.
std::atomic<std::uint64_t> nameCounter{0};

std::uint64_t uptime() {
    struct sysinfo system {};
    return sysinfo(&system) == 0 ? static_cast<std::uint64_t>(system.uptime) : 0;
}

}  // namespace

int makeTemporaryFile(char* fileTemplate, int suffixLength) {
    if (fileTemplate == nullptr) {
        errno = EINVAL;
        return -1;
    }
    const auto length = static_cast<std::int64_t>(std::strlen(fileTemplate));
    // A negative suffix would put the letters behind the text's end.
    if (suffixLength < 0 || std::int64_t{suffixLength} + 5 >= length) {
        return -1;
    }
    char* const letters = fileTemplate + (length - suffixLength) - 6;
    if (std::string_view(letters, Placeholder.size()) != Placeholder) {
        return -1;
    }
    std::uint64_t value = nameCounter += uptime();
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        std::uint64_t rest = value;
        std::generate_n(letters, Placeholder.size(), [&rest] {
            const char letter = Letters[rest % Letters.size()];
            rest /= Letters.size();
            return letter;
        });
        const int descriptor = open(fileTemplate, O_RDWR | O_CREAT | O_EXCL, 0600);
        if (descriptor >= 0) {
            return descriptor;
        }
        value = nameCounter += Step;
    }
    fileTemplate[0] = '\0';
    return -1;
}

char* createTempFile() {
    constexpr std::string_view pattern = "/tmp/coef-XXXXXX.tiff";
    char* path = new char[32];
    std::memcpy(path, pattern.data(), pattern.size() + 1);
    const int descriptor = makeTemporaryFile(path, 5);
    if (descriptor < 0) {
        delete[] path;
        return nullptr;
    }
    close(descriptor);
    return path;
}

void deleteTempFile(char* path) {
    unlink(path);
    delete[] path;
}

}  // namespace quillon
