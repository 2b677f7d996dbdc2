// The way to the SDK library: opening it, resolving its functions, and handing it the design.

#include <gmock/gmock.h>

#include "tests/support/Surroundings.h"
#include "tests/wrapper/OpenWrapper.h"

namespace quillon {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Link = OpenWrapper;

TEST_F(Link, ALibraryThatIsNotThereIsLoggedAndRecorded) {
    EXPECT_EQ(wrapper->initializeDllFunctions("libnothing.so"), -2031);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -2031);
    EXPECT_THAT(dispatcher.texts(), ElementsAre(message(6, "error opening dll 'libnothing.so'")));
}

TEST_F(Link, ResolvesEveryFunctionOfTheTable) {
    ASSERT_EQ(wrapper->initializeDllFunctions(SDK), 0);
    const SdkFunctionTable& table = wrapper->wrapperFg();
    std::vector<std::string> missing;
    int count = 0;
#define SDK_FUNCTION(result, name, arguments) \
    ++count;                                  \
    if (table.name == nullptr) {              \
        missing.emplace_back(#name);          \
    }
    QUILLON_SDK_FUNCTIONS(SDK_FUNCTION)
#undef SDK_FUNCTION
    EXPECT_EQ(count, 27);
    EXPECT_THAT(missing, IsEmpty());
}

TEST_F(Link, AMissingFunctionStaysNullAndIsNoFailure) {
    EXPECT_EQ(wrapper->initializeDllFunctions(OLD_SDK), 0);
    EXPECT_EQ(wrapper->wrapperFg().Fg_AcquireEx, nullptr);
    EXPECT_EQ(wrapper->wrapperFg().Fg_getParameterInfo, nullptr);
    EXPECT_NE(wrapper->wrapperFg().Fg_stopAcquireEx, nullptr);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
    EXPECT_THAT(dispatcher.texts(), IsEmpty());
}

TEST_F(Link, HandsTheDesignOverWithTheFlags) {
    link(SDK, 5);
    EXPECT_NE(wrapper->fglibFg(), nullptr);
    EXPECT_THAT(calls(), ElementsAre("Fg_InitHandleSlaveAware(Bare.tav, 5)"));
}

TEST_F(Link, AnSdkThatKnowsNoSlavesGetsNoFlags) {
    link(OLD_SDK, 5);
    EXPECT_THAT(calls(), ElementsAre("Fg_InitHandle(Bare.tav, 0)"));
}

TEST_F(Link, AnSdkThatTakesNoDesignIsLoggedAndRecorded) {
    fpga_design* const design = loadDesign();
    ASSERT_EQ(wrapper->initializeDllFunctions(FOREIGN_SDK), 0);
    EXPECT_EQ(wrapper->runFgInit("Bare.tav", board, design, 0), -2031);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -2031);
    EXPECT_EQ(wrapper->fglibFg(), nullptr);
    EXPECT_THAT(dispatcher.texts(), ElementsAre(message(6,
                                                        "cannot resolve function 'Fg_InitHandle' and/or "
                                                        "'Fg_InitHandleSlaveAware'")));
    TavUnloadTavFile(design);
}

TEST_F(Link, ARefusalGivesTheSdksNumberForANullHandle) {
    fpga_design* const design = loadDesign();
    softboard_set_sdk_error(nullptr, -55);
    ASSERT_EQ(wrapper->initializeDllFunctions(SDK), 0);
    EXPECT_EQ(wrapper->runFgInit("Bare.tav", nullptr, design, 0), -55);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -55);
    EXPECT_THAT(dispatcher.texts(),
                ElementsAre(message(5, "error calling 'Fg_InitHandleSlaveAware' (tavName = 'Bare.tav')")));
    TavUnloadTavFile(design);
}

TEST_F(Link, ARefusalNamesTheFunctionThatWasUsed) {
    fpga_design* const design = loadDesign();
    ASSERT_EQ(wrapper->initializeDllFunctions(OLD_SDK), 0);
    EXPECT_EQ(wrapper->runFgInit("Bare.tav", nullptr, design, 0), -9001);
    EXPECT_THAT(dispatcher.texts(), ElementsAre(message(5, "error calling 'Fg_InitHandle' (tavName = 'Bare.tav')")));
    TavUnloadTavFile(design);
}

TEST_F(Link, ARefusalWithoutANumberIsADesignThatCouldNotBeLoaded) {
    fpga_design* const design = loadDesign();
    ASSERT_EQ(wrapper->initializeDllFunctions(NUMBERLESS_SDK), 0);
    EXPECT_EQ(wrapper->runFgInit("Bare.tav", nullptr, design, 0), -100);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -100);
    TavUnloadTavFile(design);
}

TEST_F(Link, OnlyASuccessChangesTheCurrentDeviceAndDesign) {
    link();
    EXPECT_EQ(FgIxWrapper::accessDeviceHandle(nullptr), board);
    EXPECT_EQ(FgIxWrapper::accessDesignHandle(nullptr), wrapper->designHandle());
    IXdevice* const other = softboard_open();
    fpga_design* const design = loadDesign();
    softboard_plan_fault(other, "Fg_InitHandleSlaveAware", SOFTBOARD_CALL, 1, -5);
    BareWrapper refused;
    ASSERT_EQ(refused.initializeDllFunctions(SDK), 0);
    EXPECT_EQ(refused.runFgInit("Bare.tav", other, design, 0), -5);
    EXPECT_EQ(FgIxWrapper::accessDeviceHandle(nullptr), board);
    TavUnloadTavFile(design);
    softboard_close(other);
}

TEST_F(Link, MessagesOfALevelThatIsOffAreNotWritten) {
    dispatcher.startLevel = 7;
    EXPECT_EQ(wrapper->initializeDllFunctions("libnothing.so"), -2031);
    EXPECT_THAT(dispatcher.texts(), IsEmpty());
}

TEST_F(Link, TheSdksLastErrorIsNotAvailableBeforeTheLink) {
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberIx(), -12);
    ASSERT_EQ(wrapper->initializeDllFunctions(SDK), 0);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberIx(), -12);  // the function alone is not enough
}

TEST_F(Link, TheSdksLastErrorIsAskedWithItsHandle) {
    link();
    softboard_set_sdk_error(board, -33);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberIx(), -33);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
}

TEST_F(Link, TheSdksLastErrorIsNotAvailableFromAnSdkWithoutNumbers) {
    const test::ToldLeak leak;  // nor does it free its handle
    link(NUMBERLESS_SDK);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberIx(), -12);
}

TEST_F(Link, TheEndUnloadsTheDesignThatTheWrapperOwns) {
    link();
    EXPECT_EQ(softboard_live_designs(), 1U);
    end();
    EXPECT_EQ(softboard_live_designs(), 0U);
}

TEST_F(Link, TheEndLeavesADesignThatItWasNotGiven) {
    fpga_design* const design = loadDesign();
    ASSERT_EQ(wrapper->initializeDllFunctions(SDK), 0);
    ASSERT_EQ(wrapper->runFgInit("Bare.tav", board, design, 0), 0);
    end();
    EXPECT_EQ(softboard_live_designs(), 1U);
    EXPECT_EQ(TavUnloadTavFile(design), 0);
}

}  // namespace
}  // namespace quillon
