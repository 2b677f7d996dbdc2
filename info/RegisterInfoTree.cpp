#include "info/RegisterInfoTree.h"

#include <algorithm>
#include <cstdint>

namespace quillon {

namespace {

bool isGroup(const RegisterInfo* record) {
    return record != nullptr && record->type == RegisterTypeGroup;
}

}  // namespace

RegisterInfoTree::RegisterInfoTree(const RegisterInfo* head) {
    std::vector<const RegisterInfo*> pending;
    const auto push = [&](const RegisterInfo* group, const RegisterInfo* parent) {
        // A group that is met twice keeps its first place, so that even a description with a circle comes to an end.
        if (isGroup(group) && parentOfGroup_.emplace(group, parent).second) {
            pending.push_back(group);
        }
    };
    push(head, nullptr);
    while (!pending.empty()) {
        const RegisterInfo* group = pending.back();
        pending.pop_back();
        for (std::int32_t index = 0; index < group->as.group.childCount; ++index) {
            const RegisterInfo* child = group->as.group.children[index];
            if (isGroup(child)) {
                push(child, group);
            } else if (child != nullptr) {
                placeById_.emplace(child->parameterId, Place{child, group});
            }
        }
        push(group->next, parentOfGroup_.at(group));
    }
}

const RegisterInfo* RegisterInfoTree::find(int id) const {
    const auto place = placeById_.find(id);
    return place == placeById_.end() ? nullptr : place->second.record;
}

std::vector<const RegisterInfo*> RegisterInfoTree::groupsOf(int id) const {
    std::vector<const RegisterInfo*> groups;
    const auto place = placeById_.find(id);
    const RegisterInfo* group = place == placeById_.end() ? nullptr : place->second.group;
    for (; group != nullptr; group = parentOfGroup_.at(group)) {
        groups.push_back(group);
    }
    std::reverse(groups.begin(), groups.end());
    return groups;
}

}  // namespace quillon
