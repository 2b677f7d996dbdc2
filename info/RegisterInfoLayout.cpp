// The layout of the records is a contract with the SDK library and its tools: every field stands where it stands.

#include <cstddef>
#include <type_traits>

#include "quillon/RegisterInfo.h"

static_assert(std::is_standard_layout_v<RegisterInfo> && std::is_trivially_copyable_v<RegisterInfo>);
static_assert(alignof(RegisterInfo) == 8);
static_assert(sizeof(RegisterInfo) == 176);
static_assert(offsetof(RegisterInfo, type) == 0);
static_assert(offsetof(RegisterInfo, childIndex) == 4);
static_assert(offsetof(RegisterInfo, label) == 8);
static_assert(offsetof(RegisterInfo, symbol) == 16);
static_assert(offsetof(RegisterInfo, accessFlags) == 24);
static_assert(offsetof(RegisterInfo, displayLevel) == 28);
static_assert(offsetof(RegisterInfo, exported) == 32);
static_assert(offsetof(RegisterInfo, parameterId) == 36);
static_assert(offsetof(RegisterInfo, as) == 40 && sizeof(RegisterInfoValue) == 40);
static_assert(offsetof(RegisterInfo, next) == 80);
static_assert(offsetof(RegisterInfo, previous) == 88);
static_assert(offsetof(RegisterInfo, depth) == 96);
static_assert(offsetof(RegisterInfo, parentLabel) == 104);
static_assert(offsetof(RegisterInfo, unit) == 112);
static_assert(offsetof(RegisterInfo, listIndex) == 120);
static_assert(offsetof(RegisterInfo, description) == 128);
static_assert(offsetof(RegisterInfo, toolTip) == 136);
static_assert(offsetof(RegisterInfo, genICamName) == 144);
static_assert(offsetof(RegisterInfo, genICamVisibility) == 152);
static_assert(offsetof(RegisterInfo, invalidatingNames) == 160);
static_assert(offsetof(RegisterInfo, invalidatingNameCount) == 168);
static_assert(offsetof(RegisterInfo, invalidatingNameCapacity) == 172);
static_assert(offsetof(RegisterInfoGroup, childCount) == 0);
static_assert(offsetof(RegisterInfoGroup, children) == 8);
static_assert(offsetof(RegisterInfoGroup, nextChildIndex) == 16);
static_assert(offsetof(RegisterInfoUInt, min) == 0 && offsetof(RegisterInfoInt, min) == 0);
static_assert(offsetof(RegisterInfoUInt, max) == 4 && offsetof(RegisterInfoInt, max) == 4);
static_assert(offsetof(RegisterInfoUInt, inc) == 8 && offsetof(RegisterInfoInt, inc) == 8);
static_assert(offsetof(RegisterInfoUInt, value) == 12 && offsetof(RegisterInfoInt, value) == 12);
static_assert(offsetof(RegisterInfoUInt64, min) == 0 && offsetof(RegisterInfoInt64, min) == 0);
static_assert(offsetof(RegisterInfoUInt64, max) == 8 && offsetof(RegisterInfoInt64, max) == 8);
static_assert(offsetof(RegisterInfoUInt64, inc) == 16 && offsetof(RegisterInfoInt64, inc) == 16);
static_assert(offsetof(RegisterInfoDouble, min) == 0);
static_assert(offsetof(RegisterInfoDouble, max) == 8);
static_assert(offsetof(RegisterInfoDouble, inc) == 16);
static_assert(offsetof(RegisterInfoDouble, value) == 24);
static_assert(offsetof(RegisterInfoEnum, entryCount) == 0);
static_assert(offsetof(RegisterInfoEnum, entryLabels) == 8);
static_assert(offsetof(RegisterInfoEnum, entryValues) == 16);
static_assert(offsetof(RegisterInfoEnum, value) == 24);
static_assert(offsetof(RegisterInfoEnum, entryNames) == 32);
static_assert(offsetof(RegisterInfoString, value) == 8);
static_assert(offsetof(RegisterInfoUIntField, max) == 4 && offsetof(RegisterInfoIntField, max) == 4);
static_assert(offsetof(RegisterInfoUIntField, fieldSize) == 8 && offsetof(RegisterInfoIntField, fieldSize) == 8);
static_assert(offsetof(RegisterInfoUIntField, index) == 12 && offsetof(RegisterInfoIntField, index) == 12);
static_assert(offsetof(RegisterInfoUIntField, value) == 16 && offsetof(RegisterInfoIntField, value) == 16);
static_assert(offsetof(RegisterInfoDoubleField, max) == 8);
static_assert(offsetof(RegisterInfoDoubleField, fieldSize) == 16);
static_assert(offsetof(RegisterInfoDoubleField, index) == 20);
static_assert(offsetof(RegisterInfoDoubleField, value) == 24);
