#include "cli/Chart.h"

#include <gmock/gmock.h>

#include "cli/ExitStatus.h"
#include "tests/cli/Command.h"
#include "tests/cli/SizeLimit.h"

namespace quillon::cli {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

Chart ramp() {
    return {"Ramp",
            {"input", 0, 4},
            {"output", 0, 2},
            {{"ramp", '*', {0, 0, 0}, {{0, 0}, {1, 0.5}, {2, 1}, {3, 1.5}, {4, 2}}}}};
}

TEST(Chart, ACurveIsDrawnInCharactersBetweenItsAxes) {
    EXPECT_THAT(asText(ramp(), 9, 3),
                ElementsAre("2 |        *", "  |    ****", "0 |****", "  +---------", "   0 4 input"));
}

TEST(Chart, TicksAreRoundNumbers) {
    EXPECT_THAT(ticks({"", 0, 10}, 5), ElementsAre(0, 2, 4, 6, 8, 10));
    EXPECT_THAT(ticks({"", 0, 65535}, 4), ElementsAre(0, 20000, 40000, 60000));
}

TEST(Chart, AnEmptyAxisHasOneTick) {
    EXPECT_THAT(ticks({"", 3, 3}, 5), ElementsAre(3));
}

TEST(Chart, APictureIsWrittenAsPng) {
    const testing::Folder folder;
    writePicture(ramp(), folder / "ramp.png");
    EXPECT_THAT(testing::contentOf(folder / "ramp.png"), StartsWith("\x89PNG"));
}

TEST(Chart, AnEndOfTheRoomLeavesNoTornPicture) {
    const testing::Folder folder;
    const testing::SizeLimit limit(1000);
    EXPECT_THROW(writePicture(ramp(), folder / "ramp.png"), RefusedError);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

}  // namespace
}  // namespace quillon::cli
