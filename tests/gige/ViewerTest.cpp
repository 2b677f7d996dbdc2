#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <utility>

#include "tests/gige/Programs.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;

constexpr unsigned ScreenWidth = 1000;
constexpr unsigned ScreenHeight = 760;

/// A screen that nobody sees, as a file: a head of big-endian words, colours of 12 bytes, and pixels of 4 bytes, blue
/// first.
class Screen {
public:
    Screen()
        : server_({"Xvfb", "-displayfd", "1", "-screen", "0",
                   std::to_string(ScreenWidth) + "x" + std::to_string(ScreenHeight) + "x24", "-fbdir",
                   folder_.path().string()}) {
        EXPECT_TRUE(becomes([this] { return server_.out().ends_with('\n'); })) << server_.err();
        display_ = "DISPLAY=:" + server_.out().substr(0, server_.out().find('\n'));
    }

    const std::string& display() const { return display_; }
    void click(int x, int y) const {
        EXPECT_EQ(
            run(display_ + " xdotool mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1").status, 0);
    }
    /// How many pixels differ from this colour by no more than a few of 255 in each component.
    int pixelsLike(const std::array<int, 3>& colour) const {
        constexpr std::size_t HeadSizeWord = 0;
        constexpr std::size_t ColoursWord = 19;
        constexpr std::size_t ColourSize = 12;
        constexpr std::size_t PixelSize = 4;
        constexpr int Near = 12;
        const std::string file = cli::testing::contentOf(folder_ / "Xvfb_screen0");
        const std::size_t begin = wordOf(file, HeadSizeWord) + wordOf(file, ColoursWord) * ColourSize;
        int count = 0;
        for (std::size_t at = begin;
             at < begin + ScreenWidth * ScreenHeight * PixelSize && at + PixelSize <= file.size(); at += PixelSize) {
            bool like = true;
            for (std::size_t i = 0; i < colour.size(); ++i) {
                like = like && std::abs(static_cast<std::uint8_t>(file[at + 2 - i]) - colour[i]) <= Near;
            }
            count += like ? 1 : 0;
        }
        return count;
    }

private:
    static std::size_t wordOf(const std::string& file, std::size_t index) {
        std::size_t word = 0;
        for (std::size_t i = 0; i < 4 && 4 * index + i < file.size(); ++i) {
            word = word << 8 | static_cast<std::uint8_t>(file[4 * index + i]);
        }
        return word;
    }

    Folder folder_;
    Program server_;
    std::string display_;
};

TEST(ArvViewer, ShowsThePicture) {
    QUILLON_NEEDS("arv-viewer-0.8", "aravis-tools");
    QUILLON_NEEDS("Xvfb", "xvfb");
    QUILLON_NEEDS("xdotool", "xdotool");
    QUILLON_NEEDS("gst-inspect-1.0", "gstreamer1.0-tools");
    if (run("gst-inspect-1.0 gtksink").status != 0) {
        GTEST_SKIP() << "gtksink is missing: it is in Debian's package gstreamer1.0-gtk3";
    }
    const Served served({"--scene", "bars"});
    const Screen screen;
    const Folder home;
    const Program viewer({"arv-viewer-0.8"}, {screen.display(), "HOME=" + home.path().string(), "NO_AT_BRIDGE=1"});
    // Where themes and fonts put a camera's row and the button below the list: who is clicked on answers.
    const auto clickedDown = [&](int x, int from, int to, int step, const auto& answers) {
        for (int y = from; (to - y) * step >= 0; y += step) {
            screen.click(x, y);
            if (becomes(answers, 1500ms)) {
                return true;
            }
        }
        return false;
    };
    ASSERT_TRUE(becomes([&] { return screen.pixelsLike({255, 255, 255}) > 10000; })) << viewer.err();
    constexpr int Row = 200;
    constexpr int Button = 78;
    ASSERT_TRUE(clickedDown(Row, 117, 160, 10, [&] { return served.controlled(); })) << viewer.err();
    ASSERT_TRUE(clickedDown(Button, 277, 230, -12, [&] { return served.streams(); })) << viewer.err();
    // The left ends of the bars.
    for (const auto& [name, colour] :
         {std::pair("yellow", std::array{255, 255, 0}), std::pair("cyan", std::array{0, 255, 255}),
          std::pair("green", std::array{0, 255, 0}), std::pair("magenta", std::array{255, 0, 255}),
          std::pair("red", std::array{255, 0, 0}), std::pair("blue", std::array{0, 0, 255})}) {
        EXPECT_TRUE(becomes([&, wanted = colour] { return screen.pixelsLike(wanted) > 1000; })) << name;
    }
    EXPECT_EQ(served.state()["refusals"], 0);
}

}  // namespace
}  // namespace quillon::gige
