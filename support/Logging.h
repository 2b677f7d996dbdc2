/// @file
/// The way to the log dispatcher, a library of the installation that is used where it is found. Without it the applet
/// is silent.
#pragma once

#include <cstdint>
#include <memory>

#include "support/GuardedSingleton.h"
#include "support/Logger.h"

namespace orlo::tools::logging {

/// What the dispatcher and its clients give each other.
struct DispatcherContract {
    using GetLoggerFunction = void (*)(const char* name, std::uint64_t* outHandle, int* outLevel);
    using WriteFunction = void (*)(std::uint64_t handle, int level, const char* text, int extra, void* context);
    using OnDetach = void (*)();
    using OnSetLevel = void (*)(std::uint64_t handle, int level);

    /// The layout of the dispatcher's data symbol `logging_dispatcher_descriptor`.
    struct Descriptor {
        void (*attach)(void* context, OnDetach onDetach, OnSetLevel onSetLevel, GetLoggerFunction* getLogger,
                       WriteFunction* write);
        void (*detach)(void* context);
    };
};

class Logging : public templates::patterns::GuardedSingleton<Logging> {
public:
    Logging();
    ~Logging() override;
    /// Finds the dispatcher and attaches to it.
    void initialize() override;

    /// The logger of that name; the silent default logger while no dispatcher is bound. Never null; lives as long as
    /// the process.
    Logger* getLogger(const char* name);
    void write(std::uint64_t handle, int level, const char* text, int extra, void* context);

    /// Attaches to `descriptor`, as initialize does with the one it finds; null leaves the applet silent.
    void attach(const DispatcherContract::Descriptor* descriptor);

private:
    static void onDetach();
    static void onSetLevel(std::uint64_t handle, int level);

    struct Private;
    std::unique_ptr<Private> private_;
};

}  // namespace orlo::tools::logging
