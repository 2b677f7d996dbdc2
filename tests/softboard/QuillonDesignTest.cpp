#include <cstdint>
#include <string>

#include "softboard/src/DesignDescription.h"
#include "tests/softboard/OpenBoard.h"

namespace {

class QuillonDesign : public OpenBoard {
protected:
    std::string text(const std::string& name) {
        char value[128] = "";
        return softboard_get_text(board, name.c_str(), value, sizeof value) == 0 ? value : "no such text";
    }
    std::int64_t integer(const std::string& name) {
        std::int64_t value = -1;
        softboard_get_integer(board, name.c_str(), &value);
        return value;
    }
};

TEST_F(QuillonDesign, HasItsParametersUnderDenseIds) {
    EXPECT_EQ(id("Device1_Process0_Buffer_0_SensorWidth"), 10000);
    EXPECT_EQ(id("Device1_Process0_Buffer_0_SensorHeight"), 10001);
    const auto described = softboard::parseDesign(fileContent(DESIGN_FILE));
    for (std::size_t i = 0; i < described->parameters.size(); ++i) {
        EXPECT_EQ(id(described->parameters[i].name.c_str()), 10000 + static_cast<int>(i));
    }
}

TEST_F(QuillonDesign, TellsFiveOutputBranches) {
    const std::string format = "Device1_Process0_OutputFormat_FG_FORMAT_";
    EXPECT_EQ(text(format + "NoOfInputs"), "5");
    EXPECT_EQ(text(format + "MaxBits"), "16");
    EXPECT_EQ(text(format + "Input0"), "FG_COL24");
    EXPECT_EQ(text(format + "Input1"), "FG_COL30");
    EXPECT_EQ(text(format + "Input2"), "FG_COL36");
    EXPECT_EQ(text(format + "Input3"), "FG_COL42");
    EXPECT_EQ(text(format + "Input4"), "FG_COL48");
}

TEST_F(QuillonDesign, HasATrashSwitchForEveryBranchThatSaysSo) {
    for (int branch = 0; branch < 5; ++branch) {
        const std::string number = std::to_string(branch);
        const bool flagged = text("Device1_Process0_OutputFormat_FG_FORMAT_InputFlag" + number) == "1";
        const std::string trash = "Device1_Process0_OutputFormat_Convert" + number + "_VirtualTrash_EnableTrash_Value";
        EXPECT_EQ(id(trash.c_str()) > 0, flagged) << branch;
        EXPECT_EQ(flagged, branch < 4) << branch;
    }
}

TEST_F(QuillonDesign, HasOneDebugPointOfEachKind) {
    EXPECT_EQ(text("Device1_Process0_Debug_Entries"), "2");
    EXPECT_EQ(text("Device1_Process0_Debug_T0"), "Inject");
    EXPECT_EQ(text("Device1_Process0_Debug_T1"), "InjectMonitor");
    for (const char* const suffix : {"_OperationMode", "_DebugFile", "_Insert", "_Inject_WritePixel",
                                     "_Inject_WriteFlag", "_Inject_ReadyForInjection"}) {
        for (const char* const point : {"Device1_Process0_Debug_P0", "Device1_Process0_Debug_P1"}) {
            EXPECT_GT(id(("Device1_Process0_" + text(point) + suffix).c_str()), 0) << point << suffix;
        }
    }
    for (const char* const suffix : {"_XPosition", "_YPosition", "_PixelValue"}) {
        EXPECT_GT(id(("Device1_Process0_" + text("Device1_Process0_Debug_P1") + suffix).c_str()), 0) << suffix;
    }
}

TEST_F(QuillonDesign, HasMemoryOfFourGibibytes) {
    EXPECT_EQ(integer("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth"), 26);
    EXPECT_EQ(integer("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth"), 512);
    EXPECT_EQ(integer("Device1_Process0_Buffer_0_LinkPixelSpace_Parallelism"), 8);
}

TEST_F(QuillonDesign, StartsEveryParameterWithinItsOwnRange) {
    const auto described = softboard::parseDesign(fileContent(DESIGN_FILE));
    ASSERT_FALSE(described->parameters.empty());
    for (const softboard::ParameterDescription& parameter : described->parameters) {
        if (parameter.type == softboard::ValueType::Double) {
            EXPECT_LE(parameter.realMinimum, parameter.real) << parameter.name;
            EXPECT_GE(parameter.realMaximum, parameter.real) << parameter.name;
        } else if (parameter.type <= softboard::ValueType::UInt64) {
            EXPECT_LE(parameter.minimum, parameter.integer) << parameter.name;
            EXPECT_GE(parameter.maximum, parameter.integer) << parameter.name;
        }
    }
}

TEST_F(QuillonDesign, HasThirtyOneEventsOfWhichOneIsInternal) {
    int signals = 0;
    int events = 0;
    while (const tav_event* event = TavGetEvent(design, events)) {
        signals += event->kind == 1 ? 1 : 0;
        ++events;
    }
    EXPECT_EQ(events, 31);
    EXPECT_EQ(signals, 30);
    EXPECT_STREQ(TavGetEvent(design, 0)->name, "Device1_Process0_Overflow_Overflow");
}

}  // namespace
