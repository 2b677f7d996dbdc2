#include "support/Logger.h"

#include <gtest/gtest.h>

#include <locale>
#include <string>
#include <thread>

#include "support/Logging.h"
#include "tests/support/RecordingDispatcher.h"

namespace orlo::tools::logging {
namespace {

using quillon::test::RecordingDispatcher;

TEST(Logger, PassesItsOwnLevelAndAllAbove) {
    const Logger logger(1, 4);
    EXPECT_FALSE(logger.isEnabled(3));
    EXPECT_TRUE(logger.isEnabled(4));
    EXPECT_TRUE(logger.isEnabled(5));
}

TEST(Logger, IsSilentAtLevelSeven) {
    const Logger logger(1, SilentLevel);
    EXPECT_FALSE(logger.isEnabled(UnresolvedLevel));
    EXPECT_FALSE(logger.isEnabled(FailedCallLevel));
    EXPECT_FALSE(logger.isEnabled(LinkLevel));
    EXPECT_TRUE(logger.isEnabled(7));
}

TEST(Logger, FollowsANewLevel) {
    Logger logger(1, 7);
    logger.setLevel(5);
    EXPECT_TRUE(logger.isEnabled(5));
    EXPECT_FALSE(logger.isEnabled(4));
}

TEST(Logger, HoldsAThreadsMessagesBackAndTellsWhetherTheyPassedBefore) {
    Logger logger(1, 4);
    EXPECT_TRUE(logger.setThreadEnabled(true));
    EXPECT_TRUE(logger.setThreadEnabled(false));
    EXPECT_FALSE(logger.isEnabled(6));
    EXPECT_FALSE(logger.setThreadEnabled(false));
    EXPECT_FALSE(logger.setThreadEnabled(true));
    EXPECT_TRUE(logger.isEnabled(6));
}

TEST(Logger, HoldsBackTheCallingThreadOnly) {
    Logger logger(1, 4);
    logger.setThreadEnabled(false);
    bool passesElsewhere = false;
    std::thread([&] { passesElsewhere = logger.isEnabled(4); }).join();
    EXPECT_TRUE(passesElsewhere);
}

class Messages : public testing::Test {
protected:
    Logger& logger(int level) { return *dispatcher.logger("orlo.messages", level); }

    RecordingDispatcher dispatcher;
};

TEST_F(Messages, CarryTheThreadBeforeTheText) {
    writeMessage(logger(5), 5, [](std::ostream& line) { line << "result = " << -12; });
    EXPECT_EQ(dispatcher.texts(),
              std::vector<std::string>{"5 thread-id=" + std::to_string(pthread_self()) + "|result = -12"});
}

TEST_F(Messages, HaveTheirTwoLastArgumentsAtZero) {
    writeMessage(logger(4), 6, [](std::ostream& line) { line << "text"; });
    ASSERT_EQ(dispatcher.messages().size(), 1U);
    EXPECT_EQ(dispatcher.messages()[0].extra, 0);
    EXPECT_EQ(dispatcher.messages()[0].context, nullptr);
}

TEST_F(Messages, AreNotEvenBuiltBelowTheLevel) {
    bool built = false;
    writeMessage(logger(6), 5, [&](std::ostream&) { built = true; });
    EXPECT_FALSE(built);
    EXPECT_TRUE(dispatcher.texts().empty());
}

TEST_F(Messages, LoseWhatFollowsANullText) {
    const char* const missing = nullptr;
    writeMessage(logger(4), 6, [=](std::ostream& line) { line << "error opening dll '" << missing << "'"; });
    EXPECT_EQ(dispatcher.texts(),
              std::vector<std::string>{"6 thread-id=" + std::to_string(pthread_self()) + "|error opening dll '"});
}

struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_F(Messages, KeepTheirNumbersPlainInAnyLocaleOfTheHost) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    writeMessage(logger(4), 4, [](std::ostream& line) { line << 1000000; });
    std::locale::global(before);
    EXPECT_EQ(dispatcher.texts(),
              std::vector<std::string>{"4 thread-id=" + std::to_string(pthread_self()) + "|1000000"});
}

}  // namespace
}  // namespace orlo::tools::logging
