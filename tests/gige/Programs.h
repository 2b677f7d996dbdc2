/// @file
/// Programs that run beside a test: a device that is served, and what others have written to look at devices.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/cli/Command.h"

/// Ends the test as skipped where a program is missing.
#define QUILLON_NEEDS(program, package)                                                      \
    if (!quillon::gige::isInstalled(program)) {                                              \
        GTEST_SKIP() << (program) << " is missing: it is in Debian's package " << (package); \
    }                                                                                        \
    static_assert(true)

namespace quillon::gige {

using cli::testing::Folder;
using cli::testing::Outcome;
using Json = nlohmann::json;

/// Whether a program is found where the shell looks.
bool isInstalled(const std::string& program);

/// Runs a command of the shell to its end.
Outcome run(const std::string& command);

std::vector<std::string> linesOf(const std::string& text);

/// Asks until the answer is yes; no: the time is over.
bool becomes(const std::function<bool()>& question, std::chrono::milliseconds patience = std::chrono::seconds(15));

/// A program in the background; it ends with the object, whatever it is doing.
class Program {
public:
    /// `variables`: NAME=VALUE, beside those of the test.
    explicit Program(const std::vector<std::string>& words, const std::vector<std::string>& variables = {});
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    void signal(int number) const;
    /// Its exit status, -1 if a signal has ended it; nothing: it still runs when the time is over.
    std::optional<int> wait(std::chrono::milliseconds patience = std::chrono::seconds(15));
    std::string out() const { return cli::testing::contentOf(folder_ / "out"); }
    std::string err() const { return cli::testing::contentOf(folder_ / "err"); }

private:
    Folder folder_;
    pid_t id_ = -1;
    std::optional<int> status_;
};

/// `quillon serve gige --json` with these words; it serves once the object is there.
class Served {
public:
    explicit Served(const std::vector<std::string>& words = {});

    Program& program() { return program_; }
    /// What it has told last, which it does once a second.
    Json state() const;
    bool controlled() const { return state().contains("controller"); }
    bool streams() const { return state().value("streaming", false); }

private:
    Program program_;
};

/// The device in the words of Aravis' tools.
inline constexpr const char* DeviceName = "Quillon-Quillon-QUILLON-0";

/// What arv-tool-0.8 answers to these words, as a new controller.
std::string control(const std::string& features);

}  // namespace quillon::gige
