#include <set>
#include <string>

#include "tests/softboard/SignalBoard.h"

namespace {

class Monitor : public SignalBoard {
protected:
    double value(const std::string& name) {
        double read = -1.0;
        get(("Device1_Process0_BoardStatus_" + name).c_str(), read, 5);
        return read;
    }
};

TEST_F(Monitor, IsConstantWhileTimeStandsStill) {
    for (int read = 0; read < 100; ++read) {
        EXPECT_EQ(value("FpgaTemperature"), 45.2);
        EXPECT_EQ(value("FpgaVccInt"), 0.95);
    }
}

TEST_F(Monitor, SwingsAroundItsValueWithTime) {
    pass(10e6);
    EXPECT_EQ(value("FpgaTemperature"), 46.7);
    pass(20e6);
    EXPECT_EQ(value("FpgaTemperature"), 43.7);
    pass(10e6);
    EXPECT_EQ(value("FpgaTemperature"), 45.2);
}

TEST_F(Monitor, OfEachVoltageMovesByMillivolts) {
    std::set<double> core;
    for (int step = 0; step < 140; ++step) {
        pass(0.1e6);
        core.insert(value("FpgaVccInt"));
        EXPECT_NEAR(value("FpgaVccAux"), 1.8, 0.0061);
        EXPECT_NEAR(value("FpgaVccBram"), 0.951, 0.0041);
    }
    EXPECT_EQ(core, (std::set<double>{0.946, 0.947, 0.948, 0.949, 0.95, 0.951, 0.952, 0.953, 0.954}));
}

TEST_F(Monitor, SwingsAroundTheValueThatItWasGiven) {
    pass(10e6);
    softboard_set_double(board, Temperature, 71.0);
    EXPECT_EQ(value("FpgaTemperature"), 71.0);
    pass(10e6);
    EXPECT_EQ(value("FpgaTemperature"), 72.5);
}

}  // namespace
