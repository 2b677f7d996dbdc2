#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

#include "client/testing/BuiltApplet.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using testing::builtLibrary;
using testing::builtStandIns;

class Info : public ::testing::Test {
protected:
    int info(int key, int arg1 = 0, int arg2 = 0, void* in = nullptr, void* out = nullptr) {
        return library.info(key, arg1, arg2, in, out);
    }
    int symbol(const char* name) { return info(QuillonInfoEnumerator, 0, 0, const_cast<char*>(name)); }

    Library library = Library::open(builtLibrary(), builtStandIns());
};

TEST_F(Info, FixedAnswersWriteNothing) {
    std::uint64_t in = 5;
    std::uint64_t out = 6;
    for (const int key : {848, 1045, 1792, 1872, 1888, 2064, 4608}) {
        EXPECT_EQ(info(key, 3, 4, &in, &out), 1) << key;
    }
    for (const int key : {1040, 2160, 2192, 2560, 2816, 3072, 3328}) {
        EXPECT_EQ(info(key, 3, 4, &in, &out), 0) << key;
    }
    EXPECT_EQ(info(QuillonInfoInterfaceVersion, 3, 4, &in, &out), 131073);
    EXPECT_EQ(info(QuillonInfoBoardType, 3, 4, &in, &out), 1874);
    EXPECT_EQ(in, 5U);
    EXPECT_EQ(out, 6U);
}

TEST_F(Info, CountsDependOnTheIndex) {
    for (const int key : {4624, 4640, 4688}) {
        EXPECT_EQ(info(key, 0, 0), 1) << key;
        EXPECT_EQ(info(key, 0, 7), 1) << key;
        EXPECT_EQ(info(key, 1, 0), -2070) << key;
        EXPECT_EQ(info(key, -1, 0), -2070) << key;
    }
    EXPECT_EQ(info(4704, 0, 7), 10);
    EXPECT_EQ(info(4704, 1, 0), -2070);
    for (const int key : {4656, 4672}) {
        EXPECT_EQ(info(key, 0, 0), 0) << key;
        EXPECT_EQ(info(key, 0, 1), -2070) << key;
        EXPECT_EQ(info(key, 1, 0), -2070) << key;
    }
}

TEST_F(Info, UnknownKeysAreNotImplemented) {
    for (const int key : {4, 0, -1, 1039, 1046, 2049, 4145, 4353, 2147483647}) {
        EXPECT_EQ(info(key), -2130) << key;
    }
}

TEST_F(Info, GivesTheDesignImage) {
    std::uint64_t size = 0;
    const char* bytes = nullptr;
    EXPECT_EQ(info(QuillonInfoDesignImage, 0, 0, &size, &bytes), 0);
    EXPECT_EQ(size, 8255782U);
    EXPECT_EQ(std::string(bytes, 4), "MSIS");
    EXPECT_EQ(info(QuillonInfoDesignImage, 1, 1, &size, &bytes), 0);
}

TEST_F(Info, TheDesignImageLiesInWritableMemory) {
    unsigned char* bytes = nullptr;
    ASSERT_EQ(info(QuillonInfoDesignImage, 0, 0, nullptr, &bytes), 0);
    const unsigned char last = bytes[8255781];
    bytes[8255781] = static_cast<unsigned char>(~last);
    EXPECT_NE(bytes[8255781], last);
    bytes[8255781] = last;
}

TEST_F(Info, GivesTheIconWhateverTheIndex) {
    for (const auto& [arg1, arg2] : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1), std::pair(7, 7)}) {
        std::uint64_t size = 0;
        const char* bytes = nullptr;
        EXPECT_EQ(info(QuillonInfoIcon, arg1, arg2, &size, &bytes), 0);
        EXPECT_EQ(size, 4676U);
        EXPECT_EQ(std::string(bytes, 8), "\x89PNG\r\n\x1a\n");
    }
}

TEST_F(Info, SkipsNullSlots) {
    for (const int key : {1041, 1042, 1043, 1044, 2304, 4096, 4112, 4128, 4144, 4160, 4176, 4192, 4208}) {
        EXPECT_EQ(info(key), 0) << key;
        EXPECT_EQ(info(key, 1, 1), 0) << key;
    }
    std::uint64_t size = 0;
    EXPECT_EQ(info(QuillonInfoDesignImage, 0, 0, &size, nullptr), 0);
    EXPECT_EQ(size, 8255782U);
}

TEST_F(Info, GivesTheTexts) {
    EXPECT_EQ(library.infoText(QuillonInfoDesignIdentifier), "5525b60f-1373-9674-c4da-fd24a026a8af");
    EXPECT_EQ(library.infoText(QuillonInfoSecondDesignIdentifier), "46db68ee-4ee2-4c5f-9345-256a3fc92321");
    EXPECT_EQ(
        library.infoText(QuillonInfoDescription),
        "Acquisition Applet with support of FastDMA technology, 16 bit image processing (per color component), white "
        "balancing and lookup table(up to 14 Bit) for one CameraLinkHS RGB line scan camera with 2 ports (20 Gbps).");
    EXPECT_EQ(library.infoText(QuillonInfoCategory), "Marlets:Line");
    EXPECT_EQ(library.infoText(QuillonInfoTags),
              "class=standard,family=acquisition,type=single,sensortype=line,color=rgb,interface=clhs,lag=2");
    EXPECT_EQ(library.infoText(QuillonInfoName), "Quillon");
    EXPECT_EQ(library.infoText(QuillonInfoVersion), "2.1.2.4");
    EXPECT_EQ(library.infoText(QuillonInfoVersionWithDate), "2.1.2.4.20190911.094158");
}

TEST_F(Info, StoresA32BitZero) {
    std::uint64_t slot = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(info(2304, 0, 0, &slot), 0);
    EXPECT_EQ(slot, 0xFFFFFFFF00000000);
}

TEST_F(Info, KnowsThePublicConstants) {
    EXPECT_EQ(symbol("FG_ON"), 1);
    EXPECT_EQ(symbol("FG_OFF"), 0);
    EXPECT_EQ(symbol("RGB16"), 1029);
    EXPECT_EQ(symbol("FG_COL48"), 6);
    EXPECT_EQ(symbol("TRGINSOFTWARE"), -1);
    EXPECT_EQ(symbol("TRGINSRC_FRONT_GPI_3"), 19);
    EXPECT_EQ(symbol("FG_SIGNAL_CAM0_FRAME_END"), 2103);
    EXPECT_EQ(symbol("FG_PULSE_WIDTH"), 23);
}

TEST_F(Info, KnowsNoOtherNames) {
    EXPECT_EQ(symbol("FG_WIDTH"), -2070);
    EXPECT_EQ(symbol("fg_on"), -2070);
    EXPECT_EQ(symbol(""), -2070);
    EXPECT_EQ(symbol(nullptr), -2070);
}

/// A copy of the library is another one, in which nothing has been opened.
class InfoOfAnUntouchedLibrary : public TemporaryFolder {
protected:
    Library copy() {
        const std::filesystem::path file = folder / "libUntouched.so";
        std::filesystem::copy_file(builtLibrary(), file);
        return Library::open(file, builtStandIns());
    }
};

TEST_F(InfoOfAnUntouchedLibrary, TellsNoDeviceAndNoDesign) {
    const Library library = copy();
    void* slot = this;
    EXPECT_EQ(library.info(QuillonInfoDevice, 0, 0, &slot), 0);
    EXPECT_EQ(slot, nullptr);
    slot = this;
    EXPECT_EQ(library.info(QuillonInfoDesign, 0, 0, &slot), 0);
    EXPECT_EQ(slot, nullptr);
}

TEST_F(InfoOfAnUntouchedLibrary, TellsTheLastDeviceThatWasOpenedEvenAfterItsEnd) {
    const Library library = copy();
    SoftBoard first(builtStandIns());
    SoftBoard second(builtStandIns());
    Applet kept(library, first);
    {
        const Applet gone(library, second);
        void* slot = nullptr;
        EXPECT_EQ(library.info(QuillonInfoDevice, 0, 0, &slot), 0);
        EXPECT_EQ(slot, second.device());
    }
    void* slot = nullptr;
    EXPECT_EQ(library.info(QuillonInfoDevice, 0, 0, &slot), 0);
    EXPECT_EQ(slot, second.device());
    EXPECT_EQ(library.info(QuillonInfoDesign, 0, 0, &slot), 0);
    EXPECT_NE(slot, nullptr);
}

}  // namespace
}  // namespace quillon::client
