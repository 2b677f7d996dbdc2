// Public settings against the bytes of the frames that come of them.

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <random>

#include "softboard/faults.h"
#include "softboard/pixels/Reference.h"
#include "softboard/pixels/Scene.h"
#include "tests/frames/AppletFrames.h"
#include "tests/frames/DesignSettings.h"

namespace quillon::frames_test {
namespace {

namespace pixels = softboard::pixels;

// ---- The vantage point ----

class PicturesFromVantagePoints : public AppletFrames {
protected:
    static constexpr int Width = 8;
    static constexpr int Height = 3;

    void SetUp() override {
        AppletFrames::SetUp();
        useSimulator(Width, Height);
        set(FG_CAMERASIMULATOR_PATTERN_OFFSET, 10);
        set(FG_SENSORWIDTH, Width);
        set(FG_SENSORHEIGHT, Height);
        set(FG_CAMERASIMULATOR_ROLL, FG_OFF);
        memory = memoryOf(1, Width * Height * 3);
    }
    std::vector<int> picture() {
        acquire(1, memory);
        pass(Height * SimulatorLineTime);
        return blue(frame(memory, 1));
    }
    /// A first line, and two that lie so far beside it.
    static std::vector<int> lines(const std::vector<int>& first, int second, int third) {
        std::vector<int> all;
        for (const int offset : {0, second, third}) {
            for (const int value : first) {
                all.push_back(value + offset);
            }
        }
        return all;
    }

    softboard_memory* memory = nullptr;
    const std::vector<int> ahead = {10, 11, 12, 13, 14, 15, 16, 17};
    const std::vector<int> mirrored = {17, 16, 15, 14, 13, 12, 11, 10};
    const std::vector<int> last = {12, 13, 14, 15, 16, 17, 18, 19};
    const std::vector<int> lastMirrored = {19, 18, 17, 16, 15, 14, 13, 12};
};

TEST_F(PicturesFromVantagePoints, AreMirrored) {
    EXPECT_EQ(picture(), lines(ahead, 1, 2));
    set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_TOP_RIGHT);
    EXPECT_EQ(picture(), lines(mirrored, 1, 2));
    set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_BOTTOM_LEFT);
    EXPECT_EQ(picture(), lines(last, -1, -2));
    set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_BOTTOM_RIGHT);
    EXPECT_EQ(picture(), lines(lastMirrored, -1, -2));
    set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_TOP_LEFT);
    EXPECT_EQ(picture(), lines(ahead, 1, 2));
}

// The size and offset parameters send the buffer in its top-left form.
TEST_F(PicturesFromVantagePoints, LoseTheMirrorWithTheNextWriteOfTheGeometry) {
    const std::vector<std::pair<int, int>> writes = {{FG_WIDTH, Width},
                                                     {FG_HEIGHT, Height},
                                                     {FG_XOFFSET, 0},
                                                     {FG_YOFFSET, 0},
                                                     {FG_SENSORWIDTH, Width},
                                                     {FG_SENSORHEIGHT, Height},
                                                     {FG_PIXELFORMAT, int{RGB8}}};
    for (const auto& [id, value] : writes) {
        set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_BOTTOM_RIGHT);
        ASSERT_EQ(picture(), lines(lastMirrored, -1, -2));
        set(id, value);
        EXPECT_EQ(picture(), lines(ahead, 1, 2)) << id;
        EXPECT_EQ(whole(FG_VANTAGEPOINT), 3U);
    }
}

TEST_F(PicturesFromVantagePoints, CutTheRegionOutOfTheMirroredSensor) {
    set(FG_WIDTH, 4);
    set(FG_XOFFSET, 4);
    set(FG_VANTAGEPOINT, FG_VANTAGEPOINT_TOP_RIGHT);
    acquire(1, memory);
    pass(Height * SimulatorLineTime);
    EXPECT_THAT(blue(frame(memory, 1)), testing::ElementsAre(13, 12, 11, 10, 14, 13, 12, 11, 15, 14, 13, 12));
}

// ---- All settings, at random ----

/// Writes whatever comes to the settings of the image path, lets frames come, and draws them once more by the
/// reference, with what the design holds.
class PicturesOfRandomSettings : public AppletFrames {
protected:
    enum class When { Always, BetweenFrames };
    struct Write {
        std::function<int()> carryOut;
        When when = When::Always;
        bool tables = false;
    };

    void SetUp() override {
        AppletFrames::SetUp();
        useSimulator(16, 3);
        makeWrites();
    }

    int whole(int from, int to) { return std::uniform_int_distribution(from, to)(random); }
    double between(double from, double to) { return std::uniform_real_distribution(from, to)(random); }
    template <typename Value>
    Value oneOf(std::initializer_list<Value> values) {
        return values.begin()[whole(0, static_cast<int>(values.size()) - 1)];
    }

    void add(int id, std::initializer_list<int> values, When when = When::Always, bool tables = false) {
        const std::vector<int> choice = values;
        writes.push_back({[this, id, choice] {
                              const auto last = static_cast<int>(choice.size()) - 1;
                              return built.applet.setInt(id, choice[static_cast<std::size_t>(this->whole(0, last))]);
                          },
                          when, tables});
    }
    void addReal(int id, std::initializer_list<double> values, double from, double to, bool tables = false) {
        const std::vector<double> choice = values;
        writes.push_back({[this, id, choice, from, to] {
                              const int at = this->whole(0, static_cast<int>(choice.size()));
                              return built.applet.setDouble(id, at == static_cast<int>(choice.size())
                                                                    ? between(from, to)
                                                                    : choice[static_cast<std::size_t>(at)]);
                          },
                          When::Always, tables});
    }
    void makeWrites() {
        for (int times = 0; times < 2; ++times) {
            add(FG_WIDTH, {4, 8, 12, 16, 20, 32, 64, 100, 256, 1000, 3, 6, 16388});
            add(FG_XOFFSET, {0, 0, 4, 8, 12, 100, 2, 16384});
            add(FG_VANTAGEPOINT, {0, 1, 2, 3, 4});
            add(FG_PIXELFORMAT, {RGB8, RGB10, RGB12, RGB14, RGB16, 1030});
            add(FG_FORMAT, {FG_COL24, FG_COL30, FG_COL36, FG_COL42, FG_COL48, 3});
            add(FG_LINEORDER, {0, 1, 2, 3, 4, 5, 6});
            add(FG_CAMERASIMULATOR_ENABLE, {FG_CAMPORT, FG_CAMPORT, FG_CAMERASIMULATOR, 2}, When::BetweenFrames);
        }
        add(FG_WIDTH, {16384});
        add(FG_SENSORWIDTH, {4, 5, 16, 33, 100, 1024, 16384, 3});
        add(FG_SENSORHEIGHT, {1, 3, 6, 1024, 0});
        add(FG_HEIGHT, {1, 2, 3, 4, 5, 6, 0}, When::BetweenFrames);
        add(FG_YOFFSET, {0, 1, 2, 3, 1398102}, When::BetweenFrames);
        add(FG_BITALIGNMENT, {FG_RIGHT_ALIGNED, FG_LEFT_ALIGNED, FG_CUSTOM_BIT_SHIFT_MODE, 3});
        add(FG_BITALIGNMENT, {FG_CUSTOM_BIT_SHIFT_MODE});
        add(FG_CUSTOM_BIT_SHIFT_RIGHT, {0, 1, 2, 3, 4, 5, 6, 7, 9, 15, 16});
        for (const int id : {FG_SCALINGFACTOR_RED, FG_SCALINGFACTOR_GREEN, FG_SCALINGFACTOR_BLUE}) {
            addReal(id, {0.0, 1.0, 1.0, 1.0005, 3.9990234375, 4.0, -0.1}, 0.0, 3.99);
        }
        add(FG_LUT_ENABLE, {FG_OFF, FG_ON, FG_ON, 2});
        add(FG_LUT_TYPE, {LUT_TYPE_PROCESSING, LUT_TYPE_CUSTOM, 1}, When::Always, true);
        addReal(FG_PROCESSING_OFFSET, {0.0, 1.1}, -0.5, 0.5, true);
        addReal(FG_PROCESSING_GAIN, {1.0, 16384.0, -1.0}, 0.0, 4.0, true);
        addReal(FG_PROCESSING_GAMMA, {1.0, 0.45, 2.2, -1.0, 0.0, 1001.0}, 0.1, 5.0, true);
        add(FG_PROCESSING_INVERT, {FG_OFF, FG_ON, 2}, When::Always, true);
        for (const int id : {FG_LUT_VALUE_RED, FG_LUT_VALUE_GREEN, FG_LUT_VALUE_BLUE}) {
            writes.push_back({[this, id] {
                                  const auto index = static_cast<std::uint32_t>(this->whole(0, 16400));
                                  const auto count = static_cast<std::uint32_t>(this->whole(0, 3000));
                                  std::vector<std::uint32_t> entries(count);
                                  for (std::uint32_t& entry : entries) {
                                      entry = static_cast<std::uint32_t>(this->whole(0, 65535));
                                  }
                                  return built.applet.setField(id, entries, index);
                              },
                              When::Always, true});
            writes.push_back({[this, id] {
                                  return built.applet.setElement(id, static_cast<std::uint32_t>(this->whole(0, 16384)),
                                                                 static_cast<std::uint32_t>(this->whole(0, 65536)));
                              },
                              When::Always, true});
        }
        add(FG_CAMERASIMULATOR_PATTERN, {FG_HORIZONTAL, FG_VERTICAL, FG_DIAGONAL, 0});
        add(FG_CAMERASIMULATOR_PATTERN_OFFSET, {0, 1, 100, 255, 256});
        add(FG_CAMERASIMULATOR_ROLL, {FG_OFF, FG_ON, 2});
        add(FG_CAMERASIMULATOR_WIDTH, {1, 32, 33, 256, 1024, 0});
        add(FG_CAMERASIMULATOR_LINE_GAP, {0, 1, 100});
        add(FG_CAMERASIMULATOR_HEIGHT, {1, 2, 3, 4, 5, 8, 0});
        add(FG_CAMERASIMULATOR_FRAME_GAP, {0, 1, 5});
        add(FG_CAMERASIMULATOR_SELECT_MODE, {FG_PIXEL_FREQUENCY, FG_LINERATE, FG_FRAMERATE, 3});
        addReal(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, {2.0, 40.0, 4000.0, 4001.0}, 2.0, 4000.0);
        addReal(FG_CAMERASIMULATOR_LINERATE, {0.05}, 1000.0, 100000.0);
        addReal(FG_CAMERASIMULATOR_FRAMERATE, {0.05}, 100.0, 10000.0);
        addReal(FG_LINEPERIODE, {0.5, 20.0, 200.0}, 20.0, 200.0);
        addReal(FG_LINEEXPOSURE, {0.5, 19.0}, 1.0, 100.0);
    }
    void writeSome(int number, bool withinAFrame) {
        for (int done = 0; done < number;) {
            const Write& write = writes[static_cast<std::size_t>(whole(0, static_cast<int>(writes.size()) - 1))];
            if (withinAFrame && write.when == When::BetweenFrames) {
                continue;
            }
            const bool accepted = write.carryOut() == 0;
            ++(accepted ? taken : refused);
            ++done;
            if (write.tables && accepted) {
                settings.tablesMayHaveChanged();
            }
        }
    }

    /// About how long a line takes, in µs.
    double lineTime(const pixels::Settings& now) {
        if (!now.simulator) {
            return real(FG_LINEPERIODE);
        }
        const auto of = [&](const char* name) {
            return static_cast<double>(design(std::string("CameraSimulator_") + name));
        };
        const double sequence = of("PixelFrequency_SequenceLength_ImageWidth");
        const double lines = of("Size_ImageHeight") / of("FrameGap_Number");
        const double line = of("ControlPixelClock_Mode") == 1
                                ? sequence
                                : of("Size_ImageWidth") * sequence / of("PixelFrequency_ActivePixel_Number");
        return line * lines * Tick;
    }

    /// Lets two frames come, and compares them. Lines are told by their events, and counted into frames here.
    void checkFrames() {
        constexpr std::int64_t Frames = 2;
        const std::int64_t height = design("ImageHeight_ImageHeight");
        const std::int64_t yOffset = design("Trigger_Trigger_YOffset");
        ASSERT_EQ(design("Trigger_Trigger_YLength"), height);
        softboard_memory* const memory = memoryOf(Frames, std::size_t{16384} * 6 * 6);
        softboard_dma_rate(device(), std::numeric_limits<double>::infinity());
        settings.forget();
        std::vector<std::vector<pixels::Line>> frames;
        std::int64_t line = 0;
        std::int64_t simulatorLine = 0;
        std::int64_t simulatorFrame = 0;
        std::uint64_t seen = events("FG_START_OF_LINE_CAM_PORT_0");
        const std::int64_t enough = 4 * (yOffset + height);
        acquire(Frames, memory);
        auto now = settings.read();
        const bool changes = whole(0, 2) == 0;
        for (int step = 0; pictures() < Frames && line < enough; ++step) {
            ASSERT_LT(step, 10000);
            if (changes && whole(0, 1) == 0) {
                writeSome(whole(1, 3), true);
                now = settings.read();
                if (simulatorLine >= design("CameraSimulator_FrameGap_Number")) {
                    simulatorLine = 0;
                    ++simulatorFrame;
                }
            }
            pass(lineTime(*now) * between(0.0, 2.5));
            for (const std::uint64_t started = events("FG_START_OF_LINE_CAM_PORT_0"); seen < started; ++seen) {
                const std::int64_t position =
                    now->simulator ? pixels::simulatorPosition(simulatorFrame, simulatorLine) : 0;
                if (++simulatorLine >= design("CameraSimulator_FrameGap_Number")) {
                    simulatorLine = 0;
                    ++simulatorFrame;
                }
                const std::int64_t ofImage = line++ % (yOffset + height);
                if (ofImage < yOffset) {
                    continue;
                }
                if (ofImage == yOffset) {
                    frames.emplace_back();
                }
                frames.back().push_back({.tick = 0,
                                         .position = position,
                                         .settings = now->version,
                                         .exposure = 0,
                                         .flash = 0,
                                         .inverted = 0});
            }
        }
        compare(frames, memory, static_cast<std::size_t>(height));
        stop();
        closeMemories();
    }
    void compare(const std::vector<std::vector<pixels::Line>>& frames, softboard_memory* memory, std::size_t height) {
        std::int64_t number = 0;
        std::size_t whole = 0;  // frames that have ended for sure, as another line has begun
        pixels::BarScene scene;
        for (std::size_t index = 0; index < frames.size(); ++index) {
            const auto& lines = frames[index];
            std::size_t bytes = 0;
            for (const pixels::Line& line : lines) {
                bytes += pixels::lineBytes(*settings.of(line.settings));
            }
            if (lines.size() < height || bytes == 0) {
                continue;  // nothing comes of a branch that leads into the trash
            }
            whole += index + 1 < frames.size() ? 1 : 0;
            if (number == pictures()) {
                continue;
            }
            const Frame drawn = frame(memory, ++number);
            const auto settingsOf = [&](const pixels::Line& line) { return settings.of(line.settings); };
            const auto withBytes = std::ranges::find_if(
                lines, [&](const pixels::Line& line) { return pixels::lineBytes(*settingsOf(line)) != 0; });
            const auto first = settingsOf(*withBytes);
            const bool mixed = std::ranges::any_of(lines, [&](const pixels::Line& line) {
                return settingsOf(line)->xLength != first->xLength || settingsOf(line)->formatBits != first->formatBits;
            });
            EXPECT_EQ(drawn.about.image, static_cast<std::uint64_t>(number));
            EXPECT_EQ(drawn.about.lines, height);
            EXPECT_EQ(drawn.about.width, first->xLength);
            EXPECT_EQ(drawn.about.bits, first->formatBits);
            EXPECT_EQ(drawn.about.flags, mixed ? unsigned{SOFTBOARD_FRAME_MIXED} : 0U);
            std::vector<std::byte> expected(bytes);
            pixels::reference::draw(
                lines, [&](std::uint32_t version) { return settings.of(version); }, scene, expected);
            ASSERT_EQ(drawn.bytes.size(), bytes);
            EXPECT_TRUE(drawn.bytes == expected) << "they differ from byte " << difference(drawn.bytes, expected);
            ++compared;
        }
        EXPECT_EQ(number, pictures());
        EXPECT_GE(static_cast<std::size_t>(pictures()), std::min<std::size_t>(whole, 2));
    }
    static std::ptrdiff_t difference(const std::vector<std::byte>& one, const std::vector<std::byte>& other) {
        return std::mismatch(one.begin(), one.end(), other.begin()).first - one.begin();
    }

    std::mt19937 random{20260102};
    DesignSettings settings{device()};
    std::vector<Write> writes;
    int taken = 0;
    int refused = 0;
    int compared = 0;
};

TEST_F(PicturesOfRandomSettings, AreThoseOfTheDesignsParameters) {
    constexpr int Rounds = 250;
    for (int round = 0; round < Rounds; ++round) {
        SCOPED_TRACE(round);
        writeSome(whole(1, 12), false);
        checkFrames();
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(taken, 5 * Rounds);
    EXPECT_GT(refused, 2 * Rounds);
    EXPECT_GT(compared, Rounds * 3 / 2);
}

}  // namespace
}  // namespace quillon::frames_test
