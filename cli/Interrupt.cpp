#include "cli/Interrupt.h"

#include <algorithm>
#include <thread>

namespace quillon::cli {

namespace {

volatile std::sig_atomic_t presses = 0;

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

bool Interrupt::wait(std::chrono::duration<double> time) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::duration<double> slice = std::chrono::milliseconds(20);
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
    for (auto left = time; left.count() > 0 && !came(); left = end - Clock::now()) {
        std::this_thread::sleep_for(std::min(left, slice));
    }
    return !came();
}

}  // namespace quillon::cli
