#include "files/LineReader.h"

#include <vector>

#include "files/ConfigFileParser.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

class LineReaderTest : public TemporaryFolder {
protected:
    /// All pieces of a file, read twice to the same result.
    std::vector<std::string> pieces(const std::string& bytes) {
        const TextFile file = openTextFile(write("a.txt", bytes).c_str(), "r");
        LineReader lines;
        std::vector<std::string> read;
        for (int pass = 0; pass < 2; ++pass) {
            std::vector<std::string> again;
            lines.restart(file.get());
            for (std::string_view piece; lines.next(piece);) {
                again.emplace_back(piece);
            }
            EXPECT_TRUE(pass == 0 || again == read);
            read = again;
        }
        return read;
    }
};

TEST_F(LineReaderTest, ALineComesWithItsLineFeedAndTheLastAsItIs) {
    EXPECT_EQ(pieces("one\n\nthree"), (std::vector<std::string>{"one\n", "\n", "three"}));
}

TEST_F(LineReaderTest, AnEmptyFileAndANullStreamHoldNoLine) {
    EXPECT_TRUE(pieces("").empty());
    LineReader lines;
    lines.restart(nullptr);
    std::string_view piece;
    EXPECT_FALSE(lines.next(piece));
}

TEST_F(LineReaderTest, ALongLineComesInPiecesOf255Characters) {
    const std::string piece(255, 'x');
    EXPECT_EQ(pieces(piece + "\n"), (std::vector<std::string>{piece, "\n"}));
    EXPECT_EQ(pieces(piece.substr(1) + "\n"), (std::vector<std::string>{piece.substr(1) + "\n"}));
    EXPECT_EQ(pieces(piece + piece + "y"), (std::vector<std::string>{piece, piece, "y"}));
}

TEST_F(LineReaderTest, LinesAreWholeWhereverReadsOfALongFileEnd) {
    std::string bytes;
    std::vector<std::string> expected;
    for (int i = 0; i < 3000; ++i) {
        expected.push_back(std::string(static_cast<std::size_t>(i % 250), 'a') + std::to_string(i) + "\n");
        bytes += expected.back();
    }
    EXPECT_EQ(pieces(bytes), expected);
}

TEST_F(LineReaderTest, AFileThatGrewIsReadToItsNewEnd) {
    const TextFile file = openTextFile(write("a.txt", "one\n").c_str(), "r");
    LineReader lines;
    lines.restart(file.get());
    std::string_view piece;
    while (lines.next(piece)) {
    }
    write("a.txt", "one\ntwo\n");
    lines.restart(file.get());
    EXPECT_TRUE(lines.next(piece) && lines.next(piece));
    EXPECT_EQ(piece, "two\n");
}

TEST_F(LineReaderTest, WhatAParserWroteItFinds) {
    Fg_ConfigFileParser parser(nullptr, write("a.mcf", "[Port A]\nK=1;\n").c_str(), false);
    int value = 0;
    ASSERT_EQ(parser.parseIntKeySection(0, "K", &value), 0);
    parser.writeConfigFileIntKey("L", 2);
    ASSERT_EQ(parser.parseIntKeySection(0, "L", &value), 0);
    EXPECT_EQ(value, 2);
}

}  // namespace
}  // namespace quillon
