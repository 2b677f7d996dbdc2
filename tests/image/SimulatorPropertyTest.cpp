// Random sequences of writes to the simulator: whatever comes, a refused value changes nothing, and what is published
// is what the design's integers give.

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <random>
#include <string>

#include "tests/image/Simulator.h"

namespace quillon::image_test {
namespace {

using Maxima = std::map<int, double>;

constexpr int Limited[] = {FG_CAMERASIMULATOR_WIDTH,     FG_CAMERASIMULATOR_LINE_GAP, FG_CAMERASIMULATOR_HEIGHT,
                           FG_CAMERASIMULATOR_FRAME_GAP, FG_CAMERASIMULATOR_LINERATE, FG_CAMERASIMULATOR_FRAMERATE};

/// What the limits are computed from: the integers in the design, and the height and the mode that are asked for.
struct Timing {
    int mode;
    std::uint32_t height;
    std::uint32_t sequence, width, lineGap, frameGap;

    explicit Timing(Simulator& simulator)
        : mode(static_cast<int>(simulator.get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE))),
          height(simulator.get<std::uint32_t>(FG_CAMERASIMULATOR_HEIGHT)),
          sequence(integer(simulator, "PixelFrequency_SequenceLength_ImageWidth")),
          width(32 * integer(simulator, "LineGap_Number")),
          lineGap(32 * integer(simulator, "Size_ImageWidth") - width),
          frameGap(integer(simulator, "Size_ImageHeight") - integer(simulator, "FrameGap_Number")) {}

    static std::uint32_t integer(Simulator& simulator, const std::string& name) {
        return static_cast<std::uint32_t>(simulator.design(name));
    }
    static std::uint32_t cycles(double value) { return static_cast<std::uint32_t>(static_cast<std::int64_t>(value)); }
    double sequenceRate() const { return 1.0 / (sequence * ClockPeriod); }
    double frameSequenceRate() const { return 1.0 / ((height * sequence) * ClockPeriod); }

    Maxima maxima() const {
        Maxima limits;
        const double pixelsOfLine =
            MaxPixelRate / (mode == LineRateMode ? sequenceRate() : height * frameSequenceRate());
        limits[FG_CAMERASIMULATOR_WIDTH] =
            mode == PixelFrequencyMode ? 294920 - lineGap : std::min(294920U, cycles(pixelsOfLine - 32.0));
        limits[FG_CAMERASIMULATOR_LINE_GAP] = mode == PixelFrequencyMode ? 294920 - width
                                              : mode == LineRateMode
                                                  ? std::min(294920 - width, cycles(pixelsOfLine - width - 32.0))
                                                  : 0;
        limits[FG_CAMERASIMULATOR_HEIGHT] =
            mode == FrameRateMode ? std::min(65536U, cycles(MaxPixelRate / ((width + 32.0) * frameSequenceRate())))
                                  : 65536 - frameGap;
        limits[FG_CAMERASIMULATOR_FRAME_GAP] = mode == PixelFrequencyMode ? 65536 - height : 0;
        limits[FG_CAMERASIMULATOR_LINERATE] = MaxPixelRate / (width + 32.0);
        limits[FG_CAMERASIMULATOR_FRAMERATE] = MaxPixelRate / ((width + 32) * height);
        return limits;
    }
};

Maxima publishedMaxima(const Simulator& simulator) {
    const auto trees = simulator.applet.parameterInfo();
    Maxima maxima;
    for (const int id : Limited) {
        std::visit(
            [&](const auto& range) {
                if constexpr (requires { range.max; }) {
                    maxima[id] = static_cast<double>(range.max);
                }
            },
            client::findRecord(trees, id)->range);
    }
    return maxima;
}

/// What each write refreshes.
const std::map<int, std::vector<int>> Refreshed = {
    {FG_CAMERASIMULATOR_WIDTH,
     {FG_CAMERASIMULATOR_LINE_GAP, FG_CAMERASIMULATOR_HEIGHT, FG_CAMERASIMULATOR_LINERATE,
      FG_CAMERASIMULATOR_FRAMERATE}},
    {FG_CAMERASIMULATOR_LINE_GAP, {FG_CAMERASIMULATOR_WIDTH}},
    {FG_CAMERASIMULATOR_HEIGHT, {FG_CAMERASIMULATOR_WIDTH, FG_CAMERASIMULATOR_FRAME_GAP, FG_CAMERASIMULATOR_FRAMERATE}},
    {FG_CAMERASIMULATOR_FRAME_GAP, {FG_CAMERASIMULATOR_HEIGHT}},
    {FG_CAMERASIMULATOR_PIXEL_FREQUENCY, {}},
    {FG_CAMERASIMULATOR_LINERATE, {FG_CAMERASIMULATOR_WIDTH, FG_CAMERASIMULATOR_LINE_GAP}},
    {FG_CAMERASIMULATOR_FRAMERATE, {FG_CAMERASIMULATOR_WIDTH, FG_CAMERASIMULATOR_HEIGHT}},
    {FG_CAMERASIMULATOR_SELECT_MODE,
     {FG_CAMERASIMULATOR_WIDTH, FG_CAMERASIMULATOR_LINE_GAP, FG_CAMERASIMULATOR_HEIGHT, FG_CAMERASIMULATOR_FRAME_GAP}},
};

struct Write {
    int id;
    double value;
};

/// What a random sequence starts from.
struct Seed {
    unsigned number;
};

std::string nameOf(Seed seed) {
    return "Seed" + std::to_string(seed.number);
}

void PrintTo(Seed seed, std::ostream* stream) {
    *stream << nameOf(seed);
}

class RandomWrites {
public:
    explicit RandomWrites(Seed seed) : random_(seed.number) {}

    Write next() {
        switch (below(8)) {
            case 0: return {FG_CAMERASIMULATOR_WIDTH, number(295'000)};
            case 1: return {FG_CAMERASIMULATOR_LINE_GAP, number(295'000)};
            case 2: return {FG_CAMERASIMULATOR_HEIGHT, number(66'000)};
            case 3: return {FG_CAMERASIMULATOR_FRAME_GAP, number(66'000)};
            case 4: return {FG_CAMERASIMULATOR_PIXEL_FREQUENCY, rate(4100.0) - 0.05};
            case 5: return {FG_CAMERASIMULATOR_LINERATE, rate(5e6)};
            case 6: return {FG_CAMERASIMULATOR_FRAMERATE, rate(5e5)};
            default: return {FG_CAMERASIMULATOR_SELECT_MODE, number(4)};
        }
    }

private:
    unsigned below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }
    /// Up to a bound, of all orders of magnitude.
    double rate(double bound) {
        const double exponent = std::uniform_real_distribution<double>(-2.0, std::log10(bound))(random_);
        return std::pow(10.0, exponent);
    }
    double number(unsigned bound) {
        return below(4) == 0 ? below(std::min(bound, 64U)) : std::floor(std::min(rate(bound), double(bound)));
    }

    std::mt19937 random_;
};

class SimulatorProperty : public ::testing::TestWithParam<Seed>, public Simulator {
protected:
    int write(const Write& write) {
        const bool isRate = write.id == FG_CAMERASIMULATOR_PIXEL_FREQUENCY || write.id == FG_CAMERASIMULATOR_LINERATE ||
                            write.id == FG_CAMERASIMULATOR_FRAMERATE;
        return isRate ? set(write.id, write.value) : set(write.id, static_cast<std::uint32_t>(write.value));
    }
    /// All that can be read of the simulator.
    std::vector<double> readings() {
        std::vector<double> values;
        for (const int id : {FG_CAMERASIMULATOR_WIDTH, FG_CAMERASIMULATOR_LINE_GAP, FG_CAMERASIMULATOR_HEIGHT,
                             FG_CAMERASIMULATOR_FRAME_GAP, FG_CAMERASIMULATOR_SELECT_MODE}) {
            values.push_back(get<std::uint32_t>(id));
        }
        for (const int id :
             {FG_CAMERASIMULATOR_PIXEL_FREQUENCY, FG_CAMERASIMULATOR_LINERATE, FG_CAMERASIMULATOR_FRAMERATE}) {
            values.push_back(get<double>(id));
        }
        return values;
    }
};

TEST_P(SimulatorProperty, NoSequenceOfWritesLeavesTheLimitsBehind) {
    RandomWrites random(GetParam());
    Maxima expected = publishedMaxima(*this);
    int accepted = 0, refused = 0;
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        const Write change = random.next();
        SCOPED_TRACE(::testing::Message() << "step " << step << ": parameter " << change.id << " = " << change.value);
        const auto before = readings();
        const auto mode = before[4];
        forget();
        const int code = write(change);
        if (code == 0) {
            ++accepted;
            const Maxima fresh = Timing(*this).maxima();
            for (const int id : Refreshed.at(change.id)) {
                expected[id] = fresh.at(id);
            }
            // A mode, and a height in the frame-rate mode, set a rate as well, with what it refreshes.
            if (change.id == FG_CAMERASIMULATOR_HEIGHT && mode == FrameRateMode) {
                expected[FG_CAMERASIMULATOR_HEIGHT] = fresh.at(FG_CAMERASIMULATOR_HEIGHT);
            }
        } else {
            ++refused;
            EXPECT_EQ(code, -6000);
            if (writes().empty()) {
                EXPECT_EQ(readings(), before);
            } else {
                // A rate that cannot follow the new mode or height is only found out when the sizes have been sent.
                EXPECT_TRUE(change.id == FG_CAMERASIMULATOR_SELECT_MODE ||
                            (change.id == FG_CAMERASIMULATOR_HEIGHT && mode == FrameRateMode));
                EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), mode);
                EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_HEIGHT), before[2]);
            }
        }
        EXPECT_EQ(publishedMaxima(*this), expected);
    }
    EXPECT_GT(accepted, 20);
    EXPECT_GT(refused, 20);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulatorProperty,
                         ::testing::Values(Seed{1}, Seed{2}, Seed{3}, Seed{4}, Seed{5}, Seed{6}),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace quillon::image_test
