// A design loader that counts more registers than it has, gives events no names, and names of any length. This program
// answers some of the loader's functions itself, for the whole process.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"
#include "tests/support/Surroundings.h"
#include "wrapper/DesignLoader.h"

namespace {

struct Lie {
    int registerCount = 0;
    std::vector<const char*> registerNames;
    std::vector<quillon::TavEvent> events;
};
Lie* lie = nullptr;

}  // namespace

#define TOLD __attribute__((visibility("default")))

extern "C" {

TOLD int TavGetNrOfRegister(fpga_design*) {
    return lie->registerCount;
}

TOLD const char* TavGetRegisterName(fpga_design*, int number) {
    const std::size_t index = static_cast<std::size_t>(number) - 1;
    return index < lie->registerNames.size() ? lie->registerNames[index] : nullptr;
}

TOLD int TavGetRegisterByName(fpga_design*, const char* name) {
    for (std::size_t i = 0; i < lie->registerNames.size(); ++i) {
        if (lie->registerNames[i] == name) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

TOLD const void* TavGetEvent(fpga_design*, int index) {
    return static_cast<std::size_t>(index) < lie->events.size() ? &lie->events[static_cast<std::size_t>(index)]
                                                                : nullptr;
}

}  // extern "C"

namespace quillon::client {
namespace {

using testing::BuiltApplet;

class LyingLoader : public ::testing::Test {
protected:
    LyingLoader() { lie = &told; }
    ~LyingLoader() override { lie = nullptr; }

    const test::Variable registers{"ORLO_ENABLE_DRA", "1"};
    Lie told;
    const std::string megabyte = std::string(1 << 20, 'x');
};

TEST_F(LyingLoader, RegistersWithoutANameAreLeftOut) {
    told.registerCount = 6;
    told.registerNames = {"First", nullptr, "Third"};
    BuiltApplet built;
    EXPECT_EQ(built.applet.parameterCount(), PositionCount + 2);
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount), "DRA_First");
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount + 1), "DRA_Third");
    EXPECT_EQ(built.applet.parameterId("DRA_First"), 1000001);
    EXPECT_EQ(built.applet.parameterId("DRA_Third"), 1000003);
    EXPECT_EQ(built.applet.functions().Fg_getParameterName(built.applet.handle(), PositionCount + 2), nullptr);
    const std::vector<ParameterRecord> records = built.applet.parameterInfo().front().children;
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].symbol, "DRA_First");
    EXPECT_EQ(records[1].symbol, "DRA_Third");
}

TEST_F(LyingLoader, RegistersAreCountedAsFarAsTheyHaveIds) {
    told.registerCount = 2147483647;
    told.registerNames = {"Only"};
    BuiltApplet built;
    EXPECT_EQ(built.applet.parameterCount(), PositionCount + 1);
}

TEST_F(LyingLoader, ADesignWithoutRegistersHasAnEmptyGroup) {
    for (const int count : {0, -1}) {
        told.registerCount = count;
        BuiltApplet built;
        EXPECT_EQ(built.applet.parameterCount(), PositionCount);
        EXPECT_EQ(built.applet.parameterInfo().front().label, "Direct Register Access");
        EXPECT_TRUE(built.applet.parameterInfo().front().children.empty());
    }
}

TEST_F(LyingLoader, EventsWithoutANameAreLeftOut) {
    const char* overflow = "Device1_Process0_Overflow_Overflow";
    told.events = {
        {nullptr, nullptr, 0, 1}, {nullptr, "Own", 1, 1}, {nullptr, overflow, 2, 2}, {nullptr, nullptr, 3, 2}};
    BuiltApplet built;
    EXPECT_EQ(built.applet.eventMask("Own"), 2U);
    EXPECT_EQ(built.applet.eventMask("FG_OVERFLOW_CAM0"), 4U);
    EXPECT_EQ(built.applet.functions().Fg_getEventName(built.applet.handle(), 1), nullptr);
    EXPECT_EQ(built.applet.functions().Fg_getEventName(built.applet.handle(), 8), nullptr);
}

TEST_F(LyingLoader, ANameMayBeAMegabyteLong) {
    told.registerCount = 1;
    told.registerNames = {megabyte.c_str()};
    told.events = {{nullptr, megabyte.c_str(), 0, 1}};
    BuiltApplet built;
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount), "DRA_" + megabyte);
    EXPECT_EQ(built.applet.parameterId("DRA_" + megabyte), 1000001);
    EXPECT_EQ(built.applet.eventMask(megabyte), 1U);
}

}  // namespace
}  // namespace quillon::client
