#include <gmock/gmock.h>

#include <algorithm>

#include "quillon/client/Errors.h"
#include "quillon/client/Frames.h"

namespace quillon::client {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::byte> bytesOf(std::initializer_list<int> numbers) {
    std::vector<std::byte> bytes;
    std::ranges::transform(numbers, std::back_inserter(bytes),
                           [](int number) { return static_cast<std::byte>(number); });
    return bytes;
}

FrameDescription picture(std::uint32_t width, std::uint32_t lines, std::uint32_t bits) {
    FrameDescription description;
    description.width = width;
    description.lines = lines;
    description.bits = bits;
    return description;
}

/// The pixels of a frame's line 0.
std::vector<std::uint16_t> firstLine(const Frame& frame) {
    std::vector<std::uint16_t> line(std::size_t{3} * frame.width());
    frame.readLine(0, line);
    return line;
}

TEST(Frame, BlueComesFirstInMemory) {
    const auto bytes = bytesOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    const Frame frame(picture(2, 2, 8), bytes);
    EXPECT_EQ(frame.component(0, 0, Component::Blue), 1);
    EXPECT_EQ(frame.component(0, 0, Component::Green), 2);
    EXPECT_EQ(frame.component(0, 0, Component::Red), 3);
    EXPECT_EQ(frame.component(1, 1, Component::Blue), 10);
    EXPECT_EQ(frame.component(1, 1, Component::Red), 12);
    EXPECT_THAT(firstLine(frame), ElementsAre(3, 2, 1, 6, 5, 4));
}

TEST(Frame, RedComesFirstWhereItsDescriptionSaysSo) {
    const auto bytes = bytesOf({1, 2, 3, 4, 5, 6});
    FrameDescription description = picture(2, 1, 8);
    description.flags = static_cast<std::uint32_t>(FrameFlag::RedFirst);
    const Frame frame(description, bytes);
    EXPECT_EQ(frame.component(1, 0, Component::Red), 4);
    EXPECT_EQ(frame.component(1, 0, Component::Blue), 6);
    EXPECT_THAT(firstLine(frame), ElementsAre(1, 2, 3, 4, 5, 6));
}

// Two pixels each, written out by hand: the components are 1, 2, 3, 4, 5 and the largest value.

TEST(Frame, TenBitsAreOneStreamFromTheLowestBitOn) {
    const auto bytes = bytesOf({0x01, 0x08, 0x30, 0x00, 0x01, 0x05, 0xFC, 0x0F});
    const Frame frame(picture(2, 1, 10), bytes);
    EXPECT_THAT(firstLine(frame), ElementsAre(3, 2, 1, 1023, 5, 4));
    EXPECT_EQ(frame.component(1, 0, Component::Red), 1023);
}

TEST(Frame, TwelveBitsAreOneStreamFromTheLowestBitOn) {
    const auto bytes = bytesOf({0x01, 0x20, 0x00, 0x03, 0x40, 0x00, 0x05, 0xF0, 0xFF});
    EXPECT_THAT(firstLine(Frame(picture(2, 1, 12), bytes)), ElementsAre(3, 2, 1, 4095, 5, 4));
}

TEST(Frame, FourteenBitsAreOneStreamFromTheLowestBitOn) {
    const auto bytes = bytesOf({0x01, 0x80, 0x00, 0x30, 0x00, 0x10, 0x00, 0x05, 0xC0, 0xFF, 0x0F});
    EXPECT_THAT(firstLine(Frame(picture(2, 1, 14), bytes)), ElementsAre(3, 2, 1, 16383, 5, 4));
}

TEST(Frame, SixteenBitsHaveTheirLowByteFirst) {
    const auto bytes = bytesOf({0x01, 0x00, 0x02, 0x00, 0x03, 0x12, 4, 0, 5, 0, 0xFF, 0xFF});
    EXPECT_THAT(firstLine(Frame(picture(2, 1, 16), bytes)), ElementsAre(0x1203, 2, 1, 65535, 5, 4));
}

TEST(Frame, ALineAndItsPixelsAreTheSameInEveryFormat) {
    std::vector<std::byte> bytes(4 * 3 * 3 * 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::byte>(i * 37 + 11);
    }
    for (const std::uint32_t bits : {8U, 10U, 12U, 14U, 16U}) {
        const Frame frame(picture(4, 3, bits), bytes);
        std::vector<std::uint16_t> line(12);
        for (std::uint32_t y = 0; y < 3; ++y) {
            frame.readLine(y, line);
            for (std::uint32_t i = 0; i < 12; ++i) {
                EXPECT_EQ(line[i], frame.component(i / 3, y, static_cast<Component>(i % 3)))
                    << bits << " bits, line " << y << ", component " << i;
            }
        }
    }
}

TEST(Frame, TooFewBytesAreRefused) {
    const std::vector<std::byte> bytes(35);
    EXPECT_NO_THROW(Frame(picture(4, 2, 10), std::span(bytes).first(30)));
    EXPECT_THROW(Frame(picture(4, 2, 10), std::span(bytes).first(29)), ValueError);
    EXPECT_THROW(Frame(picture(4, 3, 8), bytes), ValueError);
    EXPECT_THROW(Frame(picture(0xFFFFFFFF, 0xFFFFFFFF, 16), bytes), ValueError);
}

TEST(Frame, AnUnknownNumberOfBitsIsRefused) {
    const std::vector<std::byte> bytes(100);
    try {
        const Frame frame(picture(1, 1, 9), bytes);
        FAIL() << "nine bits were taken";
    } catch (const ValueError& error) {
        EXPECT_THAT(error.what(), HasSubstr("not of 9"));
    }
}

TEST(Frame, APixelOutsideThePictureIsRefused) {
    const std::vector<std::byte> bytes(12);
    const Frame frame(picture(2, 2, 8), bytes);
    EXPECT_THROW(frame.component(2, 0, Component::Red), ValueError);
    EXPECT_THROW(frame.component(0, 2, Component::Red), ValueError);
    std::vector<std::uint16_t> line(6);
    EXPECT_THROW(frame.readLine(2, line), ValueError);
    line.resize(5);
    EXPECT_THROW(frame.readLine(0, line), ValueError);
}

TEST(Frame, APictureWithoutLinesHasNoBytes) {
    EXPECT_THAT(Frame(picture(4, 0, 8), {}).bytes(), IsEmpty());
}

TEST(Frame, FlagsHaveNames) {
    FrameDescription description;
    EXPECT_THAT(description.flagNames(), IsEmpty());
    description.flags = 1 | 8;
    EXPECT_TRUE(description.has(FrameFlag::Short));
    EXPECT_FALSE(description.has(FrameFlag::Truncated));
    EXPECT_THAT(description.flagNames(), ElementsAre("short", "lines lost"));
    description.flags = 127;
    EXPECT_THAT(description.flagNames(),
                ElementsAre("short", "gate ended", "truncated", "lines lost", "injected", "red first", "mixed"));
}

}  // namespace
}  // namespace quillon::client
