#include "info/Catalogue.h"

#include <array>

#include "info/CatalogueTables.h"
#include "info/DirectIxRecords.h"

namespace quillon {

namespace {

constexpr int Exported = 1;
constexpr int CatalogueList = 0;

/// Makes the records of the fixed catalogue, and their groups when the first record needs them.
class CatalogueBuilder {
public:
    CatalogueBuilder(Fg_ParameterInfo& store, RegisterInfoById& records) : info_(store), recordsById_(records) {}

    void add(const CatalogueParameter& parameter) {
        RegisterInfo* parent = groupRecord(parameter.group);
        std::visit([&](const auto& values) { addRecord(parameter, parent, values); }, parameter.values);
    }

private:
    RegisterInfo* groupRecord(CatalogueGroup group) {
        if (group == CatalogueGroup::None) {
            return nullptr;
        }
        RegisterInfo*& record = groupRecords_[static_cast<std::size_t>(group)];
        if (record == nullptr) {
            const CatalogueGroupRow& row = catalogueGroups()[static_cast<std::size_t>(group)];
            record = info_.addGroupInfo(CatalogueList, groupRecord(row.parent), row.label);
        }
        return record;
    }

    /// Adds a record with one of the store's operations; `values` are what that operation takes besides the common
    /// arguments.
    template <typename AddInfo, typename... Values>
    RegisterInfo* enter(const CatalogueParameter& parameter, RegisterInfo* parent, AddInfo addInfo, Values... values) {
        RegisterInfo* record =
            (info_.*addInfo)(parent, parameter.label, parameter.symbol, values..., parameter.accessFlags,
                             parameter.displayLevel, Exported, parameter.unit, parameter.id, CatalogueList);
        recordsById_[PublicProcess][parameter.id] = record;
        return record;
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const UIntRange& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoUInt, range.min, range.max, range.inc);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const IntRange& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoInt, range.min, range.max, range.inc);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const UInt64Range& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoUInt64, range.min, range.max, range.inc);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const Int64Range& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoInt64, range.min, range.max, range.inc);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const DoubleRange& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoDouble, range.min, range.max, range.inc);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const UIntFieldRange& range) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoUIntField, range.elements, range.min, range.max, 1U);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, const InitialText& initial) {
        enter(parameter, parent, &Fg_ParameterInfo::addInfoString, initial.text);
    }

    void addRecord(const CatalogueParameter& parameter, RegisterInfo* parent, Enumeration entries) {
        RegisterInfo* record =
            enter(parameter, parent, &Fg_ParameterInfo::addInfoEnum, static_cast<int>(entries.size()));
        int position = 0;
        for (const EnumEntry& entry : entries) {
            info_.addEnumNameValue(record, position++, entry.label, entry.value, entry.name);
        }
    }

    Fg_ParameterInfo& info_;
    RegisterInfoById& recordsById_;
    std::array<RegisterInfo*, CatalogueGroupCount> groupRecords_{};
};

}  // namespace

void buildCatalogue(Fg_ParameterInfo& info, RegisterInfoById& recordsById, const CatalogueExtensions& extensions) {
    CatalogueBuilder builder(info, recordsById);
    for (const CatalogueParameter& parameter : catalogueParameters()) {
        builder.add(parameter);
    }
    if (extensions.directRegisterAccess) {
        addDirectRegisterRecords(info, recordsById, extensions.registers);
    }
    if (!extensions.unwrappedIdByName.empty()) {
        addDirectIxRecords(info, recordsById, extensions.unwrappedHead, extensions.unwrappedIdByName);
    }
}

}  // namespace quillon
