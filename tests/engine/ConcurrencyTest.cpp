// Several threads on one wrapper, and what does not wait for a parameter call.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/support/CapturedLog.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::Each;

/// Runs `body(number)` on eight threads at once.
template <class Body>
void onEightThreads(Body body) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back(body, number);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(Threads, SetAndReadOneWrapper) {
    BuiltApplet built;
    built.board.record(false);
    std::atomic<int> failures{0};
    onEightThreads([&](int number) {
        for (int i = 1; i <= 50; ++i) {
            const int width = 4 * (1 + number * 50 + i);
            failures += built.applet.setInt(FG_WIDTH, width) == 0 ? 0 : 1;
            std::int32_t read = 0;
            failures += built.applet.getInt(FG_WIDTH, read) == 0 && read % 4 == 0 ? 0 : 1;
            failures += built.applet.setDouble(FG_LINEPERIODE, 100.0 + number) == 0 ? 0 : 1;
            failures += built.applet.parameterId("FG_WIDTH") == 100 ? 0 : 1;
            failures += built.applet.eventMask("FG_OVERFLOW_CAM0") == 1 ? 0 : 1;
            failures += built.applet.status(0, 0, 0, nullptr) == 0 ? 0 : 1;
            failures += built.applet.parameterNameAt(0) == "FG_TIMEOUT" ? 0 : 1;
        }
    });
    EXPECT_EQ(failures, 0);
    // The writes of one set stay together: what the design holds is the last width that was remembered.
    EXPECT_EQ(built.board.integer("Device1_Process0_Buffer_0_XLength"), built.applet.readInt(FG_WIDTH));
}

TEST(Threads, ReadAndReleaseStringsOfOneWrapper) {
    BuiltApplet built;
    built.board.record(false);
    std::atomic<int> failures{0};
    onEightThreads([&](int) {
        for (int i = 0; i < 500; ++i) {
            char* texts[2] = {};
            failures += built.applet.getWithType(FG_TAV_FILE, &texts[0], 0, FgTypeString) == 0 ? 0 : 1;
            failures += built.applet.getWithType(FG_LUT_CUSTOM_FILE, &texts[1], 0, FgTypeString) == 0 ? 0 : 1;
            failures += std::string(texts[0]) == "Quillon.tav" && std::string(texts[1]).empty() ? 0 : 1;
            for (char* const text : texts) {
                failures += built.applet.freeText(24108, text, 0, FgTypeString) == 0 ? 0 : 1;
            }
            failures += built.applet.freeText(24108, texts, 0, FgTypeString) == -2070 ? 0 : 1;
            failures += built.applet.readText(FG_TAV_FILE) == "Quillon.tav" ? 0 : 1;
        }
    });
    EXPECT_EQ(failures, 0);
}

TEST(Threads, AreRefusedAndLogOnOneWrapper) {
    const test::CapturedLog log;
    BuiltApplet built;
    onEightThreads([&](int) {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(built.applet.setInt(FG_PIXELDEPTH, 1), -12);
            EXPECT_EQ(built.applet.setInt(FG_WIDTH, 3), -6000);
        }
    });
    EXPECT_EQ(log.lines().size(), 160U);
    EXPECT_THAT(log.lines(),
                Each("4 orlo.wrapper.Quillon trying to set read-only SDK parameter 'FG_PIXELDEPTH' on process 0!"));
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
}

TEST(Threads, OpenUseAndCloseWrappersOfTheirOwn) {
    std::atomic<int> failures{0};
    onEightThreads([&](int number) {
        BuiltApplet built;
        const int width = 1024 + 4 * number;
        failures += built.applet.setInt(FG_WIDTH, width) == 0 && built.applet.readInt(FG_WIDTH) == width ? 0 : 1;
        failures += built.board.integer("Device1_Process0_Buffer_0_XLength") == width ? 0 : 1;
    });
    EXPECT_EQ(failures, 0);
}

/// A parameter call that logs, and so stands still in the log's hook with the lock held.
class HeldLock : public ::testing::Test {
protected:
    /// Runs `inside` while another call holds the lock.
    template <class Inside>
    void whileHeld(Inside inside) {
        log.atEveryMessage(inside);
        EXPECT_EQ(built.applet.setInt(FG_PIXELDEPTH, 1), -12);
        log.atEveryMessage(nullptr);
    }

    test::CapturedLog log;
    BuiltApplet built;
    const Functions& f = built.applet.functions();
    QuillonHandle handle = built.applet.handle();
};

TEST_F(HeldLock, KeepsAParameterCallWaiting) {
    std::vector<std::string> order;
    std::mutex mutex;
    const auto note = [&](const char* what) {
        const std::lock_guard guard(mutex);
        order.emplace_back(what);
    };
    std::thread other;
    std::atomic<bool> begun{false};
    whileHeld([&] {
        other = std::thread([&] {
            begun = true;
            std::int32_t width = 0;
            EXPECT_EQ(built.applet.getInt(FG_WIDTH, width), 0);
            note("second call");
        });
        while (!begun) {
            std::this_thread::yield();
        }
        for (int i = 0; i < 1000; ++i) {
            std::this_thread::yield();  // room for a call that would not wait
        }
        note("first call");
    });
    other.join();
    EXPECT_EQ(order, (std::vector<std::string>{"first call", "second call"}));
}

TEST_F(HeldLock, KeepsNeitherTablesNorForwardersNorTheLastErrorWaiting) {
    std::vector<int> results;
    whileHeld([&] {
        // Each would wait for ever if it took the lock.
        std::thread([&] {
            results.push_back(f.Fg_getAppletId(handle, nullptr));
            results.push_back(f.Fg_getNrOfParameter(handle));
            results.push_back(f.Fg_getParameterIdByName(handle, "FG_WIDTH"));
            results.push_back(f.Fg_getLastErrorNumber(handle));
            results.push_back(static_cast<int>(f.Fg_getEventMask(handle, "FG_OVERFLOW_CAM0")));
            results.push_back(f.Fg_freeParameterStringWithType(handle, FG_TAV_FILE, nullptr, 0, FgTypeString));
        }).join();
    });
    EXPECT_EQ(results, (std::vector<int>{1874, PositionCount, 100, 0, 1, -2070}));
}

TEST_F(HeldLock, KeepsANullValueFromWaiting) {
    int result = 0;
    whileHeld(
        [&] { std::thread([&] { result = built.applet.getWithType(FG_WIDTH, nullptr, 0, FgTypeInt32); }).join(); });
    EXPECT_EQ(result, -2070);
}

TEST_F(HeldLock, KeepsNoOtherWrapperWaiting) {
    BuiltApplet other;
    int result = 1;
    whileHeld([&] { std::thread([&] { result = other.applet.setInt(FG_WIDTH, 2048); }).join(); });
    EXPECT_EQ(result, 0);
}

TEST_F(HeldLock, IsFreeAfterARefusal) {
    whileHeld([] {});
    std::int32_t width = 0;
    int result = 1;
    std::thread([&] { result = built.applet.getInt(FG_WIDTH, width); }).join();
    EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace quillon::client
