// The base wrapper's accessors, its forwarders to the SDK, and what it answers for the derived ones.

#include <gmock/gmock.h>

#include "info/ParameterInfo.h"
#include "support/FgError.h"
#include "tests/wrapper/OpenWrapper.h"

namespace quillon {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Wrapper = OpenWrapper;

TEST_F(Wrapper, StartsWithoutHandlesAndErrors) {
    EXPECT_EQ(wrapper->fglibFg(), nullptr);
    EXPECT_EQ(wrapper->boardHandle(), nullptr);
    EXPECT_EQ(wrapper->designHandle(), nullptr);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
    EXPECT_FALSE(wrapper->directRegisterAccess);
    EXPECT_EQ(wrapper->Fg_getParameterInfo(0), nullptr);
}

TEST_F(Wrapper, KeepsTheLastErrorInItsErrorObject) {
    wrapper->setError(-6000);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -6000);
    EXPECT_EQ(wrapper->fgError().getErrorNumberBuffer(), -6000);
}

TEST_F(Wrapper, FindsItsLoggerOnceByTheBasesName) {
    orlo::tools::logging::Logger& first = wrapper->logger();
    EXPECT_EQ(&wrapper->logger(), &first);
    EXPECT_EQ(dispatcher.requests, 1);
    EXPECT_NE(dispatcher.handleOf("orlo.wrapper.FgIxWrapper"), 0U);
}

TEST_F(Wrapper, ForwardsReadsAndWritesOfTheSdksParameters) {
    link();
    std::uint32_t value = 500;
    EXPECT_EQ(wrapper->setUnwrappedParameterWithType(601, &value, 0, FgTypeUInt32), 0);
    value = 0;
    EXPECT_EQ(wrapper->getUnwrappedParameterWithType(601, &value, 0, FgTypeUInt32), 0);
    EXPECT_EQ(value, 500U);
    value = 700;
    EXPECT_EQ(wrapper->setUnwrappedParameter(601, &value, 0), 0);
    value = 0;
    EXPECT_EQ(wrapper->getUnwrappedParameter(601, &value, 0), 0);
    EXPECT_EQ(value, 700U);
    EXPECT_EQ(wrapper->getUnwrappedParameterWithType(601, &value, 3, FgTypeUInt32), -9001);
    EXPECT_EQ(wrapper->getParameterIdByName("FG_APC_STOP_TIMEOUT"), 601);
    EXPECT_EQ(wrapper->getParameterIdByName("FG_NOTHING"), -9002);
}

TEST_F(Wrapper, ForwardsTheReleaseOfTheSdksTexts) {
    link();
    char* text = nullptr;
    ASSERT_EQ(wrapper->getUnwrappedParameterWithType(27001, &text, 0, FgTypeString), 0);
    EXPECT_STREQ(text, "5.7.0 (software board)");
    EXPECT_EQ(wrapper->freeUnwrappedParameterString(27001, text, 0, FgTypeString), 0);
    EXPECT_NE(wrapper->freeUnwrappedParameterString(27001, text, 0, FgTypeString), 0);
}

TEST_F(Wrapper, AsksTheSdkForTheDescriptionOfPortZero) {
    link();
    softboard_transcript_clear(board);
    EXPECT_NE(wrapper->getUnwrappedParameterInfo(), nullptr);
    EXPECT_THAT(calls(), ElementsAre("Fg_getParameterInfo(0)"));
}

TEST_F(Wrapper, AnswersRecordsFromItsOwnStore) {
    EXPECT_EQ(wrapper->Fg_getParameterInfo(1), nullptr);
    EXPECT_EQ(wrapper->Fg_getParameterInfo(-1), nullptr);
}

TEST_F(Wrapper, HasNoShading) {
    EXPECT_EQ(wrapper->Fg_AllocShading(0, 0), nullptr);
    EXPECT_EQ(wrapper->Fg_FreeShading(nullptr), -2130);
    EXPECT_EQ(wrapper->Shad_SetSubValueLine(nullptr, 0, 0, 0.0F), -2130);
    EXPECT_EQ(wrapper->Shad_SetMultValueLine(nullptr, 0, 0, 0.0F), -2130);
    EXPECT_EQ(wrapper->Shad_SetFixedPatternNoiseLine(nullptr, 0, 0, 0), -2130);
    EXPECT_EQ(wrapper->Shad_GetMaxLine(nullptr), -2130);
    EXPECT_EQ(wrapper->Shad_GetAccess(nullptr), -2130);
    EXPECT_EQ(wrapper->Shad_FreeAccess(nullptr), -2130);
    EXPECT_EQ(wrapper->Shad_WriteActLine(nullptr, 0), -2130);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
}

TEST_F(Wrapper, FindsTheDesignsEventsByNameAndMask) {
    link();
    EXPECT_EQ(wrapper->Fg_getEventMask("Device1_Process0_Overflow_Overflow"), 1U);
    EXPECT_EQ(wrapper->Fg_getEventMask("Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent1"),
              std::uint64_t{1} << 30);
    EXPECT_EQ(wrapper->Fg_getEventMask("Nothing"), 0U);
    EXPECT_EQ(wrapper->Fg_getEventMask(nullptr), 0U);
    EXPECT_STREQ(wrapper->Fg_getEventName(1), "Device1_Process0_Overflow_Overflow");
    EXPECT_STREQ(wrapper->Fg_getEventName(2), "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0");
    EXPECT_EQ(wrapper->Fg_getEventName(3), nullptr);
    EXPECT_EQ(wrapper->Fg_getEventName(0), nullptr);
    EXPECT_EQ(wrapper->Fg_getEventName(std::uint64_t{1} << 31), nullptr);
}

TEST_F(Wrapper, FindsNoEventBehindTheLastBitOfAMask) {
    auto description = test::designDescription();
    for (int i = 31; i < 66; ++i) {
        description["events"].push_back({{"name", "Extra_" + std::to_string(i)}, {"kind", 1}});
    }
    link(SDK, 0, loadDesign(description));
    EXPECT_EQ(wrapper->Fg_getEventMask("Extra_63"), std::uint64_t{1} << 63);
    EXPECT_STREQ(wrapper->Fg_getEventName(std::uint64_t{1} << 63), "Extra_63");
    EXPECT_EQ(wrapper->Fg_getEventMask("Extra_64"), 0U);
    EXPECT_EQ(wrapper->Fg_getEventMask("Extra_65"), 0U);
}

TEST_F(Wrapper, ADocumentWithoutRecordsIsRefused) {
    unsigned long size = 5;
    EXPECT_EQ(wrapper->Fg_getParameterInfoXML(nullptr, 0, nullptr, &size), -2075);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -2075);
}

TEST(CurrentHandles, AreStoredUnlessNullAndReturned) {
    int device = 0;
    int design = 0;
    auto* const someDevice = reinterpret_cast<IXdevice*>(&device);
    auto* const someDesign = reinterpret_cast<fpga_design*>(&design);
    EXPECT_EQ(FgIxWrapper::accessDeviceHandle(someDevice), someDevice);
    EXPECT_EQ(FgIxWrapper::accessDeviceHandle(nullptr), someDevice);
    EXPECT_EQ(FgIxWrapper::accessDesignHandle(someDesign), someDesign);
    EXPECT_EQ(FgIxWrapper::accessDesignHandle(nullptr), someDesign);
}

}  // namespace
}  // namespace quillon
