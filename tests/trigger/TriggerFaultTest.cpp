// A design that fails, at each write of each parameter: the code comes back, the parameter reads as before, and what
// was written before the failure stays.

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

const std::string Unit = "Device1_Process0_Trigger_Trigger_";
const std::string InputSignal = "Device1_Process0_Trigger_InputSignal_";
const std::string Process1 = "Device1_Process1_Trigger_";

class TriggerFault : public TriggerTest {
protected:
    /// `writes` are what `id` = `value` sends to a design that takes all of it; `before` is what it reads now.
    template <class Value>
    void expectRollback(int id, Value value, Value before, const Lines& writes) {
        for (std::size_t failing = 0; failing < writes.size(); ++failing) {
            board.clearTranscript();
            board.planFaultAt(static_cast<unsigned>(failing + 1), -77);
            EXPECT_EQ(set(id, value), -77) << "parameter " << id;
            EXPECT_EQ(applet.lastError(), -77);
            Lines expected(writes.begin(), writes.begin() + static_cast<std::ptrdiff_t>(failing));
            expected.push_back(writes[failing] + " ! -77");
            EXPECT_EQ(board.accesses(), expected) << "parameter " << id;
            board.clearFaults();
            Value after{};
            read(id, after);
            EXPECT_EQ(after, before) << "parameter " << id;
        }
        EXPECT_EQ(accessesOf(id, value), writes);
    }
};

TEST_F(TriggerFault, OfTheLineTrigger) {
    expectRollback(FG_LINETRIGGERMODE, 5, 1, {Unit + "LineTriggerMode = 3"});
    expectRollback(FG_EXSYNCON, 0, 1, {Unit + "ExsyncEnable = 0"});
    expectRollback(FG_LINETRIGGERINSRC, 17, 1,
                   {Unit + "LineTrgInSourceA = 0", InputSignal + "LineTrgInSourceA_Input_Select = 9"});
    expectRollback(FG_LINETRIGGERINPOLARITY, 1, 0, {Unit + "LineTrgInPolarity = 1"});
    expectRollback(FG_LINETRIGGERDEBOUNCING, 3.0, 0.112,
                   {Unit + "LineTrgDebouncingTime = 3", Process1 + "Inputs_Debounce8_Prescale_Period = 125"});
    expectRollback(FG_LINE_DOWNSCALE, 7, 1, {Unit + "LineTrgDownscaler = 7"});
    expectRollback(FG_LINE_DOWNSCALEINIT, 9, 1, {Unit + "LineTrgPhase = 9"});
    expectRollback(FG_LINEPERIODE, 150.0, 200.0, {Unit + "ExsyncPeriod = 150"});
    expectRollback(FG_LINEEXPOSURE, 33.5, 19.0, {Unit + "ExsyncExposure = 33.5"});
    expectRollback(FG_EXSYNCPOLARITY, 0, 1, {Unit + "ExsyncPolarity = 1"});
    expectRollback(FG_LINETRIGGERDELAY, 12.5, 0.0, {Unit + "Exsync2Delay = 12.5"});
}

TEST_F(TriggerFault, OfTheShaftEncoder) {
    expectRollback(FG_SHAFTENCODERON, 1, 0, {Unit + "EncoderABMode = 1"});
    expectRollback(FG_SHAFTENCODERMODE, 2, 1, {Unit + "EncoderABMode = 2"});
    expectRollback(FG_SHAFTENCODERINSRC, 19, 2,
                   {Unit + "LineTrgInSourceB = 1", InputSignal + "LineTrgInSourceB_Input_Select = 11"});
    expectRollback(FG_SHAFTENCODERLEADING, 1, 0, {Unit + "EncoderABLead = 1"});
    expectRollback(FG_SHAFTENCODER_COMPENSATION_ENABLE, 0, 1, {Unit + "EncoderCompensation = 0"});
    expectRollback(FG_SHAFTENCODER_COMPENSATION_COUNT, 77, 0, {Unit + "EncoderCompensationCount = 77"});
}

TEST_F(TriggerFault, OfTheImageTrigger) {
    expectRollback(FG_IMGTRIGGERMODE, 8, 0,
                   {Unit + "ImgTriggerMode = 1", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                    Unit + "YLength = 1024", Unit + "YOffset = 0", "Device1_Process0_ImageHeight_ImageHeight = 1024"});
    expectRollback(FG_IMGTRIGGER_ASYNC_HEIGHT, 9, 1024,
                   {Unit + "YOffset = 0", Unit + "YLength = 9", Unit + "YOffset = 0"});
    expectRollback(FG_IMGTRIGGERON, 0, 1, {Unit + "ImgTriggerEnable = 0"});
    expectRollback(FG_FLASHON, 0, 1, {Unit + "FlashEnable = 0"});
    expectRollback(FG_IMGTRIGGERINSRC, -1, 0,
                   {Unit + "ImgTrgInSource = 4", InputSignal + "ImgTrgInSource_Input_Select = 0"});
    expectRollback(FG_IMGTRIGGERINPOLARITY, 1, 0, {Unit + "ImgTrgInPolarity = 1"});
    expectRollback(FG_IMGTRIGGERGATEDELAY, 5, 0, {Unit + "ImgTrgDelay = 5"});
    expectRollback(FG_IMGTRIGGERDEBOUNCING, 3.0, 0.112, {Unit + "ImgTrgDebouncingTime = 3"});
    expectRollback(FG_FLASH_POLARITY, 0, 1, {Unit + "FlashPolarity = 1"});
    expectRollback(FG_STROBEPULSEDELAY, 5, 0, {Unit + "FlashDelay = 5"});
    expectRollback(FG_SENDSOFTWARETRIGGER, 1, 1, {Unit + "SoftwareTrgPulse = 1"});
    expectRollback(FG_SETSOFTWARETRIGGER, 1, 0, {Unit + "SoftwareTrgInput = 1"});
}

TEST_F(TriggerFault, OfTheSwitchboard) {
    const std::string outputs = Process1 + "OutputMapping_";
    expectRollback(FG_TRIGGERCAMERA_SOURCE, 2007, 2000,
                   {outputs + "CamTrigger0_SelectTrigger_SelectSignal_Select = 4",
                    outputs + "CamTrigger0_SelectTrigger_Polarity_Invert = 0"});
    expectRollback(FG_TRIGGERCAMERA_POLARITY, 0, 1,
                   {outputs + "CamTrigger0_SelectTrigger_SelectSignal_Select = 4",
                    outputs + "CamTrigger0_SelectTrigger_Polarity_Invert = 1"});
    expectRollback(FG_TRIGGEROUT_FRONT_GPO_1_SOURCE, 4, 2001,
                   {outputs + "SelectFrontGPO_Select1_SelectSignal_Select = 0",
                    outputs + "SelectFrontGPO_Select1_Polarity_Invert = 0"});
    expectRollback(FG_SIGNAL_ANALYZER_1_POLARITY, 0, 1,
                   {Process1 + "Analyzer_Analyzer1_Select_SelectSignal_Select = 33",
                    Process1 + "Analyzer_Analyzer1_Select_Polarity_Invert = 1"});
    expectRollback(FG_SIGNAL_ANALYZER_CLEAR, 1, 1,
                   {Process1 + "Analyzer_Clear_Value = 1", Process1 + "Analyzer_Clear_Value = 0"});
    expectRollback(FG_CLHS_TRIGGER_PULSE_MESSAGE, 23, 1,
                   {outputs + "CamTrigger0_CLHSTrigger_EnablePulseWidth_Value = 1"});
}

TEST_F(TriggerFault, OfAParameterThatTheDesignLacksIsTheSdksAnswer) {
    client::testing::BuiltApplet other;
    other.board.hideParameter(Unit + "ExsyncEnable");
    const int code = other.applet.setInt(FG_EXSYNCON, 0);
    EXPECT_LT(code, 0);
    EXPECT_EQ(other.applet.lastError(), code);
    EXPECT_EQ(other.applet.readInt(FG_EXSYNCON), 1);
}

}  // namespace
}  // namespace quillon
