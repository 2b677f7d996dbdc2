#include "softboard/fglib5/InfoTree.h"

namespace softboard {
namespace {

constexpr std::int32_t ReadableFlag = 1;
constexpr std::int32_t WritableFlag = 2;
constexpr std::int32_t DesignLevel = 2;

std::int32_t accessFlags(const ParameterDescription& description) {
    return (description.readable ? ReadableFlag : 0) | (description.writable ? WritableFlag : 0);
}

InfoType infoType(const ParameterDescription& description) {
    if (!description.entries.empty()) {
        return InfoType::Enum;
    }
    switch (description.type) {
        case ValueType::Int32: return InfoType::Int;
        case ValueType::UInt32: return InfoType::UInt;
        case ValueType::Int64: return InfoType::Int64;
        case ValueType::UInt64: return InfoType::UInt64;
        case ValueType::Double: return InfoType::Double;
        case ValueType::Text: return InfoType::String;
        case ValueType::Table: return InfoType::UIntField;
    }
    return InfoType::UInt;
}

}  // namespace

InfoTree::InfoTree(const std::vector<const Parameter*>& parameters) {
    for (const Parameter* parameter : parameters) {
        addParameter(*parameter);
    }
}

const char* InfoTree::kept(const std::string& text) {
    return texts_.emplace_back(text).c_str();
}

InfoRecord* InfoTree::newRecord(InfoType type, const std::string& label, const std::string& symbol) {
    InfoRecord& record = records_.emplace_back();
    record.type = static_cast<std::int32_t>(type);
    record.label = kept(label);
    record.symbol = kept(symbol);
    record.displayLevel = DesignLevel;
    record.exported = 1;
    record.unit = kept("");
    return &record;
}

void InfoTree::link(InfoRecord* record, InfoRecord* parent) {
    if (parent == nullptr) {
        record->previous = last_;
        (last_ != nullptr ? last_->next : head_) = record;
        last_ = record;
        return;
    }
    std::vector<InfoRecord*>& siblings = children_[parent];
    siblings.push_back(record);
    record->childIndex = parent->value.group.nextChildIndex++;
    record->depth = parent->depth + 1;
    record->parentLabel = parent->label;
    parent->value.group.childCount = static_cast<std::int32_t>(siblings.size());
    parent->value.group.children = siblings.data();
}

InfoRecord* InfoTree::group(const std::vector<std::string>& labels) {
    InfoRecord* current = nullptr;
    std::string symbol;
    for (const std::string& label : labels) {
        symbol += symbol.empty() ? label : "_" + label;
        InfoRecord*& known = groupBySymbol_[symbol];
        if (known == nullptr) {
            known = newRecord(InfoType::Group, label, symbol);
            link(known, current);
        }
        current = known;
    }
    return current;
}

void InfoTree::describeEnum(InfoRecord& record, const std::vector<EnumEntry>& entries) {
    auto& labels = textArrays_.emplace_back();
    auto& names = textArrays_.emplace_back();
    auto& values = numberArrays_.emplace_back();
    for (const EnumEntry& entry : entries) {
        labels.push_back(kept(entry.label));
        names.push_back(kept(entry.name));
        values.push_back(entry.value);
    }
    record.value.enumeration = {static_cast<std::int32_t>(entries.size()), labels.data(), values.data(), 0,
                                names.data()};
}

void InfoTree::addParameter(const Parameter& parameter) {
    const ParameterDescription& description = parameter.description();
    InfoRecord* const parent = group(description.groups);
    const InfoType type = infoType(description);
    InfoRecord* const record = newRecord(type, description.label, description.name);
    record->accessFlags = accessFlags(description);
    record->parameterId = description.id;
    record->unit = kept(description.unit);
    const auto low = static_cast<std::uint32_t>(description.minimum);
    const auto high = static_cast<std::uint32_t>(description.maximum);
    switch (type) {
        case InfoType::Enum: describeEnum(*record, description.entries); break;
        case InfoType::String: {
            std::string text;
            parameter.text(text);
            record->value.string.value = kept(text);
            break;
        }
        case InfoType::Double: record->value.real = {description.realMinimum, description.realMaximum, 0.0, 0.0}; break;
        case InfoType::UIntField:
            record->value.field = {low, high, static_cast<std::int32_t>(description.length), 0, low};
            break;
        case InfoType::UInt64:
        case InfoType::Int64:
            record->value.integer64 = {static_cast<std::uint64_t>(description.minimum),
                                       static_cast<std::uint64_t>(description.maximum), 1};
            break;
        default: record->value.integer32 = {low, high, 1, 0}; break;
    }
    link(record, parent);
}

}  // namespace softboard
