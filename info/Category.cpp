#include "info/Category.h"

#include <algorithm>

namespace quillon {

Category::Category(const std::string& categoryName, Category* parent) : name_(categoryName) {
    if (parent != nullptr) {
        parent->addChild(this);
    }
}

Category* Category::getChild(unsigned int index) const {
    return index < children_.size() ? children_[index].get() : nullptr;
}

Category* Category::getChild(const std::string& childName) const {
    const auto child =
        std::find_if(children_.begin(), children_.end(),
                     [&](const std::unique_ptr<Category>& candidate) { return candidate->name_ == childName; });
    return child == children_.end() ? nullptr : child->get();
}

const std::string& Category::getFeature(unsigned int index) const {
    static const std::string none;
    return index < features_.size() ? features_[index] : none;
}

bool Category::hasFeature(const std::string& feature) const {
    return std::find(features_.begin(), features_.end(), feature) != features_.end();
}

}  // namespace quillon
