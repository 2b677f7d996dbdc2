#include "cli/FrameObstacles.h"

#include <gmock/gmock.h>

#include "client/testing/BuiltApplet.h"

namespace quillon::cli {
namespace {

using client::testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(FrameObstacles, TheStartUpStateHasNone) {
    const BuiltApplet built;
    EXPECT_THAT(frameObstacles(built.applet), IsEmpty());
}

TEST(FrameObstacles, AMissingCameraIsOneUnlessTheSimulatorTakesItsPlace) {
    BuiltApplet built;
    built.board.setInteger("FG_CAMSTATUS_EXTENDED", 0);
    EXPECT_THAT(frameObstacles(built.applet), ElementsAre(HasSubstr("FG_CAMSTATUS is 0: there is no camera")));
    built.applet["FG_CAMERASIMULATOR_ENABLE"] = "FG_CAMERASIMULATOR";
    EXPECT_THAT(frameObstacles(built.applet), IsEmpty());
}

TEST(FrameObstacles, LinesNeedExsync) {
    BuiltApplet built;
    built.applet["FG_EXSYNCON"] = "FG_OFF";
    EXPECT_THAT(frameObstacles(built.applet), ElementsAre("FG_EXSYNCON is FG_OFF: nothing starts the camera's lines"));
}

TEST(FrameObstacles, ExternalLinesWaitForTheirInput) {
    BuiltApplet built;
    built.applet["FG_LINETRIGGERINSRC"] = "TRGINSRC_FRONT_GPI_2";
    EXPECT_THAT(frameObstacles(built.applet), IsEmpty());
    for (const char* mode : {"ASYNC_TRIGGER", "ASYNC_GATED"}) {
        built.applet["FG_LINETRIGGERMODE"] = mode;
        EXPECT_THAT(frameObstacles(built.applet),
                    ElementsAre(std::string("FG_LINETRIGGERMODE is ") + mode +
                                ": a line waits for pulses at TRGINSRC_FRONT_GPI_2, the FG_LINETRIGGERINSRC"));
    }
}

TEST(FrameObstacles, TriggeredImagesWaitForTheirInput) {
    BuiltApplet built;
    built.applet["FG_IMGTRIGGERMODE"] = "ASYNC_TRIGGER";
    built.applet["FG_IMGTRIGGERINSRC"] = "TRGINSOFTWARE";
    EXPECT_THAT(frameObstacles(built.applet),
                ElementsAre("FG_IMGTRIGGERMODE is ASYNC_TRIGGER: a frame waits for a trigger at TRGINSOFTWARE, the "
                            "FG_IMGTRIGGERINSRC"));
    built.applet["FG_IMGTRIGGERON"] = "FG_OFF";
    EXPECT_THAT(frameObstacles(built.applet),
                ElementsAre(HasSubstr("FG_IMGTRIGGERMODE"), "FG_IMGTRIGGERON is FG_OFF: triggers are not heard"));
}

TEST(FrameObstacles, AnImageTriggerThatIsOffIsNoneInFreeRun) {
    BuiltApplet built;
    built.applet["FG_IMGTRIGGERON"] = "FG_OFF";
    EXPECT_THAT(frameObstacles(built.applet), IsEmpty());
}

TEST(FrameObstacles, TheSimulatorsLinesAreItsOwnUnlessItWaitsForEdges) {
    BuiltApplet built;
    built.applet["FG_CAMERASIMULATOR_ENABLE"] = "FG_CAMERASIMULATOR";
    built.applet["FG_EXSYNCON"] = "FG_OFF";
    EXPECT_THAT(frameObstacles(built.applet), IsEmpty());
    built.applet["FG_CAMERASIMULATOR_TRIGGER_MODE"] = "RISING_EDGE_TRIGGERS_FRAME";
    EXPECT_THAT(frameObstacles(built.applet),
                ElementsAre("FG_CAMERASIMULATOR_TRIGGER_MODE is RISING_EDGE_TRIGGERS_FRAME: the simulator waits for "
                            "edges of the camera trigger",
                            HasSubstr("FG_EXSYNCON is FG_OFF")));
}

TEST(FrameObstacles, AnEnabledDebugInputTakesWhatIsInsertedOnly) {
    BuiltApplet built;
    built.applet["FG_DEBUGINENABLE"] = "FG_ON";
    EXPECT_THAT(
        frameObstacles(built.applet),
        ElementsAre("FG_DEBUGINENABLE is FG_ON: the path takes what is inserted at the debug point, and nothing "
                    "else"));
}

TEST(FrameObstacles, ALinkOfNoLanesIsDown) {
    BuiltApplet built;
    built.board.setInteger("Device1_Process0_BoardStatus_PcieCurrentLinkWidth", 0);
    EXPECT_THAT(frameObstacles(built.applet),
                ElementsAre(HasSubstr("FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH is 0: the link to the host is down")));
}

TEST(FrameObstacles, TheSelectorLetsOneImageOfAPeriodThrough) {
    BuiltApplet built;
    built.applet["FG_IMG_SELECT_PERIOD"] = 4;
    built.applet["FG_IMG_SELECT"] = 3;
    EXPECT_THAT(frameObstacles(built.applet), ElementsAre("FG_IMG_SELECT_PERIOD is 4: one of 4 images is let through, "
                                                          "number 3 of them by FG_IMG_SELECT"));
}

}  // namespace
}  // namespace quillon::cli
