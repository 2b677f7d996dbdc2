/// @file
/// Lines of words, as a session takes them from a person or a script.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Verb.h"

namespace quillon::cli {

/// The words of a line, taken apart as shells do: blanks part words, quotes and backslashes keep what they would part,
/// and a
/// "#" where a word begins makes the rest a comment. Throws UsageError for a quote without an end.
std::vector<std::string> splitLine(std::string_view line);

/// Runs lines as the command does its words, all on the board of one session. A refused line ends nothing.
class LineRunner {
public:
    /// `session`: the one that lasts while the runner lives; it is opened, with its configuration loaded.
    LineRunner(Session& session, Console& console);

    /// The exit status of the command in the line, which may begin with "quillon" or not; Done for none.
    int run(const std::string& line);
    /// True behind a line "quit" or "exit".
    bool hasEnded() const { return ended_; }

private:
    Session& session_;
    Console console_;
    bool ended_ = false;
};

}  // namespace quillon::cli
