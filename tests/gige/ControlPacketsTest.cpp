#include <gtest/gtest.h>

#include "tests/gige/Packets.h"

namespace quillon::gige {
namespace {

TEST(ControlPackets, AreRead) {
    const Bytes packet = bytes("42 01 00 80 00 04 12 34 00 00 0a 00");
    const auto request = parseRequest(packet);
    ASSERT_TRUE(request);
    EXPECT_TRUE(request->acknowledge);
    EXPECT_EQ(request->command, static_cast<std::uint16_t>(Command::ReadRegister));
    EXPECT_EQ(request->id, 0x1234);
    EXPECT_EQ(Bytes(request->data.begin(), request->data.end()), bytes("00 00 0a 00"));
    EXPECT_FALSE(parseRequest(bytes("42 00 00 80 00 00 00 01"))->acknowledge);
}

TEST(ControlPackets, OfAnotherKindAreNone) {
    EXPECT_FALSE(parseRequest(Bytes()));
    EXPECT_FALSE(parseRequest(bytes("42 01 00 80 00 00 00"))) << "no whole head";
    EXPECT_FALSE(parseRequest(bytes("43 01 00 80 00 00 00 01"))) << "another key";
    EXPECT_FALSE(parseRequest(bytes("42 01 00 80 00 00 00 00"))) << "id 0";
    EXPECT_FALSE(parseRequest(bytes("42 01 00 80 00 04 00 01 00 00"))) << "shorter than it says";
    EXPECT_FALSE(parseRequest(bytes("42 01 00 80 00 00 00 01 00 00"))) << "longer than it says";
    Bytes longest = request(Command::WriteMemory, Bytes(MostData));
    EXPECT_TRUE(parseRequest(longest));
    longest = request(Command::WriteMemory, Bytes(MostData + 4));
    EXPECT_FALSE(parseRequest(longest));
}

TEST(ControlPackets, AreAnswered) {
    const Bytes packet = request(Command::ReadRegister, words({0xA00}), 0x1234);
    const auto parsed = parseRequest(packet);
    EXPECT_EQ(acknowledge(*parsed, Status::Success, words({2})), bytes("00 00 00 81 00 04 12 34 00 00 00 02"));
    EXPECT_EQ(acknowledge(*parsed, Status::AccessDenied, words({2})), bytes("80 06 00 81 00 00 12 34"));
    EXPECT_EQ(pending(*parsed, 1000), bytes("00 00 00 89 00 04 12 34 00 00 03 e8"));
}

TEST(ControlPackets, AskForPacketsAgain) {
    const auto resend = parseResend(bytes("00 00 00 07 ff 00 00 01 00 00 00 10"));
    ASSERT_TRUE(resend);
    EXPECT_EQ(resend->frame, 7);
    EXPECT_EQ(resend->first, 1U) << "24 bits";
    EXPECT_EQ(resend->last, 16U);
    EXPECT_FALSE(parseResend(bytes("00 00 00 07 00 00 00 01")));
}

}  // namespace
}  // namespace quillon::gige
