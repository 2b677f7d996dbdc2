/// @file
/// The stage of most tests: a board that runs the maintained design, with an SDK handle.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "softboard/fglib5.h"
#include "softboard/softboard.h"
#include "softboard/tavrt.h"

inline std::string fileContent(const std::string& name) {
    std::ostringstream content;
    content << std::ifstream(name, std::ios::binary).rdbuf();
    return content.str();
}

/// The name of a file that no other test uses; tests run beside each other.
inline std::string temporaryFile() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    return testing::TempDir() + "softboard_" + test.test_suite_name() + "_" + test.name();
}

/// The packed image of the maintained design, read once.
inline const std::string& designImage() {
    static const std::string image = fileContent(std::string(TEST_FILES) + "/design.img");
    return image;
}

inline fpga_design* loadDesignImage() {
    return TavLoadDesignFromBuffer(designImage().data(), designImage().size(), 1);
}

/// Names that most tests use.
inline constexpr const char* XLength = "Device1_Process0_Buffer_0_XLength";
inline constexpr const char* ExsyncPeriod = "Device1_Process0_Trigger_Trigger_ExsyncPeriod";
inline constexpr const char* RedTable = "Device1_Process0_LookupTable_R_LUTcontent";
inline constexpr const char* Temperature = "Device1_Process0_BoardStatus_FpgaTemperature";

class OpenBoard : public testing::Test {
protected:
    void SetUp() override {
        board = softboard_open();
        design = loadDesignImage();
        ASSERT_NE(design, nullptr);
        fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
        ASSERT_NE(fg, nullptr);
        softboard_transcript_clear(board);
    }
    void TearDown() override {
        Fg_FreeGrabber(fg);
        TavUnloadTavFile(design);
        softboard_close(board);
    }

    int id(const char* name) { return Fg_getParameterIdByName(fg, name); }

    template <class Value>
    int set(const char* name, Value value, int type) {
        return Fg_setParameterWithType(fg, id(name), &value, 0, type);
    }
    template <class Value>
    int get(const char* name, Value& value, int type) {
        return Fg_getParameterWithType(fg, id(name), &value, 0, type);
    }

    /// The accesses (no calls) since the transcript was cleared, as "read NAME=value" and "write NAME=value".
    std::vector<std::string> accesses() const {
        std::vector<std::string> lines;
        for (size_t index = 0; index < softboard_transcript_size(board); ++index) {
            softboard_access access{};
            softboard_transcript_get(board, index, &access);
            if (access.direction != SOFTBOARD_CALL) {
                const char* const word = access.direction == SOFTBOARD_READ ? "read " : "write ";
                lines.push_back(std::string(word) + access.name + "=" + access.value);
            }
        }
        return lines;
    }
    softboard_access lastAccess() const {
        softboard_access access{};
        softboard_transcript_get(board, softboard_transcript_size(board) - 1, &access);
        return access;
    }

    IXdevice* board = nullptr;
    fpga_design* design = nullptr;
    Fg_Struct* fg = nullptr;
};
