#include <gmock/gmock.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <sstream>

#include "cli/Terminal.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// What a terminal of a width shows of a shell script, in which "$quillon" is the command; lines end in "\n".
std::string onTerminal(const std::string& script, unsigned short columns = 200) {
    const winsize size{40, columns, 0, 0};
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        setenv("TERM", "xterm", 1);
        unsetenv("COLUMNS");
        unsetenv("NO_COLOR");
        const std::string whole = "quillon=" QUILLON_COMMAND "\n" + script;
        execl("/bin/sh", "sh", "-c", whole.c_str(), nullptr);
        _exit(127);
    }
    std::string shown;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(terminal, bytes.data(), bytes.size())) > 0;) {
        shown.append(bytes.data(), static_cast<std::size_t>(count));
    }
    waitpid(child, nullptr, 0);
    close(terminal);
    std::erase(shown, '\r');
    return shown;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

MATCHER_P(FitsInto, columns, "") {
    // A single word may be longer.
    const std::string words = arg.substr(std::min(arg.find_first_not_of(' '), arg.size()));
    return displayWidth(arg) <= static_cast<std::size_t>(columns) || words.find(' ') == std::string::npos;
}

std::string wordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::string words;
    for (std::string word; stream >> word;) {
        words += word + " ";
    }
    return words;
}

TEST(Colour, ATerminalHasIt) {
    EXPECT_THAT(onTerminal("\"$quillon\" describe FG_WIDTH"), StartsWith("\033[1mFG_WIDTH\033[0m\n"));
    EXPECT_THAT(onTerminal("NO_COLOR= \"$quillon\" describe FG_WIDTH"), StartsWith("\033[1mFG_WIDTH\033[0m\n"));
}

TEST(Colour, NoColourAndAPlainTerminalHaveNone) {
    EXPECT_THAT(onTerminal("NO_COLOR=1 \"$quillon\" describe FG_WIDTH"), StartsWith("FG_WIDTH\n"));
    EXPECT_THAT(onTerminal("TERM=dumb \"$quillon\" describe FG_WIDTH"), StartsWith("FG_WIDTH\n"));
    EXPECT_THAT(onTerminal("TERM=dumb \"$quillon\" grab -n 2"), Not(HasSubstr("\033")));
}

TEST(Colour, WhatFindFindsIsMarked) {
    EXPECT_THAT(onTerminal("\"$quillon\" find periode", 400), StartsWith("FG_LINE\033[32mPERIODE\033[0m  "));
}

TEST(Width, ATableFoldsAndItsWordsDoNotBreak) {
    for (const char* words : {"list", "list --group ROI", "describe FG_XOFFSET", "info", "io", "events", "--help",
                              "set --help", "status"}) {
        const std::string whole = shell("\"$quillon\" " + std::string(words)).out;
        for (const int columns : {40, 80, 120}) {
            const std::string folded =
                shell("COLUMNS=" + std::to_string(columns) + " \"$quillon\" " + std::string(words)).out;
            EXPECT_THAT(linesOf(folded), Each(FitsInto(columns))) << words;
            EXPECT_EQ(wordsOf(folded).size(), wordsOf(whole).size()) << words;
        }
    }
}

TEST(Width, ItIsThatOfTheTerminal) {
    const std::string shown = onTerminal("NO_COLOR=1 \"$quillon\" describe FG_XOFFSET", 60);
    EXPECT_THAT(linesOf(shown), Each(FitsInto(60)));
    EXPECT_EQ(shown, shell("COLUMNS=60 \"$quillon\" describe FG_XOFFSET").out);
}

TEST(Width, WithoutATerminalLinesStayWhole) {
    EXPECT_THAT(quillon({"list"}).out, HasSubstr("FG_TRIGGERCAMERA_SOURCE"));
    EXPECT_EQ(quillon({"list"}).out, shell("COLUMNS=0 \"$quillon\" list").out);
}

}  // namespace
}  // namespace quillon::cli::testing
