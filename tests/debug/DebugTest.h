#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/Vocabulary.h"

namespace quillon {

using Lines = std::vector<std::string>;

/// A software board on which an applet is opened when its design tells what it shall. As it is, the design has two
/// points: 0 is "Camera Input", which takes pixels, 1 is "Image Output", which also shows them.
class DebugTest : public testing::Test {
protected:
    client::Applet& open(int flags = 0) {
        applet.emplace(library, board, flags);
        board.clearTranscript();
        return *applet;
    }
    client::Applet& openAtPoint(std::uint32_t point) {
        open();
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, point), 0);
        board.clearTranscript();
        return *applet;
    }
    client::ParameterRecord record(int id) const {
        const auto trees = applet->parameterInfo();
        const client::ParameterRecord* found = client::findRecord(trees, id);
        return found != nullptr ? *found : client::ParameterRecord{};
    }
    std::uint64_t pixelMaximum() const {
        return std::get<client::Range<std::uint64_t>>(record(FG_DEBUGOUTPIXEL).range).max;
    }
    /// The value type of the last access; 0 if there was none.
    int lastType() const {
        const auto accesses = board.transcript();
        return accesses.empty() ? 0 : accesses.back().type;
    }

    static constexpr const char* Entries = "Device1_Process0_Debug_Entries";
    const std::string Input = "Device1_Process0_Debug_CameraInput_";   ///< what the names of point 0 begin with
    const std::string Output = "Device1_Process0_Debug_ImageOutput_";  ///< and of point 1

    client::Library library = client::Library::open(client::testing::builtLibrary(), client::testing::builtStandIns());
    client::SoftBoard board = client::SoftBoard(client::testing::builtStandIns());
    std::optional<client::Applet> applet;
};

}  // namespace quillon
