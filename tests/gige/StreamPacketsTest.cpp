#include <gtest/gtest.h>

#include "gige/StreamPackets.h"
#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

template <typename Packet>
Bytes listed(const Packet& packet) {
    return {packet.begin(), packet.end()};
}

constexpr StreamFrame Frame{0x0102, 0x1112131415161718, 0x02180014, 640, 480, 8, 16};

TEST(StreamPackets, LeadAFrame) {
    EXPECT_EQ(listed(leader(Frame)), bytes("00 00 01 02 01 00 00 00  00 00 00 01 11 12 13 14 15 16 17 18 02 18 00 14 "
                                           "00 00 02 80 00 00 01 e0 00 00 00 08 00 00 00 10 00 00 00 00"));
}

TEST(StreamPackets, CarryAFrame) {
    EXPECT_EQ(listed(payloadHead(Frame, 0x010203)), bytes("00 00 01 02 03 01 02 03"));
}

TEST(StreamPackets, EndAFrame) {
    EXPECT_EQ(listed(trailer(Frame, 9)), bytes("00 00 01 02 02 00 00 09 00 00 00 01 00 00 01 e0"));
}

TEST(StreamPackets, AreAsManyAsTheFrameNeeds) {
    EXPECT_EQ(payloadOf(1400), 1364U);
    EXPECT_EQ(packetsOf(1, 1400), 3U);
    EXPECT_EQ(packetsOf(1364, 1400), 3U);
    EXPECT_EQ(packetsOf(1365, 1400), 4U);
    EXPECT_EQ(packetsOf(0, 1400), 2U);
}

}  // namespace
}  // namespace quillon::gige
