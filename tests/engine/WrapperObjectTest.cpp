// The wrapper itself, without the exported functions around it.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "engine/FgIxWrapperImpl.h"
#include "support/FgError.h"

namespace quillon {
namespace {

/// What the operation throws.
template <class Operation>
std::string thrownBy(Operation operation) {
    try {
        operation();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing";
}

TEST(WrapperObject, IsSmall) {
    EXPECT_LT(sizeof(FgIxWrapperImpl), 2U * 1024 * 1024);
}

TEST(WrapperObject, DoesNotImplementTheOperationsOfOtherApplets) {
    const auto wrapper = std::make_unique<FgIxWrapperImpl>();
    EXPECT_EQ(thrownBy([&] { wrapper->processChannelToDma(); }), "processChannelToDma() is not implemented.");
    EXPECT_EQ(thrownBy([&] { wrapper->mapDmaToFormat(); }), "mapDmaToFormat() is not implemented.");
    EXPECT_EQ(thrownBy([&] { wrapper->setDmaAlignment(); }), "setDmaAlignment() is not implemented.");
    EXPECT_EQ(thrownBy([&] { wrapper->getDmaAlignment(); }), "getDmaAlignment() is not implemented.");
}

TEST(WrapperObject, TellsItsNames) {
    const auto wrapper = std::make_unique<FgIxWrapperImpl>();
    EXPECT_STREQ(wrapper->vendorName(), "Veltrix");
    EXPECT_STREQ(wrapper->appletName(), "Quillon");
    EXPECT_STREQ(wrapper->versionText(), "2.4");
    EXPECT_EQ(wrapper->appletIdForSaving(), 0);
}

TEST(WrapperObject, HasEmptyTablesUntilTheyAreBuilt) {
    const auto wrapper = std::make_unique<FgIxWrapperImpl>();
    EXPECT_EQ(wrapper->Fg_getNrOfParameter(), 0);
    EXPECT_EQ(wrapper->Fg_getParameterName(0), nullptr);
    EXPECT_EQ(wrapper->Fg_getParameterIdByName("FG_WIDTH"), -2070);
    EXPECT_EQ(wrapper->Fg_getEventMask("FG_OVERFLOW_CAM0"), 0U);
    int width = 0;
    EXPECT_EQ(wrapper->getParameter(100, &width, 0, FgTypeInt32), -2070);  // there is no process yet
}

TEST(WrapperObject, CanBeDestroyedBeforeItIsLinked) {
    auto wrapper = std::make_unique<FgIxWrapperImpl>();
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
    wrapper.reset();
    EXPECT_EQ(wrapper, nullptr);
}

}  // namespace
}  // namespace quillon
