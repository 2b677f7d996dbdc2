#include "softboard/dispatcher.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

using Handle = std::uint64_t;

/// The table that a client binds to.
struct Descriptor {
    void (*attach)(const void*, void (*)(), void (*)(Handle, int), void (**)(const char*, Handle*, int*),
                   void (**)(Handle, int, const char*, int, void*));
    void (*detach)(const void*);
};

int detached = 0;
std::vector<std::pair<Handle, int>> levelsTold;
std::vector<std::string> sunk;

void onDetach() {
    ++detached;
}
void onSetLevel(Handle handle, int level) {
    levelsTold.emplace_back(handle, level);
}
void sink(const char* logger, int level, const char* text) {
    sunk.push_back(std::to_string(level) + " " + logger + " " + text);
}

class Dispatcher : public testing::Test {
protected:
    void SetUp() override {
        detached = 0;
        levelsTold.clear();
        sunk.clear();
        descriptor = static_cast<const Descriptor*>(dlsym(RTLD_DEFAULT, "logging_dispatcher_descriptor"));
        ASSERT_NE(descriptor, nullptr);
        descriptor->attach(this, onDetach, onSetLevel, &getLogger, &write);
    }
    void TearDown() override {
        descriptor->detach(this);
        dispatcher_set_level(nullptr, 7);
        dispatcher_set_sink(nullptr);
    }
    Handle handleOf(const char* name) {
        Handle handle = 0;
        int level = 0;
        getLogger(name, &handle, &level);
        return handle;
    }
    int levelOf(const char* name) {
        Handle handle = 0;
        int level = 0;
        getLogger(name, &handle, &level);
        return level;
    }

    const Descriptor* descriptor = nullptr;
    void (*getLogger)(const char*, Handle*, int*) = nullptr;
    void (*write)(Handle, int, const char*, int, void*) = nullptr;
};

TEST_F(Dispatcher, GivesEveryNameItsHandle) {
    EXPECT_EQ(handleOf("orlo.one"), handleOf("orlo.one"));
    EXPECT_NE(handleOf("orlo.one"), handleOf("orlo.two"));
    EXPECT_NE(handleOf("orlo.one"), 0U);
}

TEST_F(Dispatcher, IsSilentUntilALevelIsSet) {
    EXPECT_EQ(levelOf("orlo.one"), 7);
}

TEST_F(Dispatcher, TellsItsClientsAboutANewLevel) {
    const Handle one = handleOf("orlo.one");
    dispatcher_set_level("orlo.one", 4);
    EXPECT_EQ(levelsTold, (std::vector<std::pair<Handle, int>>{{one, 4}}));
    EXPECT_EQ(levelOf("orlo.one"), 4);
    EXPECT_EQ(levelOf("orlo.two"), 7);
}

TEST_F(Dispatcher, RemembersALevelForALoggerThatComesLater) {
    dispatcher_set_level("orlo.later", 5);
    EXPECT_TRUE(levelsTold.empty());
    EXPECT_EQ(levelOf("orlo.later"), 5);
}

TEST_F(Dispatcher, SetsAllLoggersWithoutAName) {
    handleOf("orlo.one");
    dispatcher_set_level(nullptr, 3);
    EXPECT_EQ(levelOf("orlo.one"), 3);
    EXPECT_EQ(levelOf("orlo.new"), 3);
}

TEST_F(Dispatcher, GivesMessagesToTheSink) {
    dispatcher_set_sink(sink);
    write(handleOf("orlo.one"), 5, "thread-id=1|text", 0, nullptr);
    write(9999, 6, "lost", 0, nullptr);
    EXPECT_EQ(sunk, (std::vector<std::string>{"5 orlo.one thread-id=1|text", "6 ? lost"}));
}

TEST_F(Dispatcher, DetachesAllClientsAndForgetsThem) {
    dispatcher_detach_all();
    EXPECT_EQ(detached, 1);
    EXPECT_EQ(dispatcher_client_count(), 0);
    dispatcher_set_level("orlo.one", 4);
    EXPECT_TRUE(levelsTold.empty());
}

TEST_F(Dispatcher, ForgetsAClientThatLeaves) {
    EXPECT_EQ(dispatcher_client_count(), 1);
    descriptor->detach(this);
    EXPECT_EQ(dispatcher_client_count(), 0);
    dispatcher_detach_all();
    EXPECT_EQ(detached, 0);
}

TEST(DispatcherFile, GetsALineForEveryMessageFromTheEnvironmentsLevelOn) {
    const std::string name = testing::TempDir() + "softboard_dispatcher.log";
    std::remove(name.c_str());
    setenv("ORLO_LOG_FILE", name.c_str(), 1);
    setenv("ORLO_LOG_LEVEL", "4", 1);
    // A copy under another name is another library, which reads the environment anew.
    const std::string copy = testing::TempDir() + "libdispatcher_copy.so";
    std::ofstream(copy, std::ios::binary) << std::ifstream(DISPATCHER_FILE, std::ios::binary).rdbuf();
    void* const library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto* const descriptor = static_cast<const Descriptor*>(dlsym(library, "logging_dispatcher_descriptor"));
    ASSERT_NE(descriptor, nullptr);
    void (*getLogger)(const char*, Handle*, int*) = nullptr;
    void (*write)(Handle, int, const char*, int, void*) = nullptr;
    int context = 0;
    descriptor->attach(&context, onDetach, onSetLevel, &getLogger, &write);
    unsetenv("ORLO_LOG_FILE");
    unsetenv("ORLO_LOG_LEVEL");
    Handle handle = 0;
    int level = 0;
    getLogger("orlo.wrapper.Quillon", &handle, &level);
    EXPECT_EQ(level, 4);
    write(handle, 5, "thread-id=7|message", 0, nullptr);
    std::ifstream file(name);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "5 orlo.wrapper.Quillon thread-id=7|message\n");
    dlclose(library);
    std::remove(copy.c_str());
    std::remove(name.c_str());
}

}  // namespace
