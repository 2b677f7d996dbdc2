#include "tests/frames/DesignSettings.h"

#include <gtest/gtest.h>

#include "softboard/softboard.h"

namespace quillon::frames_test {

namespace pixels = softboard::pixels;

namespace {

const std::string Process0 = "Device1_Process0_";

/// Bits of a component of each branch of the output format; the last cannot be switched to its trash.
constexpr std::array<std::uint32_t, 5> BranchBits = {8, 10, 12, 14, 16};
constexpr std::uint32_t BranchesWithTrash = 4;

}  // namespace

std::int64_t DesignSettings::integer(const std::string& name) const {
    std::int64_t value = -1;
    EXPECT_EQ(softboard_get_integer(board_, (Process0 + name).c_str(), &value), 0) << name;
    return value;
}

std::shared_ptr<const pixels::Settings> DesignSettings::read() {
    auto settings = std::make_shared<pixels::Settings>();
    settings->version = ++version_;
    settings->bits = whole("Buffer_0_PixelFormat");
    settings->simulator = integer("CameraSimulator_Enable_SelectSource") == 1;
    settings->ramp.enableX = integer("CameraSimulator_EnableX_Enable_Value") == 1;
    settings->ramp.yDivisor = whole("CameraSimulator_Y_Divisor");
    settings->ramp.frameDivisor = whole("CameraSimulator_Frame_Divisor");
    settings->ramp.offset = whole("CameraSimulator_Offset_Value");
    settings->sensorWidth = whole("Buffer_0_SensorWidth");
    settings->xMirror = integer("Buffer_0_XMirror") == 1;
    settings->yMirror = integer("Buffer_0_YMirror") == 1;
    settings->xOffset = whole("Buffer_0_XOffset");
    settings->xLength = whole("Buffer_0_XLength");
    settings->lookup = integer("LookupTable_EnableLUT_Value") == 1;
    settings->shift = whole("OutputFormat_DynamicShift_Shift_Value");

    const std::uint32_t branch = whole("OutputFormat_FG_FORMAT_SelectSource");
    const bool trash = branch < BranchesWithTrash && integer("OutputFormat_Convert" + std::to_string(branch) +
                                                             "_VirtualTrash_EnableTrash_Value") == 1;
    settings->formatBits = trash ? 0 : BranchBits.at(branch);

    const std::array<std::string, pixels::Colours> names = {"Red", "Green", "Blue"};
    for (std::size_t colour = 0; colour < pixels::Colours; ++colour) {
        settings->order[colour] =
            whole("Camera_SortImage_ColorInterpret_SelectComponents_" + names[colour] + "Component");
        const std::string coefficient = Process0 + "WhiteBalance_White_" + names[colour] + "Coefficient";
        EXPECT_EQ(softboard_get_double(board_, coefficient.c_str(), &settings->coefficient[colour]), 0);
    }
    if (settings->lookup && !tablesKnown_) {
        for (std::size_t colour = 0; colour < pixels::Colours; ++colour) {
            const std::string name = Process0 + "LookupTable_" + names[colour].substr(0, 1) + "_LUTcontent";
            auto table = std::make_shared<pixels::Table>();
            int result = 0;
            for (std::size_t entry = 0; entry < table->size() && result == 0; ++entry) {
                std::int64_t value = -1;
                result = softboard_get_element(board_, name.c_str(), entry, &value);
                (*table)[entry] = static_cast<std::uint16_t>(value);
            }
            EXPECT_EQ(result, 0) << name;
            tables_[colour] = std::move(table);
        }
        tablesKnown_ = true;
    }
    if (settings->lookup) {
        settings->table = tables_;
    }
    all_.emplace(settings->version, settings);
    return settings;
}

}  // namespace quillon::frames_test
