// Fifteen lines from nothing to a frame.
#include <iostream>

#include "quillon/client/Applet.h"
#include "quillon/client/Frames.h"
#include "quillon/client/SoftBoard.h"

using namespace quillon::client;

int main() {
    SoftBoard board;
    Applet applet(Library::open(), board);
    applet["FG_WIDTH"] = 64;
    applet["FG_HEIGHT"] = 16;
    FrameMemory memory(board, frameSize(applet), 2);
    for (const Frame& frame : Acquisition(applet, memory, 1)) {
        std::cout << frame.width() << " x " << frame.lines() << '\n';
    }
    try {
        applet["FG_WIDTH"] = 5;
    } catch (const Refused& refused) {  // the exception crosses from the library to the program
        std::cout << refused.code << '\n';
    }
}
