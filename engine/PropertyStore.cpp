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
    const RecursiveMutexGuard guard(lock_);
    if (key.empty()) {
        return;
    }
    if (sectioned_) {
        const std::size_t separator = key.find(Separator);
        if (separator == std::string::npos || separator == 0 || separator + Separator.size() == key.size()) {
            return;
        }
    }
    store_[folded(key)] = value;
}

std::set<std::string> PropertyStore::names(const std::string& section) const {
    std::set<std::string> result;
    if (!sectioned_) {
        return result;
    }
    const std::string wanted = folded(section);
    const RecursiveMutexGuard guard(lock_);
    for (const auto& [key, value] : store_) {
        const std::size_t separator = key.find(Separator);
        if (key.compare(0, separator, wanted) == 0) {
            result.insert(key.substr(separator + Separator.size()));
        }
    }
    return result;
}

std::string PropertyStore::value(const std::string& section, const std::string& name) const {
    const RecursiveMutexGuard guard(lock_);
    const auto found = store_.find(folded(section + Separator + name));
    return found != store_.end() ? found->second : defaultValue_;
}

}  // namespace quillon
