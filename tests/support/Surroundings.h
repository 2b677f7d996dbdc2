/// @file
/// What a test changes in its process, and puts back.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace quillon::test {

/// An environment variable that is set for the life of the object.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        setenv(name, value.c_str(), 1);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() {
        if (before_) {
            setenv(name_, before_->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }

private:
    const char* name_;
    std::optional<std::string> before_;
};

/// A working directory for the life of the object.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::filesystem::path& directory) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(directory);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_;
};

/// What is allocated in the life of the object may be left behind: the leak checker does not count it.
class ToldLeak {
public:
#if defined(__SANITIZE_ADDRESS__)
    ToldLeak() {
        __lsan_disable();
    }
    ~ToldLeak() {
        __lsan_enable();
    }
#else
    ToldLeak() {}
    ~ToldLeak() {}
#endif
    ToldLeak(const ToldLeak&) = delete;
    ToldLeak& operator=(const ToldLeak&) = delete;
};

}  // namespace quillon::test
