// Files that are no pictures, or not whole ones: each is refused in words, and none does harm.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <span>

#include "tests/scenes/PictureFiles.h"
#include "tests/scenes/PngContent.h"

namespace softboard::scenes::testing {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(BrokenPictures, WhatIsNoFileIsTold) {
    const TemporaryFolder folder;
    EXPECT_EQ(refusalOfFile(folder / "part.png"), "part.png: No such file or directory");
    EXPECT_EQ(refusalOfFile(folder / "part.png/no"), "no: No such file or directory");
    std::filesystem::create_directory(folder / "parts");
    EXPECT_EQ(refusalOfFile(folder / "parts"), "parts: a folder; a picture is a file");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusalOfFile(folder / "pipe"), "pipe: a pipe or a device; a picture is a file");
    EXPECT_EQ(refusalOfFile("/dev/null"), "null: a pipe or a device; a picture is a file");
    std::filesystem::create_symlink("nowhere", folder / "link.png");
    EXPECT_EQ(refusalOfFile(folder / "link.png"), "link.png: No such file or directory");
}

TEST(BrokenPictures, ALinkToAPictureIsOne) {
    const TemporaryFolder folder;
    folder.write("part.pgm", "P2 1 1 255 7");
    std::filesystem::create_symlink("part.pgm", folder / "link");
    EXPECT_EQ(componentsOf(readPicture(folder / "link")), greys({7}));
}

TEST(BrokenPictures, WhatIsNoPictureIsTold) {
    EXPECT_EQ(refusalOf(""), "part: empty; PNG and PNM (P2, P3, P5, P6) can be read");
    for (const char* content : {"P", "P5", "P4 1 1 0", "P1 1 1 0", "P7\n", "P55 1 1 255 a", "GIF89a", "\x89PNG",
                                "p5 1 1 255 a", " P5 1 1 255 a"}) {
        EXPECT_EQ(refusalOf(content), "part: no picture that can be read; PNG and PNM (P2, P3, P5, P6) can") << content;
    }
}

TEST(BrokenPictures, APictureIsKnownByItsFirstBytes) {
    const auto looks = [](const std::string& bytes) { return looksLikePicture(std::as_bytes(std::span(bytes))); };
    for (const char* bytes : {"P2 ", "P3\n", "P5\t", "P6#", "\x89PNG\r\n\x1a\n"}) {
        EXPECT_TRUE(looks(bytes)) << bytes;
    }
    for (const char* bytes :
         {"", "P", "P2", "P22", "P4 ", "P1 ", "\x89PNG\r\n\x1a", "\x89PNG\n\x1a\n\n", "rawrawraw"}) {
        EXPECT_FALSE(looks(bytes)) << bytes;
    }
}

TEST(BrokenPictures, NoPixelsAreRefused) {
    EXPECT_EQ(refusalOf("P5 0 7 255 "), "part: 0 x 7 pixels; a picture has at least 1 x 1");
    EXPECT_EQ(refusalOf("P3 7 0 255 "), "part: 7 x 0 pixels; a picture has at least 1 x 1");
    EXPECT_EQ(refusalOf(pngHeader(0, 7)), "part: 0 x 7 pixels; a picture has at least 1 x 1");
    EXPECT_EQ(refusalOf(pngHeader(7, 0)), "part: 7 x 0 pixels; a picture has at least 1 x 1");
}

TEST(BrokenPictures, TooManyPixelsAreRefused) {
    EXPECT_EQ(refusalOf("P5 40000 40000 255 a"), "part: 40000 x 40000 pixels; at most 134217728 (2^27) fit");
    EXPECT_EQ(refusalOf(pngHeader(40000, 40000)), "part: 40000 x 40000 pixels; at most 134217728 (2^27) fit");
    EXPECT_EQ(refusalOf("P5 134217729 1 255 a"), "part: 134217729 x 1 pixels; at most 134217728 (2^27) fit");
    EXPECT_EQ(refusalOf("P5 4294967295 4294967295 255 a"),
              "part: 4294967295 x 4294967295 pixels; at most 134217728 (2^27) fit");
    EXPECT_EQ(refusalOf("P5 99999999999999999999999 2 255 a"),
              "part: 4294967295 x 2 pixels; at most 134217728 (2^27) fit");
    EXPECT_EQ(refusalOf(pngHeader(0xffffffff, 2)), "part: 4294967295 x 2 pixels; at most 134217728 (2^27) fit");
}

TEST(BrokenPictures, AHeaderThatPromisesMoreThanTheFileHolds) {
    EXPECT_EQ(refusalOf("P5 134217728 1 255 a"),
              "part: 134217728 x 1 pixels take at least 134217728 bytes; the file has only 1 for them");
    EXPECT_EQ(refusalOf("P6 4000 3000 65535 abcd"),
              "part: 4000 x 3000 pixels take at least 72000000 bytes; the file has only 4 for them");
    EXPECT_EQ(refusalOf("P3 2 1 255 1 2 3 4 5"),
              "part: 2 x 1 pixels take at least 11 bytes; the file has only 9 for them");
    EXPECT_EQ(refusalOf("P2 10000 10000 255 "),
              "part: 10000 x 10000 pixels take at least 199999999 bytes; the file has only 0 for them");
    // Deflate makes at most 1032 bytes from one: 10320 x 100 take 1000.
    EXPECT_EQ(refusalOf(pngHeader(10320, 100) + pngData("") + pngEnd()),
              "part: 10320 x 100 pixels take at least 1000 bytes; the file has only 24 for them");
    EXPECT_THAT(refusalOf(pngHeader(16384, 8192, 16, 2) + pngData(std::string(1000, '\0')) + pngEnd()),
                StartsWith("part: 16384 x 8192 pixels take at least 780336 bytes; the file has only "));
}

TEST(BrokenPictures, APnmThatMakesNoSense) {
    EXPECT_EQ(refusalOf("P5 x 1 255 a"), "part: the width of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P5 -1 1 255 a"), "part: the width of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P5 3x2 255 a"), "part: the height of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P5 1 1 0xff a"), "part: a maxval of 0; 1 to 65535 are possible");
    EXPECT_EQ(refusalOf("P5 1 1 .5 a"), "part: the maxval of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P5 1 1 65536 ab"), "part: a maxval of 65536; 1 to 65535 are possible");
    EXPECT_EQ(refusalOf("P5 1 1 255x"), "part: no white space behind the maxval of the PNM");
    EXPECT_EQ(refusalOf("P2 1 1 255 one"), "part: a value of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P2 2 1 255 1 -1"), "part: a value of the PNM is no decimal number");
    EXPECT_EQ(refusalOf("P2 1 1 255 256"), "part: a value of 256 where the maxval is 255");
    EXPECT_EQ(refusalOf("P5 1 1 100 \x65"), "part: a value of 101 where the maxval is 100");
    EXPECT_EQ(refusalOf("P5 1 1 256 \x7f\xff"), "part: a value of 32767 where the maxval is 256");
    EXPECT_EQ(refusalOf("P2 2 1 255 100       "), "part: the file ends within the picture; a part of it is missing");
    EXPECT_EQ(refusalOf("P2 2 1 255 #2 3 4"), "part: the file ends within the picture; a part of it is missing");
}

TEST(BrokenPictures, APngThatMakesNoSense) {
    const std::string row = pngData(std::string("\0\x2a", 2));
    ASSERT_EQ(refusalOf(pngHeader(1, 1) + row + pngEnd()), "");
    for (const std::string& content : {
             pngHeader(1, 1, 3) + row + pngEnd(),                               // bits
             pngHeader(1, 1, 8, 1) + row + pngEnd(),                            // colours
             pngHeader(1, 1, 8, 3) + row + pngEnd(),                            // no palette
             pngHeader(1, 1) + pngEnd(),                                        // no rows
             pngHeader(1, 1) + pngChunk("QUIL", "") + row + pngEnd(),           // a critical chunk that is unknown
             pngHeader(1, 1) + pngChunk("IDAT", "no deflate") + pngEnd(),       //
             pngHeader(1, 2) + row + pngEnd(),                                  // a row is missing
             pngHeader(1, 1) + pngData(std::string("\x07\x2a", 2)) + pngEnd(),  // a filter that there is not
             "\x89PNG\r\n\x1a\n" + row + pngEnd(),                              // no header
         }) {
        EXPECT_THAT(refusalOf(content), StartsWith("part: a damaged PNG: "));
    }
}

std::string smallPng(bool interlaced) {
    PngContent content{.width = 3, .height = 3, .colours = PngColours::RgbAlpha, .interlaced = interlaced};
    for (unsigned i = 0; i < 3 * 3 * 4; ++i) {
        content.samples.push_back(i * 29 % 256);
    }
    return pngOf(content);
}

TEST(BrokenPictures, APngThatIsTornAnywhereIsRefused) {
    for (const std::string& whole : {smallPng(false), smallPng(true)}) {
        ASSERT_EQ(refusalOf(whole), "");
        for (std::size_t size = 0; size < whole.size(); ++size) {
            EXPECT_THAT(refusalOf(whole.substr(0, size)),
                        AnyOf(HasSubstr(": empty; "), HasSubstr("no picture"), HasSubstr("damaged"),
                              HasSubstr("ends within"), HasSubstr("take at least")))
                << size;
        }
    }
}

TEST(BrokenPictures, APngWithAnyByteChangedIsRefused) {
    const std::string whole = smallPng(false);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const unsigned change : {0x01U, 0x20U, 0x80U, 0xffU}) {
            std::string changed = whole;
            changed[i] = static_cast<char>(static_cast<unsigned char>(changed[i]) ^ change);
            EXPECT_THAT(refusalOf(changed), StartsWith("part: ")) << i << " " << change;
        }
    }
}

TEST(BrokenPictures, APnmThatIsTornAnywhereIsRefusedOrWhole) {
    const std::string binary = "P6\n# wide\n2 2 # high\n65535\nabcdefghijklmnopqrstuvwx";
    const std::string text = "P3 2 2 255 100 101 102  103 104 105  106 107 108  109 110 111";
    for (const std::string& whole : {binary, text}) {
        ASSERT_EQ(refusalOf(whole), "");
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string torn = whole.substr(0, size);
            // Only within the last number of a text.
            const bool isWhole = whole == text && size > text.size() - 3;
            EXPECT_EQ(refusalOf(torn).empty(), isWhole) << torn;
            if (isWhole) {
                EXPECT_EQ(componentsOf(pictureOf(torn)).size(), 12U);
            }
        }
    }
}

}  // namespace
}  // namespace softboard::scenes::testing
