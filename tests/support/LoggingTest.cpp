#include "support/Logging.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <set>
#include <thread>
#include <vector>

#include "tests/files/TemporaryFolder.h"
#include "tests/support/RecordingDispatcher.h"
#include "tests/support/SupportProbe.h"

namespace orlo::tools::logging {
namespace {

using quillon::test::RecordingDispatcher;
namespace fs = std::filesystem;

TEST(UnboundLogging, GivesTheSameSilentLoggerForEveryName) {
    Logging logging;
    Logger* const one = logging.getLogger("orlo.one");
    EXPECT_EQ(one, logging.getLogger("orlo.two"));
    EXPECT_FALSE(one->isEnabled(6));
    EXPECT_TRUE(one->isEnabled(7));
}

TEST(UnboundLogging, WritesNothingAndFailsNothing) {
    Logging logging;
    logging.attach(nullptr);
    logging.write(1, 6, "text", 0, nullptr);
    EXPECT_FALSE(logging.getLogger("orlo.one")->isEnabled(6));
}

TEST(BoundLogging, AttachesWithItselfAsTheContext) {
    const RecordingDispatcher dispatcher;
    EXPECT_EQ(RecordingDispatcher::attachedContext, &Logging::instance());
}

TEST(BoundLogging, AsksWithHandleAndLevelAtZero) {
    RecordingDispatcher dispatcher;
    dispatcher.logger("orlo.one", 5);
    EXPECT_EQ(dispatcher.handleBefore, 0U);
    EXPECT_EQ(dispatcher.levelBefore, 0);
}

TEST(BoundLogging, GivesOneLoggerForANameAskedTwice) {
    RecordingDispatcher dispatcher;
    Logger* const first = dispatcher.logger("orlo.one", 5);
    EXPECT_EQ(dispatcher.logger("orlo.one", 5), first);
    EXPECT_NE(dispatcher.logger("orlo.two", 5), first);
    EXPECT_EQ(dispatcher.requests, 3);
}

TEST(BoundLogging, SharesALoggerBetweenNamesWithOneHandle) {
    RecordingDispatcher dispatcher;
    Logger* const first = dispatcher.logger("orlo.one", 5);
    dispatcher.shareHandle("orlo.alias", "orlo.one");
    EXPECT_EQ(dispatcher.logger("orlo.alias", 4), first);
    EXPECT_FALSE(first->isEnabled(4));  // the level is that of the first name
}

TEST(BoundLogging, WritesWithTheLoggersHandle) {
    RecordingDispatcher dispatcher;
    int something = 0;
    dispatcher.logger("orlo.one", 5)->log(6, "text", 3, &something);
    ASSERT_EQ(dispatcher.messages().size(), 1U);
    EXPECT_EQ(dispatcher.messages()[0].handle, dispatcher.handleOf("orlo.one"));
    EXPECT_EQ(dispatcher.messages()[0].level, 6);
    EXPECT_EQ(dispatcher.messages()[0].text, "text");
    EXPECT_EQ(dispatcher.messages()[0].extra, 3);
    EXPECT_EQ(dispatcher.messages()[0].context, &something);
}

TEST(BoundLogging, TakesANewLevelFromTheDispatcher) {
    RecordingDispatcher dispatcher;
    Logger* const logger = dispatcher.logger("orlo.one", 7);
    RecordingDispatcher::onSetLevel(dispatcher.handleOf("orlo.one"), 4);
    EXPECT_TRUE(logger->isEnabled(4));
    EXPECT_FALSE(logger->isEnabled(3));
}

TEST(BoundLogging, IgnoresALevelForAnUnknownHandle) {
    RecordingDispatcher dispatcher;
    Logger* const logger = dispatcher.logger("orlo.one", 7);
    RecordingDispatcher::onSetLevel(99, 4);
    EXPECT_FALSE(logger->isEnabled(6));
}

TEST(DetachedLogging, GivesTheSilentLoggerAgainAndKeepsTheOthers) {
    RecordingDispatcher dispatcher;
    Logger* const before = dispatcher.logger("orlo.one", 4);
    RecordingDispatcher::onDetach();
    Logger* const after = Logging::instance().getLogger("orlo.one");
    EXPECT_NE(after, before);
    EXPECT_FALSE(after->isEnabled(6));
    EXPECT_EQ(after, Logging::instance().getLogger("orlo.two"));
    EXPECT_TRUE(before->isEnabled(4));  // messages are still built, and go nowhere
    before->log(6, "text", 0, nullptr);
    EXPECT_TRUE(dispatcher.messages().empty());
}

TEST(LoggingEnd, LeavesTheDispatcherWithItsContext) {
    RecordingDispatcher::detached.clear();
    Logging* const logging = new Logging;
    logging->attach(&RecordingDispatcher::descriptor);
    delete logging;
    EXPECT_EQ(RecordingDispatcher::detached, std::vector<void*>{logging});
}

TEST(LoggingEnd, LeavesNobodyWithoutADispatcher) {
    RecordingDispatcher::detached.clear();
    { const Logging logging; }
    EXPECT_TRUE(RecordingDispatcher::detached.empty());
}

TEST(BoundLogging, ServesManyThreadsAtOnce) {
    RecordingDispatcher dispatcher;
    std::array<Logger*, 8> seen{};
    std::vector<std::thread> threads;
    for (Logger*& place : seen) {
        threads.emplace_back([&place] {
            place = Logging::instance().getLogger("orlo.shared");
            for (int i = 0; i < 100; ++i) {
                place->setThreadEnabled(i % 2 == 0);
                writeMessage(*place, 5, [](std::ostream& line) { line << "text"; });
            }
        });
    }
    for (int level = 0; level < 100; ++level) {
        RecordingDispatcher::onSetLevel(dispatcher.handleOf("orlo.shared"), 4);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<Logger*>(seen.begin(), seen.end()).size(), 1U);
    EXPECT_EQ(dispatcher.messages().size(), 400U);
}

/// Copies of the probe, each of which binds to what lies in its own installation.
class DispatcherBinding : public quillon::TemporaryFolder {
protected:
    void SetUp() override {
        unsetenv("ORLODIR5_64");
        unsetenv("ORLODIR5");
    }

    void install(const char* dispatcher) const {
        fs::create_directories(folder / "lib64");
        fs::copy_file(dispatcher, folder / "lib64/libcommon-logging-dispatcher.so");
    }

    template <class Function>
    Function* probe(const char* directory, const char* name) const {
        fs::create_directories(folder / directory);
        const fs::path file = folder / directory / "libprobe.so";
        fs::copy_file(SUPPORT_PROBE, file, fs::copy_options::skip_existing);
        void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(library, nullptr) << dlerror();
        return reinterpret_cast<Function*>(dlsym(library, name));
    }
};

TEST_F(DispatcherBinding, FindsTheDispatcherOfItsInstallation) {
    install(FAKE_DISPATCHER);
    auto* const isEnabled = probe<decltype(probe_is_enabled)>("lib", "probe_is_enabled");
    EXPECT_EQ(isEnabled("a", 5), 1);
    EXPECT_EQ(isEnabled("a", 4), 0);
    auto* const logger = probe<decltype(probe_logger)>("lib", "probe_logger");
    EXPECT_EQ(logger("a"), logger("a"));
    EXPECT_NE(logger("a"), logger("b"));
}

TEST_F(DispatcherBinding, StaysSilentWithoutAnInstallation) {
    install(FAKE_DISPATCHER);
    auto* const isEnabled = probe<decltype(probe_is_enabled)>("applets", "probe_is_enabled");
    EXPECT_EQ(isEnabled("a", 6), 0);
    auto* const logger = probe<decltype(probe_logger)>("applets", "probe_logger");
    EXPECT_EQ(logger("a"), logger("b"));
}

TEST_F(DispatcherBinding, StaysSilentWithoutADispatcherInTheInstallation) {
    EXPECT_EQ(probe<decltype(probe_is_enabled)>("lib", "probe_is_enabled")("a", 6), 0);
}

TEST_F(DispatcherBinding, StaysSilentWithALibraryThatIsNoDispatcher) {
    install(SUPPORT_PROBE);
    EXPECT_EQ(probe<decltype(probe_is_enabled)>("lib", "probe_is_enabled")("a", 6), 0);
    auto* const logger = probe<decltype(probe_logger)>("lib", "probe_logger");
    EXPECT_EQ(logger("a"), logger("b"));
}

}  // namespace
}  // namespace orlo::tools::logging
