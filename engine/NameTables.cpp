#include "engine/NameTables.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>

#include "info/DirectIxRecords.h"
#include "info/DirectRegisterRecords.h"
#include "quillon/PublicParameters.h"
#include "quillon/Vocabulary.h"
#include "support/EnvironmentSwitch.h"
#include "wrapper/DesignLoader.h"

namespace quillon {

namespace {

constexpr int MaskCount = 64;

/// Whether the SDK's record describes a parameter that a single value can be written to.
bool isPlainParameter(const RegisterInfo& record) {
    switch (record.type) {
        case RegisterTypeUInt:
        case RegisterTypeEnum:
        case RegisterTypeString:
        case RegisterTypeDouble:
        case RegisterTypeUInt64:
        case RegisterTypeInt:
        case RegisterTypeInt64: return true;
        default: return false;
    }
}

}  // namespace

void NameTables::fill() {
    if (environmentSwitch("ORLO_ENABLE_DIXA")) {
        collectSdkNames();
    }
    enterPublicNames();
    enterRegisters();
    enterSdkNames();
    enterPositions();
    for (const PublicParameter& parameter : PositionedParameters) {
        parameterDescriptionByName_.emplace(parameter.name, parameter.description);
    }
    enterEvents();
}

/// Walks the SDK's own description, group by group, and switches every plain parameter on.
void NameTables::collectSdkNames() {
    std::deque<const RegisterInfo*> groups;
    if (const RegisterInfo* head = wrapper_.getUnwrappedParameterInfo()) {
        groups.push_back(head);
    }
    while (!groups.empty()) {
        const RegisterInfo& record = *groups.front();
        groups.pop_front();
        if (record.type != RegisterTypeGroup) {
            continue;
        }
        for (std::int32_t i = 0; i < record.as.group.childCount; ++i) {
            const RegisterInfo* child = record.as.group.children[i];
            if (child->type == RegisterTypeGroup) {
                groups.push_back(child);
            } else if (isPlainParameter(*child) && child->symbol != nullptr) {
                properties_.store(propertySection, child->symbol, "On");
            }
        }
        if (record.next != nullptr && record.next->type == RegisterTypeGroup) {
            groups.push_back(record.next);
        }
    }
}

void NameTables::enterPublicNames() {
    for (const PublicParameter& parameter : PositionedParameters) {
        parameterIdByName_.emplace(parameter.name, parameter.id);
    }
}

template <class Enter>
void NameTables::forEachRegister(Enter&& enter) const {
    if (wrapper_.directRegisterAccess) {
        quillon::forEachRegister(wrapper_.designHandle(), enter);
    }
}

void NameTables::enterRegisters() {
    forEachRegister([this](const char* name) {
        parameterIdByName_[std::string(DirectRegisterPrefix) + name] =
            TavGetRegisterByName(wrapper_.designHandle(), name) + FG_REGISTER_IDS;
    });
}

int NameTables::unwrappedId(const std::string& name) const {
    return isSwitchedOn(properties_.value(propertySection, name)) ? wrapper_.getParameterIdByName(name.c_str()) : 0;
}

void NameTables::enterSdkNames() {
    for (const std::string& name : properties_.names(propertySection)) {
        if (const int id = unwrappedId(name); id != 0) {
            unwrappedIdByName_[DirectIxPrefix + name] = id + FG_SDK_IDS;
        }
    }
}

void NameTables::enterPositions() {
    int position = -1;
    for (const PublicParameter& parameter : PositionedParameters) {
        parameterNameByIndex_[++position] = parameter.name;
    }
    forEachRegister(
        [&](const char* name) { parameterNameByIndex_[++position] = std::string(DirectRegisterPrefix) + name; });
    for (const std::string& name : properties_.names(propertySection)) {
        if (unwrappedId(name) != 0) {
            parameterNameByIndex_[++position] = DirectIxPrefix + name;
        }
    }
}

void NameTables::enterEvents() {
    int count = 0;
    // A mask has 64 bits: events behind the 64th have none.
    while (count < MaskCount && designEvent(wrapper_.designHandle(), count) != nullptr) {
        ++count;
    }
    for (int i = 0; i < count; ++i) {
        const TavEvent* event = designEvent(wrapper_.designHandle(), i);
        if (event != nullptr && event->name != nullptr && event->kind == 1) {
            const std::uint64_t mask = std::uint64_t{1} << i;
            eventMaskByName_[event->name] = mask;
            eventNameByMask_[mask] = event->name;
        }
    }
    for (const PublicEvent& event : PublicEvents) {
        enterPublicEvent(count, event);
    }
}

/// The design's name stays beside the public one, if it was entered; the mask reports the public one.
void NameTables::enterPublicEvent(int count, const PublicEvent& named) {
    for (int i = 0; i < count; ++i) {
        const TavEvent* event = designEvent(wrapper_.designHandle(), i);
        if (hasName(event, named.designName)) {
            const std::uint64_t mask = std::uint64_t{1} << i;
            eventMaskByName_[named.publicName] = mask;
            eventNameByMask_[mask] = named.publicName;
            return;
        }
    }
    wrapper_.logMessage(orlo::tools::logging::UnresolvedLevel, [&named](std::ostream& line) {
        line << "cannot retrieve event id for internal event: '" << named.designName << "'";
    });
}

}  // namespace quillon
