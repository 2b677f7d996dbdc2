// What the library shows to the loader.

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"

namespace quillon::client {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

std::vector<std::string> readelf(const std::string& option) {
    const std::string command =
        std::string("'") + READELF + "' -W " + option + " '" + testing::builtLibrary().string() + "'";
    std::FILE* const pipe = popen(command.c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    std::vector<std::string> lines;
    std::array<char, 4096> line{};
    while (std::fgets(line.data(), line.size(), pipe) != nullptr) {
        lines.emplace_back(line.data());
    }
    EXPECT_EQ(pclose(pipe), 0);
    return lines;
}

/// The names of the symbols that the library defines for others.
std::vector<std::string> exportedNames() {
    std::vector<std::string> names;
    for (const std::string& line : readelf("--dyn-syms")) {
        std::istringstream columns(line);
        std::string number, value, size, type, bind, visibility, section, name;
        columns >> number >> value >> size >> type >> bind >> visibility >> section >> name;
        if ((bind == "GLOBAL" || bind == "WEAK" || bind == "UNIQUE") && section != "UND") {
            names.push_back(name);
        }
    }
    return names;
}

TEST(DynamicSymbols, AreTheThirtyThreeFunctionsAndNothingElse) {
    EXPECT_THAT(exportedNames(),
                UnorderedElementsAre(
                    "Std_entry", "Info", "mkstemps", "Fg_setParameterWithType", "Fg_getParameterWithType",
                    "Fg_freeParameterStringWithType", "Fg_getParameterIdByName", "Fg_getParameterName",
                    "Fg_getParameterId", "Fg_getNrOfParameter", "Fg_saveConfig", "Fg_loadConfig",
                    "Fg_getParameterInfoXML", "Fg_getEventMask", "Fg_getEventName", "Fg_getAppletId", "Fg_AcquireEx",
                    "Fg_stopAcquireEx", "Fg_getStatusEx", "Fg_getLastPicNumberEx", "Fg_getLastPicNumberBlockingEx",
                    "Fg_FreeGrabber", "Fg_getLastErrorNumber", "Fg_getParameterInfo", "Fg_AllocShading",
                    "Fg_FreeShading", "Shad_SetSubValueLine", "Shad_SetMultValueLine", "Shad_SetFixedPatternNoiseLine",
                    "Shad_GetMaxLine", "Shad_GetAccess", "Shad_FreeAccess", "Shad_WriteActLine"));
}

TEST(DynamicSection, NeedsLoaderAndBoardAccessByTheirNamesAndNotTheSdk) {
    const std::vector<std::string> lines = readelf("-d");
    EXPECT_THAT(lines, Contains(HasSubstr("(NEEDED)             Shared library: [libtavrt.so]")));
    EXPECT_THAT(lines, Contains(HasSubstr("(NEEDED)             Shared library: [liborlo_hw.so]")));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("libfglib5"))));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("libsoftboard"))));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("dispatcher"))));
}

TEST(DynamicSection, TellsNoPath) {
    const std::vector<std::string> lines = readelf("-d");
    EXPECT_THAT(lines, Not(Contains(HasSubstr("RPATH"))));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("RUNPATH"))));
    EXPECT_THAT(lines, Contains(HasSubstr("(SONAME)             Library soname: [libQuillon.so]")));
}

TEST(DynamicSection, KeepsTheLibraryInMemoryForTheDispatchersCallbacks) {
    EXPECT_THAT(readelf("-d"), Contains(HasSubstr("NODELETE")));
}

}  // namespace
}  // namespace quillon::client
