#include <charconv>
#include <map>
#include <random>
#include <sstream>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

/// What a load of whatever file may send to a parameter of the design. The handlers refuse everything else; but what
/// the file stores for the parts that are sent together (geometry, trigger lines, the simulator's sizes, the encoder's
/// filter) goes out with each other's writes, refused or not, and is "any" here.
class AcceptedWrites {
public:
    AcceptedWrites() {
        for (const std::string& line : goldenLines("accepted_writes.txt")) {
            std::istringstream text(line);
            std::string name;
            Row row;
            text >> name >> row.low >> row.high;
            rows_[name] = row;
        }
    }

    /// Empty, or what is wrong with the write.
    std::string complaint(const std::string& write) const {
        const std::size_t equals = write.find(" = ");
        const auto found = rows_.find(write.substr(0, equals));
        if (found == rows_.end()) {
            return "nothing is ever written to " + write;
        }
        const auto& [low, high] = found->second;
        const std::string value = write.substr(equals + 3);
        if (low == "text") {
            return "";
        }
        if (low == "table") {
            return tableComplaint(write, value);
        }
        const bool fits = (low == "any" || std::stod(value) >= std::stod(low)) &&
                          (low == "any" || high == "any" || std::stod(value) <= std::stod(high));
        return fits ? "" : write + " is not from " + low + " to " + high;
    }

private:
    struct Row {
        std::string low, high;
    };

    static std::string tableComplaint(const std::string& write, const std::string& value) {
        const char* entry = value.data() + value.find('=') + 1;
        const char* end = value.data() + value.size();
        int count = 0;
        for (; entry < end; ++entry, ++count) {
            unsigned number = 0;
            entry = std::from_chars(entry, end, number).ptr;
            if (number > 65535) {
                return write.substr(0, 60) + ": an entry is " + std::to_string(number);
            }
        }
        return count == 16384 ? "" : write.substr(0, 60) + ": " + std::to_string(count) + " entries";
    }

    std::map<std::string, Row> rows_;
};

/// Damages a configuration file as editors, programs and disks do.
class Vandal {
public:
    explicit Vandal(unsigned seed) : random_(seed) {}

    std::string damaged(std::string text) {
        for (std::size_t times = 1 + below(6); times > 0; --times) {
            damage(text);
        }
        return text;
    }

private:
    std::size_t below(std::size_t end) { return random_() % end; }

    void damage(std::string& text) {
        switch (below(12)) {
            case 0: text.resize(below(text.size() + 1)); break;
            case 1: text.insert(below(text.size() + 1), 1, static_cast<char>(below(256))); break;
            case 2:
                if (!text.empty()) {
                    text[below(text.size())] = static_cast<char>(below(256));
                }
                break;
            case 3: text.insert(below(text.size() + 1), std::string(below(600), 'x')); break;
            default: otherValue(text); break;
        }
    }

    void otherValue(std::string& text) {
        const ConfigurationKey& key = ConfigurationKeys[below(ConfigurationKeys.size())];
        const std::string name(key.name);
        if (!lineOf(text, name).starts_with("no ")) {
            text = withValue(text, name, value());
        }
    }

    std::string value() {
        static const std::vector<std::string> nasty = {
            "",           "0",           "-1",         "1",
            "2147483647", "-2147483648", "4294967295", "4294967296",
            "nan",        "inf",         "-inf",       "1e308",
            "-1e308",     "1e-320",      "'",          "''",
            "''''",       "Error",       "0x10",       "99999999999999999999"};
        switch (below(3)) {
            case 0: return nasty[below(nasty.size())];
            case 1: return std::to_string(below(20));
            default: return std::to_string(static_cast<std::int32_t>(random_()));
        }
    }

    std::mt19937 random_;
};

class MutatedFile : public StateTest {
protected:
    MutatedFile() { built.board.clearTranscript(); }

    const AcceptedWrites accepted;
};

TEST_F(MutatedFile, IsLoadedOrRefusedAndSendsNothingThatTheHandlersRefuse) {
    Vandal vandal(20260731);
    int loaded = 0;
    constexpr int files = 400;
    for (int i = 0; i < files; ++i) {
        const std::string text = vandal.damaged(i % 2 == 0 ? start : other);
        built.board.clearTranscript();
        const int result = load(text);
        ASSERT_TRUE(result == 0 || result == -5000) << result << "\n" << text;
        ASSERT_EQ(built.applet.lastError(), result);
        const std::vector<std::string> writes = built.board.writes();
        for (const std::string& line : writes) {
            ASSERT_EQ(accepted.complaint(line), "") << text;
        }
        ASSERT_TRUE(result == 0 || writes.empty()) << text;
        loaded += result == 0 ? 1 : 0;
        built.board.record(false);
        save();
        ASSERT_EQ(load(start), 0);
        ASSERT_EQ(save(), start) << "a good file mends what this one did:\n" << text;
        built.board.record(true);
    }
    EXPECT_GT(loaded, files / 4);
    EXPECT_LT(loaded, files);
}

TEST_F(MutatedFile, OfAnyValueForOneKeyIsLoadedWithAllOthers) {
    for (const ConfigurationKey& key : ConfigurationKeys) {
        for (const char* value : {"-2147483648", "-1", "4", "1e300", "nan"}) {
            built.board.clearTranscript();
            ASSERT_EQ(load(withValue(start, std::string(key.name), value)), 0) << key.name << " " << value;
            for (const std::string& line : built.board.writes()) {
                ASSERT_EQ(accepted.complaint(line), "") << key.name << " " << value;
            }
        }
    }
}

}  // namespace
}  // namespace quillon::state
