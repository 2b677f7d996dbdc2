#include "engine/PropertyStore.h"

#include <boost/algorithm/string/case_conv.hpp>

namespace quillon {

using orlo::templates::platform::RecursiveMutexGuard;

namespace {
const std::string Separator = "::";
}

std::string PropertyStore::folded(std::string text) const {
    if (!caseSensitive_) {
        boost::algorithm::to_upper(text);
    }
    return text;
}

void PropertyStore::store(const std::string& section, const std::string& name, const std::string& value) {
    const std::string key = section + Separator + name;
    const RecursiveMutexGuard guard(propertyStoreLock);
    if (key.empty()) {
        return;
    }
    // What ends in a separator has no name, however many stand before it: a listing splits at the first, this does not.
    if (sectioned_ &&
        (key.find(Separator) == std::string::npos || key.starts_with(Separator) || key.ends_with(Separator))) {
        return;
    }
    propertyStore[folded(key)] = value;
}

std::set<std::string> PropertyStore::names(const std::string& section) const {
    std::set<std::string> result;
    if (!sectioned_) {
        return result;
    }
    const std::string wanted = folded(section);
    const RecursiveMutexGuard guard(propertyStoreLock);
    for (const auto& [key, value] : propertyStore) {
        const std::size_t separator = key.find(Separator);
        if (key.compare(0, separator, wanted) == 0) {
            result.insert(key.substr(separator + Separator.size()));
        }
    }
    return result;
}

std::string PropertyStore::value(const std::string& section, const std::string& name) const {
    const RecursiveMutexGuard guard(propertyStoreLock);
    const auto found = propertyStore.find(folded(section + Separator + name));
    return found != propertyStore.end() ? found->second : defaultValue_;
}

}  // namespace quillon
