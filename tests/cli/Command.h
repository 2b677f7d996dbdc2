#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace quillon::cli::testing {

/// What a run of the command left behind.
struct Outcome {
    int status;  ///< exit status; -1 if a signal ended it
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

/// Runs the built command with these words and no terminal. `directory`: where it runs, if not here.
Outcome quillon(const std::vector<std::string>& words, const std::filesystem::path& directory = "");

/// Runs a script of the shell, in which "$quillon" is the command. `directory`: where it runs, if not here.
Outcome shell(const std::string& script, const std::filesystem::path& directory = "");

/// A folder of a test's own, gone with the object.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

std::string contentOf(const std::filesystem::path& file);

}  // namespace quillon::cli::testing
