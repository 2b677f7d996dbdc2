// The applet and the software board's SDK have a header each, on purpose: neither may know the other's. Here the two
// views are laid beside each other.

#include <gtest/gtest.h>

#include "quillon/quillon.h"
#include "softboard/fglib5/InfoTree.h"
#include "tests/quillon/SdkView.h"

namespace {

TEST(SdkAgreement, ValueTypes) {
    EXPECT_EQ(sdkValueTypes(), (std::map<std::string, int>{{"Int32", FgTypeInt32},
                                                           {"UInt32", FgTypeUInt32},
                                                           {"Int64", FgTypeInt64},
                                                           {"UInt64", FgTypeUInt64},
                                                           {"Double", FgTypeDouble},
                                                           {"CharBuffer", FgTypeCharBuffer},
                                                           {"String", FgTypeString},
                                                           {"FieldAccess", FgTypeFieldAccess},
                                                           {"FieldInt", FgTypeFieldInt}}));
}

TEST(SdkAgreement, RecordsOfTableEntries) {
    EXPECT_EQ(sdkFieldRecords(),
              (std::map<std::string, std::size_t>{{"int", sizeof(FieldParameterInt_s)},
                                                  {"int.value", offsetof(FieldParameterInt_s, value)},
                                                  {"int.index", offsetof(FieldParameterInt_s, index)},
                                                  {"access", sizeof(FieldParameterAccess)},
                                                  {"access.vtype", offsetof(FieldParameterAccess, vtype)},
                                                  {"access.index", offsetof(FieldParameterAccess, index)},
                                                  {"access.count", offsetof(FieldParameterAccess, count)},
                                                  {"access.value", offsetof(FieldParameterAccess, value)}}));
}

TEST(SdkAgreement, FunctionsThatAreForwarded) {
    EXPECT_EQ(sdkFunctions(),
              (std::map<std::string, Shape>{
                  {"Fg_setParameterWithType", shapeOf<decltype(Fg_setParameterWithType)>()},
                  {"Fg_getParameterWithType", shapeOf<decltype(Fg_getParameterWithType)>()},
                  {"Fg_freeParameterStringWithType", shapeOf<decltype(Fg_freeParameterStringWithType)>()},
                  {"Fg_getParameterIdByName", shapeOf<decltype(Fg_getParameterIdByName)>()},
                  {"Fg_getParameterInfo", shapeOf<decltype(Fg_getParameterInfo)>()},
                  {"Fg_saveConfig", shapeOf<decltype(Fg_saveConfig)>()},
                  {"Fg_loadConfig", shapeOf<decltype(Fg_loadConfig)>()},
                  {"Fg_getAppletId", shapeOf<decltype(Fg_getAppletId)>()},
                  {"Fg_AcquireEx", shapeOf<decltype(Fg_AcquireEx)>()},
                  {"Fg_stopAcquireEx", shapeOf<decltype(Fg_stopAcquireEx)>()},
                  {"Fg_getStatusEx", shapeOf<decltype(Fg_getStatusEx)>()},
                  {"Fg_getLastPicNumberEx", shapeOf<decltype(Fg_getLastPicNumberEx)>()},
                  {"Fg_getLastPicNumberBlockingEx", shapeOf<decltype(Fg_getLastPicNumberBlockingEx)>()},
                  {"Fg_FreeGrabber", shapeOf<decltype(Fg_FreeGrabber)>()},
                  {"Fg_getLastErrorNumber", shapeOf<decltype(Fg_getLastErrorNumber)>()}}));
}

TEST(SdkAgreement, ParameterRecords) {
    using softboard::InfoRecord;
    EXPECT_EQ(sizeof(InfoRecord), sizeof(RegisterInfo));
    EXPECT_EQ(offsetof(InfoRecord, type), offsetof(RegisterInfo, type));
    EXPECT_EQ(offsetof(InfoRecord, label), offsetof(RegisterInfo, label));
    EXPECT_EQ(offsetof(InfoRecord, symbol), offsetof(RegisterInfo, symbol));
    EXPECT_EQ(offsetof(InfoRecord, accessFlags), offsetof(RegisterInfo, accessFlags));
    EXPECT_EQ(offsetof(InfoRecord, parameterId), offsetof(RegisterInfo, parameterId));
    EXPECT_EQ(offsetof(InfoRecord, value), offsetof(RegisterInfo, as));
    EXPECT_EQ(offsetof(InfoRecord, next), offsetof(RegisterInfo, next));
    EXPECT_EQ(offsetof(InfoRecord::GroupPart, children), offsetof(RegisterInfoGroup, children));
    EXPECT_EQ(offsetof(InfoRecord::EnumPart, entryLabels), offsetof(RegisterInfoEnum, entryLabels));
    EXPECT_EQ(offsetof(InfoRecord::EnumPart, entryValues), offsetof(RegisterInfoEnum, entryValues));
    EXPECT_EQ(offsetof(InfoRecord::EnumPart, entryNames), offsetof(RegisterInfoEnum, entryNames));
    EXPECT_EQ(offsetof(InfoRecord::StringPart, value), offsetof(RegisterInfoString, value));
    EXPECT_EQ(offsetof(InfoRecord::FieldPart, fieldSize), offsetof(RegisterInfoUIntField, fieldSize));
}

}  // namespace
