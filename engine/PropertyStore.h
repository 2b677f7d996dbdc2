#pragma once

#include <map>
#include <set>
#include <string>

#include "support/Locks.h"

namespace quillon {

/// Named values in sections, kept under keys of the form SECTION::NAME. Usable from any thread.
class PropertyStore {
public:
    /// With `sectioned`, keys must have a section. Without `caseSensitive`, keys and sections are upper-cased before
    /// use.
    PropertyStore(bool sectioned, bool caseSensitive) : sectioned_(sectioned), caseSensitive_(caseSensitive) {}

    /// Assigns `value`. A key in which "::" is missing, or stands at the start or at the very end, is dropped.
    void store(const std::string& section, const std::string& name, const std::string& value);
    /// The names of a section, in ascending order.
    std::set<std::string> names(const std::string& section) const;
    /// The value of a key; an empty text if it is not there.
    std::string value(const std::string& section, const std::string& name) const;

private:
    std::string folded(std::string text) const;

    std::map<std::string, std::string> propertyStore;
    mutable orlo::templates::platform::RecursiveMutex propertyStoreLock;
    bool sectioned_;
    bool caseSensitive_;
    std::string defaultValue_;
};

}  // namespace quillon
