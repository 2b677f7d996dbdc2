#include <csignal>
#include <cstring>
#include <iostream>

#include <unistd.h>

#include "cli/CommandLine.h"
#include "cli/ExitStatus.h"
#include "cli/StandardOutput.h"

int main(int argumentCount, char** arguments) {
    using namespace quillon::cli;
    // A reader that has gone and a file that may not grow are errors of a write, and end nothing before its time.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    occupyStandardDescriptors();
    StandardOutput output(STDOUT_FILENO);
    std::ostream out(&output);
    std::cerr.tie(&out);
    const int status = runCommand({arguments + 1, arguments + argumentCount}, out, std::cerr);
    out.flush();
    std::cerr.tie(nullptr);
    if (output.failure() == 0) {
        return status;
    }
    std::cerr << "quillon: standard output cannot be written: " << std::strerror(output.failure()) << '\n';
    return status == Done ? Refused : status;
}
