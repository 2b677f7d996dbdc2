#include "engine/PropertyStore.h"

#include <gmock/gmock.h>

namespace quillon {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(PropertyStore, KeepsTheLastValueOfAName) {
    PropertyStore store(true, true);
    store.store("none", "FG_A", "On");
    EXPECT_EQ(store.value("none", "FG_A"), "On");
    store.store("none", "FG_A", "Off");
    EXPECT_EQ(store.value("none", "FG_A"), "Off");
}

TEST(PropertyStore, AnswersNothingForANameThatIsNotThere) {
    const PropertyStore store(true, true);
    EXPECT_EQ(store.value("none", "FG_A"), "");
    EXPECT_THAT(store.names("none"), IsEmpty());
}

TEST(PropertyStore, ListsASectionInAscendingOrder) {
    PropertyStore store(true, true);
    store.store("none", "b", "1");
    store.store("none", "a", "2");
    store.store("none", "B", "3");
    store.store("other", "c", "4");
    store.store("nonesuch", "d", "5");
    EXPECT_THAT(store.names("none"), ElementsAre("B", "a", "b"));
}

TEST(PropertyStore, DropsAKeyWithoutASectionOrAName) {
    PropertyStore store(true, true);
    store.store("", "a", "1");
    store.store("none", "", "1");
    store.store("", "", "1");
    EXPECT_EQ(store.value("", "a"), "");
    EXPECT_EQ(store.value("none", ""), "");
    EXPECT_THAT(store.names(""), IsEmpty());
    EXPECT_THAT(store.names("none"), IsEmpty());
}

TEST(PropertyStore, DropsAKeyThatEndsInASeparatorWhateverStandsBeforeIt) {
    PropertyStore store(true, true);
    for (const char* name : {"A::", "::", "A::B::", ":::"}) {
        store.store("none", name, "1");
        EXPECT_EQ(store.value("none", name), "") << name;
    }
    EXPECT_THAT(store.names("none"), IsEmpty());
    store.store("none", "A:", "1");
    store.store("none", "::A", "1");
    EXPECT_THAT(store.names("none"), ElementsAre("::A", "A:"));
}

TEST(PropertyStore, SplitsAKeyAtItsFirstSeparator) {
    PropertyStore store(true, true);
    store.store("none", "a::b", "1");
    EXPECT_THAT(store.names("none"), ElementsAre("a::b"));
    EXPECT_THAT(store.names("none::a"), IsEmpty());
}

TEST(PropertyStore, TellsCasesApart) {
    PropertyStore store(true, true);
    store.store("none", "a", "1");
    EXPECT_EQ(store.value("NONE", "a"), "");
    EXPECT_EQ(store.value("none", "A"), "");
}

TEST(PropertyStore, FoldsToUpperCaseWhereCasesDoNotCount) {
    PropertyStore store(true, false);
    store.store("none", "a", "on");
    EXPECT_EQ(store.value("None", "A"), "on");
    EXPECT_THAT(store.names("nonE"), ElementsAre("A"));
}

TEST(PropertyStore, WithoutSectionsTakesEveryKeyAndListsNone) {
    PropertyStore store(false, true);
    store.store("", "a", "1");
    EXPECT_EQ(store.value("", "a"), "1");
    EXPECT_THAT(store.names(""), IsEmpty());
}

}  // namespace
}  // namespace quillon
