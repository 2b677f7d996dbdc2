#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "softboard/clock.h"
#include "softboard/frames.h"
#include "tests/softboard/OpenBoard.h"

namespace {

const std::string Unit = "Device1_Process0_Trigger_Trigger_";
const std::string Simulator = "Device1_Process0_CameraSimulator_";
const std::string Routing = "Device1_Process1_Trigger_";
const std::string CameraEvents = Routing + "Events_Events_LVAL_FVAL_";

/// Whether somebody listens to a signal changes nothing but what the listener hears: two boards go through the same,
/// and the routes of one carry its signals.
class BoardListeners : public testing::Test {
protected:
    struct Side {
        IXdevice* board = nullptr;
        Fg_Struct* fg = nullptr;
        softboard_memory* memory = nullptr;

        void integer(const std::string& name, std::int64_t value) const {
            ASSERT_EQ(softboard_set_integer(board, name.c_str(), value), 0) << name;
        }
        void route(const std::string& stem, int select, int invert = 0) const {
            integer(Routing + stem + "_SelectSignal_Select", select);
            integer(Routing + stem + "_Polarity_Invert", invert);
        }
        std::uint64_t events(const std::string& name) const {
            std::uint64_t count = 0;
            EXPECT_EQ(softboard_event_count(board, name.c_str(), &count), 0) << name;
            return count;
        }
        std::int64_t value(const std::string& name) const {
            std::int64_t value = 0;
            EXPECT_EQ(softboard_get_integer(board, name.c_str(), &value), 0) << name;
            return value;
        }
    };

    void SetUp() override {
        design = loadDesignImage();
        for (Side* side : {&listening, &deaf}) {
            side->board = softboard_open();
            side->fg = Fg_InitHandleSlaveAware("Quillon.tav", side->board, design, 0);
            ASSERT_NE(side->fg, nullptr);
            ASSERT_EQ(softboard_transcript_record(side->board, 0), 0);
            ASSERT_EQ(softboard_clock(side->board, SOFTBOARD_CLOCK_STEPPED, 1.0), 0);
            for (const char* stem : {"Analyzer_Analyzer0_Select", "Analyzer_Analyzer1_Select",
                                     "Events_SelectCustomSignalEvent0", "Events_SelectCustomSignalEvent1"}) {
                side->route(stem, 0);
            }
            side->route("OutputMapping_CamTrigger0_SelectTrigger", 0);
            side->integer("Device1_Process0_Buffer_0_SensorWidth", 64);
            side->integer("Device1_Process0_Buffer_0_XLength", 8);
            for (const auto& [name, value] :
                 {std::pair{"Size_ImageWidth", 1}, std::pair{"LineGap_Number", 1}, std::pair{"Size_ImageHeight", 5},
                  std::pair{"FrameGap_Number", 4}, std::pair{"PixelFrequency_SequenceLength_ImageWidth", 300}}) {
                side->integer(Simulator + name, value);
            }
            side->memory = softboard_memory_open(side->board, 4096, 2, nullptr);
            ASSERT_EQ(Fg_AcquireEx(side->fg, 0, -1, 0, side->memory), 0);
        }
    }
    void TearDown() override {
        for (Side* side : {&listening, &deaf}) {
            Fg_FreeGrabber(side->fg);
            EXPECT_EQ(softboard_memory_close(side->memory), 0);
            softboard_close(side->board);
        }
        TavUnloadTavFile(design);
    }

    std::int64_t from(std::int64_t least, std::int64_t most) {
        return least + static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(most - least + 1));
    }
    void both(const std::string& name, std::int64_t value) {
        listening.integer(name, value);
        deaf.integer(name, value);
    }
    void bothTimes(const std::string& name, double microseconds) {
        for (const Side* side : {&listening, &deaf}) {
            ASSERT_EQ(softboard_set_double(side->board, (Unit + name).c_str(), microseconds), 0) << name;
        }
    }
    void bothInputs(unsigned input, int level) {
        softboard_set_input(listening.board, input, level);
        softboard_set_input(deaf.board, input, level);
    }
    void bothPass(double microseconds) {
        ASSERT_EQ(softboard_advance_signals(listening.board, microseconds), 0);
        ASSERT_EQ(softboard_advance_signals(deaf.board, microseconds), 0);
    }
    /// Something that moves signals, or decides how they move.
    void changeAnything() {
        struct Range {
            std::string name;
            std::int64_t least, most;
        };
        static const std::vector<Range> Ranges = {
            {Unit + "LineTriggerMode", 0, 3},
            {Unit + "ExsyncPolarity", 0, 1},
            {Unit + "LineTrgDownscaler", 1, 3},
            {Unit + "LineTrgPhase", 1, 3},
            {Unit + "ImgTriggerMode", 0, 2},
            {Unit + "ImgTrgInSource", 0, 4},
            {Unit + "ImgTriggerEnable", 0, 1},
            {Unit + "SoftwareTrgInput", 0, 1},
            {Unit + "SoftwareTrgPulse", 0, 1},
            {Unit + "ImgTrgDelay", 0, 2},
            {Unit + "YOffset", 0, 2},
            {Unit + "YLength", 1, 6},
            {Unit + "MaxGatedHeight", 0, 1},
            {Unit + "FlashEnable", 0, 1},
            {Unit + "FlashDelay", 0, 2},
            {Unit + "FlashPolarity", 0, 1},
            {"Device1_Process0_ImageHeight_ImageHeight", 1, 4},
            {"Device1_Process0_Buffer_0_SensorWidth", 16, 4000},
            {Simulator + "Enable_SelectSource", 0, 1},
            {Simulator + "FrameGap_Number", 1, 5},
        };
        const std::int64_t what = from(0, static_cast<std::int64_t>(Ranges.size()) + 4);
        switch (what) {
            case 0: bothTimes("ExsyncPeriod", static_cast<double>(from(0, 200)) / 10); break;
            case 1: bothTimes("ExsyncExposure", static_cast<double>(from(0, 100)) / 10); break;
            case 2: bothTimes("Exsync2Delay", static_cast<double>(from(0, 1) * from(0, 400)) / 10); break;
            case 3: both(Unit + "ExsyncEnable", from(0, 3) != 0 ? 1 : 0); break;
            case 4: bothInputs(static_cast<unsigned>(from(0, 4)), static_cast<int>(from(0, 1))); break;
            default: {
                const Range& range = Ranges[static_cast<std::size_t>(what - 5)];
                both(range.name, from(range.least, range.most));
            }
        }
    }

    /// All that a host sees of a board's signals and frames, but for what listens.
    static std::map<std::string, std::uint64_t> seen(const Side& side) {
        std::map<std::string, std::uint64_t> all;
        for (unsigned select = 0; select < 37; ++select) {
            int level = -1;
            EXPECT_EQ(softboard_get_signal(side.board, select, &level), 0);
            all["level of signal " + std::to_string(select)] = static_cast<std::uint64_t>(level);
        }
        for (const char* event : {"Cam0LineStart", "Cam0LineEnd", "Cam0FrameStart", "Cam0FrameEnd"}) {
            all[event] = side.events(CameraEvents + event);
        }
        for (const char* pin : {"Pin0", "NotPin0", "Pin3", "NotPin3"}) {
            all[pin] = side.events(Routing + "Inputs_InputEvents_InputEvents_" + pin);
        }
        for (const char* counter : {"FrameCounter", "LineCounter", "TriggerCounter", "DmaByteCounter", "Timestamp"}) {
            EXPECT_EQ(softboard_get_register(side.board, counter, &all[counter]), 0);
        }
        constexpr std::int64_t CameraTrigger = 8;  // an output, and so a listener
        all["busy"] = static_cast<std::uint64_t>(side.value(Unit + "ImgTrgIsBusy"));
        all["camera status"] = static_cast<std::uint64_t>(side.value("FG_CAMSTATUS_EXTENDED") & ~CameraTrigger);
        const std::int64_t number = Fg_getLastPicNumberEx(side.fg, 0, nullptr);
        all["frames"] = static_cast<std::uint64_t>(number);
        softboard_frame about{};
        about.size = sizeof about;
        if (softboard_memory_data(side.memory, number, &about) != nullptr) {
            all["image"] = about.image;
            all["first tick"] = about.first_tick;
            all["last tick"] = about.last_tick;
            all["bytes"] = about.bytes;
            all["lines"] = about.lines;
            all["flags"] = about.flags;
            all["settings"] = about.settings;
        }
        return all;
    }
    std::vector<std::uint8_t> lastFrame(const Side& side) const {
        const std::int64_t number = Fg_getLastPicNumberEx(side.fg, 0, nullptr);
        softboard_frame about{};
        about.size = sizeof about;
        const void* const data = softboard_memory_data(side.memory, number, &about);
        std::vector<std::uint8_t> bytes(data != nullptr ? about.bytes : 0);
        if (data != nullptr) {
            std::memcpy(bytes.data(), data, bytes.size());
        }
        return bytes;
    }

    std::mt19937_64 random{20};
    fpga_design* design = nullptr;
    Side listening;
    Side deaf;
};

TEST_F(BoardListeners, ChangeNothingButWhatTheyHear) {
    listening.route("Analyzer_Analyzer0_Select", SOFTBOARD_LINE_START);
    listening.route("Analyzer_Analyzer1_Select", SOFTBOARD_FRAME_END);
    listening.route("Events_SelectCustomSignalEvent0", SOFTBOARD_LINE_END);
    listening.route("Events_SelectCustomSignalEvent1", SOFTBOARD_LVAL);
    listening.route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_EXSYNC);
    both(Unit + "ExsyncEnable", 1);
    for (int step = 0; step < 3000; ++step) {
        changeAnything();
        bothPass(static_cast<double>(from(0, 400)) / 10);
        const auto expected = seen(deaf);
        ASSERT_EQ(seen(listening), expected) << "step " << step;
        ASSERT_EQ(lastFrame(listening), lastFrame(deaf)) << "step " << step;

        // Those that listen hear every edge once.
        ASSERT_EQ(listening.value(Routing + "Analyzer_Analyzer0_PulseCountSignal_Status"),
                  static_cast<std::int64_t>(expected.at("Cam0LineStart")));
        ASSERT_EQ(listening.value(Routing + "Analyzer_Analyzer1_PulseCountSignal_Status"),
                  static_cast<std::int64_t>(expected.at("Cam0FrameEnd")));
        ASSERT_EQ(listening.events(CameraEvents + "CustomSignalEvent0"), expected.at("Cam0LineEnd"));
        ASSERT_EQ(listening.events(CameraEvents + "CustomSignalEvent1"), expected.at("Cam0LineStart"));
    }
    EXPECT_GT(seen(deaf).at("Cam0LineStart"), 1000U);
    EXPECT_GT(seen(deaf).at("frames"), 500U);
    EXPECT_GT(seen(deaf).at("TriggerCounter"), 20U);
}

TEST_F(BoardListeners, HearFromTheChangeOfTheirRouteOn) {
    constexpr std::array Heard = {0, int{SOFTBOARD_LINE_START}, int{SOFTBOARD_FRAME_START}, 99};
    const std::array<std::string, 4> events = {"", "Cam0LineStart", "Cam0FrameStart", ""};
    both(Unit + "ExsyncEnable", 1);
    std::int64_t pulses = 0;
    std::uint64_t raised = 0;
    for (int step = 0; step < 500; ++step) {
        const auto analyzed = static_cast<std::size_t>(from(0, 3));
        const auto custom = static_cast<std::size_t>(from(0, 3));
        listening.route("Analyzer_Analyzer0_Select", Heard[analyzed]);
        listening.route("Events_SelectCustomSignalEvent0", Heard[custom]);
        const auto before = seen(listening);
        bothPass(static_cast<double>(from(0, 10'000)) / 10);
        const auto after = seen(listening);
        ASSERT_EQ(after, seen(deaf)) << "step " << step;
        const auto came = [&](std::size_t which) {
            return events[which].empty() ? 0 : after.at(events[which]) - before.at(events[which]);
        };
        pulses += static_cast<std::int64_t>(came(analyzed));
        raised += came(custom);
        ASSERT_EQ(listening.value(Routing + "Analyzer_Analyzer0_PulseCountSignal_Status"), pulses) << "step " << step;
        ASSERT_EQ(listening.events(CameraEvents + "CustomSignalEvent0"), raised) << "step " << step;
    }
    EXPECT_GT(pulses, 100);
    EXPECT_GT(raised, 100U);
}

}  // namespace
