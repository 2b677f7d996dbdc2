#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <regex>

#include "tests/gige/Programs.h"

namespace quillon::gige {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// Seconds of a stream in which no frame may get lost.
int secondsOfStream() {
    return std::getenv("QUILLON_LONG_TESTS") != nullptr ? 60 : 5;
}

/// Sanitizers make a device several times as slow.
#ifdef QUILLON_SANITIZED
constexpr bool Slow = true;
#else
constexpr bool Slow = false;
#endif

/// A count that arv-camera-test-0.8 tells at its end: "n_failures             = 0".
int countOf(const std::string& name, const std::string& told) {
    std::smatch found;
    if (!std::regex_search(told, found, std::regex(name + " *= ([0-9]+)"))) {
        ADD_FAILURE() << name << " is not told:\n" << told;
        return -1;
    }
    return std::stoi(found[1]);
}

class ArvCameraTest : public testing::Test {
protected:
    void SetUp() override { QUILLON_NEEDS("arv-camera-test-0.8", "aravis-tools-cli"); }

    /// Streams to a program of this user, and expects that each frame of the device has arrived whole.
    static void expectAllFrames(const std::string& user, const std::vector<std::string>& words, int framesPerSecond) {
        const Served served(words);
        const std::string told = run(user + "arv-camera-test-0.8 --duration " + std::to_string(secondsOfStream())).out;
        const int frames = countOf("n_completed_buffers", told);
        EXPECT_GT(frames, (secondsOfStream() - 1) * framesPerSecond * 9 / 10) << told;
        for (const char* const count :
             {"n_failures", "n_underruns", "n_timeouts", "n_aborted", "n_missing_frames", "n_size_mismatch_errors",
              "n_error_packets", "n_ignored_packets", "n_resend_ratio_reached"}) {
            EXPECT_EQ(countOf(count, told), 0) << count << '\n' << told;
        }
        ASSERT_TRUE(becomes([&] { return !served.controlled(); }));
        const Json state = served.state();
        EXPECT_EQ(state["lost"], 0);
        std::cout << frames << " frames, " << countOf("n_resent_packets", told) << " packets sent again\n";
        // One can be on its way when the stream ends.
        EXPECT_LE(state["frames"].get<int>() - frames, 1) << told;
    }
};

TEST_F(ArvCameraTest, TriesWhichPacketsArrive) {
    const Served served;
    const std::string told = run("arv-camera-test-0.8 -j always --duration 2").out;
    const int size = countOf("gv packet size", told);
    EXPECT_GT(size, 8000) << "the network takes more than the device sends";
    EXPECT_LE(size, 9000);
    EXPECT_EQ(countOf("n_failures", told), 0) << told;
}

TEST_F(ArvCameraTest, LosesNoFrame) {
    if (Slow) {
        expectAllFrames("", {"--scene", "bars"}, 4);
        return;
    }
    // 34 frames of 1.6 MB a second.
    expectAllFrames("", {"--set", "FG_LINEPERIODE=29.3", "--set", "FG_WIDTH=512", "--scene", "bars"}, 33);
}

// Such a program's socket is small, and what it misses while others have the processor is sent again.
TEST_F(ArvCameraTest, LosesNoFrameAsAnOrdinaryUser) {
    QUILLON_NEEDS("setpriv", "util-linux");
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    expectAllFrames("setpriv --reuid 65534 --regid 65534 --clear-groups ", {"--scene", "bars"}, 4);
}

TEST(ArvTest, FindsNothingThatFails) {
    QUILLON_NEEDS("arv-test-0.8", "aravis-tools");
    if (Slow) {
        GTEST_SKIP() << "it measures rates";
    }
    const Served served;
    const Outcome outcome = run("arv-test-0.8 -c " QUILLON_ARV_TEST_CONFIGURATION);
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    int tests = 0;
    for (const std::string& line : linesOf(outcome.out)) {
        if (std::regex_search(line, std::regex("^[A-Za-z]+:[A-Za-z]+ "))) {
            ++tests;
            EXPECT_THAT(line, ContainsRegex(" (SUCCESS|IGNORED)"));
        }
    }
    EXPECT_GE(tests, 19) << outcome.out << outcome.err;
    EXPECT_THAT(outcome.out, Not(HasSubstr("FAILURE")));
}

}  // namespace
}  // namespace quillon::gige
