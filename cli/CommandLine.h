#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace quillon::cli {

/// Runs the command with its words, the program's name not among them. Answers the exit status (ExitStatus).
int runCommand(std::vector<std::string> words, std::ostream& out, std::ostream& err);

}  // namespace quillon::cli
