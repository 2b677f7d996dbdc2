#include "cli/Terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <sstream>

namespace quillon::cli {
namespace {

TEST(Terminal, ColumnsAreAsWideAsTheirWidestCell) {
    std::ostringstream out;
    printRows(out, {{"a", "b"}, {"long", "c"}});
    EXPECT_EQ(out.str(), "a     b\nlong  c\n");
}

TEST(Terminal, ACharacterOfTwoBytesTakesOnePlace) {
    std::ostringstream out;
    printRows(out, {{"\xC2\xB5s", "b"}, {"ms", "c"}});
    EXPECT_EQ(out.str(), "\xC2\xB5s  b\nms  c\n");
}

TEST(Terminal, NoBlanksAreLeftAtTheEndOfALine) {
    std::ostringstream out;
    printRows(out, {{"a", ""}, {"b", "c"}}, "  ");
    EXPECT_EQ(out.str(), "  a\n  b  c\n");
}

/// Both ends of a terminal whose screen is this test.
class Screen {
public:
    Screen() : far_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (grantpt(far_) == 0 && unlockpt(far_) == 0) {
            near_ = open(ptsname(far_), O_RDWR | O_NOCTTY | O_CLOEXEC);
        }
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() {
        close(near_);
        close(far_);
    }
    int near() const { return near_; }

    /// Runs `look` in a process that has the terminal in its foreground, lets the screen answer the request for its
    /// attributes, and tells what `look` said; nothing if the request was not the one for attributes.
    std::optional<bool> ask(const std::string& answer, bool (*look)(int descriptor)) const {
        const pid_t child = fork();
        if (child == 0) {
            setsid();
            ioctl(near_, TIOCSCTTY, 0);
            _exit(look(near_) ? 1 : 0);
        }
        std::string request(3, ' ');
        const bool asked = read(far_, request.data(), request.size()) == 3 && request == "\033[c";
        const bool answered = write(far_, answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
        int state = 0;
        waitpid(child, &state, 0);
        return asked && answered && WIFEXITED(state) ? std::optional(WEXITSTATUS(state) == 1) : std::nullopt;
    }

private:
    int far_;
    int near_ = -1;
};

bool lookForLong(int descriptor) {
    return drawsSixels(descriptor, std::chrono::seconds(20));
}

bool lookForAMoment(int descriptor) {
    return drawsSixels(descriptor, std::chrono::milliseconds(20));
}

TEST(Terminal, SixelGraphicsAreAmongItsAttributes) {
    const Screen screen;
    EXPECT_EQ(screen.ask("\033[?62;4;22c", lookForLong), true);
    EXPECT_EQ(screen.ask("\033[?62;22;4c", lookForLong), true);
    EXPECT_EQ(screen.ask("\033[?62;22c", lookForLong), false);
    EXPECT_EQ(screen.ask("\033[?4;14;24c", lookForLong), false) << "the first number is its class";
}

TEST(Terminal, WithoutAnAnswerThereAreNoSixelGraphics) {
    const Screen screen;
    EXPECT_EQ(screen.ask("", lookForAMoment), false);
    EXPECT_EQ(screen.ask("\033[?62;4", lookForAMoment), false) << "the answer has no end";
}

TEST(Terminal, ItsModeIsTheSameAfterTheQuestion) {
    const Screen screen;
    termios before{};
    termios after{};
    tcgetattr(screen.near(), &before);
    EXPECT_EQ(screen.ask("", lookForAMoment), false);
    tcgetattr(screen.near(), &after);
    EXPECT_EQ(before.c_lflag, after.c_lflag);
    EXPECT_EQ(before.c_cc[VMIN], after.c_cc[VMIN]);
}

TEST(Terminal, WhatIsNoTerminalDrawsNoSixelGraphics) {
    EXPECT_FALSE(drawsSixels(-1, std::chrono::seconds(20)));
    const int file = open("/dev/null", O_RDWR | O_CLOEXEC);
    EXPECT_FALSE(drawsSixels(file, std::chrono::seconds(20)));
    close(file);
}

TEST(Terminal, ATerminalOfOthersIsNotAsked) {
    const Screen screen;
    EXPECT_FALSE(drawsSixels(screen.near(), std::chrono::seconds(20)));
}

TEST(Terminal, ItTellsItsSize) {
    const Screen screen;
    const winsize size{50, 132, 0, 0};
    ASSERT_EQ(ioctl(screen.near(), TIOCSWINSZ, &size), 0);
    EXPECT_EQ(terminalSize(screen.near()).columns, 132U);
    EXPECT_EQ(terminalSize(screen.near()).rows, 50U);
    EXPECT_EQ(terminalSize(-1).columns, 80U);
    EXPECT_EQ(terminalSize(-1).rows, 24U);
}

TEST(Terminal, ThereIsNoColourWithoutATerminal) {
    EXPECT_EQ(Painter(-1).paint(Style::Bad, "refused"), "refused");
}

}  // namespace
}  // namespace quillon::cli
