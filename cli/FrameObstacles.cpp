#include "cli/FrameObstacles.h"

#include "quillon/quillon.h"

namespace quillon::cli {

namespace {

std::string nameAndValue(const client::Applet& applet, const char* parameter) {
    return std::string(parameter) + " is " + applet.enumerator(parameter);
}

void lookAtLines(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_EXSYNCON") == FG_OFF) {
        obstacles.push_back(nameAndValue(applet, "FG_EXSYNCON") + ": nothing starts the camera's lines");
    }
    const int mode = applet.readInt("FG_LINETRIGGERMODE");
    if (mode == ASYNC_TRIGGER || mode == ASYNC_GATED) {
        obstacles.push_back(nameAndValue(applet, "FG_LINETRIGGERMODE") + ": a line waits for pulses at " +
                            applet.enumerator("FG_LINETRIGGERINSRC") + ", the FG_LINETRIGGERINSRC");
    }
}

void lookAtImages(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_IMGTRIGGERMODE") == FREE_RUN) {
        return;
    }
    obstacles.push_back(nameAndValue(applet, "FG_IMGTRIGGERMODE") + ": a frame waits for a trigger at " +
                        applet.enumerator("FG_IMGTRIGGERINSRC") + ", the FG_IMGTRIGGERINSRC");
    if (applet.readInt("FG_IMGTRIGGERON") == FG_OFF) {
        obstacles.push_back(nameAndValue(applet, "FG_IMGTRIGGERON") + ": triggers are not heard");
    }
}

void lookAtSimulator(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_CAMERASIMULATOR_TRIGGER_MODE") != SIMULATION_FREE_RUN) {
        obstacles.push_back(nameAndValue(applet, "FG_CAMERASIMULATOR_TRIGGER_MODE") +
                            ": the simulator waits for edges of the camera trigger");
        lookAtLines(applet, obstacles);
    }
}

void lookAtCamera(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_CAMSTATUS") == 0) {
        obstacles.emplace_back(
            "FG_CAMSTATUS is 0: there is no camera; FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR takes the simulator's "
            "pictures");
    }
    lookAtLines(applet, obstacles);
}

}  // namespace

std::vector<std::string> frameObstacles(const client::Applet& applet) {
    std::vector<std::string> obstacles;
    const bool simulated = applet.readInt("FG_CAMERASIMULATOR_ENABLE") == FG_CAMERASIMULATOR;
    (simulated ? lookAtSimulator : lookAtCamera)(applet, obstacles);
    lookAtImages(applet, obstacles);
    if (const int period = applet.readInt("FG_IMG_SELECT_PERIOD"); period > 1) {
        obstacles.push_back("FG_IMG_SELECT_PERIOD is " + std::to_string(period) + ": one of " + std::to_string(period) +
                            " images is let through, number " + std::to_string(applet.readInt("FG_IMG_SELECT")) +
                            " of them by FG_IMG_SELECT");
    }
    return obstacles;
}

}  // namespace quillon::cli
