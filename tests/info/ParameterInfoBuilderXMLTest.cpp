#include "info/ParameterInfoBuilderXML.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "info/Catalogue.h"
#include "tests/info/Golden.h"

namespace quillon {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string documentOf(const Fg_ParameterInfo& info, const std::string& appletName = "Quillon") {
    return ParameterInfoBuilderXML(info, {"Veltrix", appletName, "2.4"}, 0).build();
}

int occurrences(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

constexpr const char* EmptyDocumentHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
    "\n"
    "<RegisterDescription\n"
    "ModelName=\"A &amp; B\"\n"
    "VendorName=\"Veltrix\"\n"
    "StandardNameSpace=\"None\"\n"
    "SchemaMajorVersion=\"1\"\n"
    "SchemaMinorVersion=\"0\"\n"
    "SchemaSubMinorVersion=\"1\"\n"
    "MajorVersion=\"1\"\n"
    "MinorVersion=\"0\"\n"
    "SubMinorVersion=\"0\"\n"
    "ProductGuid=\"0\"\n"
    "VersionGuid=\"0\"\n"
    "xmlns=\"http://www.genicam.org/GenApi/Version_1_0\"\n"
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
    "xsi:schemaLocation=\"http://www.genicam.org/GenApi/Version_1_0 GenApiSchema_Version_1_0.xsd\">\n";

class ParameterInfoBuilder : public testing::Test {
protected:
    RegisterInfo* addNumber(RegisterInfo* parent, const char* symbol) {
        return info.addInfoUInt(parent, "Number", symbol, 0, 9, 1, 7, 1, 1, "", 1, 0);
    }

    Fg_ParameterInfo info{1};
};

TEST_F(ParameterInfoBuilder, WritesAnEmptyListAsAnEmptyDescription) {
    EXPECT_EQ(documentOf(info, "A & B"), std::string(EmptyDocumentHead) +
                                             "<Category Name='Root' NameSpace='Standard' >\n"
                                             "</Category>\n"
                                             "<Port Name=\"DevicePort\"></Port>\n"
                                             "</RegisterDescription>\n");
}

TEST_F(ParameterInfoBuilder, WritesASmallStoreByteForByte) {
    RegisterInfo* older = info.addGroupInfo(0, nullptr, "Line Trigger / ExSync");
    RegisterInfo* newer = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* inner = info.addGroupInfo(0, newer, "Inner");
    RegisterInfo* choice = info.addInfoEnum(older, "Switch", "FG_SWITCH", 2, 1, 1, 1, "", 8300, 0);
    info.addEnumNameValue(choice, 0, "On", 1, "FG_ON");
    info.addEnumNameValue(choice, 1, "Off", 0, "FG_OFF");
    info.addInfoString(newer, "File", "FG_FILE", "*.lut", 3, 1, 1, "", 300000, 0);
    info.addInfoInt(inner, "Output", "FG_OUTPUT", -1, 3, 1, 7, 1, 1, "", 14020, 0);
    info.addInfoDouble(inner, "Delay->Exsync", "FG_DELAY", 0.0, 1048.568, 0.008, 2, 2, 1, "\xB5s", 8900, 0);

    EXPECT_EQ(documentOf(info, "A & B"), std::string(EmptyDocumentHead) +
                                             "<IntReg Name=\"FG_OUTPUT_Reg\">\n"
                                             "<Address>14020</Address>\n"
                                             "<Length>4</Length>\n"
                                             "<AccessMode>RW</AccessMode>\n"
                                             "<pPort>DevicePort</pPort>\n"
                                             "<Sign>Signed</Sign>\n"
                                             "<Endianess>LittleEndian</Endianess>\n"
                                             "</IntReg>\n"
                                             "<Integer Name='FG_OUTPUT'>\n"
                                             "<Description>Output</Description>\n"
                                             "<pValue>FG_OUTPUT_Reg</pValue>\n"
                                             "<Min>18446744073709551615</Min>\n"
                                             "<Max>3</Max>\n"
                                             "<Inc>1</Inc>\n"
                                             "</Integer>\n\r"
                                             "<FloatReg Name=\"FG_DELAY_Reg\">\n"
                                             "<Address>8900</Address>\n"
                                             "<Length>8</Length>\n"
                                             "<AccessMode>WO</AccessMode>\n"
                                             "<pPort>DevicePort</pPort>\n"
                                             "<Endianess>LittleEndian</Endianess>\n"
                                             "</FloatReg>\n"
                                             "<Float Name=\"FG_DELAY\">\n"
                                             "<Description>Delay-&gt;Exsync</Description>\n"
                                             "<pValue>FG_DELAY_Reg</pValue>\n"
                                             "<Min>0</Min>\n"
                                             "<Max>1048.568</Max>\n"
                                             "</Float>\n\r"
                                             "<StringReg Name=\"FG_FILE\">\n"
                                             "<Description>File</Description>\n"
                                             "<Address>300000</Address>\n"
                                             "<Length>4096</Length>\n"
                                             "<AccessMode>RW</AccessMode>\n"
                                             "<pPort>DevicePort</pPort>\n"
                                             "</StringReg>\n\r"
                                             "<Enumeration Name='FG_SWITCH'>\n"
                                             "<Description>Switch</Description>\n"
                                             "<EnumEntry Name=\"FG_OFF\">\n"
                                             "<Value>0</Value>\n"
                                             "</EnumEntry>\n"
                                             "<EnumEntry Name=\"FG_ON\">\n"
                                             "<Value>1</Value>\n"
                                             "</EnumEntry>\n"
                                             "<pValue>FG_SWITCH_Reg</pValue>\n"
                                             "</Enumeration>\n"
                                             "\n"
                                             "<IntReg Name=\"FG_SWITCH_Reg\">\n"
                                             "<Address>8300</Address>\n"
                                             "<Length>4</Length>\n"
                                             "<AccessMode>RO</AccessMode>\n"
                                             "<pPort>DevicePort</pPort>\n"
                                             "<Sign>Unsigned</Sign>\n"
                                             "<Endianess>LittleEndian</Endianess>\n"
                                             "</IntReg>\n\r"
                                             "<Category Name='Root' NameSpace='Standard' >\n"
                                             "<pFeature>Inner</pFeature>\n"
                                             "<pFeature>Group</pFeature>\n"
                                             "<pFeature>LineTriggerExSync</pFeature>\n"
                                             "</Category>\n"
                                             "<Category Name='Inner'  >\n"
                                             "<pFeature>FG_OUTPUT</pFeature>\n"
                                             "<pFeature>FG_DELAY</pFeature>\n"
                                             "</Category>\n"
                                             "<Category Name='Group'  >\n"
                                             "<pFeature>FG_FILE</pFeature>\n"
                                             "</Category>\n"
                                             "<Category Name='LineTriggerExSync'  >\n"
                                             "<pFeature>FG_SWITCH</pFeature>\n"
                                             "</Category>\n"
                                             "<Port Name=\"DevicePort\"></Port>\n"
                                             "</RegisterDescription>\n");
}

TEST_F(ParameterInfoBuilder, LeavesOutKindsThatTheDocumentDoesNotShow) {
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    info.addInfoUInt64(group, "L", "FG_1", 0, 1, 1, 7, 1, 1, "", 1, 0);
    info.addInfoInt64(group, "L", "FG_2", 0, 1, 1, 7, 1, 1, "", 2, 0);
    info.addInfoUIntField(group, "L", "FG_3", 4, 0, 1, 1, 7, 1, 1, "", 3, 0);
    info.addInfoIntField(group, "L", "FG_4", 4, 0, 1, 1, 7, 1, 1, "", 4, 0);
    info.addInfoDoubleField(group, "L", "FG_5", 4, 0, 1, 1, 7, 1, 1, "", 5, 0);

    EXPECT_THAT(documentOf(info),
                HasSubstr("Version_1_0.xsd\">\n<Category Name='Root' NameSpace='Standard' >\n</Category>\n<Port "));
}

TEST_F(ParameterInfoBuilder, LeavesOutRecordsThatAreNotExportedAndDirectRegisters) {
    info.addInfoUInt(info.addGroupInfo(0, nullptr, "Group"), "L", "FG_HIDDEN", 0, 1, 1, 7, 1, 0, "", 1, 0);
    addNumber(info.addGroupInfo(0, nullptr, "Direct Register Access"), "DRA_REGISTER");

    EXPECT_THAT(documentOf(info),
                HasSubstr("Version_1_0.xsd\">\n<Category Name='Root' NameSpace='Standard' >\n</Category>\n<Port "));
}

TEST_F(ParameterInfoBuilder, ShowsRecordsBelowTheDirectRegistersGroup) {
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Direct Register Access");
    addNumber(info.addGroupInfo(0, group, "Inner"), "FG_INNER");

    EXPECT_THAT(documentOf(info), HasSubstr("<Integer Name='FG_INNER'>"));
}

TEST_F(ParameterInfoBuilder, FilesParametersOfAGroupWithoutANameUnderTheRoot) {
    addNumber(info.addGroupInfo(0, nullptr, ""), "FG_NUMBER");

    EXPECT_THAT(
        documentOf(info),
        HasSubstr("<Category Name='Root' NameSpace='Standard' >\n<pFeature>FG_NUMBER</pFeature>\n</Category>\n<Port "));
}

TEST_F(ParameterInfoBuilder, ListsCategoriesInFrontOfFeatures) {
    addNumber(info.addGroupInfo(0, nullptr, "Named"), "FG_SECOND");
    addNumber(info.addGroupInfo(0, nullptr, ""), "FG_FIRST");

    EXPECT_THAT(documentOf(info), HasSubstr("<Category Name='Root' NameSpace='Standard' >\n"
                                            "<pFeature>Named</pFeature>\n"
                                            "<pFeature>FG_FIRST</pFeature>\n"
                                            "</Category>\n"));
}

TEST_F(ParameterInfoBuilder, JoinsGroupsWhoseFilteredNamesAgree) {
    addNumber(info.addGroupInfo(0, nullptr, "White Balance"), "FG_SECOND");
    addNumber(info.addGroupInfo(0, nullptr, "White-Balance"), "FG_FIRST");

    EXPECT_THAT(documentOf(info), HasSubstr("<pFeature>WhiteBalance</pFeature>\n"
                                            "</Category>\n"
                                            "<Category Name='WhiteBalance'  >\n"
                                            "<pFeature>FG_FIRST</pFeature>\n"
                                            "<pFeature>FG_SECOND</pFeature>\n"
                                            "</Category>\n"));
}

TEST_F(ParameterInfoBuilder, FiltersTheNameOfAFeatureTwice) {
    addNumber(info.addGroupInfo(0, nullptr, "Group"), "-1a");

    EXPECT_THAT(documentOf(info), HasSubstr("<pFeature>a</pFeature>\n"));
}

TEST_F(ParameterInfoBuilder, TakesTheLastOfSeveralEntriesWithOneValueAndNoneWithoutAName) {
    RegisterInfo* choice = info.addInfoEnum(info.addGroupInfo(0, nullptr, "Group"), "L", "FG_E", 4, 7, 1, 1, "", 1, 0);
    info.addEnumNameValue(choice, 0, "First", 5, "FIRST");
    info.addEnumNameValue(choice, 1, "Nameless", 5, nullptr);
    info.addEnumNameValue(choice, 2, "Last", 5, "LAST");

    EXPECT_THAT(documentOf(info), HasSubstr("<Description>L</Description>\n"
                                            "<EnumEntry Name=\"LAST\">\n"
                                            "<Value>5</Value>\n"
                                            "</EnumEntry>\n"
                                            "<pValue>FG_E_Reg</pValue>\n"));
}

TEST_F(ParameterInfoBuilder, WritesAParameterWithoutAGroupUnderTheRoot) {
    info.add(info.create(0, RegisterTypeString, "L", "FG_BARE", 1, 7, 1, 1, ""), 0);

    EXPECT_THAT(documentOf(info), HasSubstr("<pFeature>FG_BARE</pFeature>\n"));
}

TEST_F(ParameterInfoBuilder, FilesEveryFeatureAgainInASecondRun) {
    addNumber(info.addGroupInfo(0, nullptr, "Group"), "FG_NUMBER");
    ParameterInfoBuilderXML builder(info, {"Veltrix", "Quillon", "2.4"}, 0);

    EXPECT_EQ(occurrences(builder.build(), "<pFeature>FG_NUMBER</pFeature>\n"), 1);
    EXPECT_EQ(occurrences(builder.build(), "<pFeature>FG_NUMBER</pFeature>\n"), 2);
}

class CatalogueDocument : public ParameterInfoBuilder {
protected:
    CatalogueDocument() { buildCatalogue(info, recordsById, {}); }

    RegisterInfoById recordsById;
};

TEST_F(CatalogueDocument, IsTheGoldenDocument) {
    const std::string document = documentOf(info);

    EXPECT_EQ(document, golden("catalogue.xml", document));
}

TEST_F(CatalogueDocument, Renders150ParametersFromTheFirstDebugInputToTheLineOrder) {
    const std::string document = documentOf(info);

    EXPECT_EQ(occurrences(document, "\n\r"), 150);
    EXPECT_THAT(document, HasSubstr("Version_1_0.xsd\">\n<Enumeration Name='FG_DEBUGINENABLE'>\n"));
    EXPECT_GT(document.find("<Enumeration Name='FG_LINEORDER'>"), document.find("<Enumeration Name='FG_PIXELFORMAT'>"));
    const std::size_t last = document.rfind("\n\r");
    const std::string lastRegister = document.substr(document.rfind("<IntReg", last), 35);
    EXPECT_THAT(lastRegister, HasSubstr("FG_LINEORDER_Reg"));
}

TEST_F(CatalogueDocument, NamesThirtyCategoriesInTheOrderOfTheirFirstUse) {
    EXPECT_THAT(documentOf(info), HasSubstr("<Category Name='Root' NameSpace='Standard' >\n"
                                            "<pFeature>Input</pFeature>\n"
                                            "<pFeature>Output</pFeature>\n"
                                            "<pFeature>Debug</pFeature>\n"
                                            "<pFeature>Miscellaneous</pFeature>\n"
                                            "<pFeature>CameraSimulator</pFeature>\n"
                                            "<pFeature>OutputFormat</pFeature>\n"
                                            "<pFeature>Processing</pFeature>\n"
                                            "<pFeature>AppletProperties</pFeature>\n"
                                            "<pFeature>LookupTable</pFeature>\n"
                                            "<pFeature>WhiteBalance</pFeature>\n"
                                            "<pFeature>ImageSelector</pFeature>\n"
                                            "<pFeature>Overflow</pFeature>\n"
                                            "<pFeature>SignalAnalyzer</pFeature>\n"
                                            "<pFeature>Flash</pFeature>\n"
                                            "<pFeature>SoftwareTrigger</pFeature>\n"
                                            "<pFeature>ImageTriggerInput</pFeature>\n"
                                            "<pFeature>ImageTriggerFlash</pFeature>\n"
                                            "<pFeature>Downscale</pFeature>\n"
                                            "<pFeature>LineTriggerInput</pFeature>\n"
                                            "<pFeature>ShaftEncoderABFilter</pFeature>\n"
                                            "<pFeature>ExSyncOutput</pFeature>\n"
                                            "<pFeature>LineTriggerExSync</pFeature>\n"
                                            "<pFeature>Camera</pFeature>\n"
                                            "<pFeature>GPO</pFeature>\n"
                                            "<pFeature>GPI</pFeature>\n"
                                            "<pFeature>EventSource</pFeature>\n"
                                            "<pFeature>ROI</pFeature>\n"
                                            "<pFeature>SensorGeometry</pFeature>\n"
                                            "<pFeature>PulseMessageTriggerMapping</pFeature>\n"
                                            "<pFeature>CameraLinkHS</pFeature>\n"
                                            "</Category>\n"));
}

TEST_F(CatalogueDocument, DoesNotNameFieldsAndParametersOf64Bits) {
    const std::string document = documentOf(info);

    EXPECT_THAT(document, Not(HasSubstr("FG_LUT_VALUE_")));
    EXPECT_THAT(document, Not(HasSubstr("FG_SYSTEMMONITOR_FPGA_DNA")));
    EXPECT_THAT(document, Not(HasSubstr("FG_DEBUGWRITEPIXEL")));
    EXPECT_THAT(document, Not(HasSubstr("FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE")));
}

TEST_F(CatalogueDocument, ShowsTheRangesAndFlagsOfTheMoment) {
    ParameterRecords records(recordsById);
    records.setMaximum(100, std::uint32_t{16380});
    records.setAccessFlags(100, 1);

    EXPECT_THAT(documentOf(info), HasSubstr("<IntReg Name=\"FG_WIDTH_Reg\">\n"
                                            "<Address>100</Address>\n"
                                            "<Length>4</Length>\n"
                                            "<AccessMode>RO</AccessMode>\n"
                                            "<pPort>DevicePort</pPort>\n"
                                            "<Sign>Signed</Sign>\n"
                                            "<Endianess>LittleEndian</Endianess>\n"
                                            "</IntReg>\n"
                                            "<Integer Name='FG_WIDTH'>\n"
                                            "<Description>Width</Description>\n"
                                            "<pValue>FG_WIDTH_Reg</pValue>\n"
                                            "<Min>4</Min>\n"
                                            "<Max>16380</Max>\n"
                                            "<Inc>4</Inc>\n"
                                            "</Integer>\n\r"));
}

TEST_F(CatalogueDocument, ShowsWholeFieldsWhileTheyChange) {
    std::thread writer([&] {
        ParameterRecords records(recordsById);
        for (std::uint32_t change = 0; change < 1000; ++change) {
            records.setMaximum(100, change % 2 == 0 ? 16384U : 4U);
            records.setMaximum(10030, change % 2 == 0 ? 1048.568 : 0.512);
            records.setAccessFlags(100, change % 2 == 0 ? 7 : 1);
        }
    });
    for (int run = 0; run < 20; ++run) {
        const std::string document = documentOf(info);
        const std::size_t exposure = document.find("<pValue>FG_LINEEXPOSURE_Reg</pValue>\n");
        EXPECT_THAT(document.substr(exposure, 100),
                    testing::AnyOf(HasSubstr("<Max>1048</Max>"), HasSubstr("<Max>1048.568</Max>"),
                                   HasSubstr("<Max>0.512</Max>")));
    }
    writer.join();
}

TEST_F(CatalogueDocument, ShowsDirectIxAccessUnderItsOwnGroupsAndNoRegisters) {
    Fg_ParameterInfo design(1);
    RegisterInfo* group = design.addGroupInfo(0, nullptr, "Buffer 0");
    design.addInfoUInt(group, "Width", "Buffer_Width", 0, 1, 1, 7, 1, 1, "", 7, 0);
    Fg_ParameterInfo extended(1);
    RegisterInfoById extendedById;
    CatalogueExtensions extensions;
    extensions.directRegisterAccess = true;
    extensions.registers = {{"Control", 5, 32, 1}};
    extensions.unwrappedIdByName = {{"DIXA_Buffer_Width", 2000007}};
    extensions.unwrappedHead = design.getRegisterInfo(0);
    buildCatalogue(extended, extendedById, extensions);
    const std::string document = documentOf(extended);

    EXPECT_EQ(occurrences(document, "\n\r"), occurrences(documentOf(info), "\n\r") + 1);
    EXPECT_THAT(document, HasSubstr("<Category Name='Root' NameSpace='Standard' >\n<pFeature>Buffer0</pFeature>\n"));
    EXPECT_THAT(document,
                HasSubstr("<Category Name='Buffer0'  >\n<pFeature>DIXA_Buffer_Width</pFeature>\n</Category>\n"));
    EXPECT_THAT(document, HasSubstr("<Address>2000007</Address>\n"));
    EXPECT_THAT(document, Not(HasSubstr("DRA_")));
}

}  // namespace
}  // namespace quillon
