/// @file
/// The applet on an SDK that lacks functions. SDK_FOLDER is the folder with that SDK and the other stand-ins.
#pragma once

#include <gmock/gmock.h>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Applet.h"
#include "tests/support/CapturedLog.h"

namespace quillon::client {

class VariantStart : public ::testing::Test {
protected:
    ~VariantStart() override { f.Fg_FreeGrabber(&location); }

    QuillonWrapper* start(int flags = 0) { return location = f.Std_entry(board.device(), &status, flags); }
    int lastError() { return f.Fg_getLastErrorNumber(&location); }

    test::CapturedLog log;
    Library library = Library::open(testing::builtLibrary(), SDK_FOLDER);
    const Functions& f = library.functions();
    SoftBoard board = SoftBoard(SDK_FOLDER);
    SoftBoardLibrary boards = board.library();
    int status = 77;
    QuillonWrapper* location = nullptr;
};

}  // namespace quillon::client
