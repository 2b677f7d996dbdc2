#include "tests/gige/OwnNetwork.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <string>

namespace quillon::gige {
namespace {

bool write(const char* file, const std::string& text) {
    std::ofstream out(file);
    return static_cast<bool>(out << text << std::flush);
}

/// Waits until no other such program has the computer's network, and has it until this one ends.
void takeTurns() {
    const int file = open("/tmp/quillon-gige-tests.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0 || flock(file, LOCK_EX) != 0) {
        std::cout << "there is no way to take turns\n";
    }
}

/// An ordinary user has networks of its own only as the root of a world of its own.
bool leaveWorld() {
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0 && write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", "0 " + user + " 1") && write("/proc/self/gid_map", "0 " + group + " 1");
}

bool raiseLoopback() {
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    bool done = ioctl(descriptor, SIOCGIFFLAGS, &request) == 0;
    request.ifr_flags |= IFF_UP;
    done = done && ioctl(descriptor, SIOCSIFFLAGS, &request) == 0;
    close(descriptor);
    return done;
}

class OwnNetwork final : public testing::Environment {
public:
    void SetUp() override {
        if (!enterOwnNetwork()) {
            std::cout << "there is no network of its own: these tests take turns with that of the computer\n";
            takeTurns();
        }
    }
};

const testing::Environment* const ownNetwork = testing::AddGlobalTestEnvironment(new OwnNetwork);

}  // namespace

bool enterOwnNetwork() {
    return (unshare(CLONE_NEWNET) == 0 || leaveWorld()) && raiseLoopback();
}

}  // namespace quillon::gige
