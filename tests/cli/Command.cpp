#include "tests/cli/Command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quillon::cli::testing {

namespace {

void redirect(int descriptor, const std::filesystem::path& file) {
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(opened, descriptor);
    close(opened);
}

[[noreturn]] void become(std::vector<std::string> words, const std::filesystem::path& directory, const Folder& folder) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    redirect(STDOUT_FILENO, folder / "out");
    redirect(STDERR_FILENO, folder / "err");
    if (directory.empty() || chdir(directory.c_str()) == 0) {
        execv(arguments.front(), arguments.data());
    }
    _exit(126);
}

}  // namespace

Folder::Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillon-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no folder for the test");
    }
    path_ = pattern;
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

namespace {

Outcome run(const std::vector<std::string>& words, const std::filesystem::path& directory) {
    const Folder folder;
    const pid_t child = fork();
    if (child == 0) {
        become(words, directory, folder);
    }
    int state = 0;
    waitpid(child, &state, 0);
    return {WIFEXITED(state) ? WEXITSTATUS(state) : -1, contentOf(folder / "out"), contentOf(folder / "err")};
}

}  // namespace

Outcome quillon(const std::vector<std::string>& words, const std::filesystem::path& directory) {
    std::vector<std::string> command{QUILLON_COMMAND};
    command.insert(command.end(), words.begin(), words.end());
    return run(command, directory);
}

Outcome shell(const std::string& script, const std::filesystem::path& directory) {
    return run({"/bin/bash", "-c", "quillon=" QUILLON_COMMAND "\n" + script}, directory);
}

}  // namespace quillon::cli::testing
