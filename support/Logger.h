/// @file
/// The object that the applet's messages go through.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <locale>
#include <memory>
#include <sstream>

namespace orlo::tools::logging {

/// Levels of the applet's messages; a logger passes a message whose level is at least its own.
enum Level : int {
    UnresolvedLevel = 4,  ///< a name that does not resolve, a wrong use of a parameter
    FailedCallLevel = 5,  ///< a failed access of the design, a failed call of the SDK
    LinkLevel = 6,        ///< the SDK cannot be linked
    SilentLevel = 7       ///< above every level in use
};

/// One logger of the dispatcher, or the silent one that stands in while there is no dispatcher. Usable from any thread.
class Logger {
public:
    Logger(std::uint64_t handle, int level);
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    virtual ~Logger();

    /// Whether a message of `level` passes on this thread. A level below the logger's costs one comparison and no lock.
    bool isEnabled(int level) const { return level >= level_.load(std::memory_order_relaxed) && isThreadEnabled(); }
    /// Hands `text` to the dispatcher. `extra` and `context` mean something to the dispatcher only; the applet passes
    /// 0.
    void log(int level, const char* text, int extra, void* context);
    void setLevel(int level) { level_.store(level, std::memory_order_relaxed); }
    /// Lets the calling thread's messages through or holds them back; gives whether they passed before.
    bool setThreadEnabled(bool enabled);

private:
    struct Private;

    bool isThreadEnabled() const;

    std::atomic<std::int32_t>
        level_;  ///< outside the private block: the test of a silent message must not follow a pointer
    std::unique_ptr<Private> private_;
};

/// Writes one line, "thread-id=", the thread, "|" and what `describe` puts into the stream, if `level` is on. Nothing
/// is built otherwise.
template <class Describe>
void writeMessage(Logger& logger, int level, Describe&& describe) {
    if (!logger.isEnabled(level)) {
        return;
    }
    std::ostringstream line;
    line.imbue(std::locale::classic());  // the host's locale must not group the digits
    line << "thread-id=" << pthread_self() << '|';
    describe(line);
    logger.log(level, line.str().c_str(), 0, nullptr);
}

}  // namespace orlo::tools::logging
