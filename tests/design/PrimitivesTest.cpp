// The access functions of the design's parameters, over a wrapper with nothing on top.

#include <gmock/gmock.h>

#include "design/DesignParameters.h"
#include "tests/design/DesignNames.h"
#include "tests/wrapper/OpenWrapper.h"

namespace quillon {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Primitives : public OpenWrapper {
protected:
    void SetUp() override {
        OpenWrapper::SetUp();
        link();
        design.lookUpIds();
        softboard_transcript_clear(board);
    }
    std::size_t accessCount() const { return softboard_transcript_size(board); }
    softboard_access lastAccess() const {
        softboard_access access{};
        softboard_transcript_get(board, accessCount() - 1, &access);
        return access;
    }

    DesignParameters design{*wrapper};
};

TEST_F(Primitives, ThereAre139InOrder) {
    EXPECT_EQ(IxParameterCount, 139U);
    ASSERT_EQ(DesignNames.size(), IxParameterCount);
    for (std::size_t i = 0; i < IxParameterCount; ++i) {
        EXPECT_STREQ(DesignParameters::name(static_cast<Ix>(i)), DesignNames[i]);
    }
}

TEST_F(Primitives, EveryNameGetsItsId) {
    for (std::size_t i = 0; i < IxParameterCount; ++i) {
        EXPECT_GT(design.id(static_cast<Ix>(i)), 0) << DesignNames[i];
        EXPECT_EQ(design.id(static_cast<Ix>(i)), wrapper->getParameterIdByName(DesignNames[i]));
    }
    EXPECT_THAT(dispatcher.texts(), IsEmpty());
}

TEST_F(Primitives, EveryParameterHasItsOwnMessages) {
    DesignParameters unbound(*wrapper);  // all ids are 0, which the SDK does not know
    for (std::size_t i = 0; i < IxParameterCount; ++i) {
        std::uint64_t value = 0;
        unbound.set(static_cast<Ix>(i), &value, 0, FgTypeUInt32, false);
        unbound.get(static_cast<Ix>(i), &value, 0, FgTypeUInt32, false);
    }
    std::vector<std::string> expected;
    for (const char* name : DesignNames) {
        expected.push_back(
            message(5, std::string("Setting IX parameter '") + name + "' (ID: 0) failed: result = -9002"));
        expected.push_back(
            message(5, std::string("Getting IX parameter '") + name + "' (ID: 0) failed: result = -9002"));
    }
    EXPECT_EQ(dispatcher.texts(), expected);
}

TEST_F(Primitives, HandValueProcessAndTypeOn) {
    std::uint32_t value = 512;
    design.set(Ix::Buffer_0_SensorWidth, &value, 0, FgTypeUInt32, true);
    EXPECT_STREQ(lastAccess().name, "Device1_Process0_Buffer_0_SensorWidth");
    EXPECT_STREQ(lastAccess().value, "512");
    EXPECT_EQ(lastAccess().type, 2);
    design.set(Ix::Buffer_0_SensorWidth, &value, 3, FgTypeDouble, false);
    EXPECT_EQ(lastAccess().dma, 3);
    EXPECT_EQ(lastAccess().type, 5);
}

TEST_F(Primitives, ANullValueIsThrownOrPassedOverAndTheDesignLeftAlone) {
    try {
        design.set(Ix::Buffer_0_SensorWidth, nullptr, 0, FgTypeUInt32, true);
        FAIL() << "nothing was thrown";
    } catch (int code) {
        EXPECT_EQ(code, -2070);
    }
    try {
        design.get(Ix::BoardStatus_FpgaTemperature, nullptr, 0, FgTypeDouble, true);
        FAIL() << "nothing was thrown";
    } catch (int code) {
        EXPECT_EQ(code, -2070);
    }
    design.set(Ix::Buffer_0_SensorWidth, nullptr, 0, FgTypeUInt32, false);
    design.get(Ix::BoardStatus_FpgaTemperature, nullptr, 0, FgTypeDouble, false);
    EXPECT_EQ(accessCount(), 0U);
    EXPECT_THAT(dispatcher.texts(), IsEmpty());
}

TEST_F(Primitives, ARefusalIsThrownWithTheSdksCode) {
    softboard_plan_fault(board, "Device1_Process0_Buffer_0_SensorWidth", SOFTBOARD_WRITE, 1, -321);
    try {
        design.writeUnsigned(Ix::Buffer_0_SensorWidth, 512);
        FAIL() << "nothing was thrown";
    } catch (int code) {
        EXPECT_EQ(code, -321);
    }
    EXPECT_THAT(dispatcher.texts(),
                ElementsAre(message(5,
                                    "Setting IX parameter 'Device1_Process0_Buffer_0_SensorWidth' (ID: 10000) "
                                    "failed: result = -321")));
}

TEST_F(Primitives, ARefusalThatIsNotReportedIsLoggedAllTheSame) {
    softboard_plan_fault(board, "Device1_Process0_Buffer_0_SensorWidth", SOFTBOARD_WRITE, 1, -321);
    const std::uint32_t value = 512;
    design.set(Ix::Buffer_0_SensorWidth, &value, 0, FgTypeUInt32, false);
    EXPECT_EQ(dispatcher.texts().size(), 1U);
}

TEST_F(Primitives, AreTypedForTheHandlers) {
    design.writeSigned(Ix::Buffer_0_YMirror, 1);
    EXPECT_EQ(lastAccess().type, 1);
    design.writeDouble(Ix::Trigger_Trigger_ExsyncPeriod, 150.5);
    EXPECT_EQ(lastAccess().type, 5);
    EXPECT_STREQ(lastAccess().value, "150.5");
    EXPECT_EQ(design.readUnsigned(Ix::Buffer_0_DRAM_DRAM_A_0_RamDataWidth), 512U);
    EXPECT_EQ(lastAccess().type, 2);
    EXPECT_EQ(design.readUnsigned64(Ix::BoardStatus_FpgaDNA, FgTypeUInt64), 81985529216486895U);
    EXPECT_EQ(lastAccess().type, 4);
    EXPECT_EQ(design.readDouble(Ix::BoardStatus_FpgaTemperature), 45.2);
    EXPECT_EQ(lastAccess().type, 5);
}

TEST_F(Primitives, TextsAreReadByNameWithoutThrowing) {
    std::string text = "before";
    EXPECT_EQ(design.readText("Device1_Process0_Debug_Entries", text), 0);
    EXPECT_EQ(text, "2");
    EXPECT_EQ(lastAccess().type, 6);
    EXPECT_EQ(design.readText("Device1_Process0_Nothing", text), -9002);
    EXPECT_EQ(text, "");
    EXPECT_THAT(dispatcher.texts(), IsEmpty());
}

}  // namespace
}  // namespace quillon
