/// @file
/// Mutexes, a read-write lock, spin lock variables, and the stack objects that hold them.
#pragma once

#include <pthread.h>

#include <atomic>

namespace orlo::templates::patterns {

/// What every lock of the parameter path can do.
class GenericLock {
public:
    GenericLock() = default;
    GenericLock(const GenericLock&) = delete;
    GenericLock& operator=(const GenericLock&) = delete;
    virtual ~GenericLock() = default;

    virtual void lock() = 0;
    virtual bool tryLock() = 0;  ///< true if the lock is now held
    virtual void unlock() = 0;
};

/// Base of the stack objects that hold a lock of kind `Lock` (a pointer type).
template <class Lock>
class Guard {
public:
    Guard() = default;
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    virtual ~Guard() = default;
};

}  // namespace orlo::templates::patterns

namespace orlo::templates::platform {

/// A mutex of the error-checking kind; not recursive.
class CriticalSection : public patterns::GenericLock {
public:
    CriticalSection();
    ~CriticalSection() override;

    /// Waits for the mutex. A second lock by the owning thread does not block: pthread reports an error, which is
    /// ignored.
    void lock() override;
    bool tryLock() override;
    void unlock() override;

    /// Whether a guard holds the lock. Written by guards only, and only while they hold it.
    bool isLocked() const { return locked_; }
    void markLocked(bool locked) { locked_ = locked; }

private:
    bool locked_ = false;
    bool external_ = false;  ///< the mutex belongs to somebody else and is not destroyed here
    pthread_mutex_t own_;
    pthread_mutex_t* mutex_ = &own_;
};

/// A mutex that its owner may take again. It is locked through RecursiveMutexGuard.
class RecursiveMutex {
public:
    RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;
    virtual ~RecursiveMutex();

    int holdCount() const { return holdCount_; }

private:
    friend class RecursiveMutexGuard;
    pthread_mutex_t mutex_;
    pthread_mutexattr_t attributes_;
    int holdCount_ = 0;
};

/// A process-private read-write lock, locked through ReadWriteLockGuard.
class ReadWriteLock {
public:
    ReadWriteLock();
    ReadWriteLock(const ReadWriteLock&) = delete;
    ReadWriteLock& operator=(const ReadWriteLock&) = delete;
    virtual ~ReadWriteLock();

private:
    friend class ReadWriteLockGuard;
    pthread_rwlock_t lock_;
};

}  // namespace orlo::templates::platform

namespace orlo::templates::patterns {

/// Holds a critical section for the life of the object.
class GenericLockGuard : public Guard<GenericLock*> {
public:
    explicit GenericLockGuard(platform::CriticalSection& lock);
    /// Releases the lock, also while an exception passes; a failure in here ends the process.
    ~GenericLockGuard() override;

private:
    platform::CriticalSection* lock_;
    bool release_ = true;      ///< unlock at the end
    bool deleteLock_ = false;  ///< destroy the lock at the end
};

}  // namespace orlo::templates::patterns

namespace orlo::templates::platform {

class CriticalSectionGuard : public patterns::GenericLockGuard {
public:
    using GenericLockGuard::GenericLockGuard;
};

class RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*> {
public:
    explicit RecursiveMutexGuard(RecursiveMutex& mutex);
    ~RecursiveMutexGuard() override;

private:
    RecursiveMutex* mutex_;
    bool release_ = true;
};

class ReadWriteLockGuard : public patterns::Guard<ReadWriteLock*> {
public:
    enum class Mode { Reading, Writing };

    ReadWriteLockGuard(ReadWriteLock& lock, Mode mode);
    ~ReadWriteLockGuard() override;

private:
    ReadWriteLock* lock_;
    bool release_;
};

/// A spin variable with the thread that owns it. Zero-initialised it is free, so it may guard the making of static
/// objects.
struct SpinLockVariable {
    std::atomic<int> taken{0};
    std::atomic<pthread_t> owner{};
};

/// Takes a spin variable, unless the calling thread already owns it, and gives back what it took.
class SpinLockVariableGuard {
public:
    explicit SpinLockVariableGuard(SpinLockVariable& variable);
    SpinLockVariableGuard(const SpinLockVariableGuard&) = delete;
    SpinLockVariableGuard& operator=(const SpinLockVariableGuard&) = delete;
    ~SpinLockVariableGuard();

private:
    std::atomic<int>* variable_;
    std::atomic<pthread_t>* owner_;
    bool taken_ = false;
};

}  // namespace orlo::templates::platform
