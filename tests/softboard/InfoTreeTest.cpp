#include "softboard/fglib5/InfoTree.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include "softboard/src/DesignDescription.h"
#include "tests/softboard/OpenBoard.h"

namespace {

using softboard::InfoRecord;

class InfoTree : public OpenBoard {
protected:
    /// The parameters of the design and the 10 of the SDK.
    static std::size_t describedCount() {
        return softboard::parseDesign(fileContent(DESIGN_FILE))->parameters.size() + 10;
    }

    InfoRecord* head() { return static_cast<InfoRecord*>(Fg_getParameterInfo(fg, 0)); }

    static InfoRecord* child(InfoRecord* group, const std::string& label) {
        for (int index = 0; index < group->value.group.childCount; ++index) {
            if (label == group->value.group.children[index]->label) {
                return group->value.group.children[index];
            }
        }
        return nullptr;
    }

    /// The record at the end of a path of labels from the head; null if a part is missing.
    InfoRecord* at(const std::vector<std::string>& path) {
        InfoRecord* record = head();
        for (std::size_t part = 0; record != nullptr && part < path.size(); ++part) {
            record = child(record, path[part]);
        }
        return record;
    }

    static void collect(InfoRecord* group, std::map<std::string, InfoRecord*>& parameters) {
        for (int index = 0; index < group->value.group.childCount; ++index) {
            InfoRecord* const record = group->value.group.children[index];
            if (record->type == 0) {
                collect(record, parameters);
            } else {
                parameters[record->symbol] = record;
            }
        }
    }

    std::map<std::string, InfoRecord*> all() {
        std::map<std::string, InfoRecord*> parameters;
        for (InfoRecord* group = head(); group != nullptr; group = group->next) {
            collect(group, parameters);
        }
        return parameters;
    }
};

TEST_F(InfoTree, IsGivenForPortZeroOnly) {
    EXPECT_NE(Fg_getParameterInfo(fg, 0), nullptr);
    EXPECT_EQ(Fg_getParameterInfo(fg, 1), nullptr);
    EXPECT_EQ(Fg_getParameterInfo(fg, -1), nullptr);
}

TEST_F(InfoTree, StaysInPlaceForTheLifeOfTheHandle) {
    EXPECT_EQ(Fg_getParameterInfo(fg, 0), Fg_getParameterInfo(fg, 0));
}

TEST_F(InfoTree, HasTheDesignAndTheSdkAtTheTop) {
    ASSERT_NE(head(), nullptr);
    EXPECT_STREQ(head()->label, "Device1");
    EXPECT_EQ(head()->previous, nullptr);
    ASSERT_NE(head()->next, nullptr);
    EXPECT_STREQ(head()->next->label, "Sdk");
    EXPECT_EQ(head()->next->previous, head());
    EXPECT_EQ(head()->next->next, nullptr);
}

TEST_F(InfoTree, NestsGroupsAsTheNamesDo) {
    InfoRecord* const buffer = at({"Process0", "Buffer_0"});
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(buffer->type, 0);
    EXPECT_STREQ(buffer->symbol, "Device1_Process0_Buffer_0");
    EXPECT_STREQ(buffer->parentLabel, "Process0");
    EXPECT_EQ(buffer->depth, 2);
    EXPECT_EQ(buffer->next, nullptr);
    EXPECT_EQ(buffer->value.group.children[5]->childIndex, 5);
    EXPECT_STREQ(buffer->value.group.children[5]->label, "XLength");
}

TEST_F(InfoTree, DescribesEveryParameterOnceUnderTheIdOfItsName) {
    const auto parameters = all();
    EXPECT_EQ(parameters.size(), describedCount());
    for (const auto& [symbol, record] : parameters) {
        EXPECT_EQ(id(symbol.c_str()), record->parameterId) << symbol;
    }
}

TEST_F(InfoTree, HasAUnitTextEverywhere) {
    for (const auto& [symbol, record] : all()) {
        EXPECT_NE(record->unit, nullptr) << symbol;
    }
    EXPECT_STREQ(all()[XLength]->unit, "pixel");
}

TEST_F(InfoTree, HasTheRecordTypeOfEachValueType) {
    auto parameters = all();
    EXPECT_EQ(parameters[XLength]->type, 1);
    EXPECT_EQ(parameters["Device1_Process0_Trigger_Trigger_ExsyncEnable"]->type, 3);
    EXPECT_EQ(parameters["Device1_Process0_AppletProperties_AppletUid"]->type, 5);
    EXPECT_EQ(parameters[ExsyncPeriod]->type, 6);
    EXPECT_EQ(parameters[RedTable]->type, 7);
    EXPECT_EQ(parameters["Device1_Process0_BoardStatus_FpgaDNA"]->type, 9);
    EXPECT_EQ(parameters["Device1_Process0_Buffer_0_YMirror"]->type, 11);
    EXPECT_EQ(parameters["Device1_Process1_Trigger_Analyzer_Difference_Status"]->type, 12);
}

TEST_F(InfoTree, PutsValuesAtTheirFixedOffsets) {
    auto parameters = all();
    const auto bytes = [&](const char* name) { return reinterpret_cast<const char*>(parameters[name]); };
    const auto word = [](const char* at) {
        std::uint32_t value = 0;
        std::memcpy(&value, at, sizeof value);
        return value;
    };
    EXPECT_EQ(word(bytes(XLength) + 36), 10005U);
    EXPECT_EQ(word(bytes(XLength) + 40), 4U);
    EXPECT_EQ(word(bytes(XLength) + 44), 16384U);
    EXPECT_EQ(word(bytes(XLength) + 48), 1U);
    double high = 0.0;
    std::memcpy(&high, bytes(ExsyncPeriod) + 48, sizeof high);
    EXPECT_EQ(high, 2097.144);
    std::uint64_t wide = 0;
    std::memcpy(&wide, bytes("Device1_Process0_BoardStatus_FpgaDNA") + 48, sizeof wide);
    EXPECT_EQ(wide, 144115188075855871U);
    EXPECT_EQ(word(bytes(RedTable) + 44), 65535U);
    EXPECT_EQ(word(bytes(RedTable) + 48), 16384U);
    const char* text = nullptr;
    std::memcpy(&text, bytes("Device1_Process0_OutputFormat_FG_FORMAT_Input0") + 48, sizeof text);
    EXPECT_STREQ(text, "FG_COL24");
}

TEST_F(InfoTree, ListsTheEntriesOfAnEnumeration) {
    InfoRecord* const source = all()["Device1_Process0_CameraSimulator_Enable_SelectSource"];
    ASSERT_EQ(source->type, 3);
    ASSERT_EQ(source->value.enumeration.entryCount, 2);
    EXPECT_STREQ(source->value.enumeration.entryLabels[1], "Simulator");
    EXPECT_EQ(source->value.enumeration.entryValues[1], 1);
    EXPECT_STREQ(source->value.enumeration.entryNames[1], "FG_CAMERASIMULATOR");
}

TEST_F(InfoTree, ShowsTheAccessRights) {
    auto parameters = all();
    EXPECT_EQ(parameters[Temperature]->accessFlags, 1);
    EXPECT_EQ(parameters["Device1_Process0_Trigger_Trigger_SoftwareTrgPulse"]->accessFlags, 2);
    EXPECT_EQ(parameters[XLength]->accessFlags, 3);
}

TEST_F(InfoTree, LeavesOutWhatIsHidden) {
    softboard_hide_parameter(board, XLength);
    EXPECT_EQ(all().count(XLength), 0U);
    EXPECT_EQ(all().size(), describedCount() - 1);
}

}  // namespace
