#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::cli {

/// What may stand where the cursor is.
struct Candidates {
    std::vector<std::string> words;  ///< in place of the word under the cursor
    bool areFiles = false;           ///< file names besides
    std::string behind = " ";        ///< what comes behind the only one
};

/// Reads lines from standard input. Where that is a terminal lines can be edited, fetched back and completed.
class LineEditor {
public:
    /// What may stand behind the words of a line, given those and the beginning of the next.
    using Completer = std::function<Candidates(const std::vector<std::string>& words, const std::string& beginning)>;

    /// `history`: the file that lines are fetched from and kept in; a folder that lacks is made.
    LineEditor(std::filesystem::path history, Completer completer);
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;
    ~LineEditor();

    bool isInteractive() const { return interactive_; }
    /// The next line, without its end; nothing at the end of the input. Ctrl-C gives an empty one.
    std::optional<std::string> read(const std::string& prompt);

private:
    std::filesystem::path history_;
    bool interactive_;
};

/// Where a program keeps the lines of its user: the folder of the environment's XDG_STATE_HOME, or ~/.local/state.
/// Empty without a home.
std::filesystem::path historyFile();

}  // namespace quillon::cli
