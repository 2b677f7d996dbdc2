#pragma once

#include <csignal>

#include <chrono>

namespace quillon::cli {

/// The end of the terminal or of the system as a question: while one of these lives the signals SIGHUP and SIGTERM are
/// noted and end the wait for a key, so that what was asked for behind the last line is still done.
class Hangup {
public:
    Hangup();
    Hangup(const Hangup&) = delete;
    Hangup& operator=(const Hangup&) = delete;
    ~Hangup();

    static bool came();

private:
    struct sigaction previousHangup_ {};
    struct sigaction previousTermination_ {};
};

/// Ctrl-C as a question that a command asks when it suits it. While one of these lives the first Ctrl-C is only noted;
/// a second one, which nobody has asked for meanwhile, ends the program as ever. They may live within one another.
class Interrupt {
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    /// Whether it was pressed since the last forget(), or since the outermost began.
    static bool came();
    static void forget();
    /// Waits, but not on behind a Ctrl-C; says whether the whole time has passed.
    static bool wait(std::chrono::duration<double> time);

private:
    struct sigaction previous_ {};
};

}  // namespace quillon::cli
