// Whether the wrapper closes the SDK library that it opened. This program answers `dlclose` itself, for the whole
// process, and counts the calls.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>

#include "client/testing/BuiltApplet.h"
#include "tests/support/Surroundings.h"

namespace {
std::atomic<int> closed{0};
}

extern "C" __attribute__((visibility("default"))) int dlclose(void* library) noexcept {
    using Close = int (*)(void*);
    static const Close next = reinterpret_cast<Close>(dlsym(RTLD_NEXT, "dlclose"));
    ++closed;
    return next(library);
}

namespace quillon::client {
namespace {

class ClosedLibraries : public ::testing::Test {
protected:
    ~ClosedLibraries() override { boards.clearFaults(); }

    /// Number of libraries that a start which fails closes.
    int closedByFailedStart() {
        const int before = closed;
        int status = 0;
        EXPECT_EQ(library.functions().Std_entry(board.device(), &status, 0), nullptr);
        EXPECT_NE(status, 0);
        return closed - before;
    }

    Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board = SoftBoard(testing::builtStandIns());
    SoftBoardLibrary boards = board.library();
};

TEST_F(ClosedLibraries, TheSdkIsClosedWithTheWrapper) {
    Applet applet(library, board, 1);
    const int before = closed;
    applet.close();
    EXPECT_EQ(closed - before, 1);
}

TEST_F(ClosedLibraries, TheSdkIsClosedWhenItRefusesTheDesign) {
    board.planFault("Fg_InitHandleSlaveAware", Direction::Call, 1, -77);
    EXPECT_EQ(closedByFailedStart(), 1);
}

TEST_F(ClosedLibraries, TheSdkStaysOpenWhenTheDesignDoesNotLoad) {
    const test::ToldLeak leak;
    boards.planCallFault("TavLoadDesignFromBuffer", 1, 0);
    EXPECT_EQ(closedByFailedStart(), 0);
}

}  // namespace
}  // namespace quillon::client
