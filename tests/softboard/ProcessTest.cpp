#include <dlfcn.h>

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

#include "tests/softboard/OpenBoard.h"

namespace {

using Process = OpenBoard;

TEST_F(Process, CountsTheCallsOfEveryFunction) {
    const uint64_t before = softboard_call_count("Fg_getParameterWithType");
    std::uint32_t value = 0;
    get(XLength, value, 2);
    get(XLength, value, 2);
    EXPECT_EQ(softboard_call_count("Fg_getParameterWithType"), before + 2);
    EXPECT_EQ(softboard_call_count("no such function"), 0U);
    EXPECT_EQ(softboard_call_count(nullptr), 0U);
}

TEST_F(Process, KnowsWhatIsAlive) {
    const uint64_t designs = softboard_live_designs();
    const uint64_t handles = softboard_live_handles();
    fpga_design* const second = loadDesignImage();
    Fg_Struct* const slave = Fg_InitHandleSlaveAware("Quillon.tav", board, second, 1);
    EXPECT_EQ(softboard_live_designs(), designs + 1);
    EXPECT_EQ(softboard_live_handles(), handles + 1);
    Fg_FreeGrabber(slave);
    TavUnloadTavFile(second);
    EXPECT_EQ(softboard_live_designs(), designs);
    EXPECT_EQ(softboard_live_handles(), handles);
}

TEST_F(Process, TakesAccessesFromSeveralThreadsAtOnce) {
    constexpr int AccessesPerThread = 2000;
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            const int length = id(XLength);
            for (std::uint32_t value = 0; value < AccessesPerThread; ++value) {
                failures += Fg_setParameterWithType(fg, length, &value, 0, 2) != 0 ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(accesses().size(), 4U * AccessesPerThread);
}

// The sanitizers' run-time does not let a library be bound deeply.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Process, SharesItsStateWithALibraryThatIsOpenedLikeAnAppletDoes) {
    void* const library = dlopen(FGLIB5_FILE, RTLD_NOW | RTLD_DEEPBIND);
    ASSERT_NE(library, nullptr) << dlerror();
    using Set = int (*)(Fg_Struct*, int, const void*, unsigned, int);
    const auto setParameter = reinterpret_cast<Set>(dlsym(library, "Fg_setParameterWithType"));
    ASSERT_NE(setParameter, nullptr);
    const std::uint32_t value = 256;
    EXPECT_EQ(setParameter(fg, id(XLength), &value, 0, 2), 0);
    EXPECT_STREQ(lastAccess().value, "256");
    dlclose(library);
}

TEST_F(Process, OffersEveryFunctionThatAnAppletLooksFor) {
    void* const library = dlopen(FGLIB5_FILE, RTLD_NOW | RTLD_DEEPBIND);
    ASSERT_NE(library, nullptr) << dlerror();
    for (const char* const name : {"Fg_getAppletId",
                                   "Fg_setParameter",
                                   "Fg_setParameterWithType",
                                   "Fg_getParameter",
                                   "Fg_getParameterWithType",
                                   "Fg_freeParameterStringWithType",
                                   "Fg_saveConfig",
                                   "Fg_loadConfig",
                                   "Fg_Acquire",
                                   "Fg_stopAcquire",
                                   "Fg_getLastPicNumberBlockingEx",
                                   "Fg_getLastPicNumberEx",
                                   "Fg_FreeGrabber",
                                   "Fg_getLastErrorNumber",
                                   "Fg_getStatusEx",
                                   "Fg_AcquireEx",
                                   "Fg_stopAcquireEx",
                                   "Fg_getParameterInfo",
                                   "Fg_AllocShading",
                                   "Fg_FreeShading",
                                   "Shad_SetSubValueLine",
                                   "Shad_SetMultValueLine",
                                   "Shad_SetFixedPatternNoiseLine",
                                   "Shad_GetMaxLine",
                                   "Shad_GetAccess",
                                   "Shad_FreeAccess",
                                   "Shad_WriteActLine",
                                   "Fg_InitHandleSlaveAware",
                                   "Fg_InitHandle",
                                   "Fg_getParameterIdByName"}) {
        EXPECT_NE(dlsym(library, name), nullptr) << name;
    }
    dlclose(library);
}
#endif

}  // namespace
