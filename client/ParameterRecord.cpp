#include "quillon/client/ParameterRecord.h"

#include <algorithm>

#include "quillon/LiveField.h"
#include "quillon/RegisterInfo.h"
#include "quillon/client/Errors.h"

namespace quillon::client {

namespace {

std::string copyText(const char* text) {
    return text != nullptr ? text : "";
}

template <typename Wide, typename Part>
Range<Wide> rangeOf(const Part& part) {
    return {static_cast<Wide>(loadLive(part.min)), static_cast<Wide>(loadLive(part.max)), static_cast<Wide>(part.inc)};
}

template <typename Wide, typename Part>
Range<Wide> fieldRangeOf(const Part& part) {
    return {static_cast<Wide>(part.min), static_cast<Wide>(part.max), 0};
}

void copyEntries(const RegisterInfoEnum& from, ParameterRecord& record) {
    for (std::int32_t i = 0; i < from.entryCount; ++i) {
        record.entries.push_back({copyText(from.entryLabels[i]), from.entryValues[i], copyText(from.entryNames[i])});
    }
}

template <typename Wide, typename Part>
void copyField(const Part& from, RecordKind kind, ParameterRecord& record) {
    record.kind = kind;
    record.range = fieldRangeOf<Wide>(from);
    record.fieldSize = from.fieldSize;
}

template <typename Wide, typename Part>
void copyNumber(const Part& from, RecordKind kind, ParameterRecord& record) {
    record.kind = kind;
    record.range = rangeOf<Wide>(from);
}

void copyValuePart(const RegisterInfo& from, ParameterRecord& record) {
    const auto& as = from.as;
    switch (from.type) {
        case RegisterTypeGroup:
            for (std::int32_t i = 0; i < as.group.childCount; ++i) {
                record.children.push_back(copyRecord(*as.group.children[i]));
            }
            return;
        case RegisterTypeUInt: return copyNumber<std::uint64_t>(as.uint, RecordKind::UInt, record);
        case RegisterTypeInt: return copyNumber<std::int64_t>(as.integer, RecordKind::Int, record);
        case RegisterTypeUInt64: return copyNumber<std::uint64_t>(as.uint64, RecordKind::UInt64, record);
        case RegisterTypeInt64: return copyNumber<std::int64_t>(as.int64, RecordKind::Int64, record);
        case RegisterTypeDouble: return copyNumber<double>(as.real, RecordKind::Double, record);
        case RegisterTypeUIntField: return copyField<std::uint64_t>(as.uintField, RecordKind::UIntField, record);
        case RegisterTypeIntField: return copyField<std::int64_t>(as.intField, RecordKind::IntField, record);
        case RegisterTypeDoubleField: return copyField<double>(as.doubleField, RecordKind::DoubleField, record);
        case RegisterTypeEnum: record.kind = RecordKind::Enum; return copyEntries(as.enumeration, record);
        case RegisterTypeString:
            record.kind = RecordKind::String;
            record.text = copyText(as.string.value);
            return;
        default: throw Error("a parameter record has the unknown type " + std::to_string(from.type));
    }
}

}  // namespace

ParameterKind ParameterRecord::valueKind() const {
    switch (kind) {
        case RecordKind::UInt64:
        case RecordKind::Int64: return ParameterKind::Int64;
        case RecordKind::Double: return ParameterKind::Double;
        case RecordKind::String: return ParameterKind::String;
        case RecordKind::UIntField:
        case RecordKind::IntField:
        case RecordKind::DoubleField: return ParameterKind::Field;
        case RecordKind::Group:
        case RecordKind::UInt:
        case RecordKind::Int:
        case RecordKind::Enum: break;
    }
    return ParameterKind::Int;
}

const EnumEntry* ParameterRecord::entry(std::int32_t value) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const EnumEntry& candidate) { return candidate.value == value; });
    return found != entries.end() ? &*found : nullptr;
}

ParameterRecord copyRecord(const RegisterInfo& record) {
    ParameterRecord copy;
    copy.label = copyText(record.label);
    copy.symbol = copyText(record.symbol);
    copy.unit = copyText(record.unit);
    copy.id = record.parameterId;
    copy.accessFlags = loadLive(record.accessFlags);
    copy.readable = (copy.accessFlags & RegisterAccessReadable) != 0;
    copy.writable = (copy.accessFlags & RegisterAccessWritable) != 0;
    copy.displayLevel = record.displayLevel;
    copy.exported = record.exported != 0;
    copy.depth = record.depth;
    copyValuePart(record, copy);
    return copy;
}

const RegisterInfo* findRecord(const RegisterInfo* head, std::int32_t id) {
    for (const RegisterInfo* record = head; record != nullptr; record = record->next) {
        if (record->type != RegisterTypeGroup) {
            if (record->parameterId == id) {
                return record;
            }
            continue;
        }
        for (std::int32_t i = 0; i < record->as.group.childCount; ++i) {
            // A record below the top has no next, so that each child is a list of its own.
            if (const RegisterInfo* found = findRecord(record->as.group.children[i], id)) {
                return found;
            }
        }
    }
    return nullptr;
}

const ParameterRecord* findRecord(const std::vector<ParameterRecord>& trees, std::int32_t id) {
    for (const ParameterRecord& record : trees) {
        if (!record.isGroup() && record.id == id) {
            return &record;
        }
        if (const ParameterRecord* found = findRecord(record.children, id)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace quillon::client
