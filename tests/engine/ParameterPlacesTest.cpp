// Who greps a parameter's name finds all of it: its row in the list, its lines in the switches, its handler, its
// catalogue row, its configuration key and its tests. The sources are read as text.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "quillon/PublicParameters.h"

namespace quillon {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

using Names = std::vector<std::string>;

/// The SDK answers these, or they are about the applet and no setting of it: users are shown no record.
constexpr auto Undescribed = std::to_array<const char*>({
    "FG_TRANSFER_LEN",
    "FG_NR_OF_PROCESSES",
    "FG_NR_OF_DMAS",
    "FG_NR_OF_CAMS",
    "FG_DMA_PORT",
    "FG_CAM_PORT",
    "FG_APC_STOP_TIMEOUT",
    "FG_PARAM_DESCR",
});

constexpr auto InNoConfiguration = std::to_array<const char*>({
    // What the applet, the SDK or the SDK's side of the board is: the same with every configuration.
    "FG_APPLET_VERSION",
    "FG_APPLET_REVISION",
    "FG_APPLET_ID",
    "FG_APPLET_BUILD_TIME",
    "FG_TAV_FILE",
    "FG_TRANSFER_LEN",
    "FG_NR_OF_PROCESSES",
    "FG_NR_OF_DMAS",
    "FG_NR_OF_CAMS",
    "FG_DMA_PORT",
    "FG_CAM_PORT",
    "FG_APC_STOP_TIMEOUT",
    "FG_PARAM_DESCR",
    "FG_PIXELDEPTH",
    "FG_LUT_IMPLEMENTATION_TYPE",
    "FG_LUT_IN_BITS",
    "FG_LUT_OUT_BITS",
    // What is measured, or how things stand at the moment. Others of this kind are saved, and no load reads them.
    "FG_DMASTATUS",
    "FG_CAMSTATUS",
    "FG_CAMSTATUS_EXTENDED",
    "FG_SYSTEMMONITOR_FPGA_TEMPERATURE",
    "FG_SYSTEMMONITOR_FPGA_VCC_INT",
    "FG_SYSTEMMONITOR_FPGA_VCC_AUX",
    "FG_SYSTEMMONITOR_FPGA_VCC_BRAM",
    "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH",
    "FG_SYSTEMMONITOR_CURRENT_LINK_SPEED",
    "FG_SYSTEMMONITOR_PCIE_LINK_GEN2_CAPABLE",
    "FG_SYSTEMMONITOR_PCIE_LINK_PARTNER_GEN2_CAPABLE",
    "FG_SYSTEMMONITOR_PCIE_TRAINED_PAYLOAD_SIZE",
    "FG_SYSTEMMONITOR_EXTENSION_CONNECTOR_PRESENT",
    "FG_SYSTEMMONITOR_FPGA_DNA",
    "FG_ALTERNATIVE_BOARD_DETECTION",
    "FG_FILLLEVEL",
    "FG_OVERFLOW",
    "FG_IMGTRIGGER_IS_BUSY",
    "FG_DEBUGSOURCENAME",
    "FG_DEBUGOUTXPOS",
    "FG_DEBUGOUTYPOS",
    "FG_DEBUGOUTPIXEL",
    "FG_DEBUGREADY",
    // A write is one act and leaves no setting behind.
    "FG_DEBUGINSERT",
    "FG_DEBUGWRITEPIXEL",
    "FG_DEBUGWRITEFLAG",
    "FG_DEBUGSAVECONFIG",
    "FG_LUT_SAVE_FILE",
    "FG_SENDSOFTWARETRIGGER",
    // A configuration keeps what the tables come from: the file, or the numbers of the processing curve.
    "FG_LUT_VALUE_RED",
    "FG_LUT_VALUE_GREEN",
    "FG_LUT_VALUE_BLUE",
    // The file has no key for it, and a start does not send it either.
    "FG_LINEORDER",
});

const std::filesystem::path SourceFolder = SOURCE_FOLDER;

Names linesOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    EXPECT_TRUE(stream.is_open()) << file;
    Names lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The source without the lines that are comments.
std::string codeOf(const char* file) {
    std::string code;
    for (const std::string& line : linesOf(SourceFolder / file)) {
        const std::size_t first = line.find_first_not_of(' ');
        if (first != std::string::npos && line.compare(first, 2, "//") != 0) {
            code += line + '\n';
        }
    }
    return code;
}

/// What the pattern's one group stands for, wherever it matches.
std::multiset<std::string> captured(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::multiset<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

/// Adds the words of the line that could be names of parameters.
void enterWords(const std::string& line, std::set<std::string>& words) {
    constexpr const char* letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    std::size_t end = 0;
    for (std::size_t begin = line.find_first_of(letters); begin != std::string::npos;
         begin = line.find_first_of(letters, end)) {
        end = std::min(line.find_first_not_of(letters, begin), line.size());
        if (line.compare(begin, 3, "FG_") == 0) {
            words.insert(line.substr(begin, end - begin));
        }
    }
}

/// The parameters that do not stand in `found` once.
Names notOnceIn(const std::multiset<std::string>& found) {
    Names names;
    for (const PublicParameter& parameter : PublicParameters) {
        if (found.count(std::string(parameter.name)) != 1) {
            names.emplace_back(parameter.name);
        }
    }
    return names;
}

Names namesWithAccess(ParameterAccess access) {
    Names names;
    for (const PublicParameter& parameter : PublicParameters) {
        if (parameter.access == access) {
            names.emplace_back(parameter.name);
        }
    }
    return names;
}

/// The parameters that the comments of the set functions name in front of their first colon, one entry a function.
std::multiset<std::string> parametersOfHandlers() {
    std::multiset<std::string> found;
    for (const char* folder : {"image", "trigger", "debug"}) {
        for (const auto& entry : std::filesystem::directory_iterator(SourceFolder / folder)) {
            if (entry.path().extension() != ".h") {
                continue;
            }
            std::string comment;
            for (const std::string& line : linesOf(entry.path())) {
                if (line.starts_with("    /// ")) {
                    comment += line;
                    continue;
                }
                if (line.starts_with("    void set")) {
                    found.merge(captured(comment.substr(0, comment.find(':')), R"(\b(FG_\w+))"));
                }
                comment.clear();
            }
        }
    }
    return found;
}

TEST(ParameterPlaces, EachHasItsRowInTheList) {
    EXPECT_THAT(notOnceIn(captured(codeOf("include/quillon/Parameters.def"), R"(PUBLIC_PARAMETER\((FG_\w+), )")),
                IsEmpty());
}

TEST(ParameterPlaces, EachHasItsLineInTheGetSwitch) {
    EXPECT_THAT(notOnceIn(captured(codeOf("engine/GetSwitch.cpp"), R"((?:case|if \(id ==) (FG_\w+)[:)])")), IsEmpty());
}

TEST(ParameterPlaces, TheWritableOnesAndNoOthersHaveTheirLineInTheSetSwitch) {
    EXPECT_THAT(notOnceIn(captured(codeOf("engine/SetSwitch.cpp"), R"(case (FG_\w+):)")),
                UnorderedElementsAreArray(namesWithAccess(ParameterAccess::ReadOnly)));
}

TEST(ParameterPlaces, TheWritableOnesAndNoOthersAreNamedAtTheirHandler) {
    EXPECT_THAT(notOnceIn(parametersOfHandlers()),
                UnorderedElementsAreArray(namesWithAccess(ParameterAccess::ReadOnly)));
}

TEST(ParameterPlaces, EachThatUsersAreShownHasItsRowInTheCatalogue) {
    EXPECT_THAT(notOnceIn(captured(codeOf("info/CatalogueTables.cpp"), R"(", (FG_\w+), )")),
                UnorderedElementsAreArray(Undescribed));
}

TEST(ParameterPlaces, EachThatAConfigurationKeepsHasItsKey) {
    EXPECT_THAT(notOnceIn(captured(codeOf("engine/StateKeys.cpp"), R"re("(FG_\w+)")re")),
                UnorderedElementsAreArray(InNoConfiguration));
}

TEST(ParameterPlaces, EachIsInATest) {
    std::set<std::string> words;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SourceFolder / "tests")) {
        const std::filesystem::path& file = entry.path();
        if ((file.extension() == ".cpp" || file.extension() == ".h") &&
            file.filename() != std::filesystem::path(__FILE__).filename()) {
            for (const std::string& line : linesOf(file)) {
                enterWords(line, words);
            }
        }
    }
    Names untested;
    for (const PublicParameter& parameter : PublicParameters) {
        if (!words.contains(std::string(parameter.name))) {
            untested.emplace_back(parameter.name);
        }
    }
    EXPECT_THAT(untested, IsEmpty());
}

}  // namespace
}  // namespace quillon
