/// @file
/// The library and the stand-ins of the build that a test or a benchmark belongs to. For targets that link
/// quillon_client_testing.
#pragma once

#include <filesystem>

#include "quillon/client/Applet.h"
#include "quillon/client/Library.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::client::testing {

/// libQuillon.so of this build.
inline std::filesystem::path builtLibrary() {
    return QUILLON_BUILT_LIBRARY;
}

/// The folder with the stand-ins of this build.
inline std::filesystem::path builtStandIns() {
    return QUILLON_BUILT_STAND_INS;
}

/// The applet of this build on a software board of its own: what most tests start from.
///
///     BuiltApplet built;
///     built.board.clearTranscript();
///     EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), 0);
///     EXPECT_THAT(built.board.writes(), ElementsAre("Device1_Process0_Buffer_0_SensorWidth = 2048", ...));
struct BuiltApplet {
    explicit BuiltApplet(int flags = 0) : applet(library, board, flags) {}

    Library library = Library::open(builtLibrary(), builtStandIns());
    SoftBoard board = SoftBoard(builtStandIns());
    Applet applet;  ///< last, so that it goes away before its board
};

}  // namespace quillon::client::testing
