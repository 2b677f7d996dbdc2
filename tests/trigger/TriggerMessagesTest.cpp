// What the trigger parameters write to the log, at level 4 and above.

#include <array>
#include <cstdlib>

#include "softboard/dispatcher.h"
#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The messages since the last forget(), as "LEVEL TEXT" without the thread's number.
class Messages {
public:
    Messages() {
        setenv("ORLODIR5_64", QUILLON_BUILT_ROOT, 1);
        dispatcher_set_sink(&Messages::add);
        dispatcher_set_level(nullptr, 4);
        forget();
    }
    ~Messages() { dispatcher_set_sink(nullptr); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    static void forget() { lines().clear(); }
    static Lines& lines() {
        static Lines all;
        return all;
    }

private:
    static void add(const char* /*logger*/, int level, const char* text) {
        const std::string line = text;
        EXPECT_TRUE(line.starts_with("thread-id=")) << line;
        lines().push_back(std::to_string(level) + " " + line.substr(line.find('|') + 1));
    }
};

struct WithMessages {
    Messages messages;
};

class TriggerMessages : WithMessages, public TriggerTest {
protected:
    /// The number under which the SDK knows a design parameter.
    std::string number(const std::string& name) const {
        for (const client::Access& access : board.transcript()) {
            if (access.name == name) {
                return std::to_string(access.id);
            }
        }
        return "";
    }
    /// A write of `id` that fails at the design parameter `name` is told in one message.
    void expectSettingFailed(const std::string& name, int id, int value) {
        board.planFault(name, client::Direction::Write, 1, -77);
        board.clearTranscript();
        Messages::forget();
        EXPECT_EQ(applet.setInt(id, value), -77);
        const std::string message =
            "5 Setting IX parameter '" + name + "' (ID: " + number(name) + ") failed: result = -77";
        EXPECT_THAT(Messages::lines(), ElementsAre(message));
    }
};

TEST_F(TriggerMessages, TellWhichDesignParameterFailed) {
    expectSettingFailed("Device1_Process0_Trigger_Trigger_LineTriggerMode", 8102, 2);
    expectSettingFailed("Device1_Process0_Trigger_Trigger_EncoderABMode", 9110, 1);
    expectSettingFailed("Device1_Process0_Trigger_Trigger_ImgTriggerMode", 8104, 2);
    expectSettingFailed("Device1_Process0_Trigger_Trigger_MaxGatedHeight", 8104, 2);
    expectSettingFailed("Device1_Process0_Trigger_Trigger_YLength", 8104, 2);
    expectSettingFailed("Device1_Process0_ImageHeight_ImageHeight", 8104, 2);
    expectSettingFailed("Device1_Process1_Trigger_OutputMapping_SelectGPO_Select7_Polarity_Invert", 14020, 0);
}

TEST_F(TriggerMessages, AreNotWrittenForARefusedValue) {
    Messages::forget();
    EXPECT_EQ(applet.setInt(FG_LINETRIGGERMODE, 0), -6000);
    EXPECT_EQ(applet.setInt(FG_IMGTRIGGERMODE, 1), -6000);
    EXPECT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_0_SOURCE, 1), -2075);
    EXPECT_EQ(applet.setInt(FG_DEBUGINSERT, 0), -6000);
    EXPECT_THAT(Messages::lines(), IsEmpty());
}

TEST_F(TriggerMessages, NameTheReadOutThatWasWritten) {
    const std::array<std::pair<int, const char*>, 11> readOuts = {{
        {110066, "FG_IMGTRIGGER_IS_BUSY"},
        {14010, "FG_DIGIO_INPUT"},
        {200422, "FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT"},
        {200423, "FG_SIGNAL_ANALYZER_0_PERIOD_MAX"},
        {200424, "FG_SIGNAL_ANALYZER_0_PERIOD_MIN"},
        {200425, "FG_SIGNAL_ANALYZER_0_PULSE_COUNT"},
        {200432, "FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT"},
        {200433, "FG_SIGNAL_ANALYZER_1_PERIOD_MAX"},
        {200434, "FG_SIGNAL_ANALYZER_1_PERIOD_MIN"},
        {200435, "FG_SIGNAL_ANALYZER_1_PULSE_COUNT"},
        {200439, "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE"},
    }};
    for (const auto& [id, name] : readOuts) {
        Messages::forget();
        EXPECT_EQ(applet.setInt64(id, 1), -12);
        EXPECT_THAT(Messages::lines(),
                    ElementsAre(std::string("4 trying to set read-only SDK parameter '") + name + "' on process 0!"));
    }
}

TEST_F(TriggerMessages, NameTheEventThatADesignLacks) {
    setenv("SOFTBOARD_HIDE", "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd", 1);
    Messages::forget();
    const client::testing::BuiltApplet other;
    unsetenv("SOFTBOARD_HIDE");
    EXPECT_THAT(Messages::lines(), ElementsAre("4 cannot retrieve event id for internal event: "
                                               "'Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineEnd'"));
}

}  // namespace
}  // namespace quillon
