#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace quillon {

/// What a record describes, and so which view of its value part holds.
enum RegisterType : std::int32_t {
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
enum RegisterAccess : std::int32_t {
    RegisterAccessReadable = 1,
    RegisterAccessWritable = 2,
    RegisterAccessCarried = 4,
};

/// One description: a parameter or a group of them, as it is exchanged with the SDK library in both directions. The
/// layout is a contract of 176 bytes with pointers of 8 bytes and natural alignment.
///
/// A record holds no parameter value, only what a parameter may hold. It owns its texts and arrays; a group's children
/// are borrowed.
struct RegisterInfo {
    struct Group {
        std::int32_t childCount;
        RegisterInfo** children;  ///< childCount borrowed pointers
        std::int32_t nextChildIndex;
    };

    struct UInt {
        std::uint32_t min, max, inc;
        std::uint32_t value;  ///< always 0
    };

    struct Int {
        std::int32_t min, max, inc;
        std::int32_t value;  ///< always 0
    };

    struct UInt64 {
        std::uint64_t min, max, inc;
    };

    struct Int64 {
        std::int64_t min, max, inc;
    };

    struct Double {
        double min, max, inc;
        double value;  ///< always 0
    };

    struct Enum {
        std::int32_t entryCount;
        char** entryLabels;  ///< words for people; an entry may be null
        std::int32_t* entryValues;
        std::int32_t value;  ///< always 0
        char** entryNames;   ///< symbolic names; an entry may be null
    };

    struct String {
        std::uint64_t unused;
        char* value;  ///< null when the record was made without a text
    };

    struct UIntField {
        std::uint32_t min, max;
        std::int32_t fieldSize;  ///< elements
        std::int32_t index;      ///< always 0
        std::uint32_t value;     ///< min
    };

    struct IntField {
        std::int32_t min, max;
        std::int32_t fieldSize;  ///< elements
        std::int32_t index;      ///< always 0
        std::int32_t value;      ///< min
    };

    struct DoubleField {
        double min, max;
        std::int32_t fieldSize;  ///< elements
        std::int32_t index;      ///< always 0
        double value;            ///< min
    };

    /// The view that holds is the one of the record's type.
    union ValuePart {
        unsigned char bytes[40];
        Group group;
        UInt uint;
        Int integer;
        UInt64 uint64;
        Int64 int64;
        Double real;
        Enum enumeration;
        String string;
        UIntField uintField;
        IntField intField;
        DoubleField doubleField;
    };

    std::int32_t type;        ///< RegisterType
    std::int32_t childIndex;  ///< position among the parent's children
    char* label;              ///< text for people; for a group its name
    char* symbol;             ///< public parameter name; null for a group made by the store
    std::int32_t accessFlags;
    std::int32_t displayLevel;
    std::int32_t exported;  ///< 0 keeps the record out of the XML document
    std::int32_t parameterId;
    ValuePart as;
    RegisterInfo* next;      ///< next top-level record
    RegisterInfo* previous;  ///< record in front in the top-level chain
    std::int32_t depth;
    char* parentLabel;
    char* unit;
    std::int32_t listIndex;
    char* description;
    char* toolTip;
    char* genICamName;
    std::int32_t genICamVisibility;
    char** invalidatingNames;
    std::uint32_t invalidatingNameCount;
    std::uint32_t invalidatingNameCapacity;
};

/// The name under which the same record is stored.
using RegisterInfo_v2 = RegisterInfo;

static_assert(std::is_standard_layout_v<RegisterInfo> && std::is_trivially_copyable_v<RegisterInfo>);
static_assert(sizeof(RegisterInfo) == 176 && alignof(RegisterInfo) == 8);
static_assert(offsetof(RegisterInfo, type) == 0);
static_assert(offsetof(RegisterInfo, childIndex) == 4);
static_assert(offsetof(RegisterInfo, label) == 8);
static_assert(offsetof(RegisterInfo, symbol) == 16);
static_assert(offsetof(RegisterInfo, accessFlags) == 24);
static_assert(offsetof(RegisterInfo, displayLevel) == 28);
static_assert(offsetof(RegisterInfo, exported) == 32);
static_assert(offsetof(RegisterInfo, parameterId) == 36);
static_assert(offsetof(RegisterInfo, as) == 40 && sizeof(RegisterInfo::ValuePart) == 40);
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

static_assert(offsetof(RegisterInfo::Group, childCount) == 0);
static_assert(offsetof(RegisterInfo::Group, children) == 8);
static_assert(offsetof(RegisterInfo::Group, nextChildIndex) == 16);
static_assert(offsetof(RegisterInfo::UInt, min) == 0 && offsetof(RegisterInfo::Int, min) == 0);
static_assert(offsetof(RegisterInfo::UInt, max) == 4 && offsetof(RegisterInfo::Int, max) == 4);
static_assert(offsetof(RegisterInfo::UInt, inc) == 8 && offsetof(RegisterInfo::Int, inc) == 8);
static_assert(offsetof(RegisterInfo::UInt, value) == 12 && offsetof(RegisterInfo::Int, value) == 12);
static_assert(offsetof(RegisterInfo::UInt64, min) == 0 && offsetof(RegisterInfo::Int64, min) == 0);
static_assert(offsetof(RegisterInfo::UInt64, max) == 8 && offsetof(RegisterInfo::Int64, max) == 8);
static_assert(offsetof(RegisterInfo::UInt64, inc) == 16 && offsetof(RegisterInfo::Int64, inc) == 16);
static_assert(offsetof(RegisterInfo::Double, min) == 0);
static_assert(offsetof(RegisterInfo::Double, max) == 8);
static_assert(offsetof(RegisterInfo::Double, inc) == 16);
static_assert(offsetof(RegisterInfo::Double, value) == 24);
static_assert(offsetof(RegisterInfo::Enum, entryCount) == 0);
static_assert(offsetof(RegisterInfo::Enum, entryLabels) == 8);
static_assert(offsetof(RegisterInfo::Enum, entryValues) == 16);
static_assert(offsetof(RegisterInfo::Enum, value) == 24);
static_assert(offsetof(RegisterInfo::Enum, entryNames) == 32);
static_assert(offsetof(RegisterInfo::String, value) == 8);
static_assert(offsetof(RegisterInfo::UIntField, max) == 4 && offsetof(RegisterInfo::IntField, max) == 4);
static_assert(offsetof(RegisterInfo::UIntField, fieldSize) == 8 && offsetof(RegisterInfo::IntField, fieldSize) == 8);
static_assert(offsetof(RegisterInfo::UIntField, index) == 12 && offsetof(RegisterInfo::IntField, index) == 12);
static_assert(offsetof(RegisterInfo::UIntField, value) == 16 && offsetof(RegisterInfo::IntField, value) == 16);
static_assert(offsetof(RegisterInfo::DoubleField, max) == 8);
static_assert(offsetof(RegisterInfo::DoubleField, fieldSize) == 16);
static_assert(offsetof(RegisterInfo::DoubleField, index) == 20);
static_assert(offsetof(RegisterInfo::DoubleField, value) == 24);

}  // namespace quillon
