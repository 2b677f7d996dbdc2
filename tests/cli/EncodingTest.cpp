#include "cli/Encoding.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli {
namespace {

using testing::Folder;
using ::testing::HasSubstr;
using testing::Outcome;
using testing::quillon;

TEST(Encoding, Utf8StaysAsItIs) {
    for (const char* text : {"", "plain", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x99\x82", "\xED\x9F\xBF"}) {
        EXPECT_EQ(asUtf8(text), text);
    }
}

TEST(Encoding, OtherBytesAreReadAsLatin1) {
    EXPECT_EQ(asUtf8("5 \xB5s"), "5 \xC2\xB5s");
    EXPECT_EQ(asUtf8("\xFF\xA0"), "\xC3\xBF\xC2\xA0");
}

TEST(Encoding, BytesWithoutACharacterInLatin1AreReplaced) {
    EXPECT_EQ(asUtf8("\x80"), "\xEF\xBF\xBD");
    EXPECT_EQ(asUtf8("a\x9F"
                     "b"),
              "a\xEF\xBF\xBD"
              "b");
}

TEST(Encoding, FormsThatUtf8ForbidsAreNoCharacters) {
    EXPECT_EQ(asUtf8("\xC0\xAF"), "\xC3\x80\xC2\xAF");                  // a longer form than needed
    EXPECT_EQ(asUtf8("\xE0\x9F\xBF"), "\xC3\xA0\xEF\xBF\xBD\xC2\xBF");  // the same of three bytes
    EXPECT_EQ(asUtf8("\xED\xA0\xA0"), "\xC3\xAD\xC2\xA0\xC2\xA0");      // a surrogate
    EXPECT_EQ(asUtf8("\xF5"), "\xC3\xB5");
    EXPECT_EQ(asUtf8("\xF4\xA0\xA0\xA0"), "\xC3\xB4\xC2\xA0\xC2\xA0\xC2\xA0");  // beyond U+10FFFF
    EXPECT_EQ(asUtf8("\xE2\x82"), "\xC3\xA2\xEF\xBF\xBD");                      // the end is missing
}

TEST(JsonText, ANameThatIsNoUtf8IsToldAsJson) {
    const Outcome outcome = quillon({"--json", "get", "FG_\xE4\x80"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.json()["error"].get<std::string>(), HasSubstr("\"FG_\xC3\xA4\xEF\xBF\xBD\""));
}

TEST(JsonText, AVerbThatIsNoUtf8IsToldAsJson) {
    EXPECT_THAT(quillon({"--json", "g\xE4t"}).json()["error"].get<std::string>(), HasSubstr("\"g\xC3\xA4t\""));
}

TEST(JsonText, AnOptionThatIsNoUtf8IsToldAsJson) {
    EXPECT_THAT(quillon({"--json", "get", "FG_WIDTH", "--n\xFC"}).json()["error"].get<std::string>(),
                HasSubstr("--n\xC3\xBC"));
}

TEST(JsonText, FileNamesThatAreNoUtf8AreToldAsJson) {
    const Folder folder;
    const std::filesystem::path state = folder / "\xE4.mcf";
    EXPECT_EQ(quillon({"save", state, "--json"}).json()["saved"], (folder / "\xC3\xA4.mcf").string());
    EXPECT_EQ(quillon({"load", state, "--json"}).json()["loaded"], (folder / "\xC3\xA4.mcf").string());
    EXPECT_EQ(quillon({"check", state, "--json"}).json()["file"], (folder / "\xC3\xA4.mcf").string());
}

TEST(JsonText, AnotherEncodingInAConfigurationIsReadAsLatin1) {
    const Folder folder;
    std::ofstream(folder / "state.mcf", std::ios::binary) << "Typ='Qu\xE4llon';\n[Port A]\nFG_W\xF6RD=1;\n";
    const Outcome outcome = quillon({"check", folder / "state.mcf", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.json().dump(), HasSubstr("Qu\xC3\xA4llon"));
    EXPECT_THAT(outcome.json().dump(), HasSubstr("FG_W\xC3\xB6RD"));
}

TEST(JsonText, AUsersTextIsNotEncodedTwice) {
    const Folder folder;
    for (const char* name : {"\xC3\xA4.png", "\xE4.png"}) {
        const std::string file = folder / name;
        const Outcome outcome = quillon({"set", "FG_DEBUGFILE=" + file});
        EXPECT_EQ(outcome.out, "FG_DEBUGFILE = \"" + file + "\"\n") << outcome.err;
    }
    ASSERT_EQ(quillon({"set", "FG_DEBUGFILE=\xC3\xA4.png", "--save", folder / "state.mcf"}).status, 0);
    EXPECT_EQ(quillon({"get", "FG_DEBUGFILE", "--json", "--mcf", folder / "state.mcf"}).json()[0]["value"],
              "\xC3\xA4.png");
}

TEST(JsonText, TheDescriptionIsTheSameAsInText) {
    EXPECT_TRUE(quillon({"xml", "--json"}).json()["document"] == asUtf8(quillon({"xml"}).out));
}

}  // namespace
}  // namespace quillon::cli
