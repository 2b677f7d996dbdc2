#include "support/Locks.h"

#include <sched.h>

namespace orlo::templates::platform {

CriticalSection::CriticalSection() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutex_init(&own_, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

CriticalSection::~CriticalSection() {
    if (!external_) {
        pthread_mutex_destroy(mutex_);
    }
}

void CriticalSection::lock() {
    pthread_mutex_lock(mutex_);
}

bool CriticalSection::tryLock() {
    return pthread_mutex_trylock(mutex_) == 0;
}

void CriticalSection::unlock() {
    pthread_mutex_unlock(mutex_);
}

RecursiveMutex::RecursiveMutex() {
    pthread_mutexattr_init(&attributes_);
    pthread_mutexattr_settype(&attributes_, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mutex_, &attributes_);
}

RecursiveMutex::~RecursiveMutex() {
    pthread_mutex_destroy(&mutex_);
    pthread_mutexattr_destroy(&attributes_);
}

RecursiveMutexGuard::RecursiveMutexGuard(RecursiveMutex& mutex) : mutex_(&mutex) {
    pthread_mutex_lock(&mutex_->mutex_);
    ++mutex_->holdCount_;
}

RecursiveMutexGuard::~RecursiveMutexGuard() {
    if (release_) {
        // The count changes while the mutex is still held: after the unlock it belongs to the next owner.
        --mutex_->holdCount_;
        pthread_mutex_unlock(&mutex_->mutex_);
    }
}

ReadWriteLock::ReadWriteLock() {
    pthread_rwlock_init(&lock_, nullptr);
}

ReadWriteLock::~ReadWriteLock() {
    pthread_rwlock_destroy(&lock_);
}

ReadWriteLockGuard::ReadWriteLockGuard(ReadWriteLock& lock, Mode mode)
    : lock_(&lock),
      release_((mode == Mode::Writing ? pthread_rwlock_wrlock(&lock.lock_) : pthread_rwlock_rdlock(&lock.lock_)) == 0) {
}

ReadWriteLockGuard::~ReadWriteLockGuard() {
    if (release_) {
        pthread_rwlock_unlock(&lock_->lock_);
    }
}

SpinLockVariableGuard::SpinLockVariableGuard(SpinLockVariable& variable)
    : variable_(&variable.taken), owner_(&variable.owner) {
    if (variable_->load(std::memory_order_relaxed) != 0 && owner_->load(std::memory_order_relaxed) == pthread_self()) {
        return;
    }
    while (variable_->exchange(1, std::memory_order_acquire) != 0) {
        sched_yield();
    }
    owner_->store(pthread_self(), std::memory_order_relaxed);
    taken_ = true;
}

SpinLockVariableGuard::~SpinLockVariableGuard() {
    if (taken_) {
        owner_->store(pthread_t{}, std::memory_order_relaxed);
        variable_->store(0, std::memory_order_release);
    }
}

}  // namespace orlo::templates::platform

namespace orlo::templates::patterns {

GenericLockGuard::GenericLockGuard(platform::CriticalSection& lock) : lock_(&lock) {
    lock_->lock();
    lock_->markLocked(true);
}

GenericLockGuard::~GenericLockGuard() {
    if (release_ && lock_->isLocked()) {
        // Cleared before the unlock, while it is still ours: the next owner marks it for itself.
        lock_->markLocked(false);
        lock_->unlock();
    }
    if (deleteLock_) {
        delete lock_;
    }
}

}  // namespace orlo::templates::patterns
