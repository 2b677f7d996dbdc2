/// @file
/// The stage of the tests of frames: a board whose time only the test moves, with the simulator or the camera in front.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "softboard/clock.h"
#include "softboard/frames.h"
#include "tests/softboard/SignalBoard.h"

class FrameBoard : public SignalBoard {
protected:
    static constexpr std::uint32_t Width = 8;
    static constexpr std::uint32_t Height = 3;
    static constexpr std::size_t FrameBytes = std::size_t{Width} * Height * 3;

    void SetUp() override {
        SignalBoard::SetUp();
        ASSERT_EQ(softboard_clock(board, SOFTBOARD_CLOCK_STEPPED, 1.0), 0);
        buffer("SensorWidth", Width);
        buffer("XLength", Width);
        unit("YLength", Height);
        set("Device1_Process0_ImageHeight_ImageHeight", Height, 2);
    }
    void TearDown() override {
        Fg_stopAcquireEx(fg, 0, nullptr, 0);
        for (softboard_memory* memory : memories) {
            EXPECT_EQ(softboard_memory_close(memory), 0);
        }
        SignalBoard::TearDown();
    }

    void process0(const std::string& name, std::uint32_t value) {
        ASSERT_EQ(set(("Device1_Process0_" + name).c_str(), value, 2), 0) << name;
    }
    void buffer(const std::string& name, std::uint32_t value) { process0("Buffer_0_" + name, value); }
    void simulator(const std::string& name, std::uint32_t value) { process0("CameraSimulator_" + name, value); }

    /// The simulator sends frames of Height lines of one block of 32 pixels, a line each 100 ticks (0.8 µs).
    void useSimulator() {
        simulator("Size_ImageWidth", 1);
        simulator("LineGap_Number", 1);
        simulator("Size_ImageHeight", Height);
        simulator("FrameGap_Number", Height);
        simulator("PixelFrequency_SequenceLength_ImageWidth", 100);
        simulator("Enable_SelectSource", 1);
    }
    static constexpr double LineTime = 0.8;
    static constexpr double FrameTime = LineTime * Height;

    /// The camera is triggered each 10 µs.
    void useCamera() {
        unitTime("ExsyncPeriod", 10.0);
        unitTime("ExsyncExposure", 1.0);
        unit("ExsyncEnable", 1);
    }

    softboard_memory* memoryOf(unsigned buffers, std::size_t size = FrameBytes) {
        softboard_memory* const memory = softboard_memory_open(board, size, buffers, nullptr);
        EXPECT_NE(memory, nullptr);
        memories.push_back(memory);
        return memory;
    }
    int acquire(std::int64_t count, softboard_memory* memory) { return Fg_AcquireEx(fg, 0, count, 0, memory); }
    std::int64_t pictures() { return Fg_getLastPicNumberEx(fg, 0, nullptr); }
    std::int64_t status(unsigned param, std::int64_t data = 0) { return Fg_getStatusEx(fg, param, data, 0, nullptr); }

    struct Frame {
        softboard_frame about{};
        std::vector<std::uint8_t> bytes;
    };
    static std::optional<Frame> frame(softboard_memory* memory, std::int64_t number) {
        Frame result;
        result.about.size = sizeof result.about;
        const void* const data = softboard_memory_data(memory, number, &result.about);
        if (data == nullptr) {
            return std::nullopt;
        }
        result.bytes.resize(result.about.bytes);
        std::memcpy(result.bytes.data(), data, result.bytes.size());
        return result;
    }
    /// The first component of each pixel of a frame of 8 bits.
    static std::vector<int> blue(const Frame& frame) {
        std::vector<int> values;
        for (std::size_t at = 0; at < frame.bytes.size(); at += 3) {
            values.push_back(frame.bytes[at]);
        }
        return values;
    }
    std::uint64_t registerValue(const char* name) {
        std::uint64_t value = 0;
        EXPECT_EQ(softboard_get_register(board, name, &value), 0) << name;
        return value;
    }

    std::vector<softboard_memory*> memories;
};
