#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include "tests/softboard/OpenBoard.h"

namespace {

class Configuration : public OpenBoard {
protected:
    void TearDown() override {
        std::remove(name.c_str());
        OpenBoard::TearDown();
    }
    const std::string name = temporaryFile();
};

TEST_F(Configuration, ComesBackFromItsFile) {
    set(XLength, std::uint32_t{640}, 2);
    set(ExsyncPeriod, 0.1, 5);
    Fg_setParameterWithType(fg, id("Device1_Process0_Debug_CameraInput_DebugFile"), "a b.tif", 0, 6);
    EXPECT_EQ(Fg_saveConfig(fg, name.c_str()), 0);
    set(XLength, std::uint32_t{4}, 2);
    set(ExsyncPeriod, 9.0, 5);
    Fg_setParameterWithType(fg, id("Device1_Process0_Debug_CameraInput_DebugFile"), "", 0, 6);
    EXPECT_EQ(Fg_loadConfig(fg, name.c_str()), 0);
    std::uint32_t length = 0;
    double period = 0.0;
    char file[32] = "";
    get(XLength, length, 2);
    get(ExsyncPeriod, period, 5);
    Fg_getParameterWithType(fg, id("Device1_Process0_Debug_CameraInput_DebugFile"), file, 0, 6);
    EXPECT_EQ(length, 640U);
    EXPECT_EQ(period, 0.1);
    EXPECT_STREQ(file, "a b.tif");
}

TEST_F(Configuration, HoldsLinesOfNameAndValue) {
    Fg_saveConfig(fg, name.c_str());
    const std::string content = fileContent(name);
    EXPECT_NE(content.find("Device1_Process0_Buffer_0_XLength=1024\n"), std::string::npos);
    EXPECT_EQ(content.find("FpgaTemperature"), std::string::npos);
}

TEST_F(Configuration, IsRefusedIfTheFileMakesNoSense) {
    for (const char* const content : {"no equals sign\n", "Unknown=1\n", "Device1_Process0_Buffer_0_XLength=wide\n",
                                      "Device1_Process0_BoardStatus_FpgaTemperature=1\n"}) {
        std::ofstream(name) << content;
        EXPECT_EQ(Fg_loadConfig(fg, name.c_str()), SOFTBOARD_E_FILE) << content;
    }
}

TEST_F(Configuration, NeedsAFileName) {
    EXPECT_EQ(Fg_saveConfig(fg, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_loadConfig(fg, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_saveConfig(fg, "no such directory/file"), SOFTBOARD_E_FILE);
    EXPECT_EQ(Fg_loadConfig(fg, "no such file"), SOFTBOARD_E_FILE);
}

}  // namespace
