#include "info/Category.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(Category, HoldsItsFeaturesInOrder) {
    Category category("Root");
    category.addFeature("B");
    category.addFeature("A");

    EXPECT_EQ(category.getName(), "Root");
    EXPECT_EQ(category.getFeatureCount(), 2U);
    EXPECT_EQ(category.getFeature(0), "B");
    EXPECT_EQ(category.getFeature(1), "A");
    EXPECT_EQ(category.getFeature(2), "");
    EXPECT_TRUE(category.hasFeature("A"));
    EXPECT_FALSE(category.hasFeature("a"));
    EXPECT_FALSE(category.hasFeature(""));
}

TEST(Category, ThatIsMadeWithAParentIsItsLastChild) {
    Category root("Root");
    Category* first = new Category("First", &root);
    Category* second = new Category("Second", &root);
    Category* again = new Category("First", &root);

    EXPECT_EQ(root.getChildCount(), 3U);
    EXPECT_EQ(root.getChild(0U), first);
    EXPECT_EQ(root.getChild(1U), second);
    EXPECT_EQ(root.getChild(2U), again);
    EXPECT_EQ(root.getChild(3U), nullptr);
    EXPECT_EQ(root.getChild("First"), first);
    EXPECT_EQ(root.getChild("Firs"), nullptr);
    EXPECT_TRUE(root.hasChild("Second"));
    EXPECT_FALSE(root.hasChild("Root"));
}

}  // namespace
}  // namespace quillon
