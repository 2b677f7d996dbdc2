#include "info/Catalogue.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <sstream>

#include "info/CatalogueTables.h"
#include "tests/info/Golden.h"

namespace quillon {
namespace {

std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

template <typename Integer>
std::string number(Integer value) {
    return std::to_string(value);
}

/// The text in quotes, bytes above 0x7F as \xNN.
std::string quoted(const char* text) {
    std::string result = "\"";
    for (const char* byte = text; *byte != '\0'; ++byte) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned char>(*byte));
        result += static_cast<unsigned char>(*byte) > 0x7F ? escaped : std::string(1, *byte);
    }
    return result + "\"";
}

template <typename Range>
std::string rangeText(const Range& range) {
    return " min " + number(range.min) + " max " + number(range.max) + " step " + number(range.inc);
}

/// The records as an indented listing, one line a group, a parameter or an entry.
class Listing {
public:
    static std::string of(const Fg_ParameterInfo& info) {
        Listing listing;
        for (const RegisterInfo* record = info.getRegisterInfo(0); record != nullptr; record = record->next) {
            listing.add(*record, "");
        }
        return listing.text.str();
    }

private:
    void add(const RegisterInfo& record, const std::string& indent) {
        if (record.type == RegisterTypeGroup) {
            text << indent << "group " << quoted(record.label) << "\n";
            for (int child = 0; child < record.as.group.childCount; ++child) {
                add(*record.as.group.children[child], indent + "  ");
            }
            return;
        }
        text << indent << kind(record) << " " << record.parameterId << " " << record.symbol << " "
             << quoted(record.label) << " access " << record.accessFlags << " level " << record.displayLevel << " unit "
             << quoted(record.unit) << values(record) << "\n";
        if (record.type == RegisterTypeEnum) {
            const RegisterInfoEnum& entries = record.as.enumeration;
            for (int entry = 0; entry < entries.entryCount; ++entry) {
                text << indent << "  " << entries.entryValues[entry] << " " << entries.entryNames[entry] << " "
                     << quoted(entries.entryLabels[entry]) << "\n";
            }
        }
    }

    static std::string kind(const RegisterInfo& record) {
        static const std::map<int, std::string> kinds{{1, "UInt"},      {3, "Enum"},   {5, "String"}, {6, "Double"},
                                                      {7, "UIntField"}, {9, "UInt64"}, {11, "Int"},   {12, "Int64"}};
        return kinds.at(record.type);
    }

    static std::string values(const RegisterInfo& record) {
        switch (record.type) {
            case RegisterTypeUInt: return rangeText(record.as.uint);
            case RegisterTypeInt: return rangeText(record.as.integer);
            case RegisterTypeUInt64: return rangeText(record.as.uint64);
            case RegisterTypeInt64: return rangeText(record.as.int64);
            case RegisterTypeDouble: return rangeText(record.as.real);
            case RegisterTypeString: return " text " + quoted(record.as.string.value);
            case RegisterTypeUIntField:
                return " elements " + number(record.as.uintField.fieldSize) + " min " +
                       number(record.as.uintField.min) + " max " + number(record.as.uintField.max);
            default: return "";
        }
    }

    std::ostringstream text;
};

class Catalogue : public testing::Test {
protected:
    void build(const CatalogueExtensions& extensions = {}) { buildCatalogue(info, recordsById, extensions); }

    Fg_ParameterInfo info{1};
    RegisterInfoById recordsById;
};

TEST_F(Catalogue, IsTheTreeOfTheGoldenListing) {
    build();

    const std::string listing = Listing::of(info);
    EXPECT_EQ(listing, golden("catalogue.txt", listing));
}

TEST_F(Catalogue, EntersEveryParameterAndNoGroupById) {
    build();

    ASSERT_EQ(recordsById.size(), 1U);
    EXPECT_EQ(recordsById.at(0).size(), catalogueParameters().size());
    for (const auto& [id, record] : recordsById.at(0)) {
        EXPECT_EQ(record->parameterId, id);
        EXPECT_NE(record->type, RegisterTypeGroup);
        EXPECT_EQ(record->exported, 1);
        EXPECT_EQ(record->listIndex, 0);
    }
}

TEST_F(Catalogue, MakesItsRecordsInTheOrderOfTheTablesWithEachGroupInFrontOfItsFirst) {
    build();

    std::vector<std::string> labels;
    for (const RegisterInfo* record : info.ownedRecords(0)) {
        labels.emplace_back(record->label);
    }
    // Three field records are owned twice.
    EXPECT_EQ(labels.size(), catalogueGroups().size() + catalogueParameters().size() + 3);
    const std::vector<std::string> first(labels.begin(), labels.begin() + 8);
    EXPECT_EQ(first, (std::vector<std::string>{"Camera Link HS", "Pulse Message Trigger Mapping", "CLHS Pulse Message",
                                               "Pixel Format", "Line order", "Sensor Geometry", "Vantage Point",
                                               "Sensor Width"}));
    EXPECT_EQ(labels.back(), "FPGA DNA");
}

TEST_F(Catalogue, BeginsWithTheGroupThatWasAddedLast) {
    build();

    EXPECT_STREQ(info.getRegisterInfo(0)->label, "Miscellaneous");
}

TEST_F(Catalogue, SetsNoTextsButLabelSymbolAndUnit) {
    build();

    for (const RegisterInfo* record : info.ownedRecords(0)) {
        EXPECT_EQ(record->description, nullptr);
        EXPECT_EQ(record->toolTip, nullptr);
        EXPECT_EQ(record->genICamName, nullptr);
        EXPECT_EQ(record->genICamVisibility, 0);
        EXPECT_EQ(record->invalidatingNameCount, 0U);
    }
}

TEST_F(Catalogue, SpellsMicrosecondsWithOneByte) {
    build();

    EXPECT_STREQ(recordsById.at(0).at(96)->unit, "\xB5s");
}

TEST_F(Catalogue, HoldsSeveralParametersOfOneCommand) {
    build();

    for (const int id : {8800, 200438, 900003}) {
        const RegisterInfo* record = recordsById.at(0).at(id);
        ASSERT_EQ(record->type, RegisterTypeEnum);
        ASSERT_EQ(record->as.enumeration.entryCount, 1);
        EXPECT_STREQ(record->as.enumeration.entryLabels[0], "Apply");
        EXPECT_EQ(record->as.enumeration.entryValues[0], 1);
        EXPECT_STREQ(record->as.enumeration.entryNames[0], "FG_APPLY");
    }
}

TEST_F(Catalogue, HoldsEmptyTextsAndNotNullForStringsAndUnitsWithoutText) {
    build();

    EXPECT_STREQ(recordsById.at(0).at(24010)->as.string.value, "");
    EXPECT_STREQ(recordsById.at(0).at(24010)->unit, "");
}

TEST_F(Catalogue, WithDirectRegisterAccessBeginsWithIt) {
    CatalogueExtensions extensions;
    extensions.directRegisterAccess = true;
    extensions.registers = {{"Control", 5, 32, 1}};
    build(extensions);

    EXPECT_STREQ(info.getRegisterInfo(0)->label, "Direct Register Access");
    EXPECT_STREQ(info.getRegisterInfo(0)->next->label, "Miscellaneous");
    EXPECT_EQ(recordsById.at(0).size(), catalogueParameters().size() + 1);
    EXPECT_STREQ(recordsById.at(0).at(1000005)->symbol, "DRA_Control");
}

TEST_F(Catalogue, WithDirectIxAccessBeginsWithItEvenInFrontOfTheRegisters) {
    Fg_ParameterInfo design(1);
    RegisterInfo* group = design.addGroupInfo(0, nullptr, "Buffer");
    design.addInfoUInt(group, "Width", "Buffer_Width", 0, 1, 1, 7, 1, 1, "", 7, 0);
    CatalogueExtensions extensions;
    extensions.directRegisterAccess = true;
    extensions.unwrappedIdByName = {{"DIXA_Buffer_Width", 2000007}};
    extensions.unwrappedHead = design.getRegisterInfo(0);
    build(extensions);

    EXPECT_STREQ(info.getRegisterInfo(0)->label, "Direct IX Access");
    EXPECT_STREQ(info.getRegisterInfo(0)->next->label, "Direct Register Access");
    EXPECT_STREQ(recordsById.at(0).at(4000007)->symbol, "DIXA_Buffer_Width");
}

TEST_F(Catalogue, WithoutDirectRegisterAccessLeavesItsRegistersOut) {
    CatalogueExtensions extensions;
    extensions.registers = {{"Control", 5, 32, 1}};
    build(extensions);

    EXPECT_STREQ(info.getRegisterInfo(0)->label, "Miscellaneous");
    EXPECT_EQ(recordsById.at(0).size(), catalogueParameters().size());
}

TEST(CatalogueTables, Hold156ParametersIn31Groups) {
    EXPECT_EQ(catalogueParameters().size(), 156U);
    EXPECT_EQ(catalogueGroups().size(), 31U);
}

TEST(CatalogueTables, HoldEveryIdAndSymbolOnce) {
    std::set<int> ids;
    std::set<std::string> symbols;
    for (const CatalogueParameter& parameter : catalogueParameters()) {
        ids.insert(parameter.id);
        symbols.insert(parameter.symbol);
    }

    EXPECT_EQ(ids.size(), catalogueParameters().size());
    EXPECT_EQ(symbols.size(), catalogueParameters().size());
}

}  // namespace
}  // namespace quillon
