#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "files/LutFileParser.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A record that frees what a read leaves in it.
struct OwnedTable : LookupTable_s {
    OwnedTable() = default;
    OwnedTable(const OwnedTable&) = delete;
    OwnedTable& operator=(const OwnedTable&) = delete;
    ~OwnedTable() { delete[] data; }

    std::vector<std::uint32_t> entries() const { return {data, data + nrOfElements}; }
    std::uint32_t wholeNumber() const {
        std::uint32_t value = 0;
        std::memcpy(&value, reinterpret_cast<const char*>(this) + offsetof(LookupTable_s, number), sizeof(value));
        return value;
    }
};

struct OwnedKnee : KneeLookupTable_s {
    explicit OwnedKnee(std::uint32_t count) { nrOfElements = count; }
    OwnedKnee(const OwnedKnee&) = delete;
    OwnedKnee& operator=(const OwnedKnee&) = delete;
    ~OwnedKnee() { delete[] data; }

    std::vector<double> points() const { return {data, data + nrOfElements}; }
};

class LutFileRead : public TemporaryFolder {
protected:
    /// Reads the section "[gray]" of a file with these bytes into `table`.
    int read(const std::string& bytes) {
        return parser.getLutFromFile(write("a.lut", bytes).c_str(), &table, "[gray]");
    }

    int readColours(const std::string& bytes) {
        return parser.getLutFromFile(write("a.lut", bytes).c_str(), &red, &green, &blue);
    }

    Fg_LutFileParser parser;
    OwnedTable table;
    OwnedTable red;
    OwnedTable green;
    OwnedTable blue;
};

TEST_F(LutFileRead, RecordHasRoomForA32BitNumber) {
    EXPECT_EQ(offsetof(LookupTable_s, data), 0u);
    EXPECT_EQ(offsetof(LookupTable_s, id), 8u);
    EXPECT_EQ(offsetof(LookupTable_s, nrOfElements), 12u);
    EXPECT_EQ(offsetof(LookupTable_s, format), 16u);
    EXPECT_EQ(offsetof(LookupTable_s, number), 20u);
    EXPECT_EQ(sizeof(LookupTable_s), 24u);
}

TEST_F(LutFileRead, OneChannel) {
    EXPECT_EQ(read("# Lut data file v1.1\n\n\n\n[gray]\n\nid=4;\nnrOfElements=3;\nformat=5;\nnumber=6;\n"
                   "0,10;\n1,11;\n2,12;\n"),
              0);
    EXPECT_EQ(table.id, 4u);
    EXPECT_EQ(table.format, 5u);
    EXPECT_EQ(table.wholeNumber(), 6u);
    EXPECT_THAT(table.entries(), ElementsAre(10, 11, 12));
}

TEST_F(LutFileRead, NumberComesBackWith32Bits) {
    EXPECT_EQ(read("number=70000;\n"), 0);
    EXPECT_EQ(table.wholeNumber(), 70000u);
    EXPECT_EQ(table.number, 112u);
}

TEST_F(LutFileRead, EntryAboveTheSignedRangeComesBack) {
    EXPECT_EQ(read("[gray]\nnrOfElements=3;\n0,-1;\n1,4294967295;\n2,4294967300;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(4294967295u, 4294967295u, 4u));
}

TEST_F(LutFileRead, WholeTablesComeBack) {
    std::vector<std::uint32_t> curves[3];
    LookupTable_s tables[3];
    for (std::uint32_t channel = 0; channel < 3; ++channel) {
        curves[channel].resize(16384);
        std::iota(curves[channel].begin(), curves[channel].end(), channel * 20000);
        tables[channel] = {.data = curves[channel].data(), .id = channel, .nrOfElements = 16384};
    }
    ASSERT_EQ(parser.saveLutToFile(path("b.lut").c_str(), &tables[0], &tables[1], &tables[2]), 0);
    EXPECT_EQ(parser.getLutFromFile(path("b.lut").c_str(), &red, &green, &blue), 0);
    EXPECT_EQ(red.entries(), curves[0]);
    EXPECT_EQ(green.entries(), curves[1]);
    EXPECT_EQ(blue.entries(), curves[2]);
}

TEST_F(LutFileRead, KeysOfAllChannelsComeFromTheFirstSection) {
    EXPECT_EQ(readColours("[red]\nid=9;\nnrOfElements=1;\nformat=8;\nnumber=7;\n0,1;\n"
                          "[green]\nid=1;\nnrOfElements=2;\nformat=2;\nnumber=3;\n0,4;\n1,5;\n"
                          "[blue]\nid=2;\nnrOfElements=3;\nformat=4;\nnumber=5;\n0,6;\n"),
              0);
    for (const OwnedTable* channel : {&red, &green, &blue}) {
        EXPECT_EQ(channel->id, 9u);
        EXPECT_EQ(channel->format, 8u);
        EXPECT_EQ(channel->wholeNumber(), 7u);
    }
    EXPECT_THAT(red.entries(), ElementsAre(1));
    EXPECT_THAT(green.entries(), ElementsAre(4));
    EXPECT_THAT(blue.entries(), ElementsAre(6));
}

TEST_F(LutFileRead, FileWithTheRedSectionOnlyLeavesTheOthersZero) {
    EXPECT_EQ(readColours("[red]\n\nid=0;\nnrOfElements=3;\nformat=0;\nnumber=0;\n0,1;\n1,2;\n2,3;\n"), 0);
    EXPECT_THAT(red.entries(), ElementsAre(1, 2, 3));
    EXPECT_THAT(green.entries(), ElementsAre(0, 0, 0));
    EXPECT_THAT(blue.entries(), ElementsAre(0, 0, 0));
}

TEST_F(LutFileRead, EntriesMissingFromASectionAreTakenFromTheNext) {
    std::string bytes = "[red]\nnrOfElements=103;\n";
    for (int index = 0; index < 100; ++index) {
        bytes += std::to_string(index) + ",1;\n";
    }
    bytes += "[green]\n";
    for (int index = 0; index < 103; ++index) {
        bytes += std::to_string(index) + ",2;\n";
    }
    EXPECT_EQ(readColours(bytes), 0);
    std::vector<std::uint32_t> expected(100, 1);
    expected.insert(expected.end(), {2, 2, 2});
    EXPECT_EQ(red.entries(), expected);
    EXPECT_EQ(green.entries(), std::vector<std::uint32_t>(103, 2));
}

TEST_F(LutFileRead, GapEndsWhatCanBeFoundAndTheRestStaysZero) {
    EXPECT_EQ(read("[gray]\nnrOfElements=4;\n0,1;\n2,3;\n3,4;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 0, 0, 0));
}

TEST_F(LutFileRead, IndexIsFoundAsThePartOfALongerOne) {
    EXPECT_EQ(read("[gray]\nnrOfElements=3;\n0,1;\n11,2;\n1,3;\n2,4;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2, 4));
}

TEST_F(LutFileRead, EntriesAheadOfTheirSectionAreNotSeen) {
    EXPECT_EQ(read("nrOfElements=2;\n0,8;\n1,9;\n[gray]\n0,1;\n1,2;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2));
}

TEST_F(LutFileRead, LineOfTheSectionsNameMayHoldAnEntry) {
    EXPECT_EQ(read("nrOfElements=1;\n[gray] 0,5;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(5));
}

TEST_F(LutFileRead, EntryWithoutAValueIsZero) {
    EXPECT_EQ(read("[gray]\nnrOfElements=3;\n0,;\n1,5;\n2,"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(0, 5, 0));
}

TEST_F(LutFileRead, KeyWithoutAValueIsZero) {
    EXPECT_EQ(read("[gray]\nid\nnrOfElements=1;\nformat=;\n0,5;\nnumber"), 0);
    EXPECT_EQ(table.id, 0u);
    EXPECT_EQ(table.format, 0u);
    EXPECT_EQ(table.wholeNumber(), 0u);
    EXPECT_THAT(table.entries(), ElementsAre(5));
}

TEST_F(LutFileRead, KeyMayStandAnywhereInItsLineAndInQuotes) {
    EXPECT_EQ(read("the format='12';\nwidth=3;\n"), 0);
    EXPECT_EQ(table.format, 12u);
    EXPECT_EQ(table.id, 3u);
}

TEST_F(LutFileRead, FileWithoutACountIsAnEmptyTable) {
    EXPECT_EQ(read("[gray]\n0,1;\n"), 0);
    EXPECT_NE(table.data, nullptr);
    EXPECT_THAT(table.entries(), IsEmpty());
}

TEST_F(LutFileRead, EmptyFileIsAnEmptyTable) {
    table.id = table.format = 5;
    EXPECT_EQ(read(""), 0);
    EXPECT_EQ(table.id, 0u);
    EXPECT_EQ(table.format, 0u);
    EXPECT_THAT(table.entries(), IsEmpty());
}

TEST_F(LutFileRead, FolderReadsAsAnEmptyFile) {
    EXPECT_TRUE(parser.checkFileExist(folder.c_str()));
    EXPECT_EQ(parser.getLutFromFile(folder.c_str(), &red, &green, &blue), 0);
    EXPECT_THAT(red.entries(), IsEmpty());
    EXPECT_THAT(green.entries(), IsEmpty());
    EXPECT_THAT(blue.entries(), IsEmpty());
}

TEST_F(LutFileRead, CountBeyondTheHardwaresTableReadsAsTheHardwaresTable) {
    EXPECT_EQ(read("[gray]\nnrOfElements=4000000000;\n0,1;\n1,2;\n"), 0);
    EXPECT_THAT(table.entries(), SizeIs(16384));
    EXPECT_EQ(table.data[1], 2u);
    EXPECT_EQ(table.data[16383], 0u);
    EXPECT_EQ(read("[gray]\nnrOfElements=-1;\n0,3;\n"), 0);
    EXPECT_THAT(table.entries(), SizeIs(16384));
    EXPECT_EQ(table.data[0], 3u);
}

TEST_F(LutFileRead, CountBeyond32BitsKeepsItsLow32) {
    EXPECT_EQ(read("[gray]\nnrOfElements=4294967298;\n0,1;\n1,2;\n2,3;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2));
}

TEST_F(LutFileRead, EntriesBehindTheCountAreNotRead) {
    EXPECT_EQ(read("[gray]\nnrOfElements=1;\n0,1;\n1,2;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1));
}

TEST_F(LutFileRead, LineWithoutEndIsReadInPieces) {
    EXPECT_EQ(read("[gray]\nnrOfElements=2;\n" + std::string(1000000, 'x')), 0);
    EXPECT_THAT(table.entries(), Each(0u));
    EXPECT_EQ(read("[gray]\nnrOfElements=2;\n" + std::string(255, 'x') + "0,1;\n1,2;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2));
}

TEST_F(LutFileRead, BinaryBytesAreNoEntries) {
    using namespace std::string_literals;
    EXPECT_EQ(read("\xff\xfe\0\x01[gray]\n\0nrOfElements=2;\n0,\0;\n"s), 0);
    EXPECT_THAT(table.entries(), IsEmpty());
    EXPECT_EQ(read("[gray]\nnrOfElements=2;\n0,1\0009;\n\0\0\n\x80\x81,;\n1,2;\n"s), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2));
}

TEST_F(LutFileRead, CarriageReturnsDontMatter) {
    EXPECT_EQ(read("[gray]\r\nnrOfElements=2;\r\n0,1;\r\n1,2\r\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 2));
}

TEST_F(LutFileRead, KneeFileReadsAsTruncatedIntegersWhereThereAreKeys) {
    EXPECT_EQ(read("# KneeLut data file v1.0\n\n[gray]\n\nnrOfElements=2;\n0,1.900000000000;\n1,-0.5;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(1, 0));
}

TEST_F(LutFileRead, MissingFileFailsAndTheOldTableIsGone) {
    table.data = new std::uint32_t[4];
    EXPECT_EQ(parser.getLutFromFile(path("none.lut").c_str(), &table, "[gray]"), -1);
    EXPECT_EQ(table.data, nullptr);
    EXPECT_EQ(parser.getLutFromFile(path("none.lut").c_str(), &red, &green, &blue), -1);
    EXPECT_EQ(parser.getLutFromFile(nullptr, &red, &green, &blue), -1);
    EXPECT_EQ(red.data, nullptr);
}

TEST_F(LutFileRead, SecondReadReplacesTheFirst) {
    EXPECT_EQ(read("[gray]\nnrOfElements=2;\n0,1;\n1,2;\n"), 0);
    EXPECT_EQ(read("[gray]\nnrOfElements=1;\n0,3;\n"), 0);
    EXPECT_THAT(table.entries(), ElementsAre(3));
}

TEST_F(LutFileRead, PipeIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(parser.checkFileExist(path("pipe").c_str()));
    EXPECT_EQ(parser.getLutFromFile(path("pipe").c_str(), &table, "[gray]"), -1);
}

TEST_F(LutFileRead, ADeviceIsAFileWithoutATable) {
    for (const char* device : {"/dev/null", "/dev/zero"}) {  // the one is empty, the other has no end
        EXPECT_TRUE(parser.checkFileExist(device));
        EXPECT_EQ(parser.getLutFromFile(device, &table, "[gray]"), 0);
        EXPECT_EQ(table.nrOfElements, 0U);
        OwnedKnee knee(2);
        EXPECT_EQ(parser.getLutFromFile(device, &knee, "[curve]"), 0);
    }
}

TEST_F(LutFileRead, AWriteBehindAStepOfAReadGoesWhereThatEnded) {
    const std::string name = write("a.lut", "id=1;\nformat=2;\nnumber=3;\n");
    int value = 0;
    ASSERT_TRUE(parser.setOpenFile(name.c_str(), false));
    EXPECT_EQ(parser.parseIntKey("id", &value, "='"), 0);
    parser.writeIntKey("NUMBER", 3);
    EXPECT_EQ(parser.parseIntKey("none", &value, "='"), -1);
    parser.writeIntInt(0, 5);
    ASSERT_TRUE(parser.setOpenFile(name.c_str(), true));  // closes the file
    EXPECT_EQ(bytesOf("a.lut"), "id=1;\nformat=2;\nNUMBER=3;\n0,5;\n");
}

TEST_F(LutFileRead, KneeOfOneChannelComesBack) {
    double points[] = {0.25, -1.5};
    const KneeLookupTable_s written = {.data = points, .nrOfElements = 2};
    ASSERT_EQ(parser.saveLutToFile(path("a.lut").c_str(), &written, "[curve]"), 0);
    OwnedKnee knee(2);
    EXPECT_EQ(parser.getLutFromFile(path("a.lut").c_str(), &knee, "[curve]"), 0);
    EXPECT_THAT(knee.points(), ElementsAre(0.25, -1.5));
}

TEST_F(LutFileRead, KneeOfThreeChannelsComesBackWithTheCallersCounts) {
    const std::string bytes = "[red]\n\n0,1.5;\n1,2.5;\n\n\n[green]\n\n0,3.5;\n\n\n[blue]\n\n0,4.5;\n1,5.5;\n2,6.5;\n";
    OwnedKnee one(2), two(1), three(3);
    EXPECT_EQ(parser.getLutFromFile(write("a.lut", bytes).c_str(), &one, &two, &three), 0);
    EXPECT_THAT(one.points(), ElementsAre(1.5, 2.5));
    EXPECT_THAT(two.points(), ElementsAre(3.5));
    EXPECT_THAT(three.points(), ElementsAre(4.5, 5.5, 6.5));
}

TEST_F(LutFileRead, KneeOfAMissingFileFails) {
    OwnedKnee one(2), two(2), three(2);
    EXPECT_EQ(parser.getLutFromFile(path("none.lut").c_str(), &one, "[curve]"), -1);
    EXPECT_EQ(parser.getLutFromFile(path("none.lut").c_str(), &one, &two, &three), -1);
    EXPECT_EQ(one.data, nullptr);
}

TEST_F(LutFileRead, MatrixIsNeverRead) {
    int values[2] = {7, 8};
    const std::string name = write("a.lut", "nrOfElements=2;\n0,1;\n1,2;\n");
    EXPECT_EQ(parser.getMatrixFromFile(name.c_str(), values, 2), -1);
    EXPECT_EQ(values[0], 7);
}

TEST_F(LutFileRead, AnyNameIsOfTheRightType) {
    EXPECT_TRUE(parser.checkFileType("a.lut"));
    EXPECT_TRUE(parser.checkFileType("b"));
    EXPECT_TRUE(parser.checkFileType(nullptr));
}

TEST_F(LutFileRead, ExistingFilesOpen) {
    const std::string name = write("a.lut", "text");
    EXPECT_TRUE(parser.checkFileExist(name.c_str()));
    EXPECT_TRUE(parser.setOpenFile(name.c_str(), true));
    EXPECT_TRUE(parser.setOpenFile(name.c_str(), false));
    EXPECT_EQ(bytesOf("a.lut"), "text");
    EXPECT_FALSE(parser.setOpenFile(path("none").c_str(), true));
    EXPECT_FALSE(parser.checkFileExist(path("none").c_str()));
}

TEST_F(LutFileRead, ManyReadsHoldOneFileOpen) {
    const std::string name = write("a.lut", "[red]\nnrOfElements=1;\n0,1;\n");
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = openFiles();
    for (int read = 0; read < 3; ++read) {
        EXPECT_EQ(parser.getLutFromFile(name.c_str(), &red, &green, &blue), 0);
    }
    EXPECT_EQ(openFiles(), before + 1);
}

TEST_F(LutFileRead, SingleKeys) {
    ASSERT_TRUE(parser.setOpenFile(write("a.lut", "gain=1.25;\nid=12;\ntext='a b';\nbad=Error").c_str(), true));
    char text[256] = {};
    EXPECT_EQ(parser.parseKeyFromLine("text", text, "='"), 0);
    EXPECT_STREQ(text, "a b");
    EXPECT_EQ(parser.parseKeyFromLine("none", text, "='"), 0);
    EXPECT_STREQ(text, "Error");
    double gain = 0;
    EXPECT_EQ(parser.parseDoubleKey("gain", &gain, "='"), 0);
    EXPECT_EQ(gain, 1.25);
    int id = 0;
    EXPECT_EQ(parser.parseIntKey("id", &id, "='"), 0);
    EXPECT_EQ(id, 12);
}

TEST_F(LutFileRead, MissingKeyIsAFailureAndStoresZero) {
    ASSERT_TRUE(parser.setOpenFile(write("a.lut", "bad=Error").c_str(), true));
    int id = 77;
    double gain = 77;
    EXPECT_EQ(parser.parseIntKey("id", &id, "='"), -1);
    EXPECT_EQ(id, 0);
    EXPECT_EQ(parser.parseDoubleKey("gain", &gain, "='"), -1);
    EXPECT_EQ(gain, 0.0);
    id = 77;
    EXPECT_EQ(parser.parseIntKey("bad", &id, "='"), -1);
    EXPECT_EQ(id, 0);
}

TEST_F(LutFileRead, StepsStoreNoMoreEntriesThanTheCount) {
    ASSERT_TRUE(parser.setOpenFile(write("a.lut", "[red]\n0,10;\n1,11;\n2,12;\n").c_str(), true));
    std::uint32_t values[] = {7, 7, 7};
    double points[] = {7.5, 7.5, 7.5};
    EXPECT_EQ(parser.parseIntInt(values, 2, ",", "[red]"), 0);
    EXPECT_EQ(parser.parseIntDouble(points, 2, ",", "[red]"), 0);
    EXPECT_THAT(values, ElementsAre(10, 11, 7));
    EXPECT_THAT(points, ElementsAre(10.0, 11.0, 7.5));
    EXPECT_EQ(parser.parseIntInt(values, 0, ",", "[red]"), 0);
    EXPECT_THAT(values, ElementsAre(10, 11, 7));
}

TEST_F(LutFileRead, StepsWithoutAFileFindNothing) {
    int id = 77;
    std::uint32_t values[] = {7};
    double points[] = {7};
    EXPECT_EQ(parser.parseIntKey("id", &id, "='"), -1);
    EXPECT_EQ(parser.parseIntInt(values, 1, ",", "[red]"), 0);
    EXPECT_EQ(parser.parseIntDouble(points, 1, ",", "[red]"), 0);
    EXPECT_EQ(values[0], 7u);
    EXPECT_EQ(points[0], 7.0);
}

}  // namespace
}  // namespace quillon
