/// @file
/// Grabs parts from a conveyor: a light barrier starts an image for each part, the encoder makes its lines, the flash
/// lights its beginning. A part that is not whole does not count, and a camera that is gone is waited for.
///
///     grab_part [BUILD_FOLDER [EXAMPLES_FOLDER]]
#include <array>
#include <filesystem>
#include <iostream>

#include "quillon/client/Applet.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Frames.h"
#include "quillon/client/SoftBoard.h"

using namespace quillon::client;

namespace {

constexpr std::uint64_t Parts = 4;
constexpr unsigned Patience = 3;  // seconds without a frame

/// The conveyor in software, and what goes wrong on it; a frame grabber has its own.
void startConveyor(SoftBoard& board, const std::filesystem::path& part) {
    board.scenePicture(part, true, 2.5);
    board.light({.referenceUs = 30, .flashGain = 1.2, .noise = 0.005});
    board.belt(std::array{BeltMove{Forever, 400}}, {.countsPerMm = 2.5, .a = 0, .b = 1});
    board.barrier(2, 30, 480, 320);
    // The board holds half a part, and the second one comes while the link to the host is down.
    board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 13);
    board.planOutage(Outage::Link, 1.3e6, 1.3e6);
    board.planOutage(Outage::Camera, 4.5e6, 6e6);
    board.setClock(ClockMode::Free);
}

void configure(Applet& applet, const std::filesystem::path& file) {
    if (const int code = applet.loadConfig(file); code != 0) {
        throw CallError("the load of " + file.string(), code);
    }
    applet["FG_WIDTH"] = 1024;
    applet["FG_HEIGHT"] = 850;
}

bool hasCamera(const Applet& applet) {
    return applet.get<int>("FG_CAMSTATUS") != 0;
}

/// Says what came; whether it is a whole part.
bool isWhole(const Applet& applet, const FrameDescription& about) {
    std::cout << about.lostBefore << " lost, then " << about.lines << " lines of a part\n";
    const bool whole = !about.has(FrameFlag::LinesLost);
    const bool overflow = applet.get<int>("FG_OVERFLOW") != 0;
    std::cout << (whole ? "" : overflow ? "it is not whole: the board's memory was full\n" : "it is not whole\n");
    return whole;
}

/// Takes frames until `count` have come or the camera is gone; how many whole parts they are.
std::uint64_t grab(Applet& applet, FrameMemory& memory, std::uint64_t count) {
    std::uint64_t whole = 0;
    try {
        for (const Frame& frame : Acquisition(applet, memory, static_cast<std::int64_t>(count), Patience)) {
            whole += isWhole(applet, frame.description()) ? 1 : 0;
        }
    } catch (const FrameError&) {
        if (hasCamera(applet)) {
            throw;  // the belt stands, or no part comes
        }
    }
    return whole;
}

void waitForCamera(const Applet& applet, SoftBoard& board) {
    std::cout << (hasCamera(applet) ? "" : "the camera is gone\n");
    while (!hasCamera(applet)) {
        board.advanceSignals(100'000);  // with a frame grabber time passes by itself
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path build = argc > 1 ? argv[1] : "build";
    const std::filesystem::path examples = argc > 2 ? argv[2] : "examples";
    try {
        const auto library = Library::open(build / "lib/libQuillon.so", build / "lib/softboard");
        SoftBoard board(build / "lib/softboard");
        Applet applet(library, board);
        configure(applet, examples / "shaft_encoder_conveyor.mcf");
        startConveyor(board, examples / "conveyor/part.png");
        FrameMemory memory(board, frameSize(applet), 4);
        for (std::uint64_t grabbed = 0; grabbed < Parts; waitForCamera(applet, board)) {
            grabbed += grab(applet, memory, Parts - grabbed);
            std::cout << grabbed << " of " << Parts << " parts\n";
        }
        return 0;
    } catch (const Error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
