#include "cli/LineEditor.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iostream>
#include <system_error>

#include "cli/CommandLines.h"
#include "cli/Interrupt.h"

namespace quillon::cli {

namespace {

// The editor has one state for the whole program, and so has what it calls.
LineEditor::Completer completer;
std::vector<std::string> found;

/// The editor frees what it gets.
char* candidate(const char*, int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < found.size() ? strdup(found[place].c_str()) : nullptr;
}

char** complete(const char* beginning, int start, int) {
    rl_attempted_completion_over = 1;  // no files of the editor's own choice
    std::vector<std::string> words;
    try {
        words = splitLine(std::string_view(rl_line_buffer).substr(0, static_cast<std::size_t>(start)));
    } catch (const UsageError&) {
        return nullptr;  // within a quote
    }
    if (!words.empty() && words.front() == "quillon") {
        words.erase(words.begin());
    }
    Candidates candidates = completer(words, beginning);
    found = std::move(candidates.words);
    rl_completion_append_character =
        candidates.behind.empty() ? 0 : static_cast<unsigned char>(candidates.behind.front());
    return rl_completion_matches(beginning, candidate);
}

/// The next byte that is typed, or -1 for Ctrl-C and where there is no more. Ctrl-C is let through only while it waits,
/// so that none is missed.
int typedByte() {
    if (Hangup::came()) {
        return -1;
    }
    sigset_t waiting;
    pthread_sigmask(SIG_SETMASK, nullptr, &waiting);
    for (const int signal : {SIGINT, SIGHUP, SIGTERM}) {
        sigdelset(&waiting, signal);
    }
    pollfd ready{STDIN_FILENO, POLLIN, 0};
    while (ppoll(&ready, 1, nullptr, &waiting) < 0) {
        if (errno != EINTR || Interrupt::came() || Hangup::came()) {
            return -1;
        }
    }
    unsigned char byte = 0;
    return ::read(STDIN_FILENO, &byte, 1) == 1 ? byte : -1;
}

/// The editor wants a character, not a byte of one.
int typedCharacter(FILE*) {
    std::mbstate_t state{};
    for (;;) {
        const int byte = typedByte();
        if (byte < 0) {
            return -1;
        }
        const char part = static_cast<char>(byte);
        wchar_t character = 0;
        const std::size_t length = std::mbrtowc(&character, &part, 1, &state);
        if (length == static_cast<std::size_t>(-1)) {
            return '?';  // none of the terminal's encoding
        }
        if (length != static_cast<std::size_t>(-2)) {
            return static_cast<int>(character);
        }
    }
}

/// Keeps Ctrl-C back while it lives.
class HeldInterrupt {
public:
    HeldInterrupt() {
        sigset_t interrupt;
        sigemptyset(&interrupt);
        for (const int signal : {SIGINT, SIGHUP, SIGTERM}) {
            sigaddset(&interrupt, signal);
        }
        pthread_sigmask(SIG_BLOCK, &interrupt, &previous_);
    }
    HeldInterrupt(const HeldInterrupt&) = delete;
    HeldInterrupt& operator=(const HeldInterrupt&) = delete;
    ~HeldInterrupt() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }

private:
    sigset_t previous_{};
};

std::optional<std::string> readPlain() {
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

}  // namespace

LineEditor::LineEditor(std::filesystem::path history, Completer ofLine)
    : history_(std::move(history)), interactive_(isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0) {
    if (!interactive_) {
        return;
    }
    constexpr int kept = 1000;
    completer = std::move(ofLine);
    rl_readline_name = "quillon";
    std::setlocale(LC_CTYPE, "");  // what the terminal's bytes mean
    rl_catch_signals = 0;
    rl_getc_function = typedCharacter;
    rl_initialize();
    rl_attempted_completion_function = complete;
    rl_completer_word_break_characters = const_cast<char*>(" \t");
    using_history();
    stifle_history(kept);
    if (!history_.empty()) {
        read_history(history_.c_str());
    }
}

LineEditor::~LineEditor() {
    if (!interactive_ || history_.empty()) {
        return;
    }
    std::error_code ignored;  // without a place for it the history ends here
    std::filesystem::create_directories(history_.parent_path(), ignored);
    write_history(history_.c_str());
}

std::optional<std::string> LineEditor::read(const std::string& prompt) {
    if (!interactive_) {
        return readPlain();
    }
    Interrupt::forget();
    const HeldInterrupt held;
    char* const text = readline(prompt.c_str());
    if (text == nullptr) {
        std::cout << '\n';
        return Interrupt::came() ? std::optional(std::string()) : std::nullopt;
    }
    const std::string line(text);
    std::free(text);
    if (line.find_first_not_of(" \t") != std::string::npos) {
        add_history(line.c_str());
    }
    return line;
}

std::filesystem::path historyFile() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state != nullptr && *state == '/') {
        folder = state;
    } else if (home != nullptr && *home != '\0') {
        folder = std::filesystem::path(home) / ".local" / "state";
    }
    return folder.empty() ? folder : folder / "quillon" / "history";
}

}  // namespace quillon::cli
