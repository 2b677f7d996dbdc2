#include <gmock/gmock.h>

#include <fstream>

#include "client/testing/BuiltApplet.h"
#include "tests/cli/Command.h"

// What docs/formats.md tells its readers.

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

void replace(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    ASSERT_NE(place, std::string::npos) << from;
    text.replace(place, from.size(), to);
}

/// Loads the start-up state with one text in place of another and reads a parameter.
Outcome loaded(const std::string& from, const std::string& to, const std::string& name = "FG_WIDTH") {
    const Folder folder;
    quillon({"save", folder / "state.mcf"});
    std::string text = contentOf(folder / "state.mcf");
    replace(text, from, to);
    std::ofstream(folder / "state.mcf", std::ios::binary) << text;
    return quillon({"get", name, "--mcf", folder / "state.mcf"});
}

TEST(ConfigurationFormat, AFileWithoutItsSuffixIsRefused) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", folder / "state.mcf"}).status, 0);
    std::filesystem::rename(folder / "state.mcf", folder / "state.txt");
    for (const char* name : {"state.txt", "none.mcf"}) {
        EXPECT_THAT(quillon({"load", folder / name}).err, HasSubstr("-2076")) << name;
    }
}

TEST(ConfigurationFormat, WhatBelongsToAnotherOrIsMissingIsRefused) {
    EXPECT_THAT(loaded("Typ='Quillon'", "Typ='Other'").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("AktivePort=0;\n", "").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("[Port A]", "").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("\nFG_WIDTH=1024;", "").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("\nFG_WIDTH=", "\n FG_WIDTH=").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("\nFG_WIDTH=", "\nFG_WIDTH =").err, HasSubstr("-5000"));
    EXPECT_THAT(loaded("[Kamerasektion]\n\nConfigFileVersion=2.0;\nHersteller", "[Kamerasektion]\n\nHersteller").status,
                0);
}

TEST(ConfigurationFormat, LinesOfAnotherSystemAreRefused) {
    const Folder folder;
    quillon({"save", folder / "state.mcf"});
    std::string text;
    for (const char character : contentOf(folder / "state.mcf")) {
        text += character == '\n' ? "\r\n" : std::string(1, character);
    }
    std::ofstream(folder / "state.mcf", std::ios::binary) << text;
    EXPECT_THAT(quillon({"load", folder / "state.mcf"}).err, HasSubstr("-5000"));
}

TEST(ConfigurationFormat, ValuesAreTakenForWhatTheirBeginningSays) {
    const std::vector<std::pair<std::string, std::string>> values{{"wide;", "0"},
                                                                  {";", "0"},
                                                                  {"0x800;", "0"},
                                                                  {"2048abc;", "2048"},
                                                                  {"4294969344;", "2048"},
                                                                  {"2048", "2048"},
                                                                  {" 2048;", "2048"},
                                                                  {"2048;\nFG_WIDTH=4096;", "2048"},
                                                                  {"2048;\nFG_WIDHT=7;", "2048"},
                                                                  {"6;", "6"}};
    for (const auto& [value, held] : values) {
        EXPECT_EQ(loaded("\nFG_WIDTH=1024;", "\nFG_WIDTH=" + value).out, "FG_WIDTH = " + held + " pixel\n") << value;
    }
    EXPECT_EQ(loaded("FG_PROCESSING_GAMMA=1;", "FG_PROCESSING_GAMMA=1,5;", "FG_PROCESSING_GAMMA").out,
              "FG_PROCESSING_GAMMA = 1\n");
}

TEST(ConfigurationFormat, AValueThatIsNotAcceptedIsHeldAllTheSame) {
    EXPECT_EQ(loaded("FG_LINE_DOWNSCALE=1;", "FG_LINE_DOWNSCALE=0;", "FG_LINE_DOWNSCALE").out,
              "FG_LINE_DOWNSCALE = 0 pulses\n");
    const Folder folder;
    quillon({"save", folder / "state.mcf"});
    std::string text = contentOf(folder / "state.mcf");
    replace(text, "\nFG_WIDTH=1024;", "\nFG_WIDTH=6;");
    replace(text, "FG_LINE_DOWNSCALE=1;", "FG_LINE_DOWNSCALE=0;");
    std::ofstream(folder / "state.mcf", std::ios::binary) << text;
    bool widthWritten = false;
    bool downscaleWritten = false;
    const auto accesses = quillon({"load", folder / "state.mcf", "--trace", "--json"}).json()["accesses"];
    for (const auto& access : accesses) {
        const auto name = access["name"].get<std::string>();
        widthWritten = widthWritten || (name == "Device1_Process0_Buffer_0_XLength" && access["value"] == 6);
        downscaleWritten = downscaleWritten || name.find("Downscale") != std::string::npos;
    }
    EXPECT_TRUE(widthWritten);
    EXPECT_FALSE(downscaleWritten);
}

using Replacements = std::vector<std::pair<std::string, std::string>>;

/// An applet that has read the start-up curve's file with some texts in place of others.
class TableFormat : public ::testing::Test {
protected:
    TableFormat() { EXPECT_EQ(built_.applet.setInt(FG_LUT_TYPE, 0), 0); }

    int loadFile(const std::string& file) { return built_.applet.setText(FG_LUT_CUSTOM_FILE, file); }
    void load(const Replacements& replacements) {
        const Folder folder;
        quillon({"lut", "--save", folder / "curve.lut"});
        std::string text = contentOf(folder / "curve.lut");
        for (const auto& [from, to] : replacements) {
            replace(text, from, to);
        }
        std::ofstream(folder / "curve.lut", std::ios::binary) << text;
        EXPECT_EQ(loadFile(folder / "curve.lut"), 0);
    }
    std::uint32_t red(std::size_t index) { return table(FG_LUT_VALUE_RED)[index]; }
    std::vector<std::uint32_t> table(int id) {
        std::vector<std::uint32_t> entries(16384);
        EXPECT_EQ(built_.applet.getField(id, entries), 0);
        return entries;
    }

private:
    client::testing::BuiltApplet built_;
};

TEST_F(TableFormat, ValuesAreTakenForWhatTheyAre) {
    load({{"\n5,20;", "\n5,99999;"}});
    EXPECT_EQ(red(5), 99999U);
    load({{"\n5,20;", "\n5,x;"}});
    EXPECT_EQ(red(5), 0U);
}

TEST_F(TableFormat, ASmallerCountLeavesTheRest) {
    load({{"nrOfElements=16384;", "nrOfElements=4;"}, {"\n3,12;", "\n3,13;"}, {"\n5,20;", "\n5,21;"}});
    EXPECT_EQ(red(3), 13U);
    EXPECT_EQ(red(5), 20U);
}

TEST_F(TableFormat, ALargerCountIsThatOfTheTables) {
    load({{"nrOfElements=16384;", "nrOfElements=99999;"}, {"\n5,20;", "\n5,21;"}});
    EXPECT_EQ(red(5), 21U);
    EXPECT_EQ(red(16383), 65535U);
}

TEST_F(TableFormat, AnEntryThatIsLeftOutIsLookedForInTheNextSection) {
    const std::string entries = "16380,65523;\n16381,65527;\n16382,65531;\n16383,65535;\n";
    load({{entries, "16381,7;\n"}});
    EXPECT_EQ(red(16379), 65519U);
    EXPECT_EQ(red(16381), 65527U);
    load({{entries, ""}, {entries, ""}, {entries, ""}});
    EXPECT_EQ(red(16379), 65519U);
    EXPECT_EQ(red(16380), 0U);
}

TEST_F(TableFormat, WhatIsNoTableChangesNothing) {
    const Folder folder;
    std::ofstream(folder / "curve.lut") << "no table\n";
    const auto before = table(FG_LUT_VALUE_BLUE);
    EXPECT_EQ(loadFile(folder / "curve.lut"), 0);
    EXPECT_EQ(table(FG_LUT_VALUE_BLUE), before);
    EXPECT_EQ(loadFile(folder / "none.lut"), -2076);
}

TEST_F(TableFormat, TheCommandRefusesWhatIsNoWholeTable) {
    const Folder folder;
    std::ofstream(folder / "curve.lut") << "no table\n";
    const Outcome outcome = quillon({"lut", "--load", folder / "curve.lut"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("it is no lookup table"));
    EXPECT_THAT(quillon({"lut", "--load", folder / "none.lut"}).err, HasSubstr("-2076"));
}

}  // namespace
}  // namespace quillon::cli::testing
