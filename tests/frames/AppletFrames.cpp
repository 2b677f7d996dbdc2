#include "tests/frames/AppletFrames.h"

#include <algorithm>

#include "quillon/PublicEvents.h"

namespace quillon::frames_test {

void AppletFrames::SetUp() {
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_STEPPED, 1.0), 0);
    built.board.record(false);
}

void AppletFrames::TearDown() {
    stop();
    closeMemories();
}

std::uint32_t AppletFrames::whole(int id) {
    std::uint32_t value = 9999;
    EXPECT_EQ(built.applet.getUnsigned(id, value), 0) << id;
    return value;
}

double AppletFrames::real(int id) {
    double value = -1.0;
    EXPECT_EQ(built.applet.getDouble(id, value), 0) << id;
    return value;
}

void AppletFrames::pass(double microseconds) {
    constexpr double MostAtOnce = 60e6;
    for (; microseconds > MostAtOnce; microseconds -= MostAtOnce) {
        built.board.advanceSignals(MostAtOnce);
    }
    built.board.advanceSignals(microseconds);
}

std::uint64_t AppletFrames::events(const std::string& publicName) {
    EXPECT_NE(built.applet.eventMask(publicName), 0U) << publicName;
    const auto event = std::find_if(PublicEvents.begin(), PublicEvents.end(),
                                    [&](const PublicEvent& it) { return it.publicName == publicName; });
    if (event == PublicEvents.end()) {
        ADD_FAILURE() << publicName;
        return 0;
    }
    return built.board.eventCount(event->designName);
}

void AppletFrames::useCamera(int width, int height) {
    set(FG_WIDTH, width);
    set(FG_HEIGHT, height);
}

void AppletFrames::useSimulator(int width, int height) {
    set(FG_WIDTH, width);
    set(FG_HEIGHT, height);
    set(FG_CAMERASIMULATOR_WIDTH, width);
    set(FG_CAMERASIMULATOR_HEIGHT, height);
    set(FG_CAMERASIMULATOR_LINERATE, 12500.0);
    set(FG_CAMERASIMULATOR_ENABLE, FG_CAMERASIMULATOR);
}

softboard_memory* AppletFrames::memoryOf(unsigned buffers, std::size_t bytes) {
    softboard_memory* const memory = softboard_memory_open(device(), bytes, buffers, nullptr);
    EXPECT_NE(memory, nullptr);
    memories_.push_back(memory);
    return memory;
}

void AppletFrames::closeMemories() {
    for (softboard_memory* const memory : memories_) {
        EXPECT_EQ(softboard_memory_close(memory), 0);
    }
    memories_.clear();
}

Frame AppletFrames::frame(softboard_memory* memory, std::int64_t number) {
    Frame result;
    result.about.size = sizeof result.about;
    const void* const data = softboard_memory_data(memory, number, &result.about);
    EXPECT_NE(data, nullptr) << "frame " << number;
    if (data != nullptr) {
        const auto* const bytes = static_cast<const std::byte*>(data);
        result.bytes.assign(bytes, bytes + result.about.bytes);
    }
    return result;
}

std::vector<int> AppletFrames::numbers(const Frame& frame) {
    std::vector<int> values;
    for (const std::byte byte : frame.bytes) {
        values.push_back(std::to_integer<int>(byte));
    }
    return values;
}

std::vector<int> AppletFrames::blue(const Frame& frame) {
    std::vector<int> values;
    for (std::size_t at = 0; at < frame.bytes.size(); at += 3) {
        values.push_back(std::to_integer<int>(frame.bytes[at]));
    }
    return values;
}

}  // namespace quillon::frames_test
