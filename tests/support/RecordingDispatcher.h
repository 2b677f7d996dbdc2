/// @file
/// A dispatcher in the test itself, to which the process's Logging is attached for a test's life.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/Logging.h"

namespace quillon::test {

/// Loggers get handles that no other test has had. Between two of these objects the process has no dispatcher.
class RecordingDispatcher {
public:
    using Logging = orlo::tools::logging::Logging;
    using Contract = orlo::tools::logging::DispatcherContract;

    struct Message {
        std::uint64_t handle;
        int level;
        std::string text;
        int extra;
        void* context;
    };

    RecordingDispatcher() {
        current = this;
        Logging::instance().attach(&descriptor);
    }
    RecordingDispatcher(const RecordingDispatcher&) = delete;
    RecordingDispatcher& operator=(const RecordingDispatcher&) = delete;
    ~RecordingDispatcher() {
        if (onDetach != nullptr) {
            onDetach();
        }
        current = nullptr;
    }

    /// The logger of a name that starts at `level`.
    orlo::tools::logging::Logger* logger(const char* name, int level) {
        startLevel = level;
        return Logging::instance().getLogger(name);
    }

    std::uint64_t handleOf(const std::string& name) {
        const std::lock_guard guard(mutex);
        return handles[name];
    }
    void shareHandle(const std::string& name, const std::string& with) { handles[name] = handles[with]; }

    const std::vector<Message>& messages() const { return written; }
    /// All messages as "LEVEL TEXT".
    std::vector<std::string> texts() const {
        std::vector<std::string> lines;
        for (const Message& message : written) {
            lines.push_back(std::to_string(message.level) + " " + message.text);
        }
        return lines;
    }

    static inline Contract::OnDetach onDetach = nullptr;
    static inline Contract::OnSetLevel onSetLevel = nullptr;
    static inline void* attachedContext = nullptr;
    static inline std::vector<void*> detached;
    int startLevel = 4;
    int requests = 0;  ///< calls of getLogger
    std::uint64_t handleBefore = 99;
    int levelBefore = 99;

    static const Contract::Descriptor descriptor;

private:
    static void attach(void* context, Contract::OnDetach detachCallback, Contract::OnSetLevel levelCallback,
                       Contract::GetLoggerFunction* getLoggerSlot, Contract::WriteFunction* writeSlot) {
        attachedContext = context;
        onDetach = detachCallback;
        onSetLevel = levelCallback;
        *getLoggerSlot = getLogger;
        *writeSlot = write;
    }
    static void detach(void* context) { detached.push_back(context); }

    static void getLogger(const char* name, std::uint64_t* handle, int* level) {
        const std::lock_guard guard(current->mutex);
        ++current->requests;
        current->handleBefore = *handle;
        current->levelBefore = *level;
        std::uint64_t& known = current->handles[name];
        if (known == 0) {
            known = ++lastHandle;
        }
        *handle = known;
        *level = current->startLevel;
    }

    static void write(std::uint64_t handle, int level, const char* text, int extra, void* context) {
        const std::lock_guard guard(current->mutex);
        current->written.push_back({handle, level, text, extra, context});
    }

    static inline RecordingDispatcher* current = nullptr;
    static inline std::uint64_t lastHandle = 1000;
    std::mutex mutex;
    std::map<std::string, std::uint64_t> handles;
    std::vector<Message> written;
};

inline const RecordingDispatcher::Contract::Descriptor RecordingDispatcher::descriptor = {attach, detach};

}  // namespace quillon::test
