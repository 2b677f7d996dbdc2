#include "support/Logging.h"

#include <map>

#include "support/Library.h"
#include "support/Locks.h"

namespace orlo::tools::logging {

using templates::platform::ReadWriteLock;
using templates::platform::ReadWriteLockGuard;

struct Logging::Private {
    std::unique_ptr<Logger> defaultLogger = std::make_unique<Logger>(0, SilentLevel);
    // Filled by the dispatcher in attach. Atomic, as is `descriptor`: the dispatcher may go away on any thread while
    // others write.
    DispatcherContract::GetLoggerFunction getLoggerFunction = nullptr;
    DispatcherContract::WriteFunction writeFunction = nullptr;
    std::atomic<const DispatcherContract::Descriptor*> descriptor{nullptr};
    std::map<std::uint64_t, std::unique_ptr<Logger>> loggersByHandle;
    std::unique_ptr<Library> dispatcherLibrary;
    ReadWriteLock lock;
};

Logging::Logging() : private_(std::make_unique<Private>()) {}

Logging::~Logging() {
    private_->loggersByHandle.clear();
    if (const auto* descriptor = private_->descriptor.load()) {
        descriptor->detach(this);
    }
}

void Logging::initialize() {
    private_->dispatcherLibrary = findLibrary("common-logging-dispatcher");
    if (private_->dispatcherLibrary) {
        attach(static_cast<const DispatcherContract::Descriptor*>(
            private_->dispatcherLibrary->symbol("logging_dispatcher_descriptor")));
    }
    if (private_->descriptor == nullptr) {
        private_->dispatcherLibrary.reset();
    }
}

void Logging::attach(const DispatcherContract::Descriptor* descriptor) {
    private_->descriptor = descriptor;
    if (descriptor != nullptr) {
        descriptor->attach(this, &Logging::onDetach, &Logging::onSetLevel, &private_->getLoggerFunction,
                           &private_->writeFunction);
    }
}

Logger* Logging::getLogger(const char* name) {
    if (private_->descriptor == nullptr) {
        return private_->defaultLogger.get();
    }
    std::uint64_t handle = 0;
    int level = 0;
    private_->getLoggerFunction(name, &handle, &level);
    const ReadWriteLockGuard guard(private_->lock, ReadWriteLockGuard::Mode::Writing);
    auto& logger = private_->loggersByHandle[handle];
    if (!logger) {
        logger = std::make_unique<Logger>(handle, level);
    }
    return logger.get();
}

void Logging::write(std::uint64_t handle, int level, const char* text, int extra, void* context) {
    if (private_->descriptor != nullptr) {
        private_->writeFunction(handle, level, text, extra, context);
    }
}

void Logging::onDetach() {
    instance().private_->descriptor = nullptr;
}

void Logging::onSetLevel(std::uint64_t handle, int level) {
    Private& self = *instance().private_;
    const ReadWriteLockGuard guard(self.lock, ReadWriteLockGuard::Mode::Reading);
    if (const auto found = self.loggersByHandle.find(handle); found != self.loggersByHandle.end()) {
        found->second->setLevel(level);
    }
}

}  // namespace orlo::tools::logging
