/// @file
/// The stage of the tests of the digital signals.
#pragma once

#include <cstdint>
#include <string>

#include "tests/softboard/OpenBoard.h"

class SignalBoard : public OpenBoard {
protected:
    /// Writes a parameter of the trigger unit, as the SDK does.
    void unit(const std::string& name, std::uint32_t value) {
        ASSERT_EQ(set(("Device1_Process0_Trigger_Trigger_" + name).c_str(), value, 2), 0) << name;
    }
    void unitTime(const std::string& name, double microseconds) {
        ASSERT_EQ(set(("Device1_Process0_Trigger_Trigger_" + name).c_str(), microseconds, 5), 0) << name;
    }
    void route(const std::string& stem, std::uint32_t select, std::uint32_t invert) {
        set(("Device1_Process1_Trigger_" + stem + "_SelectSignal_Select").c_str(), select, 2);
        set(("Device1_Process1_Trigger_" + stem + "_Polarity_Invert").c_str(), invert, 2);
    }
    std::int64_t integer(const std::string& name) {
        std::int64_t value = -1;
        softboard_get_integer(board, ("Device1_Process1_Trigger_" + name).c_str(), &value);
        return value;
    }
    std::int64_t pulses(int analyzer) {
        return integer("Analyzer_Analyzer" + std::to_string(analyzer) + "_PulseCountSignal_Status");
    }
    double period(const std::string& name) {
        double value = -1.0;
        softboard_get_double(board, ("Device1_Process1_Trigger_Analyzer_" + name).c_str(), &value);
        return value;
    }
    int output(unsigned number) {
        int level = -1;
        softboard_get_output(board, number, &level);
        return level;
    }
    int signal(unsigned select) {
        int level = -1;
        softboard_get_signal(board, select, &level);
        return level;
    }
    std::uint64_t events(const std::string& name) {
        std::uint64_t count = 9999;
        softboard_event_count(board, name.c_str(), &count);
        return count;
    }
    /// Of a frame or line: "FrameStart", "LineEnd", ...
    std::uint64_t cameraEvents(const std::string& name) {
        return events("Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0" + name);
    }
    void input(unsigned number, int level) { softboard_set_input(board, number, level); }
    void pass(double microseconds) { ASSERT_EQ(softboard_advance_signals(board, microseconds), 0); }
    /// A pulse of 10 µs on an input, and 90 µs until the next.
    void pulse(unsigned number) {
        input(number, 1);
        pass(10.0);
        input(number, 0);
        pass(90.0);
    }
};
