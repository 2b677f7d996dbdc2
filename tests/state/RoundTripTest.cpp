#include <cmath>
#include <random>
#include <tuple>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

/// Leads an applet into a state that its users can reach: random writes, some of which are refused.
class RandomUser {
public:
    explicit RandomUser(unsigned seed) : random_(seed) {}

    void writeSomething(client::Applet& applet) {
        const auto parameters = PublicParameters;
        const PublicParameter& parameter = parameters[below(parameters.size())];
        const bool isPath = parameter.name == "FG_LUT_SAVE_FILE" || parameter.name == "FG_DEBUGSAVECONFIG";
        if (parameter.access == ParameterAccess::ReadOnly || isPath || is64Bit(parameter)) {
            return;
        }
        const auto records = applet.parameterInfo();
        const client::ParameterRecord* record = client::findRecord(records, parameter.id);
        ASSERT_NE(record, nullptr) << parameter.name;
        // What is refused is no matter: any state will do.
        // Rates that the simulator's speed mode derives can be written all the same; they then run with a line gap of 0
        // while the mode still has the one that was asked for, which is what a load applies. A change of the mode that
        // is refused leaves the records as the refused mode has them.
        if (parameter.name.starts_with("FG_CAMERASIMULATOR_") &&
            (!record->writable || isRateOfAnotherMode(parameter.id, applet))) {
            return;
        }
        switch (parameter.kind) {
            case ParameterKind::Int: std::ignore = applet.setInt(parameter.id, integerFor(*record)); break;
            case ParameterKind::Double: std::ignore = applet.setDouble(parameter.id, doubleFor(*record)); break;
            case ParameterKind::String:
                std::ignore = applet.setText(parameter.id, below(2) == 0 ? "" : "/no/such/file.lut");
                break;
            default: break;
        }
    }

private:
    std::size_t below(std::size_t end) { return random_() % end; }

    static bool isRateOfAnotherMode(int id, client::Applet& applet) {
        const std::int32_t mode = applet.readInt(FG_CAMERASIMULATOR_SELECT_MODE);
        switch (id) {
            case FG_CAMERASIMULATOR_PIXEL_FREQUENCY: return mode != FG_PIXEL_FREQUENCY;
            case FG_CAMERASIMULATOR_LINERATE: return mode != FG_LINERATE;
            case FG_CAMERASIMULATOR_FRAMERATE: return mode != FG_FRAMERATE;
            default: return false;
        }
    }

    std::int32_t integerFor(const client::ParameterRecord& record) {
        if (!record.entries.empty()) {
            return record.entries[below(record.entries.size())].value;
        }
        return std::visit(
            [this](const auto& range) -> std::int32_t {
                if constexpr (std::is_same_v<std::decay_t<decltype(range)>, std::monostate>) {
                    return 0;
                } else {
                    // Small steps from the lower bound as often as any value; multiples of 4 pass every alignment.
                    const double span = static_cast<double>(range.max) - static_cast<double>(range.min);
                    const double offset = below(2) == 0 ? static_cast<double>(below(300)) * 4.0 : span * fraction();
                    return static_cast<std::int32_t>(static_cast<double>(range.min) + std::min(offset, span)) & ~3;
                }
            },
            record.range);
    }

    double doubleFor(const client::ParameterRecord& record) {
        const auto* range = std::get_if<client::Range<double>>(&record.range);
        if (range == nullptr) {
            return 1.0;
        }
        const double weight = below(2) == 0 ? fraction() : std::pow(fraction(), 8.0);
        return range->min + (range->max - range->min) * weight;
    }

    double fraction() { return static_cast<double>(random_() % 1000001) / 1000000.0; }

    std::mt19937 random_;
};

class RoundTrip : public StateTest {
protected:
    /// Whether the file's value comes back, once loaded into a fresh applet. The simulator of a fresh applet runs with
    /// its own line length, and with the frame rate of its mode before, whatever the file says; the rates that follow
    /// from these are of the simulator and not of the file.
    bool comesBack(const ConfigurationKey& key) {
        if (key.load == Load::NotRead) {
            return false;
        }
        const bool sameLine = readAsText(built.applet, "FG_CAMERASIMULATOR_WIDTH") == "1024";
        if (key.name == "FG_CAMERASIMULATOR_LINERATE") {
            return sameLine;
        }
        if (key.name == "FG_CAMERASIMULATOR_FRAMERATE") {
            return sameLine && readAsText(built.applet, "FG_CAMERASIMULATOR_SELECT_MODE") != "2";
        }
        return true;
    }

    std::string loadedAndSavedByAnother(const std::string& file) {
        BuiltApplet fresh;
        EXPECT_EQ(fresh.applet.loadConfig(file), 0);
        EXPECT_EQ(fresh.applet.saveConfig(path("again.mcf")), 0);
        return bytesOf("again.mcf");
    }
};

TEST_F(RoundTrip, AnyReachableStateComesBackInAFreshApplet) {
    constexpr unsigned states = 60;
    constexpr int writesBetween = 40;
    RandomUser user(20260807);
    int ratesThatCameBack = 0;
    for (unsigned i = 0; i < states; ++i) {
        for (int write = 0; write < writesBetween; ++write) {
            user.writeSomething(built.applet);
        }
        if (i % 2 == 0) {
            std::ignore = built.applet.setInt(FG_CAMERASIMULATOR_WIDTH, 1024);
        }
        const std::string first = save();
        const std::string second = loadedAndSavedByAnother(path("saved.mcf"));
        for (const ConfigurationKey& key : ConfigurationKeys) {
            if (comesBack(key)) {
                const std::string name(key.name);
                ASSERT_EQ(lineOf(second, name), lineOf(first, name)) << "state " << i << "\n" << first;
                ratesThatCameBack += name == "FG_CAMERASIMULATOR_FRAMERATE" ? 1 : 0;
            }
        }
    }
    EXPECT_GT(ratesThatCameBack, 0);
}

TEST_F(RoundTrip, AStateThatWasLoadedOnceComesBackToTheByte) {
    RandomUser user(4711);
    for (int i = 0; i < 400; ++i) {
        user.writeSomething(built.applet);
    }
    EXPECT_EQ(built.applet.setInt(FG_CAMERASIMULATOR_SELECT_MODE, 1), 0);
    EXPECT_EQ(built.applet.setInt(FG_DEBUGSOURCE, 0), 0);
    EXPECT_EQ(built.applet.setInt(FG_DEBUGINENABLE, 0), 0);
    EXPECT_EQ(built.applet.setInt(FG_DEBUGOUTENABLE, 0), 0);
    save();
    const std::string once = loadedAndSavedByAnother(path("saved.mcf"));
    EXPECT_EQ(loadedAndSavedByAnother(write("once.mcf", once)), once);
}

}  // namespace
}  // namespace quillon::state
