// Period, exposure, delay and debouncing: times in microseconds, and the maxima that follow from period and mode.

#include <limits>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;

const std::string Unit = "Device1_Process0_Trigger_Trigger_";
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

class LineTimes : public TriggerTest {};

// Period
// ---------------------------------------------------------------------------------------------------------------

TEST_F(LineTimes, ThePeriodIsSentAsItIs) {
    EXPECT_THAT(accessesOf(FG_LINEPERIODE, 0.512), ElementsAre(Unit + "ExsyncPeriod = 0.512"));
    EXPECT_THAT(accessesOf(FG_LINEPERIODE, 2097.144), ElementsAre(Unit + "ExsyncPeriod = 2097.144"));
    EXPECT_THAT(accessesOf(FG_LINEPERIODE, 100.0), ElementsAre(Unit + "ExsyncPeriod = 100"));
}

TEST_F(LineTimes, ThePeriodIsNotRoundedToTicks) {
    expectAccepted(FG_LINEPERIODE, 100.001);
    EXPECT_EQ(board.real(Unit + "ExsyncPeriod"), 100.001);
}

TEST_F(LineTimes, APeriodOutsideItsBoundsIsRefused) {
    for (const double period : {0.511999, 0.0, -200.0, 2097.144001, Infinity, -Infinity}) {
        expectRefused(FG_LINEPERIODE, period);
    }
}

TEST_F(LineTimes, AShorterPeriodLeavesExposureAndDelayInForce) {
    expectAccepted(FG_LINEEXPOSURE, 150.0);
    expectAccepted(FG_LINETRIGGERDELAY, 180.0);
    EXPECT_THAT(accessesOf(FG_LINEPERIODE, 100.0), ElementsAre(Unit + "ExsyncPeriod = 100"));
    EXPECT_EQ(applet.readDouble(FG_LINEEXPOSURE), 150.0);
    EXPECT_EQ(applet.readDouble(FG_LINETRIGGERDELAY), 180.0);
    expectRefused(FG_LINEEXPOSURE, 150.0);
    expectRefused(FG_LINETRIGGERDELAY, 180.0);
    EXPECT_EQ(board.real(Unit + "ExsyncExposure"), 150.0);
    EXPECT_EQ(board.real(Unit + "Exsync2Delay"), 180.0);
}

// Exposure
// -------------------------------------------------------------------------------------------------------------

TEST_F(LineTimes, TheExposureReachesFromTheShortestLineToThePeriod) {
    EXPECT_THAT(accessesOf(FG_LINEEXPOSURE, 0.512), ElementsAre(Unit + "ExsyncExposure = 0.512"));
    EXPECT_THAT(accessesOf(FG_LINEEXPOSURE, 200.0), ElementsAre(Unit + "ExsyncExposure = 200"));
    for (const double exposure : {0.511999, 0.0, -1.0, 200.001, 1048.568, Infinity}) {
        expectRefused(FG_LINEEXPOSURE, exposure);
    }
}

TEST_F(LineTimes, TheExposureIsBoundByThePeriodInBothGrabberControlledModes) {
    for (const int mode : {1, 6}) {
        expectAccepted(FG_LINETRIGGERMODE, mode);
        expectRefused(FG_LINEEXPOSURE, 250.0);
        expectAccepted(FG_LINEEXPOSURE, 200.0);
    }
}

TEST_F(LineTimes, TheExposureIsBoundByItsCeilingInBothExternalModes) {
    for (const int mode : {2, 5}) {
        expectAccepted(FG_LINETRIGGERMODE, mode);
        EXPECT_THAT(accessesOf(FG_LINEEXPOSURE, 250.0), ElementsAre(Unit + "ExsyncExposure = 250"));
        EXPECT_THAT(accessesOf(FG_LINEEXPOSURE, 1048.568), ElementsAre(Unit + "ExsyncExposure = 1048.568"));
        expectRefused(FG_LINEEXPOSURE, 1048.5681);
        expectRefused(FG_LINEEXPOSURE, 0.511);
    }
}

TEST_F(LineTimes, TheExposureIsBoundByItsCeilingUnderALongPeriod) {
    expectAccepted(FG_LINEPERIODE, 2000.0);
    expectAccepted(FG_LINEEXPOSURE, 1048.568);
    expectRefused(FG_LINEEXPOSURE, 1048.5681);
}

TEST_F(LineTimes, AnExposureOfAnExternalModeStaysWhenTheModeEnds) {
    expectRefused(FG_LINEEXPOSURE, 250.0);
    expectAccepted(FG_LINETRIGGERMODE, 2);
    expectAccepted(FG_LINEEXPOSURE, 250.0);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 1048.568);
    EXPECT_THAT(accessesOf(FG_LINETRIGGERMODE, 1), ElementsAre(Unit + "LineTriggerMode = 0"));
    EXPECT_EQ(applet.readDouble(FG_LINEEXPOSURE), 250.0);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 200.0);
}

// Delay
// ----------------------------------------------------------------------------------------------------------------

TEST_F(LineTimes, TheDelayReachesFrom0ToThePeriodInEveryMode) {
    for (const int mode : {1, 2, 5, 6}) {
        expectAccepted(FG_LINETRIGGERMODE, mode);
        EXPECT_THAT(accessesOf(FG_LINETRIGGERDELAY, 200.0), ElementsAre(Unit + "Exsync2Delay = 200"));
        EXPECT_THAT(accessesOf(FG_LINETRIGGERDELAY, 0.0), ElementsAre(Unit + "Exsync2Delay = 0"));
        for (const double delay : {-0.008, 200.001, Infinity, -Infinity}) {
            expectRefused(FG_LINETRIGGERDELAY, delay);
        }
    }
}

TEST_F(LineTimes, TheDelayHasNoCeilingOfItsOwn) {
    expectAccepted(FG_LINEPERIODE, 2097.144);
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDELAY, 2097.144), ElementsAre(Unit + "Exsync2Delay = 2097.144"));
    expectRefused(FG_LINETRIGGERDELAY, 2097.1441);
}

// Published maxima
// -----------------------------------------------------------------------------------------------------

TEST_F(LineTimes, TheMaximaAreThePeriodAfterStartUp) {
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 200.0);
    EXPECT_EQ(maximum(FG_LINETRIGGERDELAY), 200.0);
}

TEST_F(LineTimes, AnAppletThatLeftTheDesignAloneShowsTheCataloguesMaxima) {
    client::testing::BuiltApplet slave(1);
    const auto trees = slave.applet.parameterInfo();
    EXPECT_EQ(std::get<client::Range<double>>(client::findRecord(trees, FG_LINEEXPOSURE)->range).max, 1048.0);
    EXPECT_EQ(std::get<client::Range<double>>(client::findRecord(trees, FG_LINETRIGGERDELAY)->range).max, 1048.568);
}

TEST_F(LineTimes, TheMaximaFollowThePeriod) {
    expectAccepted(FG_LINEPERIODE, 2000.0);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 1048.568);
    EXPECT_EQ(maximum(FG_LINETRIGGERDELAY), 2000.0);
    expectAccepted(FG_LINEPERIODE, 0.512);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 0.512);
    EXPECT_EQ(maximum(FG_LINETRIGGERDELAY), 0.512);
}

TEST_F(LineTimes, TheMaximumOfTheExposureFollowsTheMode) {
    expectAccepted(FG_LINETRIGGERMODE, 5);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 1048.568);
    expectAccepted(FG_LINETRIGGERMODE, 6);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 200.0);
    expectAccepted(FG_LINETRIGGERMODE, 2);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 1048.568);
    expectAccepted(FG_LINEPERIODE, 50.0);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 1048.568);
    EXPECT_EQ(maximum(FG_LINETRIGGERDELAY), 50.0);
    expectAccepted(FG_LINETRIGGERMODE, 1);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 50.0);
}

TEST_F(LineTimes, AFailedModeKeepsTheMaximumButShowsItsFlags) {
    board.planFault(Unit + "LineTriggerMode", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_LINETRIGGERMODE, 2), -77);
    EXPECT_EQ(applet.readInt(FG_LINETRIGGERMODE), 1);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 200.0);
    EXPECT_EQ(accessFlags(FG_LINETRIGGERINSRC), 7);
    EXPECT_EQ(accessFlags(FG_SHAFTENCODERON), 7);
    expectRefused(FG_LINEEXPOSURE, 250.0);
}

TEST_F(LineTimes, AFailedPeriodKeepsBothMaxima) {
    board.planFault(Unit + "ExsyncPeriod", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setDouble(FG_LINEPERIODE, 100.0), -77);
    EXPECT_EQ(maximum(FG_LINEEXPOSURE), 200.0);
    EXPECT_EQ(maximum(FG_LINETRIGGERDELAY), 200.0);
    expectAccepted(FG_LINEEXPOSURE, 200.0);
}

// Debouncing
// -----------------------------------------------------------------------------------------------------------

TEST_F(LineTimes, DebouncingAlsoSetsThePrescalerInPeriodsOf24NsToNearest) {
    const std::string prescale = "Device1_Process1_Trigger_Inputs_Debounce8_Prescale_Period = ";
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDEBOUNCING, 0.112),
                ElementsAre(Unit + "LineTrgDebouncingTime = 0.112", prescale + "5"));
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDEBOUNCING, 0.008),
                ElementsAre(Unit + "LineTrgDebouncingTime = 0.008", prescale + "0"));
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDEBOUNCING, 30.0),
                ElementsAre(Unit + "LineTrgDebouncingTime = 30", prescale + "1250"));
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDEBOUNCING, 0.016),
                ElementsAre(Unit + "LineTrgDebouncingTime = 0.016", prescale + "1"));
    EXPECT_THAT(accessesOf(FG_LINETRIGGERDEBOUNCING, 1.0),
                ElementsAre(Unit + "LineTrgDebouncingTime = 1", prescale + "42"));
}

TEST_F(LineTimes, ADebouncingTimeOutsideItsBoundsIsRefused) {
    for (const double time : {0.0079, 0.0, -0.112, 30.001, Infinity}) {
        expectRefused(FG_LINETRIGGERDEBOUNCING, time);
    }
}

TEST_F(LineTimes, ADebouncingTimeThatFailsAtThePrescalerStaysInTheDesign) {
    board.planFault("Device1_Process1_Trigger_Inputs_Debounce8_Prescale_Period", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setDouble(FG_LINETRIGGERDEBOUNCING, 1.0), -77);
    EXPECT_EQ(applet.readDouble(FG_LINETRIGGERDEBOUNCING), 0.112);
    EXPECT_EQ(board.real(Unit + "LineTrgDebouncingTime"), 1.0);
    EXPECT_EQ(board.integer("Device1_Process1_Trigger_Inputs_Debounce8_Prescale_Period"), 5);
}

// No number
// ------------------------------------------------------------------------------------------------------------

TEST_F(LineTimes, WhatIsNoNumberIsRefused) {
    for (const int id : {FG_LINEPERIODE, FG_LINEEXPOSURE, FG_LINETRIGGERDELAY, FG_LINETRIGGERDEBOUNCING}) {
        expectRefused(id, NoNumber);
    }
    expectAccepted(FG_LINETRIGGERMODE, 2);
    expectRefused(FG_LINEEXPOSURE, NoNumber);
}

}  // namespace
}  // namespace quillon
