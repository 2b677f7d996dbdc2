#include "support/GuardedSingleton.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <thread>
#include <vector>

namespace orlo::templates::patterns {
namespace {

/// Every test has a class of its own: a singleton is made once in a process.
template <int Test>
class Counted : public GuardedSingleton<Counted<Test>> {
public:
    Counted() { ++made; }
    void initialize() override {
        ++initialized;
        seenWhileInitializing = &Counted::instance();
    }

    static inline std::atomic<int> made{0};
    static inline std::atomic<int> initialized{0};
    Counted* seenWhileInitializing = nullptr;
};

TEST(GuardedSingleton, IsMadeAndInitialisedAtTheFirstUse) {
    using Single = Counted<1>;
    EXPECT_EQ(Single::made, 0);
    Single& first = Single::instance();
    EXPECT_EQ(&Single::instance(), &first);
    EXPECT_EQ(Single::made, 1);
    EXPECT_EQ(Single::initialized, 1);
}

TEST(GuardedSingleton, MayUseItselfWhileItIsBeingInitialised) {
    Counted<2>& single = Counted<2>::instance();
    EXPECT_EQ(single.seenWhileInitializing, &single);
}

TEST(GuardedSingleton, IsOneObjectForManyFirstCallers) {
    using Single = Counted<3>;
    std::array<Single*, 8> seen{};
    std::vector<std::thread> threads;
    for (Single*& place : seen) {
        threads.emplace_back([&place] { place = &Single::instance(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<Single*>(seen.begin(), seen.end()).size(), 1U);
    EXPECT_EQ(Single::made, 1);
    EXPECT_EQ(Single::initialized, 1);
}

TEST(GuardedSingleton, GivesTheAddressOfItsPublishedPointer) {
    using Single = Counted<4>;
    Single& single = Single::instance();
    EXPECT_EQ(static_cast<std::atomic<Single*>*>(single.instancePointer())->load(), &single);
}

TEST(GuardedSingleton, IsReleasedByNobodySinceThereIsNoList) {
    EXPECT_EQ(GuardedSingletonBase::releaseList(), nullptr);
    Counted<5>::instance();
    EXPECT_EQ(GuardedSingletonBase::releaseList(), nullptr);
}

TEST(GuardedSingleton, JoinsTheListThatAnotherMade) {
    std::vector<GuardedSingletonBase*> list;
    GuardedSingletonBase::releaseList() = &list;
    GuardedSingletonBase* const single = &Counted<6>::instance();
    GuardedSingletonBase::releaseList() = nullptr;
    EXPECT_EQ(list, std::vector<GuardedSingletonBase*>{single});
}

}  // namespace
}  // namespace orlo::templates::patterns
