/// @file
/// What the applet hands to the log dispatcher of this build. For targets that link quillon_client_testing.
#pragma once

#include <pthread.h>

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "client/SharedLibrary.h"
#include "client/testing/BuiltApplet.h"

namespace quillon::test {

/// Takes all messages of the process from `level` on, for the life of the object. Make it before the applet.
class CapturedLog {
public:
    explicit CapturedLog(int level = 4)
        : library(client::testing::builtLibrary().parent_path().parent_path() / "lib64" /
                  "libcommon-logging-dispatcher.so") {
        library.resolve("dispatcher_set_level", setLevel);
        library.resolve("dispatcher_set_sink", setSink);
        clear();
        setSink(&CapturedLog::take);
        setLevel(nullptr, level);
    }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ~CapturedLog() {
        setLevel(nullptr, 7);
        setSink(nullptr);
        hook = nullptr;
    }

    /// The messages so far as "LEVEL LOGGER TEXT". The prefix with the writing thread's id is cut off; a message
    /// without it, or with another thread's, is marked.
    std::vector<std::string> lines() const {
        const std::lock_guard guard(mutex);
        return taken;
    }
    void clear() {
        const std::lock_guard guard(mutex);
        taken.clear();
    }
    /// Runs `action` on the writing thread at every message, before the message is taken.
    void atEveryMessage(std::function<void()> action) { hook = std::move(action); }
    void changeLevel(const char* logger, int level) { setLevel(logger, level); }

private:
    static void take(const char* logger, int level, const char* text) {
        if (hook) {
            hook();
        }
        const std::string prefix = "thread-id=" + std::to_string(pthread_self()) + "|";
        std::string message = text;
        message = message.starts_with(prefix) ? message.substr(prefix.size()) : "(no thread id) " + message;
        const std::lock_guard guard(mutex);
        taken.push_back(std::to_string(level) + " " + logger + " " + message);
    }

    static inline std::function<void()> hook;  ///< set while nobody writes
    static inline std::mutex mutex;
    static inline std::vector<std::string> taken;
    client::SharedLibrary library;
    void (*setLevel)(const char*, int) = nullptr;
    void (*setSink)(void (*)(const char*, int, const char*)) = nullptr;
};

}  // namespace quillon::test
