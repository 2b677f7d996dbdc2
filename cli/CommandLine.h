#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cli/ExitStatus.h"
#include "cli/Refusals.h"
#include "cli/Verb.h"

namespace quillon::cli {

/// Runs the command with its words, the program's name not among them. Answers the exit status (ExitStatus).
int runCommand(std::vector<std::string> words, std::ostream& out, std::ostream& err);
/// The same on the board of a session that goes on.
int runCommand(std::vector<std::string> words, Console& console, Session& lasting);

/// Says why nothing came of a command, in words and, if asked, as JSON, with the refusal behind it if there is one.
/// Behind an answer that is no line for itself a second document would leave neither readable, and is left out. Answers
/// the status.
int report(const Options& options, Console& console, ExitStatus status, const std::string& message,
           const Refusal* refusal = nullptr);

}  // namespace quillon::cli
