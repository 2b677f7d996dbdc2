/// @file
/// A process-wide object that is made on first use, and that may use itself while it is being initialised.
#pragma once

#include <atomic>
#include <vector>

#include "support/Locks.h"

namespace orlo::templates::patterns {

class GuardedSingletonBase {
public:
    GuardedSingletonBase() = default;
    GuardedSingletonBase(const GuardedSingletonBase&) = delete;
    GuardedSingletonBase& operator=(const GuardedSingletonBase&) = delete;

    virtual void keepAlive() {}
    /// Address of the published instance pointer of this object's class.
    virtual void* instancePointer() = 0;
    virtual ~GuardedSingletonBase() = default;
    /// Runs once, after construction and before publication; it may call the instance operation again.
    virtual void initialize() = 0;

    /// The list of singletons that something else releases at the end of the process. Nothing in this program creates
    /// it, so singletons live until the process ends: a logger may still be asked for in a static destructor.
    static std::vector<GuardedSingletonBase*>*& releaseList() {
        static std::vector<GuardedSingletonBase*>* list = nullptr;
        return list;
    }
    static platform::SpinLockVariable& releaseListLock() {
        static platform::SpinLockVariable lock;
        return lock;
    }
};

template <class T>
class GuardedSingleton : public GuardedSingletonBase {
public:
    static T& instance() {
        if (T* published = published_.load(std::memory_order_acquire)) {
            return *published;
        }
        // Only the creator can find itself here: the owner of the spin variable is this thread.
        if (creation_.owner.load(std::memory_order_relaxed) == pthread_self()) {
            if (T* underConstruction = underConstruction_.load(std::memory_order_relaxed)) {
                return *underConstruction;
            }
        }
        const platform::SpinLockVariableGuard guard(creation_);
        if (T* published = published_.load(std::memory_order_acquire)) {
            return *published;
        }
        T* made = new T;
        underConstruction_.store(made, std::memory_order_relaxed);
        {
            const platform::SpinLockVariableGuard listGuard(releaseListLock());
            if (releaseList() != nullptr) {
                releaseList()->push_back(made);
            }
        }
        made->initialize();
        published_.store(made, std::memory_order_release);
        underConstruction_.store(nullptr, std::memory_order_relaxed);
        return *made;
    }

    void* instancePointer() override { return &published_; }

private:
    static inline std::atomic<T*> published_{nullptr};
    static inline std::atomic<T*> underConstruction_{nullptr};
    static inline platform::SpinLockVariable creation_;
};

}  // namespace orlo::templates::patterns
