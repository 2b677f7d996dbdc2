// Every exported function that takes a handle, with a null handle and with a handle whose location holds null.

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>

#include "client/testing/BuiltApplet.h"

namespace quillon::client {
namespace {

enum class Given { NullHandle, LocationAtNull };

std::string nameOf(Given given) {
    return given == Given::NullHandle ? "NullHandle" : "LocationAtNull";
}

void PrintTo(Given given, std::ostream* stream) {
    *stream << nameOf(given);
}

class InvalidHandle : public ::testing::TestWithParam<Given> {
protected:
    QuillonHandle handle() { return GetParam() == Given::LocationAtNull ? &location : nullptr; }

    Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    const Functions& f = library.functions();
    QuillonWrapper* location = nullptr;
    std::int64_t value = -1;
};

TEST_P(InvalidHandle, IsRefusedByTheParameterCallsWhichLeaveTheValueAlone) {
    for (const FgParamTypes type : {FgTypeInt32, FgTypeUInt32, FgTypeInt64, FgTypeUInt64, FgTypeDouble,
                                    FgTypeCharBuffer, FgTypeString, FgTypeFieldAccess, FgTypeFieldInt}) {
        EXPECT_EQ(f.Fg_setParameterWithType(handle(), FG_WIDTH, &value, 0, type), -2001);
        EXPECT_EQ(f.Fg_getParameterWithType(handle(), FG_WIDTH, &value, 0, type), -2001);
        EXPECT_EQ(f.Fg_freeParameterStringWithType(handle(), FG_WIDTH, &value, 0, type), -2001);
    }
    EXPECT_EQ(value, -1);
    EXPECT_EQ(f.Fg_getParameterWithType(handle(), FG_WIDTH, nullptr, 0, FgTypeInt64), -2001);
}

TEST_P(InvalidHandle, IsRefusedByTheTables) {
    EXPECT_EQ(f.Fg_getParameterIdByName(handle(), "FG_WIDTH"), -2001);
    EXPECT_EQ(f.Fg_getParameterName(handle(), 0), nullptr);
    EXPECT_EQ(f.Fg_getParameterId(handle(), 0), -2001);
    EXPECT_EQ(f.Fg_getNrOfParameter(handle()), -2001);
    EXPECT_EQ(f.Fg_getEventMask(handle(), "FG_OVERFLOW_CAM0"), 0U);
    EXPECT_EQ(f.Fg_getEventName(handle(), 1), nullptr);
    EXPECT_EQ(f.Fg_getParameterInfo(handle(), 0), nullptr);
}

TEST_P(InvalidHandle, IsRefusedByFilesAndDocument) {
    EXPECT_EQ(f.Fg_saveConfig(handle(), "never written.mcf"), -2001);
    EXPECT_EQ(f.Fg_loadConfig(handle(), "never read.mcf"), -2001);
    std::size_t size = 77;
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle(), 0, nullptr, &size), -2001);
    EXPECT_EQ(size, 77U);
}

TEST_P(InvalidHandle, IsRefusedByTheForwarders) {
    EXPECT_EQ(f.Fg_getAppletId(handle(), nullptr), -2001);
    EXPECT_EQ(f.Fg_AcquireEx(handle(), 0, 1, 0, nullptr), -2001);
    EXPECT_EQ(f.Fg_stopAcquireEx(handle(), 0, nullptr, 0), -2001);
    EXPECT_EQ(f.Fg_getStatusEx(handle(), 0, 0, 0, nullptr), -2001);
    EXPECT_EQ(f.Fg_getLastPicNumberEx(handle(), 0, nullptr), -2001);
    EXPECT_EQ(f.Fg_getLastPicNumberBlockingEx(handle(), 1, 0, 0, nullptr), -2001);
}

TEST_P(InvalidHandle, IsRefusedByTheEndAndTheLastError) {
    EXPECT_EQ(f.Fg_FreeGrabber(handle()), -2001);
    EXPECT_EQ(f.Fg_getLastErrorNumber(handle()), -2001);
    EXPECT_EQ(location, nullptr);
}

TEST_P(InvalidHandle, IsRefusedByShading) {
    EXPECT_EQ(f.Fg_AllocShading(handle(), 0, 0), nullptr);
    EXPECT_EQ(f.Fg_FreeShading(handle(), nullptr), -2001);
    EXPECT_EQ(f.Shad_SetSubValueLine(handle(), nullptr, 0, 0, 1.0F), -2001);
    EXPECT_EQ(f.Shad_SetMultValueLine(handle(), nullptr, 0, 0, 1.0F), -2001);
    EXPECT_EQ(f.Shad_SetFixedPatternNoiseLine(handle(), nullptr, 0, 0, 1), -2001);
    EXPECT_EQ(f.Shad_GetMaxLine(handle(), nullptr), -2001);
    EXPECT_EQ(f.Shad_GetAccess(handle(), nullptr), -2001);
    EXPECT_EQ(f.Shad_FreeAccess(handle(), nullptr), -2001);
    EXPECT_EQ(f.Shad_WriteActLine(handle(), nullptr, 0), -2001);
}

INSTANTIATE_TEST_SUITE_P(Handles, InvalidHandle, ::testing::Values(Given::NullHandle, Given::LocationAtNull),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace quillon::client
