// quillon shell at a terminal.

#include <gmock/gmock.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

/// A person's hands and eyes at the terminal of a session.
class Terminal {
public:
    explicit Terminal(const std::filesystem::path& home, const std::string& save = "") {
        process_ = forkpty(&descriptor_, nullptr, nullptr, nullptr);
        if (process_ == 0) {
            setenv("TERM", "xterm", 1);
            setenv("XDG_STATE_HOME", home.c_str(), 1);
            execl(QUILLON_COMMAND, "quillon", "shell", save.empty() ? nullptr : "--save", save.c_str(), nullptr);
            _exit(127);
        }
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(descriptor_);
    }

    void type(const std::string& text) {
        EXPECT_EQ(write(descriptor_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    /// Reads until the text has come since the last time; says whether it came, within ten seconds.
    bool shows(const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (seen_.find(text) == std::string::npos && std::chrono::steady_clock::now() < end) {
            pollfd ready{descriptor_, POLLIN, 0};
            std::array<char, 4096> buffer{};
            const ssize_t count = poll(&ready, 1, 100) > 0 ? read(descriptor_, buffer.data(), buffer.size()) : 0;
            if (count < 0) {
                break;  // the other end is closed
            }
            seen_.append(buffer.data(), static_cast<std::size_t>(count));
        }
        const std::size_t place = seen_.find(text);
        if (place == std::string::npos) {
            ADD_FAILURE() << "\"" << text << "\" did not come, but: " << seen_;
            return false;
        }
        seen_.erase(0, place + text.size());
        return true;
    }
    /// Waits for the prompt, and until the editor has taken over the keyboard behind it.
    bool asks() {
        const auto isEdited = [this] {
            termios settings{};
            return tcgetattr(descriptor_, &settings) == 0 && (settings.c_lflag & ICANON) == 0;
        };
        return shows("quillon> ") && within10Seconds(isEdited);
    }
    void raise(int signal) const { kill(process_, signal); }
    /// The exit status, once the program has ended; -1 if a signal ended it.
    int status() {
        int status = 0;
        const auto hasEnded = [&] {
            process_ = process_ != 0 && waitpid(process_, &status, WNOHANG) == process_ ? 0 : process_;
            return process_ == 0;
        };
        if (!within10Seconds(hasEnded)) {
            ADD_FAILURE() << "the session goes on";
            return -1;
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    template <typename Condition>
    static bool within10Seconds(Condition holds) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!holds() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return holds();
    }

    int descriptor_ = -1;
    pid_t process_ = -1;
    std::string seen_;
};

TEST(LineEditor, CompletesFetchesBackAndEnds) {
    const Folder home;
    Terminal terminal(home.path());
    ASSERT_TRUE(terminal.asks());
    terminal.type("get fg_wid\t\n");
    ASSERT_TRUE(terminal.shows("FG_WIDTH = 1024 pixel"));
    ASSERT_TRUE(terminal.asks());
    terminal.type("\x1b[A\n");  // the line before
    ASSERT_TRUE(terminal.shows("FG_WIDTH = 1024 pixel"));
    terminal.type("quit\n");
    EXPECT_EQ(terminal.status(), 0);
    EXPECT_THAT(contentOf(home / "quillon/history"), HasSubstr("FG_WIDTH"));
}

TEST(LineEditor, FetchesBackLinesOfAnEarlierSession) {
    const Folder home;
    {
        Terminal terminal(home.path());
        ASSERT_TRUE(terminal.asks());
        terminal.type("get FG_HEIGHT\nquit\n");
        EXPECT_EQ(terminal.status(), 0);
    }
    Terminal terminal(home.path());
    ASSERT_TRUE(terminal.asks());
    terminal.type("\x1b[A\x1b[A\n");
    EXPECT_TRUE(terminal.shows("FG_HEIGHT = 1024 pixel"));
}

TEST(LineEditor, CtrlCEndsALineOrACommandAndNotTheSession) {
    const Folder home;
    Terminal terminal(home.path());
    ASSERT_TRUE(terminal.asks());
    terminal.type("get FG_HEI\x03");
    ASSERT_TRUE(terminal.asks());
    terminal.type("status --watch\n");
    ASSERT_TRUE(terminal.shows("Image trigger"));
    terminal.type("\x03");
    ASSERT_TRUE(terminal.asks());
    terminal.type("get FG_WIDTH\n");
    ASSERT_TRUE(terminal.shows("FG_WIDTH = 1024 pixel"));
    ASSERT_TRUE(terminal.asks());
    terminal.type("\x04");
    EXPECT_EQ(terminal.status(), 0);
}

TEST(LineEditor, ATerminalThatGoesLosesNothing) {
    const Folder home;
    for (const int signal : {SIGHUP, SIGTERM}) {
        const std::filesystem::path file = home / ("kept" + std::to_string(signal) + ".mcf");
        Terminal terminal(home.path(), file);
        ASSERT_TRUE(terminal.asks());
        terminal.type("set FG_WIDTH=2048\n");
        ASSERT_TRUE(terminal.shows("FG_WIDTH = 2048 pixel"));
        ASSERT_TRUE(terminal.asks());
        terminal.raise(signal);
        EXPECT_EQ(terminal.status(), 0);
        EXPECT_THAT(contentOf(file), HasSubstr("FG_WIDTH=2048;"));
    }
}

}  // namespace
}  // namespace quillon::cli::testing
