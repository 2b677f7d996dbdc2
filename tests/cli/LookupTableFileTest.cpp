#include "cli/LookupTableFile.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A file that the applet wrote, with one text in place of another.
std::filesystem::path changedTable(const Folder& folder, const std::string& from, const std::string& to) {
    const std::filesystem::path file = folder / "table.lut";
    EXPECT_EQ(quillon({"lut", "--save", file}).status, 0);
    std::string content = contentOf(file);
    const std::size_t place = content.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    std::ofstream(file, std::ios::binary) << content.replace(place, from.size(), to);
    return file;
}

TEST(CheckedTable, ATableThatTheAppletWroteIsOne) {
    const Folder folder;
    EXPECT_THAT(inspectTable(changedTable(folder, "[red]", "[red]")), IsEmpty());
}

TEST(CheckedTable, WhatKeepsAFileFromBeingTheTableIsFoundWithItsLine) {
    struct Row {
        std::string from, to;
        int line;
        std::string text;
    };
    const std::vector<Row> rows{
        {"\n2,8;\n", "\n2,70000;\n", 11, "entry 2 is 70000, outside 0 to 65535"},
        {"\n2,8;\n", "\n2,-8;\n", 11, "entry 2 is -8, outside 0 to 65535"},
        {"\n2,8;\n", "\n2,x;\n", 11, "\"2,x\" is no entry"},
        {"\n2,8;\n3,12;\n", "\n3,12;\n2,8;\n", 11, "entry 3 stands where 2 should be"},
        {"nrOfElements=16384", "nrOfElements=100", 6, "nrOfElements is 100, and the tables have 16384 entries"},
        {"[green]", "[grey]", 0, "the section [green] is missing"},
    };
    for (const Row& row : rows) {
        const Folder folder;
        const auto findings = inspectTable(changedTable(folder, row.from, row.to));
        const auto found = std::find_if(findings.begin(), findings.end(), [&](const TableFinding& finding) {
            return finding.line == row.line && finding.text.find(row.text) != std::string::npos;
        });
        EXPECT_NE(found, findings.end()) << row.text << ", but "
                                         << (findings.empty() ? "nothing" : findings.front().text);
    }
}

TEST(CheckedTable, ATextIsNoTable) {
    const Folder folder;
    std::ofstream(folder / "text.lut") << "root:x:0:0:root:/root:/bin/bash\n";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"lut", "--load", folder / "text.lut"},
          std::vector<std::string>{"lut", "--compare", folder / "text.lut", folder / "text.lut"}}) {
        const Outcome outcome = quillon(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, HasSubstr("text.lut was not loaded: it is no lookup table"));
    }
}

TEST(CheckedTable, AnEntryBeyondTheOutputIsNotLoaded) {
    const Folder folder;
    const Outcome outcome = quillon({"lut", "--load", changedTable(folder, "\n2,8;\n", "\n2,70000;\n")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("table.lut:11 was not loaded: entry 2 is 70000"));
}

}  // namespace
}  // namespace quillon::cli::testing
