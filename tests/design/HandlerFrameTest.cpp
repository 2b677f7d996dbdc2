#include "design/HandlerFrame.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillon {
namespace {

/// The code that `operation` throws, 0 if it throws none.
template <class Operation>
int codeOf(Operation operation) {
    try {
        operation();
    } catch (int code) {
        return code;
    }
    return 0;
}

TEST(HandlerFrame, RemembersTheValueBeforeItIsApplied) {
    int field = 1;
    int seen = 0;
    int previousSeen = 0;
    changeField(
        field, 2, true, [] {},
        [&](int previous) {
            seen = field;
            previousSeen = previous;
        });
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(previousSeen, 1);
    EXPECT_EQ(field, 2);
}

TEST(HandlerFrame, ARefusedValueChangesNothingAndIsNotApplied) {
    int field = 1;
    bool applied = false;
    const auto change = [&](bool reportErrors) {
        changeField(
            field, 2, reportErrors, [] { fail(-6000); }, [&](int) { applied = true; });
    };
    EXPECT_EQ(codeOf([&] { change(true); }), -6000);
    EXPECT_EQ(codeOf([&] { change(false); }), 0);
    EXPECT_EQ(field, 1);
    EXPECT_FALSE(applied);
}

TEST(HandlerFrame, AFailureWhileApplyingRestoresTheField) {
    std::string field = "old";
    const auto change = [&](bool reportErrors) {
        changeField(
            field, std::string("new"), reportErrors, [] {}, [](const std::string&) { fail(-321); });
    };
    EXPECT_EQ(codeOf([&] { change(true); }), -321);
    EXPECT_EQ(field, "old");
    EXPECT_EQ(codeOf([&] { change(false); }), 0);
    EXPECT_EQ(field, "old");
}

TEST(HandlerFrame, ARefreshThatFailsIsNotReported) {
    EXPECT_EQ(codeOf([] { refreshLimit([] { fail(-321); }); }), 0);
}

TEST(HandlerFrame, RangesIncludeTheirEnds) {
    EXPECT_EQ(codeOf([] { requireRange(4, 4, 16); }), 0);
    EXPECT_EQ(codeOf([] { requireRange(16, 4, 16); }), 0);
    EXPECT_EQ(codeOf([] { requireRange(3, 4, 16); }), -6000);
    EXPECT_EQ(codeOf([] { requireRange(17, 4, 16); }), -6000);
}

TEST(HandlerFrame, WhatIsNotANumberLiesInNoRange) {
    EXPECT_EQ(codeOf([] { requireRange(std::numeric_limits<double>::quiet_NaN(), -1e300, 1e300); }), -6000);
    EXPECT_EQ(codeOf([] { requireRange(std::numeric_limits<double>::infinity(), -1e300, 1e300); }), -6000);
}

TEST(HandlerFrame, ListsAcceptTheirMembers) {
    EXPECT_EQ(codeOf([] { requireOneOf(5, {2, 5, 7}); }), 0);
    EXPECT_EQ(codeOf([] { requireOneOf(6, {2, 5, 7}); }), -6000);
}

}  // namespace
}  // namespace quillon
