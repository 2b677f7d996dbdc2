#include "support/FgLog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillon {
namespace {

namespace fs = std::filesystem;

class FgLog : public testing::Test {
protected:
    void SetUp() override { log.attach(std::fopen(name.c_str(), "w")); }
    void TearDown() override {
        log.CloseLogFile();
        fs::remove(name);
    }

    /// What has reached the file by now; what is not flushed is not there.
    std::string written() const {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string name = (fs::temp_directory_path() / ("quillon-fglog-" + std::to_string(getpid()))).string();
    Fg_Log log{nullptr};
};

TEST_F(FgLog, ErrorIsOneFlushedLine) {
    log.Error("no board");
    EXPECT_EQ(written(), "lumaframeIV::Error >> no board;\n");
}

TEST_F(FgLog, InfoWithANumberIsOneFlushedLine) {
    log.Info("lines", -7);
    EXPECT_EQ(written(), "lumaframeIV::Info >> lines >> -7;\n");
}

TEST_F(FgLog, ErrorIntNamesPlaceTextAndNumber) {
    log.ErrorInt("Fg_Init", "code", -2031);
    EXPECT_EQ(written(), "lumaframeIV::Error >> Fg_Init >> code >> -2031;\n");
}

TEST_F(FgLog, ErrorDoublePrintsTwelveSignificantDigits) {
    log.ErrorDouble("Fg_Set", "period", 1234567.891234);
    log.ErrorDouble("Fg_Set", "period", 0.5);
    EXPECT_EQ(written(),
              "lumaframeIV::Error >> Fg_Set >> period >> 1234567.89123;\n"
              "lumaframeIV::Error >> Fg_Set >> period >> 0.5;\n");
}

TEST_F(FgLog, UsrDbgPrintsFormatAndArgumentsAndDoesNotFlush) {
    log.UsrDbg("%s=%d|", "x", 3);
    EXPECT_EQ(written(), "");
    log.CloseLogFile();
    EXPECT_EQ(written(), "x=3|");
}

TEST_F(FgLog, FuncAndInfoWithoutANumberWriteNothing) {
    log.Func("Fg_Init");
    log.Info("text");
    log.CloseLogFile();
    EXPECT_EQ(written(), "");
}

TEST_F(FgLog, TheWelcomeIsAFramedNoticeWithContentsAndTime) {
    const std::string rule(73, '-');
    log.WriteWelcome();
    const std::string text = written();
    const std::string head = rule + "\n";
    const std::string contents = "\nContents: Log details for lumaframe Dll\n";
    ASSERT_EQ(text.substr(0, head.size()), head);
    const std::size_t noticeEnd = text.find(contents);
    ASSERT_NE(noticeEnd, std::string::npos);
    EXPECT_EQ(text.find('\n', head.size()), noticeEnd);  // the notice is one line
    const std::string rest = text.substr(noticeEnd + contents.size());
    ASSERT_EQ(rest.size(), 25 + rule.size() + 1);
    EXPECT_EQ(rest[24], '\n');
    EXPECT_EQ(rest.substr(25), rule + "\n");
}

TEST_F(FgLog, AClosedLogWritesNothing) {
    log.Error("first");
    log.CloseLogFile();
    log.Error("second");
    log.ErrorInt("a", "b", 1);
    log.ErrorDouble("a", "b", 1.0);
    log.Info("c", 1);
    log.UsrDbg("%d", 1);
    log.WriteWelcome();
    log.CloseLogFile();
    EXPECT_EQ(written(), "lumaframeIV::Error >> first;\n");
}

TEST(FgLogFile, ALogMadeWithAFileNameOpensNoFile) {
    const fs::path name = fs::temp_directory_path() / ("quillon-fglog-none-" + std::to_string(getpid()));
    {
        Fg_Log log(name.c_str());
        log.OpenLogFile(name.c_str());
        log.Error("text");
        log.WriteWelcome();
    }
    EXPECT_FALSE(fs::exists(name));
}

TEST(FgLogFile, TheTimestampHasTwentyFourCharactersAndALineFeed) {
    const std::string stamp = Fg_Log::GetTimestamp();
    EXPECT_EQ(stamp.size(), 25U);
    EXPECT_EQ(stamp.back(), '\n');
    EXPECT_EQ(stamp[3], ' ');
    EXPECT_EQ(stamp[13], ':');
    EXPECT_EQ(stamp[16], ':');
}

}  // namespace
}  // namespace quillon
