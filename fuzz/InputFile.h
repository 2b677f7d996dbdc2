/// @file
/// The bytes that a fuzzer made, as a file with a name.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillon::fuzz {

/// Ends the run as a finding of the fuzzer.
inline void expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A file in memory, with a name that ends in the given extension, for as long as the object lives.
class InputFile {
public:
    InputFile(const std::string& extension, const std::uint8_t* bytes, std::size_t size)
        : descriptor(::memfd_create("fuzz", MFD_CLOEXEC)),
          link((std::filesystem::temp_directory_path() / ("quillon-fuzz-" + std::to_string(::getpid()) + extension))
                   .string()) {
        expect(descriptor >= 0 && ::write(descriptor, bytes, size) == static_cast<ssize_t>(size));
        std::filesystem::remove(link);
        std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(descriptor), link);
    }

    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    ~InputFile() {
        std::filesystem::remove(link);
        ::close(descriptor);
    }

    const char* name() const { return link.c_str(); }

    /// What is in the file now.
    std::string bytes() const {
        std::ifstream stream(link, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    int descriptor;
    std::string link;
};

}  // namespace quillon::fuzz
