#include "cli/Interrupt.h"

#include <algorithm>
#include <thread>

namespace quillon::cli {

namespace {

volatile std::sig_atomic_t presses = 0;
volatile std::sig_atomic_t hangups = 0;

extern "C" void noteHangup(int) {
    hangups = 1;
}

extern "C" void noteInterrupt(int signal) {
    if (presses != 0) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    presses = 1;
}

}  // namespace

Interrupt::Interrupt() {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART: a read from the terminal is left, too.
    sigaction(SIGINT, &action, &previous_);
    if (previous_.sa_handler == SIG_IGN) {
        sigaction(SIGINT, &previous_, nullptr);  // a shell's job in the background is not to be interrupted
    }
    if (previous_.sa_handler != noteInterrupt) {
        forget();
    }
}

Interrupt::~Interrupt() {
    sigaction(SIGINT, &previous_, nullptr);
}

bool Interrupt::came() {
    return presses != 0;
}

void Interrupt::forget() {
    presses = 0;
}

Hangup::Hangup() {
    hangups = 0;
    struct sigaction action {};
    action.sa_handler = noteHangup;
    sigemptyset(&action.sa_mask);
    sigaction(SIGHUP, &action, &previousHangup_);
    sigaction(SIGTERM, &action, &previousTermination_);
}

Hangup::~Hangup() {
    sigaction(SIGHUP, &previousHangup_, nullptr);
    sigaction(SIGTERM, &previousTermination_, nullptr);
}

bool Hangup::came() {
    return hangups != 0;
}

bool Interrupt::wait(std::chrono::duration<double> time) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::duration<double> slice = std::chrono::milliseconds(20);
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
    for (auto left = time; left.count() > 0 && !came() && !Hangup::came(); left = end - Clock::now()) {
        std::this_thread::sleep_for(std::min(left, slice));
    }
    return !came() && !Hangup::came();
}

}  // namespace quillon::cli
