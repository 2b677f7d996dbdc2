#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

constexpr int Unreadable = -5000;
constexpr int NotThere = -2076;

class Load : public StateTest {
protected:
    Load() { built.board.clearTranscript(); }
};

TEST_F(Load, ADeviceIsAFileThatIsNotForThisApplet) {
    for (const char* device : {"/dev/null", "/dev/zero"}) {
        std::filesystem::remove(path("link.mcf"));
        std::filesystem::create_symlink(device, path("link.mcf"));
        EXPECT_EQ(built.applet.loadConfig(path("link.mcf")), -5000) << device;
        EXPECT_EQ(built.applet.lastError(), -5000);
    }
}

TEST_F(Load, ASavedStateIsLoaded) {
    EXPECT_EQ(load(start), 0);
    EXPECT_EQ(built.applet.lastError(), 0);
    EXPECT_EQ(save(), start);
}

TEST_F(Load, EveryValueIsTakenOver) {
    EXPECT_EQ(load(other), 0);
    EXPECT_EQ(save(), other);
}

TEST_F(Load, TheDesignSeesTheseAccessesInThisOrder) {
    EXPECT_EQ(load(other), 0);
    EXPECT_EQ(shownAccesses(built.board), linesOf(goldenAccesses("load_accesses.txt")));
}

TEST_F(Load, LoadedValuesAreRead) {
    EXPECT_EQ(load(other), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "4096");
    EXPECT_EQ(readAsText(built.applet, "FG_LINEEXPOSURE"), "750.25");
    EXPECT_EQ(readAsText(built.applet, "FG_LUT_CUSTOM_FILE"), "/no/such/table.lut");
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_0_SOURCE"), "1001");
    EXPECT_EQ(readAsText(built.applet, "FG_DIGIO_OUTPUT"), "0");
    EXPECT_EQ(readAsText(built.applet, "FG_DEBUGFILE"), "/images/input.tif");
}

TEST_F(Load, ALoadPublishesTheLimitsOfTheNewState) {
    EXPECT_EQ(load(withValue(start, "FG_LINETRIGGERMODE", "2")), 0);
    const auto records = built.applet.parameterInfo();
    const auto* exposure = client::findRecord(records, findPublicParameter("FG_LINEEXPOSURE")->id);
    EXPECT_EQ(std::get<client::Range<double>>(exposure->range).max, 1048.568);
    EXPECT_EQ(client::findRecord(records, findPublicParameter("FG_LINETRIGGERINSRC")->id)->accessFlags, 7);
}

TEST_F(Load, ASlaveCanLoad) {
    BuiltApplet slave(1);
    EXPECT_EQ(slave.applet.loadConfig(write("other.mcf", other)), 0);
    EXPECT_EQ(slave.applet.saveConfig(path("again.mcf")), 0);
    EXPECT_EQ(lineOf(bytesOf("again.mcf"), "FG_WIDTH"), "FG_WIDTH=4096;");
}

// Missing keys.

TEST_F(Load, AMissingKeyEndsItWithTheKeysAheadInTheFieldsAndTheDesignUntouched) {
    for (std::size_t missing = 0; missing < ConfigurationKeys.size(); ++missing) {
        if (ConfigurationKeys[missing].load == state::Load::NotRead) {
            continue;
        }
        const std::string name(ConfigurationKeys[missing].name);
        ASSERT_EQ(load(start), 0);
        built.board.clearTranscript();
        ASSERT_EQ(load(withoutLine(other, name)), Unreadable) << name;
        ASSERT_EQ(built.applet.lastError(), Unreadable) << name;
        ASSERT_THAT(built.board.accesses(), IsEmpty()) << name;
        const std::string after = save();
        for (std::size_t i = 0; i < ConfigurationKeys.size(); ++i) {
            const std::string key(ConfigurationKeys[i].name);
            const bool stored = i < missing && ConfigurationKeys[i].source == Source::Field;
            if (ConfigurationKeys[i].source != Source::Computed && ConfigurationKeys[i].load != state::Load::NotRead) {
                ASSERT_EQ(lineOf(after, key), lineOf(stored ? other : start, key)) << "without " << name;
            }
        }
    }
}

TEST_F(Load, TheOtherStateDiffersInEveryKeyThatIsRead) {
    for (const ConfigurationKey& key : ConfigurationKeys) {
        // The analyzers' clear is an action with one value.
        if (key.load != state::Load::NotRead && key.name != "FG_SIGNAL_ANALYZER_CLEAR") {
            EXPECT_NE(lineOf(other, std::string(key.name)), lineOf(start, std::string(key.name)));
        }
    }
}

TEST_F(Load, AMissingKeyThatNoPassReadsIsNoMatter) {
    for (const ConfigurationKey& key : ConfigurationKeys) {
        if (key.load == state::Load::NotRead) {
            EXPECT_EQ(load(withoutLine(other, std::string(key.name))), 0) << key.name;
        }
    }
}

TEST_F(Load, WithoutTheFirstKeyNothingChanges) {
    EXPECT_EQ(load(withoutLine(other, "FG_TIMEOUT")), Unreadable);
    EXPECT_THAT(built.board.accesses(), IsEmpty());
    EXPECT_EQ(save(), start);
}

TEST_F(Load, ARouteWithoutItsPolarityIsRequestedAndNotRead) {
    EXPECT_EQ(load(withoutLine(other, "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY")), Unreadable);
    EXPECT_EQ(readAsText(built.applet, "FG_CUSTOM_SIGNAL_EVENT_1_SOURCE"), "2002");
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGERCAMERA_SOURCE"), "2001") << "the camera's route has one record only";
}

TEST_F(Load, FieldsAndDesignAgreeAgainAtTheNextWrite) {
    EXPECT_EQ(load(withoutLine(other, "FG_CUSTOM_SIGNAL_EVENT_1_POLARITY")), Unreadable);
    EXPECT_EQ(built.applet.setInt(FG_HEIGHT, 512), 0);
    EXPECT_THAT(built.board.writes(), Contains("Device1_Process0_Buffer_0_XLength = 4096"));
}

// The header and the file.

TEST_F(Load, AnotherAppletsFileIsRefusedAndChangesNothing) {
    for (const char* type : {"Typ='Other';", "Typ='quillon';", "Typ='Quillon2';", "Typ='';"}) {
        EXPECT_EQ(load(withLine(other, "Typ", type)), Unreadable) << type;
        EXPECT_EQ(built.applet.lastError(), Unreadable) << type;
    }
    EXPECT_THAT(built.board.accesses(), IsEmpty());
    EXPECT_EQ(save(), start);
}

TEST_F(Load, AHeaderWithoutOneOfTheseKeysIsRefused) {
    for (const char* key : {"Hersteller", "Typ", "AktivePort"}) {
        EXPECT_EQ(load(withoutLine(other, key)), Unreadable) << key;
    }
    EXPECT_EQ(save(), start);
}

TEST_F(Load, TheRestOfTheHeaderIsNotLookedAt) {
    EXPECT_EQ(load(withLine(start, "Hersteller", "Hersteller='Anybody';")), 0);
    EXPECT_EQ(load(withLine(start, "AktivePort", "AktivePort=9;")), 0);
    for (const char* key : {"ConfigFileVersion", "Version", "LoadAppletId"}) {
        EXPECT_EQ(load(withoutLine(start, key)), 0) << key;
    }
}

TEST_F(Load, AnActivePortThatIsNoNumberIsNoFailureUnlessItSaysError) {
    EXPECT_EQ(load(withLine(start, "AktivePort", "AktivePort=none;")), 0);
    EXPECT_EQ(load(withLine(start, "AktivePort", "AktivePort=Error;")), Unreadable);
}

TEST_F(Load, AFileWithoutThePortIsRefused) {
    std::string text = start;
    text.replace(text.find("[Port A]"), 8, "[Port B]");
    EXPECT_EQ(load(text), Unreadable);
}

TEST_F(Load, AnEmptyFileIsRefused) {
    EXPECT_EQ(load(""), Unreadable);
}

TEST_F(Load, ADirectoryIsRefused) {
    std::filesystem::create_directory(path("folder.mcf"));
    EXPECT_EQ(built.applet.loadConfig(path("folder.mcf")), Unreadable);
    EXPECT_EQ(built.applet.lastError(), Unreadable);
}

TEST_F(Load, AnotherExtensionAnswersOneNumberAndRecordsAnother) {
    EXPECT_EQ(built.applet.loadConfig(write("state.txt", start)), NotThere);
    EXPECT_EQ(built.applet.lastError(), Unreadable);
}

TEST_F(Load, AMissingFileAnswersOneNumberAndRecordsAnother) {
    EXPECT_EQ(built.applet.loadConfig(path("missing.mcf")), NotThere);
    EXPECT_EQ(built.applet.lastError(), Unreadable);
}

TEST_F(Load, ANullNameIsAMissingFile) {
    EXPECT_EQ(built.applet.functions().Fg_loadConfig(built.applet.handle(), nullptr), NotThere);
    EXPECT_EQ(built.applet.lastError(), Unreadable);
}

TEST_F(Load, TheExtensionMayStandAnywhereInTheName) {
    EXPECT_EQ(built.applet.loadConfig(write("state.mcf.bak", other)), 0);
    EXPECT_EQ(save(), other);
}

// The lines.

TEST_F(Load, UnknownLinesAreNoMatter) {
    EXPECT_EQ(load("# a remark\n" + other + "FG_UNKNOWN=1;\nanything\n[Port B]\nFG_WIDTH=8;\n"), 0);
    EXPECT_EQ(save(), other);
}

TEST_F(Load, TheFirstLineOfAKeyCounts) {
    EXPECT_EQ(load(start + "FG_WIDTH=512;\n"), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "1024");
}

TEST_F(Load, AKeyMayStandInALaterSection) {
    EXPECT_EQ(load(withoutLine(start, "FG_WIDTH") + "[Port B]\nFG_WIDTH=512;\n"), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "512");
}

TEST_F(Load, TheOrderOfTheFileIsNoMatter) {
    const std::size_t ports = other.find("[Port A]\n") + 9;
    std::string text = other.substr(0, ports);
    std::vector<std::string> lines = {""};
    for (const char letter : other.substr(ports)) {
        lines.back() += letter;
        if (letter == '\n') {
            lines.emplace_back();
        }
    }
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        text += *line;
    }
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(shownAccesses(built.board), linesOf(goldenAccesses("load_accesses.txt")));
}

TEST_F(Load, ValuesMayEndInACarriageReturn) {
    // The header's section is matched with its bare line feed, and so keeps it.
    const std::size_t body = start.find('\n') + 1;
    std::string text = start.substr(0, body);
    for (const char letter : other.substr(body)) {
        text += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    }
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(save(), other);
}

TEST_F(Load, ATextForANumberIsZero) {
    EXPECT_EQ(load(withValue(start, "FG_XOFFSET", "none")), 0);
    EXPECT_EQ(load(withValue(start, "FG_LINETRIGGERDELAY", "''")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_XOFFSET"), "0");
    EXPECT_EQ(readAsText(built.applet, "FG_LINETRIGGERDELAY"), "0");
}

TEST_F(Load, TheWordErrorIsAMissingNumberButAText) {
    EXPECT_EQ(load(withValue(start, "FG_CAMERASIMULATOR_WIDTH", "Error")), Unreadable);
    EXPECT_EQ(load(withValue(start, "FG_LUT_CUSTOM_FILE", "'Error'")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_LUT_CUSTOM_FILE"), "Error");
}

TEST_F(Load, AnUnsignedValueMayStandWithEitherSign) {
    EXPECT_EQ(load(withValue(start, "FG_CAMERASIMULATOR_WIDTH", "4294967295")), 0);
    EXPECT_EQ(lineOf(save(), "FG_CAMERASIMULATOR_WIDTH"), "FG_CAMERASIMULATOR_WIDTH=-1;");
}

}  // namespace
}  // namespace quillon::state
