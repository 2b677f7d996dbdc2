// The exported mkstemps.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "client/testing/BuiltApplet.h"
#include "tests/files/TemporaryFolder.h"

namespace quillon::client {
namespace {

class Mkstemps : public TemporaryFolder {
protected:
    int mkstemps(std::string& pattern, int suffixLength) {
        return library.functions().mkstemps(pattern.data(), suffixLength);
    }

    /// Creates a file of six letters in the folder and answers the number that they stand for.
    std::uint64_t createNumbered() {
        std::string name = path("XXXXXX");
        const int descriptor = mkstemps(name, 0);
        EXPECT_GE(descriptor, 0);
        close(descriptor);
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < 6; ++i) {
            number = number * 62 + Alphabet.find(name[name.size() - 1 - i]);
        }
        return number;
    }
    /// Six letters for `number`, the lowest digit first.
    static std::string letters(std::uint64_t number) {
        std::string text;
        for (int i = 0; i < 6; ++i) {
            text += Alphabet[number % 62];
            number /= 62;
        }
        return text;
    }
    static std::uint64_t uptime() {
        struct sysinfo system {};
        EXPECT_EQ(sysinfo(&system), 0);
        return static_cast<std::uint64_t>(system.uptime);
    }

    static inline const std::string Alphabet = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

    Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
};

TEST_F(Mkstemps, ReplacesTheSixLettersAndCreatesTheFile) {
    const std::string before = path("a-XXXXXX.txt");
    std::string name = before;
    const int descriptor = mkstemps(name, 4);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(name.size(), before.size());
    EXPECT_EQ(name.substr(0, name.size() - 10), before.substr(0, before.size() - 10));
    EXPECT_EQ(name.substr(name.size() - 4), ".txt");
    const std::string letters = name.substr(name.size() - 10, 6);
    EXPECT_NE(letters, "XXXXXX");
    EXPECT_EQ(letters.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"),
              std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(name));
    close(descriptor);
}

TEST_F(Mkstemps, GivesADescriptorForReadingAndWritingToTheOwnerAlone) {
    std::string name = path("XXXXXX");
    const int descriptor = mkstemps(name, 0);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(fcntl(descriptor, F_GETFL) & O_ACCMODE, O_RDWR);
    struct stat status {};
    ASSERT_EQ(fstat(descriptor, &status), 0);
    EXPECT_EQ(status.st_mode & 0777U & ~0600U, 0U);
    EXPECT_EQ(status.st_size, 0);
    close(descriptor);
}

TEST_F(Mkstemps, RefusesANullTemplate) {
    // The C library declares that its function never gets null, and a caller through that declaration is held to it.
    int (*const callable)(char*, int) = library.functions().mkstemps;
    errno = 0;
    EXPECT_EQ(callable(nullptr, 0), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(Mkstemps, RefusesATemplateThatIsTooShort) {
    std::string name = "abc";
    EXPECT_EQ(mkstemps(name, 0), -1);
    EXPECT_EQ(name, "abc");
    name = "XXXXXX.txt";
    EXPECT_EQ(mkstemps(name, 5), -1);
    name = "";
    EXPECT_EQ(mkstemps(name, 0), -1);
    name = "XXXXXX";
    EXPECT_EQ(mkstemps(name, 2147483647), -1);
    EXPECT_EQ(name, "XXXXXX");
}

TEST_F(Mkstemps, RefusesATemplateWithoutTheLettersBeforeTheSuffix) {
    for (const char* bad : {"a-XXXXX.txt", "a-XXXXXXtxt", "a-xxxxxx.txt", "XXXXXXabcd.txt"}) {
        std::string name = path(bad);
        const std::string before = name;
        EXPECT_EQ(mkstemps(name, 4), -1) << bad;
        EXPECT_EQ(name, before);
    }
}

TEST_F(Mkstemps, RefusesANegativeSuffix) {
    std::string name = path("a-XXXXXX");
    EXPECT_EQ(mkstemps(name, -1), -1);
    EXPECT_EQ(mkstemps(name, -2147483647), -1);
}

TEST_F(Mkstemps, GivesEveryCallAFileOfItsOwn) {
    std::set<std::string> names;
    for (int i = 0; i < 50; ++i) {
        std::string name = path("XXXXXX.tmp");
        const int descriptor = mkstemps(name, 4);
        ASSERT_GE(descriptor, 0);
        close(descriptor);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 50U);
}

TEST_F(Mkstemps, CountsTheSystemsUptimeOnFromCallToCall) {
    const std::uint64_t first = createNumbered();
    const std::uint64_t before = uptime();
    const std::uint64_t second = createNumbered();
    const std::uint64_t after = uptime();
    EXPECT_GE(second - first, before);
    EXPECT_LE(second - first, after);
}

TEST_F(Mkstemps, GoesOn7777BehindANameThatIsTaken) {
    const std::uint64_t first = createNumbered();
    const std::uint64_t before = uptime();
    // The next number is the uptime further, and the clock runs on meanwhile.
    for (std::uint64_t seconds = 0; seconds <= 60; ++seconds) {
        write(letters(first + before + seconds), "");
    }
    const std::uint64_t second = createNumbered();
    const std::uint64_t after = uptime();
    ASSERT_LE(after, before + 60);
    EXPECT_GE(second - first, before + 7777);
    EXPECT_LE(second - first, after + 7777);
}

TEST_F(Mkstemps, MayGiveTheFirstDescriptor) {
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    std::string name = path("a-XXXXXX");
    const int descriptor = mkstemps(name, 0);
    dup2(input, STDIN_FILENO);
    close(input);
    EXPECT_EQ(descriptor, STDIN_FILENO);
    EXPECT_TRUE(std::filesystem::exists(name));
}

TEST_F(Mkstemps, ClearsTheTemplateWhenNoTrySucceeds) {
    std::string name = path("no such folder/XXXXXX");
    EXPECT_EQ(mkstemps(name, 0), -1);
    EXPECT_EQ(name.front(), '\0');
}

}  // namespace
}  // namespace quillon::client
