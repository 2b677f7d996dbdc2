#include "cli/FrameObstacles.h"

#include <cmath>

#include "cli/Units.h"
#include "quillon/client/Text.h"
#include "quillon/quillon.h"

namespace quillon::cli {

namespace {

std::string nameAndValue(const client::Applet& applet, const char* parameter) {
    return std::string(parameter) + " is " + applet.enumerator(parameter);
}

bool waitsForPulses(const client::Applet& applet) {
    const int mode = applet.readInt("FG_LINETRIGGERMODE");
    return mode == ASYNC_TRIGGER || mode == ASYNC_GATED;
}

void lookAtLines(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_EXSYNCON") == FG_OFF) {
        obstacles.push_back(nameAndValue(applet, "FG_EXSYNCON") + ": nothing starts the camera's lines");
    }
    if (waitsForPulses(applet)) {
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

void lookAtDebugInput(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_DEBUGINENABLE") == FG_ON) {
        obstacles.push_back(nameAndValue(applet, "FG_DEBUGINENABLE") +
                            ": the path takes what is inserted at the debug point, and nothing else");
    }
}

void lookAtLink(const client::Applet& applet, std::vector<std::string>& obstacles) {
    if (applet.readInt("FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH") == 0) {
        obstacles.emplace_back(
            "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH is 0: the link to the host is down, and frames wait on the board");
    }
}

/// Lines that the pulses of the belt's encoder make in a second.
double linesASecond(const client::Applet& applet, const RunningBelt& belt, double speed) {
    const bool isFiltered = applet.readInt("FG_SHAFTENCODERON") == FG_ON;
    const int filter = isFiltered ? applet.readInt("FG_SHAFTENCODERMODE") : FILTER_X1;
    const double edges = filter == FILTER_X4 ? 4 : filter == FILTER_X2 ? 2 : 1;
    return speed * belt.countsPerMm * edges / applet.readInt("FG_LINE_DOWNSCALE");
}

void lookAtBelt(const client::Applet& applet, const client::SoftBoard& board, const RunningBelt& belt,
                std::vector<std::string>& obstacles) {
    const bool makesLines = belt.countsPerMm > 0 && waitsForPulses(applet);
    const bool makesImages = !belt.barriers.empty() && applet.readInt("FG_IMGTRIGGERMODE") != FREE_RUN;
    if (!makesLines && !makesImages) {
        return;
    }
    const double speed = belt.speedAt(board.signalTime());
    const std::string place = " at " + client::readable(board.beltPosition()) + " mm";
    if (speed == 0) {
        obstacles.push_back("the belt stands" + place + ": " +
                            (makesLines ? "its encoder gives no pulses" : "no part reaches the light barrier"));
    } else if (speed < 0) {
        obstacles.push_back("the belt runs back" + place + ", at " + client::readable(speed) + " mm/s");
    } else if (makesLines) {
        const double lines = linesASecond(applet, belt, speed);
        const double seconds = applet.readInt("FG_HEIGHT") / lines;
        obstacles.push_back("the belt is" + place + " and runs at " + client::readable(speed) +
                            " mm/s: its encoder makes " + rateInWords(lines) +
                            " lines a second, so that FG_HEIGHT lines take " + timeInWords(std::round(seconds * 1e6)));
    }
}

}  // namespace

std::vector<std::string> frameObstacles(Session& session) {
    std::vector<std::string> obstacles = frameObstacles(session.applet());
    if (session.belt()) {
        lookAtBelt(session.applet(), session.board(), *session.belt(), obstacles);
    }
    return obstacles;
}

std::vector<std::string> frameObstacles(const client::Applet& applet) {
    std::vector<std::string> obstacles;
    const bool simulated = applet.readInt("FG_CAMERASIMULATOR_ENABLE") == FG_CAMERASIMULATOR;
    (simulated ? lookAtSimulator : lookAtCamera)(applet, obstacles);
    lookAtImages(applet, obstacles);
    lookAtDebugInput(applet, obstacles);
    if (const int period = applet.readInt("FG_IMG_SELECT_PERIOD"); period > 1) {
        obstacles.push_back("FG_IMG_SELECT_PERIOD is " + std::to_string(period) + ": one of " + std::to_string(period) +
                            " images is let through, number " + std::to_string(applet.readInt("FG_IMG_SELECT")) +
                            " of them by FG_IMG_SELECT");
    }
    lookAtLink(applet, obstacles);
    return obstacles;
}

}  // namespace quillon::cli
