#include "cli/MemoryFile.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "cli/ExitStatus.h"

namespace quillon::cli {

MemoryFile::MemoryFile(const std::string& name) : descriptor_(memfd_create("quillon", MFD_CLOEXEC)) {
    std::string folder = (std::filesystem::temp_directory_path() / "quillon-XXXXXX").string();
    if (descriptor_ < 0 || mkdtemp(folder.data()) == nullptr) {
        close(descriptor_);
        throw RefusedError("cannot make a folder in " + std::filesystem::temp_directory_path().string());
    }
    path_ = std::filesystem::path(folder) / name;
    std::error_code failure;
    std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(descriptor_), path_, failure);
    if (failure) {
        close(descriptor_);
        std::filesystem::remove_all(folder, failure);
        throw RefusedError("cannot make a link in " + folder);
    }
}

MemoryFile::~MemoryFile() {
    std::error_code ignored;
    std::filesystem::remove_all(path_.parent_path(), ignored);
    close(descriptor_);
}

std::string MemoryFile::contentFor(const std::filesystem::path& file) const {
    std::ifstream stream(path_, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    // The limit of a file's size is one of files in memory, too.
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && content.size() >= limit.rlim_cur) {
        throw RefusedError(file.string() + " cannot be written: " + std::strerror(EFBIG));
    }
    return content;
}

}  // namespace quillon::cli
