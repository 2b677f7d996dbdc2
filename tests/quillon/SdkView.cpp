#include "tests/quillon/SdkView.h"

#include "softboard/fglib5.h"

std::map<std::string, int> sdkValueTypes() {
    return {{"Int32", FG_PARAM_TYPE_INT32},       {"UInt32", FG_PARAM_TYPE_UINT32},
            {"Int64", FG_PARAM_TYPE_INT64},       {"UInt64", FG_PARAM_TYPE_UINT64},
            {"Double", FG_PARAM_TYPE_DOUBLE},     {"CharBuffer", FG_PARAM_TYPE_TEXT},
            {"String", FG_PARAM_TYPE_NEW_TEXT},   {"FieldAccess", FG_PARAM_TYPE_FIELD},
            {"FieldInt", FG_PARAM_TYPE_FIELD_INT}};
}

std::map<std::string, std::size_t> sdkFieldRecords() {
    return {{"int", sizeof(fg_field_int)},
            {"int.value", offsetof(fg_field_int, value)},
            {"int.index", offsetof(fg_field_int, index)},
            {"access", sizeof(fg_field_access)},
            {"access.vtype", offsetof(fg_field_access, vtype)},
            {"access.index", offsetof(fg_field_access, index)},
            {"access.count", offsetof(fg_field_access, count)},
            {"access.value", offsetof(fg_field_access, value)}};
}

std::map<std::string, Shape> sdkFunctions() {
    return {{"Fg_setParameterWithType", shapeOf<decltype(Fg_setParameterWithType)>()},
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
            {"Fg_getLastErrorNumber", shapeOf<decltype(Fg_getLastErrorNumber)>()}};
}
