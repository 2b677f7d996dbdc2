// A machine without the SDK. The loader and board access, which the applet needs to be loaded at all, are there.

#include <gmock/gmock.h>

#include <memory>

#include "client/SharedLibrary.h"
#include "client/testing/BuiltApplet.h"
#include "quillon/client/Library.h"
#include "quillon/client/SoftBoard.h"
#include "tests/support/CapturedLog.h"

namespace quillon::client {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MissingSdk : public ::testing::Test {
protected:
    test::CapturedLog log;
    SoftBoard board = SoftBoard(testing::builtStandIns());
    SharedLibrary loader = SharedLibrary(testing::builtStandIns() / "libtavrt.so");
    SharedLibrary boardAccess = SharedLibrary(testing::builtStandIns() / "liborlo_hw.so");
    Library library = Library::open(testing::builtLibrary());
    int status = 77;
};

TEST_F(MissingSdk, EndsTheStartWithALogLine) {
    EXPECT_EQ(library.functions().Std_entry(board.device(), &status, 0), nullptr);
    EXPECT_EQ(status, -2031);
    EXPECT_THAT(log.lines(), ElementsAre("6 orlo.wrapper.Quillon error opening dll 'libfglib5.so'"));
}

TEST_F(MissingSdk, LoadsNoDesignAndNeedsNoStatus) {
    SoftBoardLibrary boards = board.library();
    boards.clearTranscript();
    EXPECT_EQ(library.functions().Std_entry(board.device(), nullptr, 0), nullptr);
    EXPECT_THAT(boards.transcript(), IsEmpty());
}

TEST_F(MissingSdk, LogsNothingAboveLevelSix) {
    log.changeLevel("orlo.wrapper.Quillon", 7);
    EXPECT_EQ(library.functions().Std_entry(board.device(), &status, 0), nullptr);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(MissingSdk, InfoAnswersAllTheSame) {
    EXPECT_EQ(library.infoText(QuillonInfoName), "Quillon");
}

}  // namespace
}  // namespace quillon::client
