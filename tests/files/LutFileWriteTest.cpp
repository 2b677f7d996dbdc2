#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "files/LutFileParser.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon {
namespace {

class LutFileWrite : public TemporaryFolder {
protected:
    std::string file() const { return path("a.lut"); }
    std::string written() const { return bytesOf("a.lut"); }

    Fg_LutFileParser parser;
};

TEST_F(LutFileWrite, ThreeChannelsToTheByte) {
    std::uint32_t redEntries[] = {0, 7};
    std::uint32_t greenEntries[] = {65535};
    const LookupTable_s red = {.data = redEntries, .id = 0, .nrOfElements = 2};
    const LookupTable_s green = {.data = greenEntries, .id = 1, .nrOfElements = 1, .format = 3, .number = 255};
    const LookupTable_s blue = {.id = 2};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &red, &green, &blue), 0);
    EXPECT_EQ(written(),
              "# Lut data file v1.1\n\n"
              "[red]\n\nid=0;\nnrOfElements=2;\nformat=0;\nnumber=0;\n0,0;\n1,7;\n\n\n"
              "[green]\n\nid=1;\nnrOfElements=1;\nformat=3;\nnumber=255;\n0,65535;\n\n\n"
              "[blue]\n\nid=2;\nnrOfElements=0;\nformat=0;\nnumber=0;\n");
}

TEST_F(LutFileWrite, OneChannelHasFourLineFeedsBehindItsTitle) {
    std::uint32_t entries[] = {1, 2, 3};
    const LookupTable_s gray = {.data = entries, .id = 5, .nrOfElements = 3};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &gray), 0);
    EXPECT_EQ(written(),
              "# Lut data file v1.1\n\n\n\n[gray]\n\nid=5;\nnrOfElements=3;\nformat=0;\nnumber=0;\n0,1;\n1,2;\n2,3;\n");
}

TEST_F(LutFileWrite, EntriesAboveTheSignedRangeStandNegative) {
    std::uint32_t entries[] = {4294967295u, 2147483648u};
    const LookupTable_s gray = {.data = entries, .id = 4294967295u, .nrOfElements = 2};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &gray), 0);
    EXPECT_EQ(written(),
              "# Lut data file v1.1\n\n\n\n[gray]\n\nid=-1;\nnrOfElements=2;\nformat=0;\nnumber=0;\n"
              "0,-1;\n1,-2147483648;\n");
}

TEST_F(LutFileWrite, KneeOfOneChannelHasNoKeysAndVersionOnePointNought) {
    double points[] = {0.0, 0.5, -1.0 / 3.0};
    const KneeLookupTable_s table = {.data = points, .nrOfElements = 3};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &table, "[curve]"), 0);
    EXPECT_EQ(written(),
              "# KneeLut data file v1.0\n\n[curve]\n\n0,0.000000000000;\n1,0.500000000000;\n2,-0.333333333333;\n");
}

TEST_F(LutFileWrite, KneeOfThreeChannelsHasNoKeysAndVersionOnePointOne) {
    double points[] = {1.0, 2.0};
    const KneeLookupTable_s two = {.data = points, .nrOfElements = 2};
    const KneeLookupTable_s none = {};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &two, &none, &two), 0);
    EXPECT_EQ(written(),
              "# KneeLut data file v1.1\n\n[red]\n\n0,1.000000000000;\n1,2.000000000000;\n\n\n"
              "[green]\n\n\n\n[blue]\n\n0,1.000000000000;\n1,2.000000000000;\n");
}

TEST_F(LutFileWrite, LargestKneePointIsWrittenWhole) {
    double points[] = {std::numeric_limits<double>::max()};
    const KneeLookupTable_s table = {.data = points, .nrOfElements = 1};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &table, "[curve]"), 0);
    const std::string bytes = written();
    EXPECT_EQ(bytes.substr(0, 53), "# KneeLut data file v1.0\n\n[curve]\n\n0,1797693134862315");
    EXPECT_EQ(bytes.substr(bytes.size() - 15), ".000000000000;\n");
}

TEST_F(LutFileWrite, MatrixIsTheCallersHeaderTheCountAndTheValues) {
    const int values[] = {1, -2, 3};
    EXPECT_EQ(parser.saveMatrixToFile(file().c_str(), "100%d matrix\n", values, 3), 0);
    EXPECT_EQ(written(), "100%d matrix\nnrOfElements=3;\n0,1;\n1,-2;\n2,3;\n");
}

TEST_F(LutFileWrite, FileThatCantBeOpenedIsAFailure) {
    const LookupTable_s table = {};
    const KneeLookupTable_s knee = {};
    const std::string name = path("none/a.lut");
    EXPECT_EQ(parser.saveLutToFile(name.c_str(), &table), -1);
    EXPECT_EQ(parser.saveLutToFile(name.c_str(), &table, &table, &table), -1);
    EXPECT_EQ(parser.saveLutToFile(name.c_str(), &knee, "[curve]"), -1);
    EXPECT_EQ(parser.saveLutToFile(name.c_str(), &knee, &knee, &knee), -1);
    EXPECT_EQ(parser.saveMatrixToFile(name.c_str(), "", nullptr, 0), -1);
    EXPECT_EQ(parser.saveLutToFile(folder.c_str(), &table), -1);
    EXPECT_EQ(parser.saveLutToFile(nullptr, &table), -1);
}

TEST_F(LutFileWrite, ShorterFileReplacesALongerOne) {
    write("a.lut", std::string(1000, 'x'));
    const LookupTable_s table = {};
    EXPECT_EQ(parser.saveLutToFile(file().c_str(), &table), 0);
    EXPECT_EQ(written(), "# Lut data file v1.1\n\n\n\n[gray]\n\nid=0;\nnrOfElements=0;\nformat=0;\nnumber=0;\n");
}

TEST_F(LutFileWrite, LinesAreKeySeparatorValue) {
    ASSERT_TRUE(parser.setSaveFile(file().c_str()));
    parser.writeLutFileHeader("title %s\n");
    parser.writeLutFileValue("key", "<>", "value");
    parser.writeIntKey("int", -3);
    parser.writeDoubleKey("double", 0.1);
    parser.writeDoubleKey("third", 1.0 / 3.0);
    parser.writeIntInt(4, 5);
    parser.writeIntDouble(6, 7.5);
    ASSERT_TRUE(parser.setSaveFile(path("other.lut").c_str()));
    EXPECT_EQ(written(),
              "title %s\nkey<>value;\nint=-3;\ndouble=0.1;\nthird=0.333333333333;\n4,5;\n6,7.500000000000;\n");
}

TEST_F(LutFileWrite, FileOpenedAgainHoldsNothingOfItsFirstWriting) {
    ASSERT_TRUE(parser.setSaveFile(file().c_str()));
    parser.writeIntKey("first", 1);
    ASSERT_TRUE(parser.setSaveFile(file().c_str()));
    parser.writeIntKey("x", 2);
    ASSERT_TRUE(parser.setSaveFile(path("other.lut").c_str()));
    EXPECT_EQ(written(), "x=2;\n");
}

TEST_F(LutFileWrite, LinesWithoutAFileGoNowhere) {
    parser.writeLutFileHeader("title");
    parser.writeIntKey("int", 1);
    parser.writeIntInt(0, 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

}  // namespace
}  // namespace quillon
