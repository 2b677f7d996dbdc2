#include <iostream>

#include "cli/CommandLine.h"

int main(int argumentCount, char** arguments) {
    return quillon::cli::runCommand({arguments + 1, arguments + argumentCount}, std::cout, std::cerr);
}
