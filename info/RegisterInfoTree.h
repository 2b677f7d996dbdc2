#pragma once

#include <map>
#include <vector>

#include "quillon/RegisterInfo.h"

namespace quillon {

/// The design's own description, as the SDK library holds it, searched by parameter id. The records are borrowed.
///
/// Records are met in the order of a walk with a stack of groups that begins with the head: a group's children are
/// looked through first, then the group behind it goes on top of its child groups. Records at the top level that are no
/// groups are not met, and the chain of groups ends in front of one. Of several records with one id the first that is
/// met counts.
class RegisterInfoTree {
public:
    /// `head` may be null; nothing is found then.
    explicit RegisterInfoTree(const RegisterInfo* head);

    /// The record of parameter `id`, or null.
    const RegisterInfo* find(int id) const;
    /// The groups that hold the record of parameter `id`, from the top-level group down to its immediate parent.
    std::vector<const RegisterInfo*> groupsOf(int id) const;

private:
    struct Place {
        const RegisterInfo* record;
        const RegisterInfo* group;
    };

    std::map<int, Place> placeById_;
    std::map<const RegisterInfo*, const RegisterInfo*> parentOfGroup_;
};

}  // namespace quillon
