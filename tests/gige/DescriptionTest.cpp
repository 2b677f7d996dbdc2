#include <gmock/gmock.h>

#include <pugixml.hpp>

#include <set>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "gige/Description.h"
#include "quillon/PublicParameters.h"

namespace quillon::gige {
namespace {

class ServedDescription : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(own.load_string(built.applet.xml().c_str()));
        ASSERT_TRUE(served.load_string(description.document.c_str()));
    }
    pugi::xml_node node(const char* name) { return served.document_element().find_child_by_attribute("Name", name); }
    std::string text(const char* name, const char* child) { return node(name).child(child).text().get(); }

    client::testing::BuiltApplet built;
    Description description = describe(built.applet.xml());
    pugi::xml_document own;
    pugi::xml_document served;
};

TEST_F(ServedDescription, KeepsAllFeaturesUnderTheirNames) {
    std::size_t features = 0;
    for (const pugi::xml_node feature : own.document_element().children()) {
        const char* const name = feature.attribute("Name").value();
        if (std::string_view(feature.name()) == "Port") {
            continue;
        }
        EXPECT_STREQ(node(name).name(), feature.name()) << name;
        ++features;
    }
    EXPECT_GT(features, 300U);
    EXPECT_EQ(description.registers.size(), 150U);
}

TEST_F(ServedDescription, HasARegisterOfItsOwnForEachParameter) {
    std::set<std::uint32_t> addresses;
    for (const ParameterRegister& reg : description.registers) {
        EXPECT_EQ(reg.address % 4, 0U);
        EXPECT_GE(reg.address, FirstParameterAddress);
        EXPECT_LE(reg.length, MinimumOffset);
        EXPECT_TRUE(addresses.insert(reg.address).second);
        EXPECT_EQ(findPublicParameter(reg.parameter)->name, reg.name);
    }
}

TEST_F(ServedDescription, IsBigEndianThroughOnePort) {
    for (const pugi::xml_node feature : served.document_element().children()) {
        if (feature.child("pPort")) {
            EXPECT_STREQ(feature.child("pPort").text().get(), "Device") << feature.attribute("Name").value();
        }
        if (feature.child("Endianess")) {
            EXPECT_STREQ(feature.child("Endianess").text().get(), "BigEndian") << feature.attribute("Name").value();
        }
    }
    EXPECT_STREQ(node("Device").name(), "Port");
    EXPECT_FALSE(node("DevicePort"));
}

TEST_F(ServedDescription, LetsBeWrittenWhatCanBeInAnyMode) {
    EXPECT_EQ(text("FG_WIDTH_Reg", "AccessMode"), "RW");
    EXPECT_EQ(text("FG_PROCESSING_INVERT_Reg", "AccessMode"), "RW") << "though the lookup table is off";
    EXPECT_EQ(text("FG_SYSTEMMONITOR_FPGA_TEMPERATURE_Reg", "AccessMode"), "RO");
}

TEST_F(ServedDescription, ReadsLimitsFromTheDevice) {
    EXPECT_EQ(text("FG_WIDTH", "pMax"), "FG_WIDTH_Max");
    EXPECT_FALSE(node("FG_WIDTH").child("Max"));
    EXPECT_STREQ(node("FG_WIDTH_Max").name(), "IntReg");
    EXPECT_STREQ(node("FG_LINEPERIODE_Min").name(), "FloatReg");
}

TEST_F(ServedDescription, PointsItsStandardFeaturesAtNodesThatAreThere) {
    std::size_t pointers = 0;
    for (const pugi::xml_node feature : served.document_element().children()) {
        for (const char* const pointer : {"pValue", "pMin", "pMax", "pInc", "pFeature"}) {
            for (const pugi::xml_node target : feature.children(pointer)) {
                EXPECT_TRUE(node(target.text().get()))
                    << feature.attribute("Name").value() << ": " << target.text().get();
                ++pointers;
            }
        }
    }
    EXPECT_GT(pointers, 500U);
    for (const char* const name : {"Width",
                                   "Height",
                                   "OffsetX",
                                   "OffsetY",
                                   "PixelFormat",
                                   "PayloadSize",
                                   "SensorWidth",
                                   "ExposureTime",
                                   "AcquisitionLineRate",
                                   "AcquisitionFrameRate",
                                   "TriggerMode",
                                   "TriggerSource",
                                   "TriggerSoftware",
                                   "TriggerActivation",
                                   "Gain",
                                   "ReverseX",
                                   "ReverseY",
                                   "TestPattern",
                                   "DeviceVendorName",
                                   "AcquisitionStart",
                                   "AcquisitionStop",
                                   "AcquisitionMode",
                                   "TLParamsLocked",
                                   "UserSetSave",
                                   "UserSetLoad"}) {
        EXPECT_TRUE(node(name)) << name;
    }
    EXPECT_STREQ(node("Root").first_child().text().get(), "DeviceControl");
}

TEST_F(ServedDescription, IsMadeOfADocumentOfRegistersOnly) {
    EXPECT_THROW(describe(""), std::runtime_error);
    EXPECT_THROW(describe("<Other/>"), std::runtime_error);
    EXPECT_THROW(describe("<RegisterDescription/>"), std::runtime_error);
}

}  // namespace
}  // namespace quillon::gige
