#include "info/DirectIxRecords.h"

#include "info/RegisterInfoTree.h"

namespace quillon {

namespace {

/// Copies of the design's groups and records under one group of the store.
class DesignCopier {
public:
    DesignCopier(Fg_ParameterInfo& store, RegisterInfo* topGroup) : info_(store), top_(topGroup) {}

    /// The copy of the last of `groups`, which are a way down from a top-level group; what is missing on the way is
    /// made.
    RegisterInfo* groupFor(const std::vector<const RegisterInfo*>& groups) {
        RegisterInfo* current = top_;
        for (const RegisterInfo* group : groups) {
            RegisterInfo*& copy = copyByGroup_[group];
            if (copy == nullptr) {
                copy = info_.addGroupInfo(0, current, group->label);
                info_.setSymbol(copy, group->symbol);
            }
            current = copy;
        }
        return current;
    }

    /// A record like `design` at the end of the group that `groups` lead to; null, with nothing made, for a kind that
    /// is not repeated.
    RegisterInfo* repeat(const RegisterInfo& design, const std::vector<const RegisterInfo*>& groups, int id) {
        const std::string symbol = std::string(DirectIxPrefix) + (design.symbol == nullptr ? "" : design.symbol);
        const auto add = [&](auto addInfo, auto... values) {
            return (info_.*addInfo)(groupFor(groups), design.label, symbol.c_str(), values..., design.accessFlags,
                                    design.displayLevel, design.exported, design.unit, id, 0);
        };
        const auto addRange = [&](auto addInfo, const auto& range) {
            return add(addInfo, range.min, range.max, range.inc);
        };
        switch (design.type) {
            case RegisterTypeUInt: return addRange(&Fg_ParameterInfo::addInfoUInt, design.as.uint);
            case RegisterTypeInt: return addRange(&Fg_ParameterInfo::addInfoInt, design.as.integer);
            case RegisterTypeUInt64: return addRange(&Fg_ParameterInfo::addInfoUInt64, design.as.uint64);
            case RegisterTypeInt64: return addRange(&Fg_ParameterInfo::addInfoInt64, design.as.int64);
            case RegisterTypeDouble: return addRange(&Fg_ParameterInfo::addInfoDouble, design.as.real);
            case RegisterTypeString: return add(&Fg_ParameterInfo::addInfoString, design.as.string.value);
            case RegisterTypeEnum: {
                RegisterInfo* record = add(&Fg_ParameterInfo::addInfoEnum, design.as.enumeration.entryCount);
                copyEntries(design.as.enumeration, record);
                return record;
            }
            default: return nullptr;
        }
    }

private:
    void copyEntries(const RegisterInfoEnum& entries, RegisterInfo* record) {
        for (std::int32_t entry = 0; entry < entries.entryCount; ++entry) {
            info_.addEnumNameValue(record, entry, entries.entryLabels[entry], entries.entryValues[entry],
                                   entries.entryNames[entry]);
        }
    }

    Fg_ParameterInfo& info_;
    RegisterInfo* top_;
    std::map<const RegisterInfo*, RegisterInfo*> copyByGroup_;
};

}  // namespace

void addDirectIxRecords(Fg_ParameterInfo& info, RegisterInfoById& recordsById, const RegisterInfo* unwrappedHead,
                        const std::map<std::string, int>& unwrappedIdByName) {
    RegisterInfo* topGroup = info.addGroupInfo(0, nullptr, "Direct IX Access");
    if (topGroup == nullptr) {
        return;
    }
    const RegisterInfoTree design(unwrappedHead);
    DesignCopier copier(info, topGroup);
    for (const auto& [name, id] : unwrappedIdByName) {
        const int designId = id - FG_SDK_IDS;
        const RegisterInfo* designRecord = design.find(designId);
        if (designRecord == nullptr) {
            continue;
        }
        RegisterInfo* record = copier.repeat(*designRecord, design.groupsOf(designId), id);
        if (record != nullptr) {
            recordsById[PublicProcess][id + FG_SDK_IDS] = record;
        }
    }
}

}  // namespace quillon
