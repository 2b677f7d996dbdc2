#include "cli/pictures/FrameFile.h"

#include <gmock/gmock.h>
#include <png.h>
#include <tiffio.h>

#include <memory>

#include "cli/ExitStatus.h"
#include "tests/cli/Command.h"
#include "tests/cli/PackedFrame.h"
#include "tests/cli/SizeLimit.h"

namespace quillon::cli {
namespace {

using testing::contentOf;
using ::testing::ElementsAre;
using testing::Folder;
using ::testing::HasSubstr;
using testing::PackedFrame;
using testing::Pixel;
using testing::SizeLimit;
using ::testing::StrEq;

/// A picture that was read back: samples of red, green and blue.
struct Picture {
    unsigned width = 0;
    unsigned height = 0;
    unsigned bits = 0;
    std::vector<unsigned> samples;
};

Picture readPng(const std::filesystem::path& file) {
    const std::unique_ptr<std::FILE, decltype(&std::fclose)> stream(std::fopen(file.c_str(), "rb"), std::fclose);
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, stream.get());
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    EXPECT_EQ(png_get_color_type(png, info), PNG_COLOR_TYPE_RGB);
    Picture picture{png_get_image_width(png, info), png_get_image_height(png, info), png_get_bit_depth(png, info), {}};
    for (unsigned y = 0; y < picture.height; ++y) {
        const png_bytep row = png_get_rows(png, info)[y];
        for (unsigned i = 0; i < 3 * picture.width; ++i) {
            picture.samples.push_back(picture.bits == 8 ? row[i] : row[2 * i] * 256U + row[2 * i + 1]);
        }
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}

Picture readTiff(const std::filesystem::path& file) {
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    if (tiff == nullptr) {
        return {};
    }
    std::uint16_t bits = 0;
    std::uint16_t samples = 0;
    Picture picture;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &picture.width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &picture.height);
    TIFFGetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    EXPECT_EQ(samples, 3);
    picture.bits = bits;
    std::vector<std::uint16_t> row(std::size_t{3} * picture.width);
    for (unsigned y = 0; y < picture.height; ++y) {
        EXPECT_EQ(TIFFReadScanline(tiff.get(), row.data(), y), 1);
        for (unsigned i = 0; i < row.size(); ++i) {
            picture.samples.push_back(bits == 8 ? reinterpret_cast<const std::uint8_t*>(row.data())[i] : row[i]);
        }
    }
    EXPECT_EQ(TIFFLastDirectory(tiff.get()), 1);
    return picture;
}

/// Two pixels with all that matters: different components, the smallest, the largest and a value between.
Pixel corners(unsigned bits, unsigned x) {
    const unsigned largest = (1U << bits) - 1;
    return x == 0 ? Pixel{0, largest, 1} : Pixel{largest / 2, 2, largest - 1};
}

PackedFrame cornersOf(unsigned bits) {
    return {2, 1, bits, [bits](unsigned x, unsigned) { return corners(bits, x); }};
}

TEST(FrameFile, PngOfEightBitsHasTheValuesAsTheyAre) {
    const Folder folder;
    writeFrame(cornersOf(8), folder / "a.png");
    const Picture picture = readPng(folder / "a.png");
    EXPECT_EQ(picture.bits, 8U);
    EXPECT_EQ(picture.width, 2U);
    EXPECT_EQ(picture.height, 1U);
    EXPECT_THAT(picture.samples, ElementsAre(0, 255, 1, 127, 2, 254));
}

TEST(FrameFile, PngOfMoreBitsIsSpreadFromBlackToWhite) {
    const Folder folder;
    writeFrame(cornersOf(10), folder / "10.png");
    EXPECT_EQ(readPng(folder / "10.png").bits, 16U);
    EXPECT_THAT(readPng(folder / "10.png").samples, ElementsAre(0, 65535, 64, 32735, 128, 65471));
    writeFrame(cornersOf(12), folder / "12.png");
    EXPECT_THAT(readPng(folder / "12.png").samples, ElementsAre(0, 65535, 16, 32759, 32, 65519));
    writeFrame(cornersOf(14), folder / "14.png");
    EXPECT_THAT(readPng(folder / "14.png").samples, ElementsAre(0, 65535, 4, 32765, 8, 65531));
    writeFrame(cornersOf(16), folder / "16.png");
    EXPECT_THAT(readPng(folder / "16.png").samples, ElementsAre(0, 65535, 1, 32767, 2, 65534));
}

TEST(FrameFile, TiffHoldsWhatPngHolds) {
    const Folder folder;
    for (const unsigned bits : {8U, 10U, 12U, 14U, 16U}) {
        const PackedFrame frame(52, 37, bits, [bits](unsigned x, unsigned y) {
            return Pixel{(x * 711 + y * 13) % (1U << bits), (x * y) % (1U << bits), (y * 977) % (1U << bits)};
        });
        writeFrame(frame, folder / "a.png");
        writeFrame(frame, folder / "a.tif");
        const Picture png = readPng(folder / "a.png");
        const Picture tiff = readTiff(folder / "a.tif");
        EXPECT_EQ(tiff.width, 52U);
        EXPECT_EQ(tiff.height, 37U);
        EXPECT_EQ(tiff.bits, bits == 8 ? 8U : 16U);
        EXPECT_EQ(png.bits, tiff.bits);
        EXPECT_EQ(png.samples, tiff.samples) << bits;
        EXPECT_EQ(png.samples[3], bits == 8 ? 711U % 256 : (711U << (16 - bits) | 711U >> (2 * bits - 16)));
    }
}

TEST(FrameFile, BothSuffixesOfTiffAreTheSame) {
    const Folder folder;
    writeFrame(cornersOf(16), folder / "a.tif");
    writeFrame(cornersOf(16), folder / "a.tiff");
    EXPECT_THAT(readTiff(folder / "a.tiff").samples, ElementsAre(0, 65535, 1, 32767, 2, 65534));
    EXPECT_EQ(contentOf(folder / "a.tif"), contentOf(folder / "a.tiff"));
}

TEST(FrameFile, ATiffOfManyStripsIsWhole) {
    const Folder folder;
    const PackedFrame frame(1024, 512, 8, [](unsigned x, unsigned y) {
        return Pixel{x % 256, y % 256, (x + y) % 256};
    });
    writeFrame(frame, folder / "a.tif");
    const Picture picture = readTiff(folder / "a.tif");
    ASSERT_EQ(picture.samples.size(), 3U * 1024 * 512);
    std::size_t wrong = 0;
    for (unsigned y = 0; y < 512; ++y) {
        for (unsigned x = 0; x < 1024; ++x) {
            const unsigned* const pixel = &picture.samples[3 * (y * 1024 + x)];
            wrong += pixel[0] == x % 256 && pixel[1] == y % 256 && pixel[2] == (x + y) % 256 ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(FrameFile, PpmTellsTheLargestValueOfTheFormat) {
    const Folder folder;
    writeFrame(cornersOf(8), folder / "8.ppm");
    EXPECT_EQ(contentOf(folder / "8.ppm"), std::string("P6\n2 1\n255\n\x00\xFF\x01\x7F\x02\xFE", 17));
    writeFrame(cornersOf(10), folder / "10.ppm");
    EXPECT_EQ(contentOf(folder / "10.ppm"),
              std::string("P6\n2 1\n1023\n\x00\x00\x03\xFF\x00\x01\x01\xFF\x00\x02\x03\xFE", 24));
}

TEST(FrameFile, PgmIsOneFileAComponent) {
    const Folder folder;
    EXPECT_THAT(frameFiles(folder / "a.pgm"), ElementsAre(folder / "a_r.pgm", folder / "a_g.pgm", folder / "a_b.pgm"));
    writeFrame(cornersOf(12), folder / "a.pgm");
    EXPECT_EQ(contentOf(folder / "a_r.pgm"), std::string("P5\n2 1\n4095\n\x00\x00\x07\xFF", 16));
    EXPECT_EQ(contentOf(folder / "a_g.pgm"), std::string("P5\n2 1\n4095\n\x0F\xFF\x00\x02", 16));
    EXPECT_EQ(contentOf(folder / "a_b.pgm"), std::string("P5\n2 1\n4095\n\x00\x01\x0F\xFE", 16));
    EXPECT_FALSE(std::filesystem::exists(folder / "a.pgm"));
}

TEST(FrameFile, RawIsTheFramesBytesAndWhatTheyAre) {
    const Folder folder;
    PackedFrame packed = cornersOf(10);
    packed.about.number = 3;
    packed.about.image = 5;
    packed.about.lostBefore = 1;
    packed.about.firstTick = 1000;
    packed.about.lastTick = 2000;
    packed.about.flags = 1 | 4;
    const client::Frame frame = packed;
    writeFrame(frame, folder / "a.raw");
    const auto bytes = frame.bytes();
    EXPECT_EQ(contentOf(folder / "a.raw"), std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    const auto json = nlohmann::json::parse(contentOf(folder / "a.json"));
    EXPECT_EQ(json["width"], 2);
    EXPECT_EQ(json["lines"], 1);
    EXPECT_EQ(json["bits"], 10);
    EXPECT_EQ(json["bytes"], 8);
    EXPECT_EQ(json["components"], nlohmann::json({"blue", "green", "red"}));
    EXPECT_EQ(json["number"], 3);
    EXPECT_EQ(json["image"], 5);
    EXPECT_EQ(json["lost before"], 1);
    EXPECT_EQ(json["first tick"], 1000);
    EXPECT_EQ(json["last tick"], 2000);
    EXPECT_EQ(json["flags"], nlohmann::json({"short", "truncated"}));
}

TEST(FrameFile, AnUnknownSuffixIsUsageWithThoseThatAreKnown) {
    for (const char* name : {"a.jpg", "a", "png", "a.PNG", ".png"}) {
        try {
            frameFiles(name);
            FAIL() << name << " was taken";
        } catch (const UsageError& error) {
            EXPECT_THAT(error.what(), HasSubstr("its name ends in .png, .ppm, .pgm, .tif, .tiff or .raw"));
        }
    }
}

TEST(FrameFile, AFolderThatIsMissingIsTold) {
    for (const char* suffix : {".png", ".ppm", ".pgm", ".tif", ".raw"}) {
        EXPECT_THROW(writeFrame(cornersOf(8), std::string("/no/such/folder/a") + suffix), RefusedError) << suffix;
    }
}

TEST(FrameFile, AnEndOfTheRoomLeavesNothing) {
    const Folder folder;
    const PackedFrame frame(256, 256, 8, [](unsigned x, unsigned y) { return Pixel{x * y % 251, x % 256, y}; });
    for (const char* name : {"a.png", "a.ppm", "a.pgm", "a.tif", "a.raw"}) {
        const SizeLimit limit(5000);
        try {
            writeFrame(frame, folder / name);
            FAIL() << name << " was written";
        } catch (const RefusedError& error) {
            EXPECT_THAT(error.what(), HasSubstr(" cannot be written: File too large")) << name;
        }
        EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << name;
    }
}

TEST(FrameFile, APictureWithoutLinesIsNoPicture) {
    const Folder folder;
    const PackedFrame frame(4, 0, 8, [](unsigned, unsigned) { return Pixel{}; });
    for (const char* name : {"a.png", "a.ppm", "a.pgm", "a.tif"}) {
        try {
            writeFrame(frame, folder / name);
            FAIL() << name << " was written";
        } catch (const RefusedError& error) {
            EXPECT_THAT(error.what(), HasSubstr("frame 1 has no complete line"));
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    writeFrame(frame, folder / "a.raw");
    EXPECT_THAT(contentOf(folder / "a.raw"), StrEq(""));
}

}  // namespace
}  // namespace quillon::cli
