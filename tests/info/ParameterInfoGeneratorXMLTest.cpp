#include "info/ParameterInfoGeneratorXML.h"

#include <gtest/gtest.h>

#include "info/ParameterInfo.h"

namespace quillon {
namespace {

class ParameterInfoGenerator : public testing::Test {
protected:
    template <typename... Arguments>
    std::string generate(const RegisterInfo* record, const Arguments&... arguments) {
        std::string out;
        ParameterInfoGeneratorXML(out).infoGenerate(*record, arguments...);
        return out;
    }

    RegisterInfo* record(const char* label, const char* symbol, int id, int accessFlags) {
        return info.create(0, RegisterTypeUInt, label, symbol, id, accessFlags, 1, 1, "");
    }

    Fg_ParameterInfo info{1};
};

TEST_F(ParameterInfoGenerator, WritesTheRegisterBlock) {
    EXPECT_EQ(generate(record("Width", "FG_WIDTH", 100, 3), 4),
              "<Address>100</Address>\n"
              "<Length>4</Length>\n"
              "<AccessMode>RW</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n");
}

TEST_F(ParameterInfoGenerator, WritesNoAddressForIdZeroAndASignedOneBelow) {
    EXPECT_EQ(generate(record("Width", "FG_WIDTH", 0, 1), 4),
              "<Length>4</Length>\n"
              "<AccessMode>RO</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n");
    EXPECT_EQ(generate(record("Width", "FG_WIDTH", -7, 1), 4),
              "<Address>-7</Address>\n"
              "<Length>4</Length>\n"
              "<AccessMode>RO</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n");
}

TEST_F(ParameterInfoGenerator, TakesTheAccessModeFromTheTwoLowerFlags) {
    const auto modeOf = [&](int accessFlags) {
        const std::string block = generate(record("Width", "FG_WIDTH", 0, accessFlags), 4);
        return block.substr(19, block.find("<pPort>") - 19);
    };

    EXPECT_EQ(modeOf(0), "<AccessMode></AccessMode>\n");
    EXPECT_EQ(modeOf(1), "<AccessMode>RO</AccessMode>\n");
    EXPECT_EQ(modeOf(2), "<AccessMode>WO</AccessMode>\n");
    EXPECT_EQ(modeOf(3), "<AccessMode>RW</AccessMode>\n");
    EXPECT_EQ(modeOf(4), "<AccessMode></AccessMode>\n");
    EXPECT_EQ(modeOf(7), "<AccessMode>RW</AccessMode>\n");
    EXPECT_EQ(modeOf(-1), "<AccessMode>RW</AccessMode>\n");
}

TEST_F(ParameterInfoGenerator, WritesAnIntegerBehindItsRegister) {
    EXPECT_EQ(generate(record("A < B", "FG_'N'", 100, 7), std::uint64_t{9}, std::uint64_t{4}, std::uint64_t{16384},
                       std::uint64_t{2}),
              "<IntReg Name=\"FG_&apos;N&apos;_Reg\">\n"
              "<Address>100</Address>\n"
              "<Length>4</Length>\n"
              "<AccessMode>RW</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n"
              "<Sign>Signed</Sign>\n"
              "<Endianess>LittleEndian</Endianess>\n"
              "</IntReg>\n"
              "<Integer Name='FG_&apos;N&apos;'>\n"
              "<Description>A &lt; B</Description>\n"
              "<pValue>FG_&apos;N&apos;_Reg</pValue>\n"
              "<Min>4</Min>\n"
              "<Max>16384</Max>\n"
              "<Inc>2</Inc>\n"
              "</Integer>");
}

TEST_F(ParameterInfoGenerator, LeavesOutAnEmptyDescriptionAndAStepOfZero) {
    EXPECT_EQ(generate(record("", "FG_TRANSFER_LEN", 5210, 1), std::uint64_t{0}, std::uint64_t{0},
                       std::uint64_t{18446744073709551615U}, std::uint64_t{0}),
              "<IntReg Name=\"FG_TRANSFER_LEN_Reg\">\n"
              "<Address>5210</Address>\n"
              "<Length>8</Length>\n"
              "<AccessMode>RO</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n"
              "<Sign>Signed</Sign>\n"
              "<Endianess>LittleEndian</Endianess>\n"
              "</IntReg>\n"
              "<Integer Name='FG_TRANSFER_LEN'>\n"
              "<pValue>FG_TRANSFER_LEN_Reg</pValue>\n"
              "<Min>0</Min>\n"
              "<Max>18446744073709551615</Max>\n"
              "</Integer>");
}

TEST_F(ParameterInfoGenerator, WritesAFloatBehindItsRegister) {
    EXPECT_EQ(generate(record("Period", "FG_PERIOD", 96, 7), 1.0, 0.512, 34359738.36, 0.008),
              "<FloatReg Name=\"FG_PERIOD_Reg\">\n"
              "<Address>96</Address>\n"
              "<Length>8</Length>\n"
              "<AccessMode>RW</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n"
              "<Endianess>LittleEndian</Endianess>\n"
              "</FloatReg>\n"
              "<Float Name=\"FG_PERIOD\">\n"
              "<Description>Period</Description>\n"
              "<pValue>FG_PERIOD_Reg</pValue>\n"
              "<Min>0.512</Min>\n"
              "<Max>34359738.36</Max>\n"
              "</Float>");
}

TEST_F(ParameterInfoGenerator, WritesFloatsWithTwelveSignificantDigits) {
    const auto boundsOf = [&](double min, double max) {
        const std::string element = generate(record(nullptr, "F", 0, 1), 0.0, min, max, 0.0);
        const std::size_t start = element.find("<Min>");
        return element.substr(start, element.find("</Float>") - start);
    };

    EXPECT_EQ(boundsOf(0.1, 10000000.0), "<Min>0.1</Min>\n<Max>10000000</Max>\n");
    EXPECT_EQ(boundsOf(-1000.0, 3.9990234375), "<Min>-1000</Min>\n<Max>3.9990234375</Max>\n");
    EXPECT_EQ(boundsOf(2.2250738585072014e-308, 1.0 / 3.0),
              "<Min>2.22507385851e-308</Min>\n<Max>0.333333333333</Max>\n");
    EXPECT_EQ(boundsOf(123456789012.4, 1234567890123.0), "<Min>123456789012</Min>\n<Max>1.23456789012e+12</Max>\n");
    EXPECT_EQ(boundsOf(0.0001, 0.00001), "<Min>0.0001</Min>\n<Max>1e-05</Max>\n");
    EXPECT_EQ(boundsOf(-0.0, 0.0), "<Min>-0</Min>\n<Max>0</Max>\n");
}

TEST_F(ParameterInfoGenerator, WritesAStringAsARegisterOfItsOwn) {
    EXPECT_EQ(generate(record("Load \"File\"", "FG_FILE", 300000, 7)),
              "<StringReg Name=\"FG_FILE\">\n"
              "<Description>Load &quot;File&quot;</Description>\n"
              "<Address>300000</Address>\n"
              "<Length>4096</Length>\n"
              "<AccessMode>RW</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n"
              "</StringReg>");
}

TEST_F(ParameterInfoGenerator, WritesAnEnumerationInFrontOfItsRegister) {
    EXPECT_EQ(
        generate(record("Source", "FG_SOURCE", 8113, 7), 0, NamesByValue{{-1, "SOFTWARE"}, {0, "GPI"}, {1, "A&B"}}),
        "<Enumeration Name='FG_SOURCE'>\n"
        "<Description>Source</Description>\n"
        "<EnumEntry Name=\"SOFTWARE\">\n"
        "<Value>-1</Value>\n"
        "</EnumEntry>\n"
        "<EnumEntry Name=\"GPI\">\n"
        "<Value>0</Value>\n"
        "</EnumEntry>\n"
        "<EnumEntry Name=\"A&amp;B\">\n"
        "<Value>1</Value>\n"
        "</EnumEntry>\n"
        "<pValue>FG_SOURCE_Reg</pValue>\n"
        "</Enumeration>\n"
        "\n"
        "<IntReg Name=\"FG_SOURCE_Reg\">\n"
        "<Address>8113</Address>\n"
        "<Length>4</Length>\n"
        "<AccessMode>RW</AccessMode>\n"
        "<pPort>DevicePort</pPort>\n"
        "<Sign>Unsigned</Sign>\n"
        "<Endianess>LittleEndian</Endianess>\n"
        "</IntReg>");
}

TEST_F(ParameterInfoGenerator, WritesAnIntegerArrayAsSelectorAndSelectedRegister) {
    EXPECT_EQ(generate(record("Values", "FG_VALUES", 300009, 7), std::vector<std::uint64_t>(16384), std::uint64_t{0},
                       std::uint64_t{65535}, std::uint64_t{0}),
              "<Integer Name='FG_VALUES_Selector'>\n"
              "<Value>0</Value>\n"
              "<Min>0</Min>\n"
              "<Max>16383</Max>\n"
              "<Inc>1</Inc>\n"
              "<pSelect>FG_VALUES_Reg</pSelect>\n"
              "</Integer><IntReg Name=\"FG_VALUES_Reg\">\n"
              "<Address>300009</Address>\n"
              "<Length>4</Length>\n"
              "<AccessMode>RW</AccessMode>\n"
              "<pPort>DevicePort</pPort>\n"
              "<Sign>Signed</Sign>\n"
              "<Endianess>LittleEndian</Endianess>\n"
              "</IntReg>\n"
              "<Integer Name='FG_VALUES'>\n"
              "<Description>Values</Description>\n"
              "<pValue>FG_VALUES_Reg</pValue>\n"
              "<Min>0</Min>\n"
              "<Max>65535</Max>\n"
              "<Inc>0</Inc>\n"
              "</Integer>");
}

TEST_F(ParameterInfoGenerator, WritesTheTransferLengthWithEightBytesInAnArrayToo) {
    const std::string element = generate(record("L", "FG_TRANSFER_LEN", 5210, 1), std::vector<std::uint64_t>{1, 2},
                                         std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1});

    EXPECT_NE(element.find("<Length>8</Length>\n"), std::string::npos);
}

TEST_F(ParameterInfoGenerator, WritesAFloatArrayAsSelectorAndSelectedRegister) {
    EXPECT_EQ(
        generate(record("Gains", "FG_GAINS", 13000, 1), std::vector<double>{1.0, 2.0, 3.0}, 0.5, 3.9990234375, 0.25),
        "<Integer Name='FG_GAINS_Selector'>\n"
        "<Value>0</Value>\n"
        "<Min>0</Min>\n"
        "<Max>2</Max>\n"
        "<Inc>1</Inc>\n"
        "<pSelect>FG_GAINS_Reg</pSelect>\n"
        "</Integer><FloatReg Name=\"FG_GAINS_Reg\">\n"
        "<Address>13000</Address>\n"
        "<Length>8</Length>\n"
        "<AccessMode>RO</AccessMode>\n"
        "<pPort>DevicePort</pPort>\n"
        "<Endianess>LittleEndian</Endianess>\n"
        "</FloatReg>\n"
        "<Float Name=\"FG_GAINS\">\n"
        "<Description>Gains</Description>\n"
        "<pValue>FG_GAINS_Reg</pValue>\n"
        "<Min>0.5</Min>\n"
        "<Max>3.9990234375</Max>\n"
        "</Float>");
}

TEST_F(ParameterInfoGenerator, WritesTheLargestNumberAsTheLastElementOfAnEmptyArray) {
    const std::string element = generate(record("L", "FG_L", 1, 1), std::vector<double>{}, 0.0, 1.0, 1.0);

    EXPECT_NE(element.find("<Max>18446744073709551615</Max>\n<Inc>1</Inc>\n"), std::string::npos);
}

}  // namespace
}  // namespace quillon
