#include "wrapper/TemporaryFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace quillon {
namespace {

TEST(TempFile, IsCreatedUnderItsPatternAndRemovedAgain) {
    char* const path = createTempFile();
    ASSERT_NE(path, nullptr);
    const std::string name = path;
    EXPECT_EQ(name.size(), 21U);
    EXPECT_EQ(name.substr(0, 10), "/tmp/coef-");
    EXPECT_EQ(name.substr(16), ".tiff");
    EXPECT_NE(name.substr(10, 6), "XXXXXX");
    EXPECT_TRUE(std::filesystem::exists(name));
    deleteTempFile(path);
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST(TempFile, HasANameOfItsOwn) {
    char* const first = createTempFile();
    char* const second = createTempFile();
    EXPECT_STRNE(first, second);
    deleteTempFile(first);
    deleteTempFile(second);
}

TEST(TempFile, HoldsNoDescriptor) {
    const int before = dup(STDERR_FILENO);
    ASSERT_GE(before, 0);
    close(before);
    char* const path = createTempFile();
    ASSERT_NE(path, nullptr);
    const int after = dup(STDERR_FILENO);
    close(after);
    deleteTempFile(path);
    EXPECT_EQ(after, before);
}

TEST(TempFile, MayHaveTheFirstDescriptor) {
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    char* const path = createTempFile();
    dup2(input, STDIN_FILENO);
    close(input);
    ASSERT_NE(path, nullptr);
    EXPECT_TRUE(std::filesystem::exists(path));
    deleteTempFile(path);
}

}  // namespace
}  // namespace quillon
