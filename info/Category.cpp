#include "info/Category.h"

#include <algorithm>

namespace quillon {

Category::Category(const std::string& categoryName, Category* parent) : name(categoryName) {
    if (parent != nullptr) {
        parent->addChild(this);
    }
}

Category* Category::getChild(unsigned int index) const {
    return index < children.size() ? children[index].get() : nullptr;
}

Category* Category::getChild(const std::string& childName) const {
    const auto child = std::find_if(children.begin(), children.end(), [&](const std::unique_ptr<Category>& candidate) {
        return candidate->name == childName;
    });
    return child == children.end() ? nullptr : child->get();
}

const std::string& Category::getFeature(unsigned int index) const {
    static const std::string none;
    return index < features.size() ? features[index] : none;
}

bool Category::hasFeature(const std::string& feature) const {
    return std::find(features.begin(), features.end(), feature) != features.end();
}

}  // namespace quillon
