/// @file
/// The stage of the tests of frames through the applet: public parameters go in, frames come out, and time is the
/// test's alone.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "softboard/clock.h"
#include "softboard/frames.h"
#include "softboard/softboard.h"

namespace quillon::frames_test {

struct Frame {
    softboard_frame about{};
    std::vector<std::byte> bytes;
};

class AppletFrames : public testing::Test {
protected:
    static constexpr double Tick = 0.008;  ///< µs

    void SetUp() override;
    void TearDown() override;

    IXdevice* device() { return built.board.device(); }

    void set(int id, int value) { ASSERT_EQ(built.applet.setInt(id, value), 0) << id << " = " << value; }
    void set(int id, double value) { ASSERT_EQ(built.applet.setDouble(id, value), 0) << id << " = " << value; }
    std::uint32_t whole(int id);
    double real(int id);
    /// Integers of the design, by what follows "Device1_Process0_" in their names.
    std::int64_t design(const std::string& name) { return built.board.integer("Device1_Process0_" + name); }

    void pass(double microseconds);
    void ticks(std::uint64_t number) { pass(static_cast<double>(number) * Tick); }
    void input(unsigned number, bool high) { built.board.setInput(number, high); }
    /// How often an event has come, by its public name.
    std::uint64_t events(const std::string& publicName);

    /// Frames of `width` times `height` out of the camera, whose lines come each 200 µs. Line n begins 19 µs behind.
    void useCamera(int width, int height);
    static constexpr double LineTime = 200.0;
    static constexpr double Exposure = 19.0;
    /// The same out of the simulator, whose frames are as large and begin each `height` times 80 µs.
    void useSimulator(int width, int height);
    static constexpr double SimulatorLineTime = 80.0;

    softboard_memory* memoryOf(unsigned buffers, std::size_t bytes);
    void closeMemories();
    void acquire(std::int64_t count, softboard_memory* memory) {
        ASSERT_EQ(built.applet.acquire(0, count, 0, memory), 0);
    }
    void stop() { built.applet.stopAcquire(0, nullptr, 0); }
    std::int64_t pictures() { return built.applet.lastPicture(0, nullptr); }
    std::int64_t status(unsigned parameter, std::int64_t data = 0) {
        return built.applet.status(parameter, data, 0, nullptr);
    }
    static Frame frame(softboard_memory* memory, std::int64_t number);
    /// The bytes as numbers; of a pixel of 8 bits these are blue, green, red.
    static std::vector<int> numbers(const Frame& frame);
    /// The first component of each pixel of 8 bits.
    static std::vector<int> blue(const Frame& frame);

    client::testing::BuiltApplet built;

private:
    std::vector<softboard_memory*> memories_;
};

}  // namespace quillon::frames_test
