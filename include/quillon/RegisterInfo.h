/// @file
/// The records that describe parameters, as Fg_getParameterInfo gives them. For C (C11) and C++.
#ifndef QUILLON_REGISTER_INFO_H
#define QUILLON_REGISTER_INFO_H

#include <stdint.h>

#include "quillon/Vocabulary.h"

/// What a record describes, and so which view of its value part holds.
enum RegisterType QUILLON_INT {
    RegisterTypeGroup = 0,
    RegisterTypeUInt = 1,
    RegisterTypeEnum = 3,
    RegisterTypeString = 5,
    RegisterTypeDouble = 6,
    RegisterTypeUIntField = 7,
    RegisterTypeDoubleField = 8,
    RegisterTypeUInt64 = 9,
    RegisterTypeInt = 11,
    RegisterTypeInt64 = 12,
    RegisterTypeIntField = 13,
};

/// Bits of RegisterInfo::accessFlags.
enum RegisterAccess QUILLON_INT {
    RegisterAccessReadable = 1,
    RegisterAccessWritable = 2,
    RegisterAccessCarried = 4,
};

typedef struct RegisterInfo RegisterInfo;
/// The name under which the same record is stored.
typedef struct RegisterInfo RegisterInfo_v2;

/// A group of records.
typedef struct RegisterInfoGroup {
    int32_t childCount;
    RegisterInfo** children;  ///< childCount borrowed pointers
    int32_t nextChildIndex;
} RegisterInfoGroup;

/// A number of 32 bits.
typedef struct RegisterInfoUInt {
    uint32_t min, max, inc;
    uint32_t value;  ///< always 0
} RegisterInfoUInt;

/// A signed number of 32 bits.
typedef struct RegisterInfoInt {
    int32_t min, max, inc;
    int32_t value;  ///< always 0
} RegisterInfoInt;

/// A number of 64 bits.
typedef struct RegisterInfoUInt64 {
    uint64_t min, max, inc;
} RegisterInfoUInt64;

/// A signed number of 64 bits.
typedef struct RegisterInfoInt64 {
    int64_t min, max, inc;
} RegisterInfoInt64;

/// A double.
typedef struct RegisterInfoDouble {
    double min, max, inc;
    double value;  ///< always 0
} RegisterInfoDouble;

/// A number whose values have names.
typedef struct RegisterInfoEnum {
    int32_t entryCount;
    char** entryLabels;  ///< words for people; an entry may be null
    int32_t* entryValues;
    int32_t value;      ///< always 0
    char** entryNames;  ///< symbolic names; an entry may be null
} RegisterInfoEnum;

/// A text.
typedef struct RegisterInfoString {
    uint64_t unused;
    char* value;  ///< null when the record was made without a text
} RegisterInfoString;

/// A table of numbers of 32 bits.
typedef struct RegisterInfoUIntField {
    uint32_t min, max;
    int32_t fieldSize;  ///< elements
    int32_t index;      ///< always 0
    uint32_t value;     ///< min
} RegisterInfoUIntField;

/// A table of signed numbers of 32 bits.
typedef struct RegisterInfoIntField {
    int32_t min, max;
    int32_t fieldSize;  ///< elements
    int32_t index;      ///< always 0
    int32_t value;      ///< min
} RegisterInfoIntField;

/// A table of doubles.
typedef struct RegisterInfoDoubleField {
    double min, max;
    int32_t fieldSize;  ///< elements
    int32_t index;      ///< always 0
    double value;       ///< min
} RegisterInfoDoubleField;

/// The view that holds is the one of the record's type.
typedef union RegisterInfoValue {
    unsigned char bytes[40];
    RegisterInfoGroup group;
    RegisterInfoUInt uint;
    RegisterInfoInt integer;
    RegisterInfoUInt64 uint64;
    RegisterInfoInt64 int64;
    RegisterInfoDouble real;
    RegisterInfoEnum enumeration;
    RegisterInfoString string;
    RegisterInfoUIntField uintField;
    RegisterInfoIntField intField;
    RegisterInfoDoubleField doubleField;
} RegisterInfoValue;

/// One description: a parameter or a group of them, as it is exchanged with the SDK library in both directions. The
/// layout is a contract of 176 bytes with pointers of 8 bytes and natural alignment.
///
/// A record holds no parameter value, only what a parameter may hold. It owns its texts and arrays; a group's children
/// are borrowed.
struct RegisterInfo {
    int32_t type;        ///< RegisterType
    int32_t childIndex;  ///< position among the parent's children
    char* label;         ///< text for people; for a group its name
    char* symbol;        ///< public parameter name; null for a group made by the store
    int32_t accessFlags;
    int32_t displayLevel;
    int32_t exported;  ///< 0 keeps the record out of the XML document
    int32_t parameterId;
    RegisterInfoValue as;
    RegisterInfo* next;      ///< next top-level record
    RegisterInfo* previous;  ///< record in front in the top-level chain
    int32_t depth;
    char* parentLabel;
    char* unit;
    int32_t listIndex;
    char* description;
    char* toolTip;
    char* genICamName;
    int32_t genICamVisibility;
    char** invalidatingNames;
    uint32_t invalidatingNameCount;
    uint32_t invalidatingNameCapacity;
};

#endif
