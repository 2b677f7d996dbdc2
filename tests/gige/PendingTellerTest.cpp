#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

#include "gige/PendingTeller.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

using namespace std::chrono_literals;

constexpr Peer Viewer{0x7F000001, 50000};

class PendingAnswers : public testing::Test {
protected:
    std::mutex mutex;
    std::vector<std::pair<Peer, Bytes>> told;
    std::promise<void> twice;
    PendingTeller teller{[this](const Peer& to, std::span<const std::byte> packet) {
                             const std::lock_guard guard(mutex);
                             told.emplace_back(to, Bytes(packet.begin(), packet.end()));
                             if (told.size() == 2) {
                                 twice.set_value();
                             }
                         },
                         20ms};
};

TEST_F(PendingAnswers, AreToldAgainAndAgainUntilTheyCome) {
    teller.begin(Viewer, request(Command::WriteRegister, words({0, 0}), 0x1234));
    ASSERT_EQ(twice.get_future().wait_for(10s), std::future_status::ready);
    teller.end();
    const std::size_t count = [this] {
        const std::lock_guard guard(mutex);
        return told.size();
    }();
    EXPECT_EQ(told[0].first, Viewer);
    EXPECT_EQ(told[0].second, bytes("00 00 00 89 00 04 12 34 00 00 03 e8")) << "within 1000 ms";
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(told.size(), count) << "nothing follows the answer";
}

TEST_F(PendingAnswers, AreOfNoConcernToWhoWantsNone) {
    teller.begin(Viewer, request(Command::WriteRegister, words({0, 0}), 1, false));
    std::this_thread::sleep_for(100ms);
    teller.end();
    teller.begin(Viewer, bytes("00 01 02"));
    std::this_thread::sleep_for(100ms);
    teller.end();
    teller.begin(Viewer, request(Command::PacketResend, words({1, 1, 2})));
    std::this_thread::sleep_for(100ms);
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace quillon::gige
