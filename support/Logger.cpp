#include "support/Logger.h"

#include <set>

#include "support/Locks.h"
#include "support/Logging.h"

namespace orlo::tools::logging {

using templates::platform::RecursiveMutex;
using templates::platform::RecursiveMutexGuard;

struct Logger::Private {
    std::uint64_t handle;
    RecursiveMutex mutex;
    std::set<pthread_t> suppressedThreads;
};

Logger::Logger(std::uint64_t handle, int level) : level_(level), private_(std::make_unique<Private>()) {
    private_->handle = handle;
}

Logger::~Logger() = default;

bool Logger::isThreadEnabled() const {
    const RecursiveMutexGuard guard(private_->mutex);
    return private_->suppressedThreads.count(pthread_self()) == 0;
}

bool Logger::setThreadEnabled(bool enabled) {
    const RecursiveMutexGuard guard(private_->mutex);
    if (enabled) {
        return private_->suppressedThreads.erase(pthread_self()) == 0;
    }
    return private_->suppressedThreads.insert(pthread_self()).second;
}

void Logger::log(int level, const char* text, int extra, void* context) {
    Logging::instance().write(private_->handle, level, text, extra, context);
}

}  // namespace orlo::tools::logging
