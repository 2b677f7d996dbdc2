#include "info/ParameterInfo.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "support/Failure.h"

namespace quillon {

namespace {

/// A copy for a record to own; null for a null text and when there is no memory.
char* tryCopyText(const char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t size = std::strlen(text) + 1;
    char* copy = new (std::nothrow) char[size];
    if (copy != nullptr) {
        std::memcpy(copy, text, size);
    }
    return copy;
}

char* copyText(const char* text) {
    char* copy = tryCopyText(text);
    if (copy == nullptr && text != nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

/// Copies before it releases: `text` may be the very text that is replaced.
void replaceText(char*& field, const char* text) {
    char* copy = copyText(text);
    delete[] field;
    field = copy;
}

void replaceOptionalText(char*& field, const char* text) {
    const bool isEmpty = text == nullptr || *text == '\0';
    replaceText(field, isEmpty ? nullptr : text);
}

void releaseTexts(char** texts, std::size_t count) {
    if (texts != nullptr) {
        std::for_each(texts, texts + count, [](char* text) { delete[] text; });
    }
    delete[] texts;
}

void releaseValuePart(RegisterInfo& record) {
    if (record.type == RegisterTypeEnum) {
        const auto count = static_cast<std::size_t>(record.as.enumeration.entryCount);
        releaseTexts(record.as.enumeration.entryLabels, count);
        releaseTexts(record.as.enumeration.entryNames, count);
        delete[] record.as.enumeration.entryValues;
    } else if (record.type == RegisterTypeString) {
        delete[] record.as.string.value;
    } else if (record.type == RegisterTypeGroup) {
        delete[] record.as.group.children;
    }
}

/// Releases all that the record owns and leaves it as empty as a new one.
void clearRecord(RegisterInfo& record) {
    for (char* text : {record.label, record.parentLabel, record.symbol, record.unit, record.description, record.toolTip,
                       record.genICamName}) {
        delete[] text;
    }
    releaseValuePart(record);
    releaseTexts(record.invalidatingNames, record.invalidatingNameCount);
    record = RegisterInfo{};
}

/// Slots that an array of names has behind its capacity: a name may be stored at index `capacity`, and only then does
/// it grow.
constexpr std::size_t SpareNames = 1;

}  // namespace

Fg_ParameterInfo::Fg_ParameterInfo(int requestedCount) : listCount(std::max(requestedCount, 0)) {
    const auto count = static_cast<std::size_t>(listCount);
    heads.resize(count);
    owned.resize(count);
    finalized.resize(count);
    shells_.resize(count);
    for (int listIndex = 0; listIndex < listCount; ++listIndex) {
        init(listIndex);
    }
}

Fg_ParameterInfo::~Fg_ParameterInfo() {
    for (int listIndex = 0; listIndex < listCount; ++listIndex) {
        destroy(listIndex);
    }
}

void Fg_ParameterInfo::init(int listIndex) {
    if (!hasList(listIndex)) {
        return;
    }
    destroy(listIndex);
    const auto list = static_cast<std::size_t>(listIndex);
    heads[list] = nullptr;
    shells_[list].reset();
    finalized[list] = false;
}

void Fg_ParameterInfo::destroy(int listIndex) {
    if (!hasList(listIndex)) {
        return;
    }
    const auto list = static_cast<std::size_t>(listIndex);
    std::vector<RegisterInfo_v2*>& records = owned[list];
    // A record that is owned twice is released once.
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    for (RegisterInfo_v2* record : records) {
        clearRecord(*record);
        if (record == heads[list]) {
            shells_[list].reset(record);
        } else {
            delete record;
        }
    }
    records.clear();
}

void Fg_ParameterInfo::finalize(int listIndex) {
    if (hasList(listIndex)) {
        finalized[static_cast<std::size_t>(listIndex)] = true;
    }
}

RegisterInfo_v2* Fg_ParameterInfo::create(int listIndex, int type, const char* label, const char* symbol,
                                          int parameterId, int accessFlags, int displayLevel, int exported,
                                          const char* unit) {
    if (!hasList(listIndex)) {
        return nullptr;
    }
    auto newRecord = std::make_unique<RegisterInfo_v2>();
    owned[static_cast<std::size_t>(listIndex)].push_back(newRecord.get());
    RegisterInfo_v2* record = newRecord.release();
    record->type = type;
    record->label = copyText(label);
    record->parameterId = parameterId;
    record->listIndex = listIndex;
    record->accessFlags = accessFlags;
    record->displayLevel = displayLevel;
    record->exported = exported;
    record->symbol = copyText(symbol);
    record->unit = copyText(unit);
    return record;
}

void Fg_ParameterInfo::add(RegisterInfo* child, RegisterInfo* parent) {
    if (parent->type != RegisterTypeGroup) {
        return;
    }
    RegisterInfoGroup& group = parent->as.group;
    const auto oldCount = static_cast<std::size_t>(group.childCount);
    auto children = std::make_unique<RegisterInfo*[]>(oldCount + 1);
    std::copy_n(group.children, oldCount, children.get());
    replaceText(child->parentLabel, parent->label);
    child->childIndex = group.nextChildIndex++;
    child->depth = parent->depth + 1;
    children[static_cast<std::size_t>(child->childIndex)] = child;
    group.childCount++;
    delete[] group.children;
    group.children = children.release();
}

void Fg_ParameterInfo::add(RegisterInfo_v2* record, int listIndex) {
    if (!hasList(listIndex)) {
        return;
    }
    RegisterInfo*& head = heads[static_cast<std::size_t>(listIndex)];
    if (head != nullptr) {
        head->previous = record;
    }
    record->next = head;
    record->depth = 0;
    replaceText(record->parentLabel, nullptr);
    head = record;
}

RegisterInfo* Fg_ParameterInfo::addGroupInfo(int listIndex, RegisterInfo* parent, const char* label) {
    if (!isOpen(listIndex)) {
        return nullptr;
    }
    RegisterInfo_v2* group = create(listIndex, RegisterTypeGroup, label, nullptr, 0, 0, 0, 0, nullptr);
    if (parent == nullptr) {
        add(group, listIndex);
    } else {
        add(group, parent);
    }
    return group;
}

template <typename FillValuePart>
RegisterInfo* Fg_ParameterInfo::addTyped(RegisterInfo* parent, int type, const char* label, const char* symbol,
                                         int accessFlags, int displayLevel, int exported, const char* unit,
                                         int parameterId, int listIndex, FillValuePart fillValuePart) {
    if (!isOpen(listIndex) || parent == nullptr) {
        return nullptr;
    }
    RegisterInfo_v2* record =
        create(listIndex, type, label, symbol, parameterId, accessFlags, displayLevel, exported, unit);
    fillValuePart(*record);
    add(record, parent);
    return record;
}

RegisterInfo* Fg_ParameterInfo::addInfoUInt(RegisterInfo* parent, const char* label, const char* symbol,
                                            unsigned int min, unsigned int max, unsigned int inc, int accessFlags,
                                            int displayLevel, int exported, const char* unit, int parameterId,
                                            int listIndex) {
    return addTyped(parent, RegisterTypeUInt, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.uint = {min, max, inc, 0};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoInt(RegisterInfo* parent, const char* label, const char* symbol, int min,
                                           int max, int inc, int accessFlags, int displayLevel, int exported,
                                           const char* unit, int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeInt, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.integer = {min, max, inc, 0};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoUInt64(RegisterInfo* parent, const char* label, const char* symbol,
                                              unsigned long min, unsigned long max, unsigned long inc, int accessFlags,
                                              int displayLevel, int exported, const char* unit, int parameterId,
                                              int listIndex) {
    return addTyped(parent, RegisterTypeUInt64, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.uint64 = {min, max, inc};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoInt64(RegisterInfo* parent, const char* label, const char* symbol, long min,
                                             long max, long inc, int accessFlags, int displayLevel, int exported,
                                             const char* unit, int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeInt64, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.int64 = {min, max, inc};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoDouble(RegisterInfo* parent, const char* label, const char* symbol, double min,
                                              double max, double inc, int accessFlags, int displayLevel, int exported,
                                              const char* unit, int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeDouble, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.real = {min, max, inc, 0.0};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoUIntField(RegisterInfo* parent, const char* label, const char* symbol,
                                                 int fieldSize, unsigned int min, unsigned int max, unsigned int,
                                                 int accessFlags, int displayLevel, int exported, const char* unit,
                                                 int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeUIntField, label, symbol, accessFlags, displayLevel, exported, unit,
                    parameterId, listIndex, [&](RegisterInfo& record) {
                        // The list owns a UIntField twice, which readers of the list see; its siblings stand there
                        // once.
                        owned[static_cast<std::size_t>(listIndex)].push_back(&record);
                        record.as.uintField = {min, max, fieldSize, 0, min};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoIntField(RegisterInfo* parent, const char* label, const char* symbol,
                                                int fieldSize, int min, int max, int, int accessFlags, int displayLevel,
                                                int exported, const char* unit, int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeIntField, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.intField = {min, max, fieldSize, 0, min};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoDoubleField(RegisterInfo* parent, const char* label, const char* symbol,
                                                   int fieldSize, double min, double max, double, int accessFlags,
                                                   int displayLevel, int exported, const char* unit, int parameterId,
                                                   int listIndex) {
    return addTyped(parent, RegisterTypeDoubleField, label, symbol, accessFlags, displayLevel, exported, unit,
                    parameterId, listIndex, [&](RegisterInfo& record) {
                        record.as.doubleField = {min, max, fieldSize, 0, min};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoString(RegisterInfo* parent, const char* label, const char* symbol,
                                              const char* value, int accessFlags, int displayLevel, int exported,
                                              const char* unit, int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeString, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.string = {0, copyText(value)};
                    });
}

RegisterInfo* Fg_ParameterInfo::addInfoEnum(RegisterInfo* parent, const char* label, const char* symbol, int entryCount,
                                            int accessFlags, int displayLevel, int exported, const char* unit,
                                            int parameterId, int listIndex) {
    return addTyped(parent, RegisterTypeEnum, label, symbol, accessFlags, displayLevel, exported, unit, parameterId,
                    listIndex, [&](RegisterInfo& record) {
                        record.as.enumeration = {};
                        record.as.enumeration.entryLabels = new char* [static_cast<std::size_t>(entryCount)] {};
                        record.as.enumeration.entryNames = new char* [static_cast<std::size_t>(entryCount)] {};
                        record.as.enumeration.entryValues = new std::int32_t[static_cast<std::size_t>(entryCount)]{};
                        record.as.enumeration.entryCount = entryCount;
                    });
}

int Fg_ParameterInfo::addEnumNameValue(RegisterInfo* info, int entry, const char* label, int value, const char* name) {
    if (info->type != RegisterTypeEnum || entry < 0 || entry >= info->as.enumeration.entryCount) {
        return Success;
    }
    char*& entryLabel = info->as.enumeration.entryLabels[entry];
    char*& entryName = info->as.enumeration.entryNames[entry];
    // Released at the end only: the new texts may be the old ones.
    const std::unique_ptr<char[]> oldLabel(entryLabel);
    const std::unique_ptr<char[]> oldName(entryName);
    entryName = nullptr;
    entryLabel = tryCopyText(label);
    if (entryLabel == nullptr) {
        return BufferTooSmall;
    }
    info->as.enumeration.entryValues[entry] = value;
    entryName = tryCopyText(name);
    return entryName == nullptr && name != nullptr ? BufferTooSmall : Success;
}

RegisterInfo* Fg_ParameterInfo::getRegisterInfo(int listIndex) const {
    return hasList(listIndex) ? heads[static_cast<std::size_t>(listIndex)] : nullptr;
}

RegisterInfo* Fg_ParameterInfo::getNextRegisterInfo(RegisterInfo* current, int listIndex) const {
    if (!hasList(listIndex)) {
        return nullptr;
    }
    return current == nullptr ? getRegisterInfo(listIndex) : current->next;
}

void Fg_ParameterInfo::setDescription(RegisterInfo* info, const char* text) {
    replaceOptionalText(info->description, text);
}

void Fg_ParameterInfo::setToolTip(RegisterInfo* info, const char* text) {
    replaceOptionalText(info->toolTip, text);
}

void Fg_ParameterInfo::setGenICamName(RegisterInfo* info, const char* text) {
    replaceOptionalText(info->genICamName, text);
}

void Fg_ParameterInfo::setGenICamVisibility(RegisterInfo* info, int visibility) {
    info->genICamVisibility = visibility;
}

void Fg_ParameterInfo::setSymbol(RegisterInfo* info, const char* symbol) {
    replaceText(info->symbol, symbol);
}

void Fg_ParameterInfo::setInvalidatingNameCapacity(RegisterInfo* info, unsigned int capacity) {
    if (info->invalidatingNameCapacity >= capacity) {
        return;
    }
    auto** names = new char* [capacity + SpareNames] {};
    std::copy_n(info->invalidatingNames, info->invalidatingNameCount, names);
    delete[] info->invalidatingNames;
    info->invalidatingNames = names;
    info->invalidatingNameCapacity = capacity;
}

void Fg_ParameterInfo::addInvalidatingName(RegisterInfo* info, const char* name) {
    if (name == nullptr || *name == '\0') {
        return;
    }
    std::unique_ptr<char[]> copy(copyText(name));
    if (info->invalidatingNames == nullptr) {
        info->invalidatingNames = new char* [SpareNames] {};
    }
    const std::uint32_t capacity = info->invalidatingNameCapacity;
    if (capacity < info->invalidatingNameCount) {
        setInvalidatingNameCapacity(info, capacity == 0 ? 1 : 2 * capacity);
    }
    info->invalidatingNames[info->invalidatingNameCount++] = copy.release();
}

}  // namespace quillon
