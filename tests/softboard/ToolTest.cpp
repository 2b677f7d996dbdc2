#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/softboard/OpenBoard.h"

namespace {

/// Runs quillon-pack and gives its exit status.
int pack(const std::string& arguments) {
    const int status = std::system((std::string(PACK_TOOL) + " " + arguments + " >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class Tool : public testing::Test {
protected:
    void TearDown() override { std::remove(output.c_str()); }
    const std::string output = temporaryFile();
};

TEST_F(Tool, PacksTheSameImageEveryTime) {
    EXPECT_EQ(pack("image " DESIGN_FILE " -o " + output), 0);
    EXPECT_EQ(fileContent(output), designImage());
}

TEST_F(Tool, ShowsTheDescriptionInAnImage) {
    EXPECT_EQ(std::system((PACK_TOOL " show " TEST_FILES "/design.img > " + output).c_str()), 0);
    EXPECT_EQ(fileContent(output), fileContent(DESIGN_FILE));
}

TEST_F(Tool, DrawsAnIconOfExactlyTheCarriedSize) {
    EXPECT_EQ(fileContent(TEST_FILES "/icon.png").size(), 4676U);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, TEST_FILES "/icon.png"), 0) << image.message;
    EXPECT_EQ(image.width, 48U);
    EXPECT_EQ(image.height, 48U);
    image.format = PNG_FORMAT_RGBA;
    std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0) << image.message;
    EXPECT_EQ(image.warning_or_error, 0U) << image.message;
}

TEST_F(Tool, FailsOnFilesThatItCannotUse) {
    EXPECT_EQ(pack("image no_such_file -o " + output), 1);
    EXPECT_EQ(pack("image " TEST_FILES "/icon.png -o " + output), 1);
    EXPECT_EQ(pack("tav " DESIGN_FILE " -o no_such_directory/file"), 1);
    EXPECT_EQ(pack("show " TEST_FILES "/icon.png"), 1);
}

TEST_F(Tool, ExplainsItself) {
    EXPECT_EQ(pack("--help"), 0);
    EXPECT_EQ(pack(""), 2);
    EXPECT_EQ(pack("paint"), 2);
    EXPECT_EQ(pack("icon"), 2);
    EXPECT_EQ(pack("image " DESIGN_FILE " " + output), 2);
}

}  // namespace
