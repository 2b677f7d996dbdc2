#pragma once

#include <csignal>

#include <chrono>

namespace quillon::cli {

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
