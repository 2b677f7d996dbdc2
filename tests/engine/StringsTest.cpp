// Texts: the two ways to read them, and who owns what a read hands out.

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "tests/support/CapturedLog.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Strings : public ::testing::Test {
protected:
    void SetUp() override { built.board.clearTranscript(); }

    /// A text as it is handed out.
    char* handedOut(int id) {
        char* text = nullptr;
        EXPECT_EQ(built.applet.getWithType(id, &text, 0, FgTypeString), 0);
        return text;
    }
    int release(void* text, int id = FG_TAV_FILE, unsigned dma = 0) {
        return built.applet.freeText(id, text, dma, FgTypeString);
    }
    int lastError() { return built.applet.lastError(); }

    BuiltApplet built;
};

TEST_F(Strings, AreCopiedIntoACallersBufferByAnyOtherType) {
    for (const int type : {0, 1, 2, 5, 6, 4096}) {
        std::array<char, 64> buffer{};
        EXPECT_EQ(built.applet.getWithType(FG_TAV_FILE, buffer.data(), 0, FgParamTypes{type}), 0);
        EXPECT_STREQ(buffer.data(), "Quillon.tav");
    }
}

TEST_F(Strings, AreHandedOutByTheTextType) {
    char* const text = handedOut(FG_TAV_FILE);
    EXPECT_STREQ(text, "Quillon.tav");
    EXPECT_EQ(release(text), 0);
}

TEST_F(Strings, OfTheDesignAreReadAsTexts) {
    EXPECT_EQ(built.applet.readText(FG_APPLET_ID), "5525b60f-1373-9674-c4da-fd24a026a8af");
    EXPECT_EQ(built.applet.readText(FG_APPLET_BUILD_TIME), "2019-09-11 09:41:58");
    EXPECT_THAT(built.board.accesses(),
                ElementsAre("Device1_Process0_AppletProperties_AppletUid ? 5525b60f-1373-9674-c4da-fd24a026a8af",
                            "Device1_Process0_AppletProperties_BuildTime ? 2019-09-11 09:41:58"));
    EXPECT_EQ(built.board.transcript()[0].type, 6);
    EXPECT_EQ(built.board.transcript()[0].dma, 0);
}

TEST_F(Strings, ThatTheDesignRefusesAreNotHandedOut) {
    built.board.planFault("Device1_Process0_AppletProperties_AppletUid", Direction::Read, 1, -44);
    char* text = nullptr;
    EXPECT_EQ(built.applet.getWithType(FG_APPLET_ID, &text, 0, FgTypeString), -44);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(lastError(), -44);
}

TEST_F(Strings, OfTheDesignMayBeAMegabyteLong) {
    const std::string megabyte(1 << 20, 'x');
    built.board.setText("Device1_Process0_AppletProperties_AppletUid", megabyte);
    char* const text = handedOut(FG_APPLET_ID);
    EXPECT_EQ(std::strlen(text), 655'360U);  // as much as the applet hands out
    EXPECT_EQ(release(text), 0);
    std::vector<char> buffer(megabyte.size() + 1);
    EXPECT_EQ(built.applet.getWithType(FG_APPLET_ID, buffer.data(), 0, FgTypeCharBuffer), 0);
    EXPECT_EQ(buffer.data(), megabyte);
}

TEST_F(Strings, AreAllowedToBeEmpty) {
    EXPECT_EQ(built.applet.readText(FG_LUT_CUSTOM_FILE), "");
    EXPECT_EQ(built.applet.readText(FG_LUT_SAVE_FILE), "");
}

// Release ------------------------------------------------------------------------------------------------------------

TEST_F(Strings, AreReleasedOnce) {
    char* const text = handedOut(FG_TAV_FILE);
    EXPECT_EQ(release(text), 0);
    EXPECT_EQ(release(text), -2070);
    EXPECT_EQ(lastError(), -2070);
}

TEST_F(Strings, AreReleasedUnderAnyId) {
    EXPECT_EQ(release(handedOut(FG_TAV_FILE), FG_APPLET_ID), 0);
    EXPECT_EQ(release(handedOut(FG_TAV_FILE), 100), 0);
    EXPECT_EQ(release(handedOut(FG_TAV_FILE), -7), 0);
    EXPECT_EQ(release(handedOut(FG_TAV_FILE), 2000000), 0);
}

TEST_F(Strings, AreNotReleasedByTheirPlace) {
    char* text = nullptr;
    ASSERT_EQ(built.applet.getWithType(FG_TAV_FILE, &text, 0, FgTypeString), 0);
    EXPECT_EQ(release(&text), -2070);
    EXPECT_EQ(lastError(), -2070);
    EXPECT_STREQ(text, "Quillon.tav");
    EXPECT_EQ(release(text), 0);
}

TEST_F(Strings, AreReleasedInAnyOrder) {
    std::vector<char*> texts;
    for (int i = 0; i < 1000; ++i) {
        texts.push_back(handedOut(FG_TAV_FILE));
    }
    for (std::size_t i = 0; i < texts.size(); i += 2) {
        EXPECT_EQ(release(texts[i]), 0) << i;
    }
    for (std::size_t i = texts.size(); i-- > 0;) {
        EXPECT_EQ(release(texts[i]), i % 2 == 0 ? -2070 : 0) << i;
    }
}

TEST_F(Strings, ThatNobodyHandedOutAreRefused) {
    std::array<char, 16> own{};
    EXPECT_EQ(release(own.data()), -2070);
    EXPECT_EQ(release(nullptr), -2070);
    EXPECT_EQ(release(reinterpret_cast<void*>(0x1000)), -2070);  // nothing is read through it
    EXPECT_EQ(lastError(), -2070);
}

TEST_F(Strings, ASuccessfulReleaseLeavesTheLastErrorAsItWas) {
    char* const text = handedOut(FG_TAV_FILE);
    ASSERT_EQ(built.applet.setInt(FG_PIXELDEPTH, 1), -12);
    EXPECT_EQ(release(text), 0);
    EXPECT_EQ(lastError(), -12);
}

TEST_F(Strings, AnUnknownProcessIsThrownThroughTheExportedFunction) {
    char* const text = handedOut(FG_TAV_FILE);
    for (const unsigned dma : {1U, 7U, 0xFFFFFFFFU}) {
        try {
            release(text, FG_TAV_FILE, dma);
            FAIL() << "nothing was thrown";
        } catch (int code) {
            EXPECT_EQ(code, -2070);
        }
    }
    EXPECT_EQ(lastError(), 0);
    EXPECT_EQ(release(text), 0);
}

TEST_F(Strings, OfTheSdkGoBackToTheSdkAndRecordNothing) {
    ASSERT_EQ(built.applet.setInt(FG_PIXELDEPTH, 1), -12);
    built.board.clearTranscript();
    char* text = handedOut(FG_TAV_FILE);
    ASSERT_EQ(built.applet.setInt(FG_PIXELDEPTH, 1), -12);
    for (const int id : {601, 3050, 3060, 3070, 3080, 3090, 5210}) {
        EXPECT_EQ(release(text, id), -9001) << id;  // the SDK did not hand it out
    }
    EXPECT_EQ(lastError(), -12);
    EXPECT_THAT(built.board.calls(), ElementsAre("Fg_freeParameterStringWithType(601, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(3050, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(3060, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(3070, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(3080, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(3090, 0, 22) ! -9001",
                                                 "Fg_freeParameterStringWithType(5210, 0, 22) ! -9001"));
    EXPECT_EQ(release(text), 0);
}

TEST_F(Strings, ReadUnwrappedGoBackUnwrappedAndRecordTheResult) {
    char* text = nullptr;
    ASSERT_EQ(built.applet.getWithType(2027001, &text, 0, FgTypeString), 0);
    EXPECT_STREQ(text, "5.7.0 (software board)");
    EXPECT_EQ(release(text), -2070);  // not the applet's own
    EXPECT_EQ(release(text, 2027001), 0);
    EXPECT_EQ(lastError(), 0);
    EXPECT_EQ(release(text, 2027001), -9001);
    EXPECT_EQ(lastError(), -9001);
    EXPECT_EQ(release(text, 2027001, 5), -9001);  // the process is the SDK's to judge
}

TEST_F(Strings, ThatAreNeverReleasedGoWithTheWrapper) {
    for (int i = 0; i < 20; ++i) {
        EXPECT_STREQ(handedOut(FG_TAV_FILE), "Quillon.tav");
    }
    EXPECT_EQ(built.applet.close(), 0);  // the leak checker sees what stays behind
}

// Descriptions -------------------------------------------------------------------------------------------------------

TEST_F(Strings, ADescriptionReplacesTheNameInPlace) {
    std::array<char, 512> buffer{};
    std::strcpy(buffer.data(), "FG_TAV_FILE");
    EXPECT_EQ(built.applet.getWithType(FG_PARAM_DESCR, buffer.data(), 0, FgTypeCharBuffer), 0);
    EXPECT_STREQ(buffer.data(), "The name of the Hardware-Applet (TAV) file on which this Marlets is based.");
}

TEST_F(Strings, ADescriptionIsHandedOutOverTheName) {
    union {
        char name[16];
        char* text;
    } slot = {"FG_LINEORDER"};
    EXPECT_EQ(built.applet.getWithType(FG_PARAM_DESCR, &slot, 0, FgTypeString), 0);
    EXPECT_STREQ(slot.text, "Order of lines of type R, G and B");
    EXPECT_EQ(release(slot.text, FG_PARAM_DESCR), 0);
}

TEST_F(Strings, AnUnknownNameIsDescribedByAHyphen) {
    EXPECT_EQ(built.applet.readDescription("FG_NOTHING"), "-");
    EXPECT_EQ(built.applet.readDescription(""), "-");
    EXPECT_EQ(built.applet.readDescription("FG_PARAM_DESCR"), "-");
    EXPECT_EQ(lastError(), 0);
    std::array<char, 16> buffer{"FG_NOTHING"};
    EXPECT_EQ(built.applet.getWithType(FG_PARAM_DESCR, buffer.data(), 0, FgTypeCharBuffer), 0);
    EXPECT_STREQ(buffer.data(), "-");
}

TEST_F(Strings, TheToldDescriptions) {
    Applet& applet = built.applet;
    EXPECT_EQ(applet.readDescription("FG_TIMEOUT"),
              "Internal framegrabber image timeout. This is independend of the runtime timeout value.");
    EXPECT_EQ(applet.readDescription("FG_CAMSTATUS_EXTENDED"),
              "Returns the extended status of the camera. Bit = meaning: 0 = CameraPixelClk, 1 = CameraLval, 2 = "
              "CameraFval, 3 = Camera CC1 Signal, 4 = ExTrg / external trigger, 5 = BufferOverflow, 6 = "
              "BufferStatus-LSB, 7 = BufferStatus-MSB");
    EXPECT_EQ(applet.readDescription("FG_PIXELFORMAT"),
              "Camera pixel format acording to Pixel Format Naming Convention (PFMC).");
    EXPECT_EQ(applet.readDescription("FG_SYSTEMMONITOR_CURRENT_LINK_SPEED"),
              "Returns the current PCIe link speed in Gibibyte (2^30 byte).");
    for (const char* name : {"FG_TRANSFER_LEN", "FG_NR_OF_PROCESSES", "FG_NR_OF_DMAS", "FG_NR_OF_CAMS", "FG_DMA_PORT",
                             "FG_CAM_PORT", "FG_APC_STOP_TIMEOUT"}) {
        EXPECT_EQ(applet.readDescription(name), "") << name;
    }
    for (const char* name :
         {"FG_DEBUGFILE", "FG_DEBUGSOURCE", "FG_DEBUGINENABLE", "FG_DEBUGINSERT", "FG_DEBUGOUTENABLE",
          "FG_DEBUGSOURCENAME", "FG_DEBUGOUTXPOS", "FG_DEBUGOUTYPOS", "FG_DEBUGOUTPIXEL", "FG_DEBUGWRITEPIXEL",
          "FG_DEBUGWRITEFLAG", "FG_DEBUGREADY", "FG_DEBUGSAVECONFIG"}) {
        EXPECT_EQ(applet.readDescription(name), "Debug-Interface, Internal Use ONLY.") << name;
    }
}

TEST_F(Strings, ADescriptionOfAnUnknownProcessIsRefused) {
    std::array<char, 512> buffer{"FG_TAV_FILE"};
    EXPECT_EQ(built.applet.getWithType(FG_PARAM_DESCR, buffer.data(), 1, FgTypeCharBuffer), -2070);
    EXPECT_STREQ(buffer.data(), "FG_TAV_FILE");
}

}  // namespace
}  // namespace quillon::client
