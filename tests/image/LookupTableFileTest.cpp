// Tables that are saved to and loaded from `.lut` files.

#include <array>

#include "tests/files/TemporaryFolder.h"
#include "tests/image/LookupTables.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int Red = 300009, Green = 300010, Blue = 300011;

struct LookupTableFile : TemporaryFolder, LookupTables {
    int save(const std::string& name) { return applet.setText(FG_LUT_SAVE_FILE, name); }
    int load(const std::string& name) { return applet.setText(FG_LUT_CUSTOM_FILE, name); }
    void useFiles() {
        ASSERT_EQ(set(FG_LUT_TYPE, 0), 0);
        forget();
    }
};

/// The lines of entries `first` to `last`, all of one value.
std::string entries(std::uint32_t first, std::uint32_t last, std::uint32_t value) {
    std::string lines;
    for (std::uint32_t index = first; index <= last; ++index) {
        lines += std::to_string(index) + "," + std::to_string(value) + ";\n";
    }
    return lines;
}

const std::string Title = "# Lut data file v1.1\n\n";
const std::string RedKeys = "[red]\n\nid=0;\nnrOfElements=16384;\nformat=0;\nnumber=0;\n";
const std::string GreenKeys = "\n\n[green]\n\nid=1;\nnrOfElements=16384;\nformat=0;\nnumber=0;\n";
const std::string BlueKeys = "\n\n[blue]\n\nid=2;\nnrOfElements=16384;\nformat=0;\nnumber=0;\n";

// Saving -------------------------------------------------------------------------------------------------------------

TEST_F(LookupTableFile, ASavedFileHoldsAllThreeTablesToTheByte) {
    ASSERT_EQ(applet.setField(Red, Table(TableSize, 65535)), 0);
    ASSERT_EQ(applet.setField(Green, Table(TableSize, 456)), 0);
    ASSERT_EQ(applet.setElement(Green, 0, 123), 0);
    ASSERT_EQ(applet.setField(Blue, Table(TableSize, 0)), 0);
    EXPECT_EQ(save(path("saved.lut")), 0);
    EXPECT_EQ(bytesOf("saved.lut"), Title + RedKeys + entries(0, 16383, 65535) + GreenKeys + "0,123;\n" +
                                        entries(1, 16383, 456) + BlueKeys + entries(0, 16383, 0));
}

TEST_F(LookupTableFile, TheIdentityCurveIsSavedLineByLine) {
    EXPECT_EQ(save(path("identity.lut")), 0);
    const std::string bytes = bytesOf("identity.lut");
    EXPECT_TRUE(bytes.starts_with(Title + RedKeys + "0,0;\n1,4;\n2,8;\n3,12;\n4,16;\n"));
    EXPECT_NE(bytes.find("\n8191,32765;\n8192,32770;\n"), std::string::npos);
    EXPECT_TRUE(bytes.ends_with("\n16382,65531;\n16383,65535;\n"));
}

TEST_F(LookupTableFile, SavingReadsBackItsPathAndTouchesNoDesign) {
    EXPECT_EQ(applet.readText(FG_LUT_SAVE_FILE), "");
    EXPECT_EQ(save(path("saved.lut")), 0);
    EXPECT_EQ(applet.readText(FG_LUT_SAVE_FILE), path("saved.lut"));
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(LookupTableFile, AnEmptySavePathSavesNothing) {
    ASSERT_EQ(save(path("saved.lut")), 0);
    EXPECT_EQ(save(""), 0);
    EXPECT_EQ(applet.readText(FG_LUT_SAVE_FILE), "");
}

TEST_F(LookupTableFile, ASavePathThatCannotBeOpenedIsNotKept) {
    ASSERT_EQ(save(path("saved.lut")), 0);
    EXPECT_EQ(save(path("missing/saved.lut")), -5001);
    EXPECT_EQ(save(folder.string()), -5001);
    EXPECT_EQ(applet.readText(FG_LUT_SAVE_FILE), path("saved.lut"));
}

TEST_F(LookupTableFile, ASavedFileOverwritesALongerOne) {
    write("saved.lut", std::string(2'000'000, 'x'));
    ASSERT_EQ(save(path("saved.lut")), 0);
    EXPECT_TRUE(bytesOf("saved.lut").ends_with("\n16383,65535;\n"));
}

// Loading ------------------------------------------------------------------------------------------------------------

TEST_F(LookupTableFile, ADeviceIsAFileWithoutEntriesAndTheTablesAreSent) {
    for (const char* device : {"/dev/null", "/dev/zero"}) {
        useFiles();
        const Table before = table(Red);
        EXPECT_EQ(load(device), 0);
        EXPECT_EQ(accesses().size(), 3U) << device;
        EXPECT_EQ(table(Red), before);
    }
}

TEST_F(LookupTableFile, AFileIsLoadedIntoThreeTablesAndTheDesignGetsTheBlueOneThreeTimes) {
    useFiles();
    EXPECT_EQ(load(write("rgb.lut", Title + RedKeys + entries(0, 16383, 1) + GreenKeys + entries(0, 16383, 2) +
                                        BlueKeys + entries(0, 16383, 3))),
              0);
    EXPECT_THAT(accesses(),
                ElementsAre("LookupTable_R_LUTcontent = [0..16383]", "LookupTable_G_LUTcontent = [0..16383]",
                            "LookupTable_B_LUTcontent = [0..16383]"));
    EXPECT_EQ(table(Red), Table(TableSize, 1));
    EXPECT_EQ(table(Green), Table(TableSize, 2));
    EXPECT_EQ(table(Blue), Table(TableSize, 3));
    for (const std::size_t index : {0U, 16383U}) {
        EXPECT_EQ(designEntry("R", index), 3);
        EXPECT_EQ(designEntry("G", index), 3);
        EXPECT_EQ(designEntry("B", index), 3);
    }
    EXPECT_EQ(applet.readText(FG_LUT_CUSTOM_FILE), path("rgb.lut"));
}

TEST_F(LookupTableFile, WhatIsSavedLoadsAsItWas) {
    ASSERT_EQ(set(FG_PROCESSING_GAMMA, 2.2), 0);
    ASSERT_EQ(applet.setElement(Red, 100, 7), 0);
    ASSERT_EQ(applet.setElement(Green, 100, 8), 0);
    const Table red = table(Red), green = table(Green), blue = table(Blue);
    ASSERT_EQ(save(path("saved.lut")), 0);
    ASSERT_EQ(set(FG_PROCESSING_GAMMA, 1.0), 0);
    useFiles();
    EXPECT_EQ(load(path("saved.lut")), 0);
    EXPECT_EQ(table(Red), red);
    EXPECT_EQ(table(Green), green);
    EXPECT_EQ(table(Blue), blue);
}

TEST_F(LookupTableFile, AFileWaitsForTheCustomMode) {
    const std::string file = write("rgb.lut", Title + RedKeys + entries(0, 16383, 5));
    EXPECT_EQ(load(file), 0);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(entry(Red, 16383), 65535U);
    EXPECT_EQ(set(FG_LUT_TYPE, 0), 0);
    EXPECT_EQ(entry(Red, 16383), 5U);
    EXPECT_EQ(accesses().size(), 3U);
}

TEST_F(LookupTableFile, AMissingFileIsRefusedInTheCustomModeAlone) {
    EXPECT_EQ(load(path("missing.lut")), 0);
    EXPECT_EQ(set(FG_LUT_TYPE, 0), -2076);
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_TYPE), 3U);
    EXPECT_EQ(accessFlags(FG_LUT_CUSTOM_FILE), 1);
    EXPECT_EQ(load(""), 0);
    EXPECT_EQ(set(FG_LUT_TYPE, 0), 0);
    EXPECT_EQ(load(path("missing.lut")), -2076);
    EXPECT_EQ(applet.readText(FG_LUT_CUSTOM_FILE), "");
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(LookupTableFile, AnEmptyPathLoadsNothing) {
    useFiles();
    ASSERT_EQ(load(write("rgb.lut", Title + RedKeys + entries(0, 16383, 5))), 0);
    forget();
    EXPECT_EQ(load(""), 0);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(entry(Red, 0), 5U);
    EXPECT_EQ(applet.readText(FG_LUT_CUSTOM_FILE), "");
}

TEST_F(LookupTableFile, AFailureRestoresThePathAndKeepsTheLoadedTables) {
    const std::string file = write("rgb.lut", Title + RedKeys + entries(0, 16383, 5));
    const std::vector<std::string> tables = {"LookupTable_R_LUTcontent = [0..16383]",
                                             "LookupTable_G_LUTcontent = [0..16383]",
                                             "LookupTable_B_LUTcontent = [0..16383]"};
    for (unsigned failing = 1; failing <= 3; ++failing) {
        LookupTables path;
        ASSERT_EQ(path.set(FG_LUT_TYPE, 0), 0);
        path.forget();
        path.board.planFaultAt(failing, DesignFailure);
        EXPECT_EQ(path.applet.setText(FG_LUT_CUSTOM_FILE, file), DesignFailure);
        EXPECT_EQ(path.accesses(), failingAt(tables, failing));
        EXPECT_EQ(path.applet.readText(FG_LUT_CUSTOM_FILE), "");
        EXPECT_EQ(path.entry(Red, 0), 5U);
    }
}

// Files that are short, odd or hostile -------------------------------------------------------------------------------

TEST_F(LookupTableFile, AFileWithFewerEntriesLeavesTheRestAsItWas) {
    useFiles();
    EXPECT_EQ(load(write("short.lut",
                         "[red]\nnrOfElements=3;\n0,10;\n1,11;\n2,12;\n[green]\n0,20;\n1,21;\n2,22;\n"
                         "[blue]\n0,30;\n1,31;\n2,32;\n")),
              0);
    std::array<std::uint32_t, 4> run = {};
    EXPECT_EQ(applet.getField(Red, run), 0);
    EXPECT_THAT(run, ElementsAre(10, 11, 12, 12));  // the last is the identity's
    EXPECT_EQ(applet.getField(Green, run), 0);
    EXPECT_THAT(run, ElementsAre(20, 21, 22, 12));
    EXPECT_EQ(applet.getField(Blue, run), 0);
    EXPECT_THAT(run, ElementsAre(30, 31, 32, 12));
    EXPECT_EQ(designEntry("R", 0), 30);
}

TEST_F(LookupTableFile, TheKeysComeFromTheirFirstLinesForAllColours) {
    useFiles();
    EXPECT_EQ(load(write("keys.lut",
                         "[red]\nnrOfElements=1;\n0,10;\n[green]\nnrOfElements=2;\n0,20;\n1,21;\n"
                         "[blue]\nnrOfElements=3;\n0,30;\n1,31;\n2,32;\n")),
              0);
    EXPECT_EQ(entry(Blue, 0), 30U);
    EXPECT_EQ(entry(Blue, 1), 4U);  // the identity's
}

TEST_F(LookupTableFile, WithoutTheSectionsOfGreenAndBlueTheyAreBlack) {
    useFiles();
    EXPECT_EQ(load(write("red.lut", Title + RedKeys + entries(0, 16383, 5))), 0);
    EXPECT_EQ(table(Red), Table(TableSize, 5));
    EXPECT_EQ(table(Green), Table(TableSize, 0));
    EXPECT_EQ(table(Blue), Table(TableSize, 0));
    EXPECT_EQ(designEntry("R", 16383), 0);
}

TEST_F(LookupTableFile, EntriesThatAreMissingInASectionComeFromTheNext) {
    useFiles();
    EXPECT_EQ(load(write("gap.lut", Title + RedKeys + entries(0, 99, 1) + GreenKeys + entries(0, 16383, 2) + BlueKeys +
                                        entries(0, 16383, 3))),
              0);
    EXPECT_EQ(entry(Red, 99), 1U);
    EXPECT_EQ(entry(Red, 100), 2U);
    EXPECT_EQ(entry(Red, 16383), 2U);
}

TEST_F(LookupTableFile, AFileWithoutACountLoadsNothingAndSendsTheTables) {
    useFiles();
    for (const std::string& bytes : {std::string(), std::string("nonsense"), Title, std::string("[red]\n0,5;\n")}) {
        forget();
        EXPECT_EQ(load(write("odd.lut", bytes)), 0) << bytes;
        EXPECT_EQ(accesses().size(), 3U);
        EXPECT_EQ(entry(Red, 8191), 32765U);
    }
}

TEST_F(LookupTableFile, ADirectoryReadsAsAnEmptyFile) {
    useFiles();
    EXPECT_EQ(load(folder.string()), 0);
    EXPECT_EQ(entry(Blue, 8191), 32765U);
}

TEST_F(LookupTableFile, ACountOfFourThousandMillionTakesNoMoreThanTheTableHolds) {
    useFiles();
    EXPECT_EQ(load(write("huge.lut", "[red]\nnrOfElements=4000000000;\n0,9;\n")), 0);
    EXPECT_EQ(entry(Red, 0), 9U);
    EXPECT_EQ(entry(Red, 1), 0U);
    EXPECT_EQ(load(write("negative.lut", "[red]\nnrOfElements=-1;\n0,8;\n")), 0);
    EXPECT_EQ(entry(Red, 0), 8U);
}

TEST_F(LookupTableFile, ALineWithoutAnEndIsReadInPieces) {
    useFiles();
    EXPECT_EQ(load(write("long.lut", "[red]\nnrOfElements=2;\n" + std::string(100'000, 'a') + "\n0,6;\n1,7;\n" +
                                         std::string(100'000, 'b'))),
              0);
    EXPECT_EQ(entry(Red, 0), 6U);
    EXPECT_EQ(entry(Red, 1), 7U);
}

TEST_F(LookupTableFile, BinaryBytesDoNoHarm) {
    useFiles();
    std::string bytes = "[red]\nnrOfElements=16384;\n";
    for (int i = 0; i < 100'000; ++i) {
        bytes += static_cast<char>(i * 7 % 256);
    }
    EXPECT_EQ(load(write("binary.lut", bytes)), 0);
    EXPECT_EQ(accesses().size(), 3U);
}

TEST_F(LookupTableFile, ValuesAreTakenAsTheyStand) {
    useFiles();
    EXPECT_EQ(load(write("wide.lut", "[red]\nnrOfElements=3;\n0,70000;\n1,;\n2,abc;\n")), 0);
    EXPECT_EQ(entry(Red, 0), 70000U);
    EXPECT_EQ(entry(Red, 1), 0U);
    EXPECT_EQ(entry(Red, 2), 0U);
}

}  // namespace
}  // namespace quillon::image_test
