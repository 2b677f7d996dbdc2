// Documents against the schemas of GenApi, which a program of Aravis carries as resources.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "gige/Description.h"

namespace quillon::genapi {
namespace {

using client::testing::BuiltApplet;

/// What a shell command printed to both its outputs, and its exit status.
struct Ran {
    int status;
    std::string output;
};

Ran run(const std::string& command) {
    std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    Ran ran{};
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
        ran.output += static_cast<char>(byte);
    }
    const int ended = ::pclose(pipe);
    ran.status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return ran;
}

std::string quoted(const std::filesystem::path& path) {
    return "'" + path.string() + "'";
}

class Schema : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "quillon-schema-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        const Ran taken =
            run(std::string("'" GRESOURCE "' extract '" SCHEMA_CARRIER "' ") + "/org/aravis/GenApiSchema_Version_" +
                version() + ".xsd > " + quoted(folder / "schema.xsd"));
        ASSERT_EQ(taken.status, 0) << taken.output;
        if (std::filesystem::file_size(folder / "schema.xsd") == 0) {
            GTEST_SKIP() << SCHEMA_CARRIER << " carries no schema";
        }
    }

    void TearDown() override { std::filesystem::remove_all(folder); }

    /// Of the schema.
    virtual std::string version() const { return "1_0"; }

    Ran validate(const std::string& document) const {
        std::ofstream(folder / "document.xml", std::ios::binary) << document;
        return run(std::string("'" XMLLINT "' --nonet --noout --schema ") + quoted(folder / "schema.xsd") + " " +
                   quoted(folder / "document.xml"));
    }

    void expectValid(const std::string& document) const {
        const Ran ran = validate(document);
        EXPECT_EQ(ran.status, 0) << ran.output;
    }

    std::filesystem::path folder;
};

/// The text with `before` replaced by `after`, which has to occur.
std::string replaced(std::string text, const std::string& before, const std::string& after) {
    const std::size_t at = text.find(before);
    if (at == std::string::npos) {
        throw std::runtime_error("the document has no " + before);
    }
    return text.replace(at, before.size(), after);
}

TEST_F(Schema, TheDocumentAfterStartUpIsValid) {
    BuiltApplet built;
    expectValid(built.applet.xml());
}

TEST_F(Schema, TheDocumentOfAnUntouchedCatalogueIsValid) {
    BuiltApplet built(1);
    expectValid(built.applet.xml());
}

TEST_F(Schema, TheDocumentStaysValidWhenEveryLimitMoves) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.setInt(FG_XOFFSET, 4096), 0);                      // FG_XOFFSET
    EXPECT_EQ(built.applet.setInt(FG_VANTAGEPOINT, 2), 0);                    // FG_VANTAGEPOINT, bottom left
    EXPECT_EQ(built.applet.setInt(FG_FORMAT, 6), 0);                          // FG_FORMAT
    EXPECT_EQ(built.applet.setInt(FG_LINETRIGGERMODE, 2), 0);                 // FG_LINETRIGGERMODE
    EXPECT_EQ(built.applet.setDouble(FG_LINEPERIODE, 0.512), 0);              // FG_LINEPERIODE
    EXPECT_EQ(built.applet.setInt(FG_CAMERASIMULATOR_SELECT_MODE, 2), 0);     // FG_CAMERASIMULATOR_SELECT_MODE
    EXPECT_EQ(built.applet.setDouble(FG_CAMERASIMULATOR_FRAMERATE, 0.1), 0);  // FG_CAMERASIMULATOR_FRAMERATE
    expectValid(built.applet.xml());
}

TEST_F(Schema, ItWouldTellOfAFeatureThatPointsToNoRegister) {
    BuiltApplet built;
    const std::string broken =
        replaced(built.applet.xml(), "<pValue>FG_WIDTH_Reg</pValue>", "<pValue>FG_WIDHT_Reg</pValue>");
    const Ran ran = validate(broken);
    EXPECT_NE(ran.status, 0);
    EXPECT_THAT(ran.output, testing::HasSubstr("FG_WIDHT_Reg"));
}

TEST_F(Schema, ItWouldTellOfTwoNodesOfOneName) {
    BuiltApplet built;
    EXPECT_NE(validate(replaced(built.applet.xml(), "<Integer Name='FG_WIDTH'>", "<Integer Name='FG_HEIGHT'>")).status,
              0);
}

// ---- The document that is served to viewers ----

class ServedSchema : public Schema {
protected:
    std::string version() const override { return "1_1"; }
};

TEST_F(ServedSchema, TheDocumentOfADeviceIsValid) {
    BuiltApplet built;
    expectValid(gige::describe(built.applet.xml()).document);
}

TEST_F(ServedSchema, TheDocumentOfADeviceIsValidForAnUntouchedCatalogue) {
    BuiltApplet built(1);
    expectValid(gige::describe(built.applet.xml()).document);
}

TEST_F(ServedSchema, ItWouldTellOfAFeatureThatPointsToNoRegister) {
    BuiltApplet built;
    const std::string broken =
        replaced(gige::describe(built.applet.xml()).document, "<pMax>FG_WIDTH_Max</pMax>", "<pMax>FG_WIDHT</pMax>");
    EXPECT_NE(validate(broken).status, 0);
}

}  // namespace
}  // namespace quillon::genapi
