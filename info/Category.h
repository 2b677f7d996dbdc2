#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A category of the XML document: its features in order of adding, and the categories below it.
class Category {
public:
    /// With a `parent` the new category becomes its last child and is owned by it, so it must come from `new`.
    explicit Category(const std::string& name, Category* parent = nullptr);

    /// Takes ownership.
    void addChild(Category* child) { children_.emplace_back(child); }
    void addFeature(const std::string& feature) { features_.push_back(feature); }

    const std::string& getName() const { return name_; }
    unsigned int getChildCount() const { return static_cast<unsigned int>(children_.size()); }
    unsigned int getFeatureCount() const { return static_cast<unsigned int>(features_.size()); }
    Category* getChild(unsigned int index) const;             ///< null out of range
    Category* getChild(const std::string& childName) const;   ///< the first of that name, or null
    const std::string& getFeature(unsigned int index) const;  ///< empty out of range
    bool hasChild(const std::string& childName) const { return getChild(childName) != nullptr; }
    bool hasFeature(const std::string& feature) const;

private:
    std::string name_;
    std::vector<std::unique_ptr<Category>> children_;
    std::vector<std::string> features_;
};

}  // namespace quillon
