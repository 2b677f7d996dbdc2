#include "quillon/client/Library.h"

#include <gmock/gmock.h>

#include <cstring>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"

namespace quillon::client {
namespace {

using testing::builtLibrary;
using testing::builtStandIns;
using ::testing::HasSubstr;

Library built() {
    return Library::open(builtLibrary(), builtStandIns());
}

TEST(Library, AMissingLibraryIsToldByItsPath) {
    try {
        Library::open("/no/such/libQuillon.so", builtStandIns());
        FAIL() << "a library came from nowhere";
    } catch (const LibraryError& error) {
        EXPECT_THAT(error.what(), HasSubstr("/no/such/libQuillon.so"));
    }
}

TEST(Library, MissingStandInsAreToldByTheirPath) {
    try {
        Library::open(builtLibrary(), "/no/such/folder");
        FAIL() << "stand-ins came from nowhere";
    } catch (const LibraryError& error) {
        EXPECT_THAT(error.what(), HasSubstr("/no/such/folder/libsoftboard.so"));
    }
}

TEST(Library, ALibraryThatIsNoAppletIsToldByTheFunctionThatItLacks) {
    try {
        Library::open(builtStandIns() / "libsoftboard.so", builtStandIns());
        FAIL() << "the software board passed for an applet";
    } catch (const LibraryError& error) {
        EXPECT_THAT(error.what(), HasSubstr("has no function Std_entry"));
    }
}

TEST(Library, ItsTextsComeByKey) {
    EXPECT_EQ(built().infoText(QuillonInfoName), "Quillon");
    EXPECT_EQ(built().infoText(QuillonInfoVersion), "2.1.2.4");
}

TEST(Library, AKeyWithoutATextIsThrown) {
    try {
        built().infoText(4);
        FAIL() << "key 4 has a text";
    } catch (const CallError& error) {
        EXPECT_EQ(error.code, -2130);
    }
}

TEST(Library, PublicConstantsAreFoundByName) {
    EXPECT_EQ(built().constant("FG_COL24"), 2);
    EXPECT_EQ(built().constant("TRGINSOFTWARE"), -1);
    EXPECT_EQ(built().constant("FG_COL25"), std::nullopt);
}

TEST(Library, ItCarriesADesignImageAndAnIcon) {
    const Library library = built();
    ASSERT_EQ(library.designImage().size(), 8255782U);
    EXPECT_EQ(std::memcmp(library.designImage().data(), "MSIS", 4), 0);
    ASSERT_EQ(library.icon().size(), 4676U);
    EXPECT_EQ(std::memcmp(library.icon().data(), "\x89PNG", 4), 0);
}

TEST(Library, EveryExportAnswersANullHandle) {
    const Library library = built();
    const Functions& functions = library.functions();
    EXPECT_EQ(functions.Fg_getNrOfParameter(nullptr), -2001);
    EXPECT_EQ(functions.Fg_getEventMask(nullptr, "FG_OVERFLOW_CAM0"), 0U);
    EXPECT_EQ(functions.Fg_getLastPicNumberEx(nullptr, 0, nullptr), -2001);
    EXPECT_EQ(functions.Fg_FreeGrabber(nullptr), -2001);
}

}  // namespace
}  // namespace quillon::client
