/// @file
/// The description of a board's parameters as the tree of records that the SDK hands out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "softboard/src/Parameter.h"

namespace softboard {

/// One record. Its layout is a contract with every reader of the tree.
struct InfoRecord {
    struct GroupPart {
        std::int32_t childCount;
        InfoRecord** children;
        std::int32_t nextChildIndex;
    };
    struct Integer32Part {
        std::uint32_t min, max, inc, value;
    };
    struct Integer64Part {
        std::uint64_t min, max, inc;
    };
    struct DoublePart {
        double min, max, inc, value;
    };
    struct EnumPart {
        std::int32_t entryCount;
        const char** entryLabels;
        std::int32_t* entryValues;
        std::int32_t value;
        const char** entryNames;
    };
    struct StringPart {
        std::uint64_t unused;
        const char* value;
    };
    struct FieldPart {
        std::uint32_t min, max;
        std::int32_t fieldSize, index;
        std::uint32_t value;
    };
    union ValuePart {
        GroupPart group;
        Integer32Part integer32;
        Integer64Part integer64;
        DoublePart real;
        EnumPart enumeration;
        StringPart string;
        FieldPart field;
    };

    std::int32_t type;
    std::int32_t childIndex;
    const char* label;
    const char* symbol;
    std::int32_t accessFlags;
    std::int32_t displayLevel;
    std::int32_t exported;
    std::int32_t parameterId;
    ValuePart value;
    InfoRecord* next;
    InfoRecord* previous;
    std::int32_t depth;
    const char* parentLabel;
    const char* unit;
    std::int32_t listIndex;
    const char* description;
    const char* toolTip;
    const char* genICamName;
    std::int32_t genICamVisibility;
    const char** invalidatingNames;
    std::uint32_t invalidatingNameCount;
    std::uint32_t invalidatingNameCapacity;
};
static_assert(sizeof(InfoRecord::ValuePart) == 40 && offsetof(InfoRecord, value) == 40);
static_assert(offsetof(InfoRecord::GroupPart, children) == 8 && offsetof(InfoRecord::GroupPart, nextChildIndex) == 16);
static_assert(offsetof(InfoRecord::EnumPart, entryLabels) == 8 && offsetof(InfoRecord::EnumPart, entryValues) == 16 &&
              offsetof(InfoRecord::EnumPart, value) == 24 && offsetof(InfoRecord::EnumPart, entryNames) == 32);
static_assert(offsetof(InfoRecord::FieldPart, fieldSize) == 8 && offsetof(InfoRecord::FieldPart, value) == 16);
static_assert(offsetof(InfoRecord, next) == 80 && offsetof(InfoRecord, depth) == 96 &&
              offsetof(InfoRecord, unit) == 112);
static_assert(offsetof(InfoRecord, description) == 128 && offsetof(InfoRecord, genICamVisibility) == 152);
static_assert(offsetof(InfoRecord, invalidatingNames) == 160 && sizeof(InfoRecord) == 176);

/// Record types.
enum class InfoType : std::int32_t {
    Group = 0,
    UInt = 1,
    Enum = 3,
    String = 5,
    Double = 6,
    UIntField = 7,
    UInt64 = 9,
    Int = 11,
    Int64 = 12
};

class InfoTree {
public:
    /// Describes the parameters as they are now; the tree does not follow them later.
    explicit InfoTree(const std::vector<const Parameter*>& parameters);
    InfoTree(const InfoTree&) = delete;
    InfoTree& operator=(const InfoTree&) = delete;

    /// The first top-level record, null if there is none. All records live as long as the tree.
    InfoRecord* head() { return head_; }

private:
    InfoRecord* group(const std::vector<std::string>& labels);
    void addParameter(const Parameter& parameter);
    InfoRecord* newRecord(InfoType type, const std::string& label, const std::string& symbol);
    void link(InfoRecord* record, InfoRecord* parent);
    const char* kept(const std::string& text);
    void describeEnum(InfoRecord& record, const std::vector<EnumEntry>& entries);

    std::deque<InfoRecord> records_;
    std::deque<std::string> texts_;
    std::map<std::string, InfoRecord*> groupBySymbol_;
    std::map<InfoRecord*, std::vector<InfoRecord*>> children_;
    std::deque<std::vector<const char*>> textArrays_;
    std::deque<std::vector<std::int32_t>> numberArrays_;
    InfoRecord* head_ = nullptr;
    InfoRecord* last_ = nullptr;
};

}  // namespace softboard
