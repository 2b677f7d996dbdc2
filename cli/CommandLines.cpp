#include "cli/CommandLines.h"

#include "cli/CommandLine.h"

namespace quillon::cli {

namespace {

/// Takes a line apart, a character at a time.
class Splitter {
public:
    explicit Splitter(std::string_view line) : line_(line) {}

    std::vector<std::string> split() {
        while (place_ < line_.size() && !(line_[place_] == '#' && !inWord_)) {
            take(line_[place_++]);
        }
        if (quote_ != 0) {
            throw UsageError(std::string("a quote has no end: ") + quote_);
        }
        endWord();
        return words_;
    }

private:
    void take(char character) {
        if (quote_ != 0 ? character == quote_ : character == '\'' || character == '"') {
            quote_ = quote_ != 0 ? '\0' : character;
            inWord_ = true;
        } else if (character == '\\' && quote_ != '\'' && place_ < line_.size()) {
            add(line_[place_++]);
        } else if (quote_ == 0 && (character == ' ' || character == '\t' || character == '\r')) {
            endWord();
        } else {
            add(character);
        }
    }
    void add(char character) {
        word_ += character;
        inWord_ = true;
    }
    void endWord() {
        if (inWord_) {
            words_.push_back(std::exchange(word_, {}));
        }
        inWord_ = false;
    }

    std::string_view line_;
    std::size_t place_ = 0;
    char quote_ = 0;  ///< the one that is open
    bool inWord_ = false;
    std::string word_;
    std::vector<std::string> words_;
};

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

}  // namespace

std::vector<std::string> splitLine(std::string_view line) {
    return Splitter(line).split();
}

LineRunner::LineRunner(Session& session, Console& console) : session_(session), console_(console) {
    console_.jsonPerLine = true;
    if (!session_.lasts()) {
        session_.enableDirectRegisterAccess();  // for its verb, once and for all
    }
    session_.history().begin(session_.applet(), session_.board());
}

int LineRunner::run(const std::string& line) {
    std::vector<std::string> words;
    try {
        words = splitLine(line);
    } catch (const UsageError& error) {
        return report(session_.options(), console_, Usage, error.what());
    }
    if (!words.empty() && words.front() == "quillon") {
        words.erase(words.begin());
    }
    if (words.empty()) {
        return Done;
    }
    if (words.size() == 1 && (words.front() == "quit" || words.front() == "exit")) {
        ended_ = true;
        return Done;
    }
    const std::string command = joined(words);
    const int status = runCommand(std::move(words), console_, session_);
    console_.out << std::flush;
    session_.history().note(session_.applet(), session_.board(), command);
    return status;
}

}  // namespace quillon::cli
