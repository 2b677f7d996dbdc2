#include "support/Locks.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace orlo::templates::platform {
namespace {

/// What another thread finds: whether it can take the lock at once. It gives it back.
bool isFree(CriticalSection& lock) {
    bool taken = false;
    std::thread other([&] {
        taken = lock.tryLock();
        if (taken) {
            lock.unlock();
        }
    });
    other.join();
    return taken;
}

/// Runs `body` on `count` threads at once.
template <class Body>
void onThreads(int count, Body body) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back(body);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(CriticalSection, KeepsOthersOutUntilItIsUnlocked) {
    CriticalSection lock;
    lock.lock();
    EXPECT_FALSE(isFree(lock));
    lock.unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST(CriticalSection, ASecondLockByTheOwnerDoesNotBlock) {
    CriticalSection lock;
    lock.lock();
    lock.lock();
    EXPECT_FALSE(lock.tryLock());
    lock.unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST(CriticalSection, IsMarkedOnlyByGuards) {
    CriticalSection lock;
    lock.lock();
    EXPECT_FALSE(lock.isLocked());
    lock.unlock();
    const CriticalSectionGuard guard(lock);
    EXPECT_TRUE(lock.isLocked());
}

TEST(CriticalSection, CanBeDestroyedThroughItsBase) {
    std::unique_ptr<patterns::GenericLock> lock = std::make_unique<CriticalSection>();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    lock.reset();
    EXPECT_EQ(lock, nullptr);
}

TEST(CriticalSectionGuard, HoldsTheLockForItsLife) {
    CriticalSection lock;
    {
        const CriticalSectionGuard guard(lock);
        EXPECT_FALSE(isFree(lock));
    }
    EXPECT_TRUE(isFree(lock));
    EXPECT_FALSE(lock.isLocked());
}

TEST(CriticalSectionGuard, AThrownIntLeavesTheLockFree) {
    CriticalSection lock;
    try {
        const CriticalSectionGuard guard(lock);
        throw -6000;
    } catch (int code) {
        EXPECT_EQ(code, -6000);
    }
    EXPECT_TRUE(isFree(lock));
}

TEST(CriticalSectionGuard, AnyOtherExceptionLeavesTheLockFree) {
    CriticalSection lock;
    EXPECT_THROW(
        {
            const CriticalSectionGuard guard(lock);
            throw std::runtime_error("any");
        },
        std::runtime_error);
    EXPECT_TRUE(isFree(lock));
}

TEST(CriticalSectionGuard, TheInnerOfTwoUnlocksAndTheOuterDoesNothing) {
    CriticalSection lock;
    const CriticalSectionGuard outer(lock);
    {
        const CriticalSectionGuard inner(lock);
        EXPECT_FALSE(isFree(lock));
    }
    EXPECT_TRUE(isFree(lock));
    EXPECT_FALSE(lock.isLocked());
}

TEST(CriticalSectionGuard, SerialisesManyThreads) {
    CriticalSection lock;
    int count = 0;
    onThreads(4, [&] {
        for (int i = 0; i < 1000; ++i) {
            const CriticalSectionGuard guard(lock);
            ++count;
        }
    });
    EXPECT_EQ(count, 4000);
}

TEST(RecursiveMutexGuard, InsideAnotherDoesNotBlockAndTheCountReturnsToZero) {
    RecursiveMutex mutex;
    EXPECT_EQ(mutex.holdCount(), 0);
    {
        const RecursiveMutexGuard outer(mutex);
        EXPECT_EQ(mutex.holdCount(), 1);
        {
            const RecursiveMutexGuard inner(mutex);
            EXPECT_EQ(mutex.holdCount(), 2);
        }
        EXPECT_EQ(mutex.holdCount(), 1);
    }
    EXPECT_EQ(mutex.holdCount(), 0);
}

TEST(RecursiveMutexGuard, SerialisesManyThreads) {
    RecursiveMutex mutex;
    int count = 0;
    onThreads(4, [&] {
        for (int i = 0; i < 1000; ++i) {
            const RecursiveMutexGuard outer(mutex);
            const RecursiveMutexGuard inner(mutex);
            ++count;
        }
    });
    EXPECT_EQ(count, 4000);
    EXPECT_EQ(mutex.holdCount(), 0);
}

TEST(ReadWriteLockGuard, LetsReadersInTogether) {
    ReadWriteLock lock;
    const ReadWriteLockGuard first(lock, ReadWriteLockGuard::Mode::Reading);
    bool entered = false;
    std::thread([&] {
        const ReadWriteLockGuard second(lock, ReadWriteLockGuard::Mode::Reading);
        entered = true;
    }).join();
    EXPECT_TRUE(entered);
}

TEST(ReadWriteLockGuard, KeepsReadersFromAHalfDoneWrite) {
    ReadWriteLock lock;
    int first = 0;
    int second = 0;
    std::atomic<int> torn{0};
    std::thread writer([&] {
        for (int i = 0; i < 2000; ++i) {
            const ReadWriteLockGuard guard(lock, ReadWriteLockGuard::Mode::Writing);
            ++first;
            ++second;
        }
    });
    onThreads(2, [&] {
        for (int i = 0; i < 2000; ++i) {
            const ReadWriteLockGuard guard(lock, ReadWriteLockGuard::Mode::Reading);
            torn += first == second ? 0 : 1;
        }
    });
    writer.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(second, 2000);
}

TEST(SpinLockVariableGuard, IsTakenOnceByItsOwner) {
    SpinLockVariable variable;
    {
        const SpinLockVariableGuard outer(variable);
        {
            const SpinLockVariableGuard inner(variable);
            EXPECT_EQ(variable.taken, 1);
        }
        EXPECT_EQ(variable.taken, 1);
        EXPECT_EQ(variable.owner, pthread_self());
    }
    EXPECT_EQ(variable.taken, 0);
    EXPECT_EQ(variable.owner, pthread_t{});
}

TEST(SpinLockVariableGuard, SerialisesManyThreads) {
    SpinLockVariable variable;
    int count = 0;
    onThreads(4, [&] {
        for (int i = 0; i < 1000; ++i) {
            const SpinLockVariableGuard guard(variable);
            ++count;
        }
    });
    EXPECT_EQ(count, 4000);
}

}  // namespace
}  // namespace orlo::templates::platform
