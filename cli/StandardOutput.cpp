#include "cli/StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace quillon::cli {

StandardOutput::StandardOutput(int descriptor) : descriptor_(descriptor), isTerminal_(isatty(descriptor) == 1) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
}

int StandardOutput::failure() const {
    return failure_ == EPIPE ? 0 : failure_;
}

StandardOutput::int_type StandardOutput::overflow(int_type character) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        sputc(traits_type::to_char_type(character));
    }
    return traits_type::not_eof(character);
}

std::streamsize StandardOutput::xsputn(const char* text, std::streamsize count) {
    const std::streamsize taken = std::streambuf::xsputn(text, count);
    const std::string_view written(text, static_cast<std::size_t>(taken));
    if (isTerminal_ && written.find('\n') != std::string_view::npos && sync() != 0) {
        return 0;
    }
    return taken;
}

int StandardOutput::sync() {
    for (const char* next = pbase(); failure_ == 0 && next < pptr();) {
        const ssize_t count = write(descriptor_, next, static_cast<std::size_t>(pptr() - next));
        if (count >= 0) {
            next += count;
        } else if (errno != EINTR) {
            failure_ = errno;
        }
    }
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return failure_ == 0 ? 0 : -1;
}

void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // Open for reading alone, so that output is an error still.
            open("/dev/null", O_RDONLY);
        }
    }
}

}  // namespace quillon::cli
