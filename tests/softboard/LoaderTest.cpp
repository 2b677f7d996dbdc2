#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/softboard/OpenBoard.h"

namespace {

const std::string TavFile = std::string(TEST_FILES) + "/Quillon.tav";

/// Loads `image` from memory; true if the loader took it.
bool loads(const std::string& image) {
    fpga_design* const design = TavLoadDesignFromBuffer(image.data(), image.size(), 1);
    return design != nullptr && TavUnloadTavFile(design) == 0;
}

TEST(Loader, TakesTheWholeImage) {
    EXPECT_EQ(designImage().size(), 8255782U);
    EXPECT_EQ(designImage().substr(0, 4), "MSIS");
    EXPECT_TRUE(loads(designImage()));
}

TEST(Loader, RefusesNullAndEmptyData) {
    EXPECT_EQ(TavLoadDesignFromBuffer(nullptr, 8255782, 1), nullptr);
    EXPECT_EQ(TavLoadDesignFromBuffer(designImage().data(), 0, 1), nullptr);
}

TEST(Loader, RefusesAnImageThatIsCutOffAnywhere) {
    for (const std::size_t length : {1U, 4U, 63U, 64U, 65U, 20000U, 8255781U}) {
        EXPECT_FALSE(loads(designImage().substr(0, length))) << length;
    }
}

TEST(Loader, RefusesAnImageWithBytesTooMany) {
    EXPECT_FALSE(loads(designImage() + "x"));
}

TEST(Loader, RefusesAnImageWithOneWrongBitAnywhere) {
    for (const std::size_t position : {0U, 5U, 8U, 12U, 16U, 24U, 31U, 32U, 36U, 64U, 20000U, 5000000U, 8255781U}) {
        std::string image = designImage();
        image[position] = static_cast<char>(image[position] ^ 0x10);
        EXPECT_FALSE(loads(image)) << position;
    }
}

TEST(Loader, RefusesAForeignFileFormat) {
    EXPECT_FALSE(loads(std::string(8255782, 'x')));
    EXPECT_FALSE(loads("MSIS"));
}

TEST(Loader, RefusesAWholeImageWhoseDescriptionIsUnusable) {
    std::string image = fileContent(TavFile);
    ASSERT_TRUE(loads(image));
    image.replace(image.find("uint32"), 6, "uint33");
    const auto checksum = [&](std::size_t from, std::size_t size) {
        return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(image.data()) + from, size));
    };
    const std::uint32_t content = checksum(64, image.size() - 64);
    std::memcpy(image.data() + 32, &content, sizeof content);
    const std::uint32_t header = checksum(0, 36);
    std::memcpy(image.data() + 36, &header, sizeof header);
    EXPECT_FALSE(loads(image));
}

TEST(Loader, TakesTheGoodImageAgainAfterABrokenOneOfTheSameSize) {
    std::string broken = designImage();
    broken[4000000] = static_cast<char>(~broken[4000000]);
    EXPECT_TRUE(loads(designImage()));
    EXPECT_FALSE(loads(broken));
    EXPECT_TRUE(loads(designImage()));
}

TEST(Loader, GivesEveryLoadADesignOfItsOwn) {
    fpga_design* const first = loadDesignImage();
    fpga_design* const second = loadDesignImage();
    EXPECT_NE(first, second);
    EXPECT_EQ(TavUnloadTavFile(first), 0);
    EXPECT_EQ(TavGetNrOfRegister(second), 20);
    EXPECT_EQ(TavUnloadTavFile(second), 0);
}

TEST(Loader, LoadsADesignFileOfItsTypeOnly) {
    fpga_design* const design = TavLoadTavFileWithType(TavFile.c_str(), 1874, 1);
    ASSERT_NE(design, nullptr);
    EXPECT_EQ(TavGetNrOfRegister(design), 20);
    EXPECT_EQ(TavUnloadTavFile(design), 0);
    EXPECT_EQ(TavLoadTavFileWithType(TavFile.c_str(), 1873, 1), nullptr);
    EXPECT_EQ(TavLoadTavFileWithType(TavFile.c_str(), -1, 1), nullptr);
}

TEST(Loader, RefusesAFileThatIsNotThere) {
    EXPECT_EQ(TavLoadTavFileWithType("no such file.tav", 1874, 1), nullptr);
    EXPECT_EQ(TavLoadTavFileWithType(nullptr, 1874, 1), nullptr);
    EXPECT_EQ(TavLoadTavFileWithType(TEST_FILES, 1874, 1), nullptr);
}

TEST(Loader, UnloadsADesignOnce) {
    fpga_design* const design = loadDesignImage();
    EXPECT_EQ(TavUnloadTavFile(design), 0);
    EXPECT_EQ(TavUnloadTavFile(design), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(TavUnloadTavFile(nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST(Loader, AnswersNothingAboutADesignThatIsNotLoaded) {
    EXPECT_EQ(TavGetNrOfRegister(nullptr), 0);
    EXPECT_EQ(TavGetRegisterName(nullptr, 1), nullptr);
    EXPECT_EQ(TavGetRegisterByName(nullptr, "Scratch"), 0);
    EXPECT_EQ(TavGetRegisterBitRange(nullptr, 1), 0);
    EXPECT_EQ(TavGetRegisterDirection(nullptr, 1), 0);
    EXPECT_EQ(TavGetEvent(nullptr, 0), nullptr);
}

TEST(Loader, NumbersRegistersFromOne) {
    fpga_design* const design = loadDesignImage();
    EXPECT_STREQ(TavGetRegisterName(design, 1), "DesignId");
    EXPECT_STREQ(TavGetRegisterName(design, 20), "SpiCommand");
    EXPECT_EQ(TavGetRegisterName(design, 0), nullptr);
    EXPECT_EQ(TavGetRegisterName(design, 21), nullptr);
    EXPECT_EQ(TavGetRegisterByName(design, "Scratch"), 5);
    EXPECT_EQ(TavGetRegisterByName(design, "nothing"), 0);
    EXPECT_EQ(TavGetRegisterByName(design, nullptr), 0);
    TavUnloadTavFile(design);
}

TEST(Loader, TellsWidthAndDirectionOfARegister) {
    fpga_design* const design = loadDesignImage();
    EXPECT_EQ(TavGetRegisterBitRange(design, TavGetRegisterByName(design, "DmaEnable")), 1);
    EXPECT_EQ(TavGetRegisterBitRange(design, TavGetRegisterByName(design, "BoardControl")), 8);
    EXPECT_EQ(TavGetRegisterBitRange(design, TavGetRegisterByName(design, "DmaTransferLength")), 33);
    EXPECT_EQ(TavGetRegisterBitRange(design, TavGetRegisterByName(design, "LineCounter")), 40);
    EXPECT_EQ(TavGetRegisterBitRange(design, TavGetRegisterByName(design, "DmaBaseAddress")), 64);
    EXPECT_EQ(TavGetRegisterBitRange(design, 99), 0);
    EXPECT_EQ(TavGetRegisterDirection(design, TavGetRegisterByName(design, "DesignId")), 0);
    EXPECT_EQ(TavGetRegisterDirection(design, TavGetRegisterByName(design, "DmaReset")), 1);
    EXPECT_EQ(TavGetRegisterDirection(design, TavGetRegisterByName(design, "Scratch")), 2);
    TavUnloadTavFile(design);
}

TEST(Loader, GivesEventRecordsInTheFixedLayout) {
    fpga_design* const design = loadDesignImage();
    const auto* const record = reinterpret_cast<const char*>(TavGetEvent(design, 1));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(*reinterpret_cast<const char* const*>(record + 8),
                 "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0");
    EXPECT_EQ(*reinterpret_cast<const int32_t*>(record + 20), 1);
    EXPECT_EQ(TavGetEvent(design, 1)->mask, 2U);
    TavUnloadTavFile(design);
}

TEST(Loader, EndsTheEventsWithNull) {
    fpga_design* const design = loadDesignImage();
    EXPECT_NE(TavGetEvent(design, 30), nullptr);
    EXPECT_EQ(TavGetEvent(design, 31), nullptr);
    EXPECT_EQ(TavGetEvent(design, -1), nullptr);
    TavUnloadTavFile(design);
}

TEST(Loader, LeavesOutWhatTheEnvironmentHides) {
    setenv("SOFTBOARD_HIDE", "Device1_Process0_Overflow_Overflow,Device1_Process0_Buffer_0_XLength", 1);
    fpga_design* const design = loadDesignImage();
    unsetenv("SOFTBOARD_HIDE");
    EXPECT_STREQ(TavGetEvent(design, 0)->name, "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0");
    EXPECT_EQ(TavGetEvent(design, 30), nullptr);
    IXdevice* const board = softboard_open();
    Fg_Struct* const fg = Fg_InitHandle("Quillon.tav", board, design);
    EXPECT_EQ(Fg_getParameterIdByName(fg, "Device1_Process0_Buffer_0_XLength"), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(Fg_getParameterIdByName(fg, "Device1_Process0_Buffer_0_XOffset"), 10006);
    Fg_FreeGrabber(fg);
    TavUnloadTavFile(design);
    softboard_close(board);
}

}  // namespace
