// Parameters by name, writes that throw with the reason, and handles that a host has opened.

#include <gmock/gmock.h>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Accepted.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using testing::builtLibrary;
using testing::builtStandIns;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct NamedParameters : ::testing::Test {
    BuiltApplet built;
    Applet& applet = built.applet;

    /// The refusal of a write; fails the test if there is none.
    Refused refusalOf(ParameterName parameter, const Value& value) {
        try {
            applet.set(parameter, value);
        } catch (const Refused& refused) {
            return refused;
        }
        ADD_FAILURE() << "the write was not refused";
        return Refused(0, "", "", 0, "", "");
    }
};

TEST_F(NamedParameters, NameAndIdAreTheSameParameter) {
    applet.set("FG_WIDTH", 2048);
    EXPECT_EQ(applet.get<int>(FG_WIDTH), 2048);
    applet.set(FG_WIDTH, 4096U);
    EXPECT_EQ(applet.get<int>("FG_WIDTH"), 4096);
    EXPECT_EQ(applet.readInt("FG_WIDTH"), 4096);
    EXPECT_EQ(applet.setInt(std::string("FG_WIDTH"), 1024), 0);
    EXPECT_EQ(applet.readUnsigned(std::string_view("FG_WIDTH")), 1024U);
}

TEST_F(NamedParameters, EveryKindTakesItsValues) {
    applet.set("FG_LINEPERIODE", 100);  // a whole number for a double
    EXPECT_EQ(applet.get<double>("FG_LINEPERIODE"), 100.0);
    applet.set("FG_LINEPERIODE", 100.5F);
    EXPECT_EQ(applet.get<double>("FG_LINEPERIODE"), 100.5);
    applet.set("FG_WIDTH", 2048.0);  // a double for a whole number that it is
    EXPECT_EQ(applet.get<std::uint16_t>("FG_WIDTH"), 2048);
    applet.set("FG_DEBUGWRITEPIXEL", std::uint64_t{1} << 40U);
    EXPECT_EQ(applet.get<std::uint64_t>("FG_DEBUGWRITEPIXEL"), std::uint64_t{1} << 40U);
    applet.set("FG_LUT_ENABLE", true);
    EXPECT_TRUE(applet.get<bool>("FG_LUT_ENABLE"));
    EXPECT_EQ(applet.get<std::string>("FG_TAV_FILE"), "Quillon.tav");
}

TEST_F(NamedParameters, AnUnsignedParameterReadsUnsigned) {
    built.board.setInteger("Device1_Process1_Trigger_Analyzer_Analyzer0_PulseCountSignal_Status", 4'000'000'000);
    EXPECT_EQ(applet.get<std::int64_t>("FG_SIGNAL_ANALYZER_0_PULSE_COUNT"), 4'000'000'000);
}

TEST_F(NamedParameters, AnEnumeratorGoesByItsNameAndByItsConstant) {
    applet.set("FG_FORMAT", "FG_COL48");
    EXPECT_EQ(applet.get<int>("FG_FORMAT"), FG_COL48);
    applet.set("FG_FORMAT", FG_COL24);
    EXPECT_EQ(applet.enumerator("FG_FORMAT"), "FG_COL24");
    applet.set("FG_IMGTRIGGERINSRC", "TRGINSOFTWARE");
    EXPECT_EQ(applet.get<int>("FG_IMGTRIGGERINSRC"), -1);
    EXPECT_EQ(applet.enumerator("FG_WIDTH"), "");
}

TEST_F(NamedParameters, AnEnumeratorOfAnotherParameterIsNoValue) {
    try {
        applet.set("FG_FORMAT", "FG_ON");
        FAIL() << "FG_ON is no format";
    } catch (const ValueError& error) {
        EXPECT_THAT(error.what(), HasSubstr("\"FG_ON\" is no value for FG_FORMAT, which takes FG_COL24 (2), "));
    }
    EXPECT_EQ(applet.get<int>("FG_FORMAT"), FG_COL24);
}

TEST_F(NamedParameters, ASettingReadsAndWritesAsAVariable) {
    applet["FG_WIDTH"] = 2048;
    const int width = applet["FG_WIDTH"];
    EXPECT_EQ(width, 2048);
    applet["FG_FORMAT"] = "FG_COL36";
    applet[FG_LINEPERIODE] = 200.0;
    const double period = applet[FG_LINEPERIODE];
    EXPECT_EQ(period, 200.0);
    const std::string file = applet["FG_TAV_FILE"];
    EXPECT_EQ(file, "Quillon.tav");
}

TEST_F(NamedParameters, ARefusalTellsTheCodeTheAcceptedValuesAndTheReason) {
    const Refused refused = refusalOf("FG_WIDTH", 2046);
    EXPECT_EQ(refused.code, QuillonValueNotAligned);
    EXPECT_EQ(refused.id, FG_WIDTH);
    EXPECT_EQ(refused.name, "FG_WIDTH");
    EXPECT_EQ(refused.accepted, "4 to 16384 pixel in steps of 4");
    EXPECT_EQ(refused.reason, rangeReason("FG_WIDTH"));
    EXPECT_STREQ(
        refused.what(),
        "FG_WIDTH = 2046 was refused: -7080 (ValueNotAligned), the value is not a multiple of the parameter's step\n"
        "  accepted: 4 to 16384 pixel in steps of 4\n"
        "  because:  at most 16384 less FG_XOFFSET, a multiple of 4");
}

TEST_F(NamedParameters, ARefusalThatIsNotAboutTheValueTellsTheCodeAlone) {
    const Refused refused = refusalOf("FG_PIXELDEPTH", 8);
    EXPECT_EQ(refused.code, QuillonNotAvailable);
    EXPECT_THAT(refused.accepted, IsEmpty());
    EXPECT_THAT(refused.reason, IsEmpty());
}

TEST_F(NamedParameters, AValueOfAnotherTypeReachesNoCall) {
    built.board.clearTranscript();
    EXPECT_THROW(applet.set("FG_WIDTH", "wide"), ValueError);
    EXPECT_THROW(applet.set("FG_WIDTH", 2048.5), ValueError);
    EXPECT_THROW(applet.set("FG_WIDTH", std::int64_t{1} << 33U), ValueError);
    EXPECT_THROW(applet.set("FG_LINEPERIODE", "slow"), ValueError);
    EXPECT_THROW(applet.set("FG_LUT_CUSTOM_FILE", 7), ValueError);
    EXPECT_THROW(applet.set("FG_LUT_VALUE_RED", 7), ValueError);
    EXPECT_THROW(applet.get("FG_LUT_VALUE_RED"), ValueError);
    EXPECT_THAT(built.board.accesses(), IsEmpty());
    EXPECT_THROW(applet.get<int>("FG_TAV_FILE"), ValueError);
    EXPECT_THROW(applet.get<std::string>("FG_WIDTH"), ValueError);
    EXPECT_THROW(applet.get<std::uint8_t>("FG_WIDTH"), ValueError);
}

TEST_F(NamedParameters, ANameThatIsNoneIsToldOrAnswersItsCode) {
    try {
        applet.set("FG_WIDHT", 2048);
        FAIL() << "there is no FG_WIDHT";
    } catch (const ParameterError& error) {
        EXPECT_EQ(error.code, QuillonInvalidParameter);
        EXPECT_THAT(error.what(), HasSubstr("\"FG_WIDHT\", which is no parameter"));
    }
    EXPECT_THROW(applet.get("FG_WIDHT"), ParameterError);
    EXPECT_THROW(applet.readInt(""), ParameterError);
    EXPECT_EQ(applet.setInt("FG_WIDHT", 2048), QuillonInvalidParameter);
    EXPECT_EQ(applet.record("FG_WIDHT"), std::nullopt);
}

TEST_F(NamedParameters, TheRecordIsThatOfNow) {
    ASSERT_TRUE(applet.record("FG_XOFFSET").has_value());
    EXPECT_EQ(acceptedValues(*applet.record("FG_XOFFSET")), "0 to 15360 pixel in steps of 4");
    applet.set("FG_WIDTH", 16384);
    EXPECT_EQ(acceptedValues(*applet.record("FG_XOFFSET")), "only 0");
    EXPECT_EQ(applet.record("FG_NR_OF_DMAS"), std::nullopt);
}

TEST(Values, ATypeThatDoesNotHoldTheValueGetsNothing) {
    EXPECT_EQ(Value(255).asIf<std::uint8_t>(), 255);
    EXPECT_EQ(Value(256).asIf<std::uint8_t>(), std::nullopt);
    EXPECT_EQ(Value(-1).asIf<std::uint64_t>(), std::nullopt);
    EXPECT_EQ(Value(std::numeric_limits<std::uint64_t>::max()).asIf<std::int64_t>(), std::nullopt);
    EXPECT_EQ(Value(9223372036854775807.0).asIf<std::int64_t>(), std::nullopt);  // rounds to 2 to the 63rd
    EXPECT_EQ(Value(-9223372036854775808.0).asIf<std::int64_t>(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Value(0.5).asIf<int>(), std::nullopt);
    EXPECT_EQ(Value(std::numeric_limits<double>::quiet_NaN()).asIf<int>(), std::nullopt);
    EXPECT_EQ(Value("1").asIf<int>(), std::nullopt);
    EXPECT_EQ(Value(1).asIf<std::string>(), std::nullopt);
}

/// What a host does that knows nothing of the client.
struct Host : ::testing::Test {
    Library library = Library::open(builtLibrary(), builtStandIns());
    SoftBoard board = SoftBoard(builtStandIns());
    int status = -1;
    QuillonWrapper* location = library.functions().Std_entry(board.device(), &status, 0);

    ~Host() override { library.functions().Fg_FreeGrabber(&location); }
};

TEST_F(Host, ABorrowedHandleIsServedAndStaysOpen) {
    {
        Applet applet = Applet::attach(&location);
        applet.set("FG_WIDTH", 2048);
        EXPECT_EQ(applet.library().file(), builtLibrary());
    }
    ASSERT_NE(location, nullptr);
    std::uint32_t width = 0;
    EXPECT_EQ(library.functions().Fg_getParameterWithType(&location, FG_WIDTH, &width, 0, FgTypeUInt32), 0);
    EXPECT_EQ(width, 2048U);
}

TEST_F(Host, AnOwnedHandleIsFreedWithTheApplet) {
    { const Applet applet = Applet::attach(library, &location, Ownership::Owned); }
    EXPECT_EQ(location, nullptr);
    EXPECT_EQ(board.library().liveHandles(), 0U);
}

TEST_F(Host, CloseLetsGoOfABorrowedHandle) {
    Applet applet = Applet::attach(&location);
    EXPECT_EQ(applet.close(), 0);
    EXPECT_EQ(applet.setInt("FG_WIDTH", 2048), QuillonInvalidHandle);
    EXPECT_NE(location, nullptr);
}

TEST_F(Host, AHandleWithNothingInItIsNotAttached) {
    QuillonWrapper* empty = nullptr;
    EXPECT_THROW(Applet::attach(library, &empty), CallError);
    EXPECT_THROW(Applet::attach(library, nullptr), CallError);
}

}  // namespace
}  // namespace quillon::client
