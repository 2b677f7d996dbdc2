#include "tests/frames/Bench.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <numeric>

namespace quillon::frames_test {

std::vector<softboard_move> profile(const std::vector<std::pair<double, double>>& legs) {
    std::vector<softboard_move> moves;
    double until = 0.0;
    for (const auto& [lasts, speed] : legs) {
        until += lasts;
        moves.push_back({until, speed});
    }
    return moves;
}

TemporaryPicture::TemporaryPicture(const std::string& name, const std::string& content)
    : path_(std::filesystem::path(testing::TempDir()) / (std::to_string(getpid()) + "_" + name)) {
    std::ofstream(path_, std::ios::binary) << content;
}

TemporaryPicture::~TemporaryPicture() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

std::string greyRows(unsigned width, const std::vector<int>& rows) {
    std::string text = "P5 " + std::to_string(width) + " " + std::to_string(rows.size()) + " 255\n";
    for (const int row : rows) {
        text += std::string(width, static_cast<char>(row));
    }
    return text;
}

void Bench::takeSingleLines(unsigned most) {
    useCamera(Width, 1);
    memory = memoryOf(most, Width * 3);
    acquire(-1, memory);
}

void Bench::useEncoder(int filter, int leading) {
    set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);
    set(FG_LINETRIGGERINSRC, static_cast<int>(TrackA));
    set(FG_SHAFTENCODERINSRC, static_cast<int>(TrackB));
    set(FG_SHAFTENCODERON, FG_ON);
    set(FG_SHAFTENCODERMODE, filter);
    set(FG_SHAFTENCODERLEADING, leading);
}

void Bench::memorySize(std::int64_t bits, std::int64_t address) {
    built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", bits);
    built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", address);
}

std::string Bench::message() {
    std::array<char, 1024> text{};
    EXPECT_EQ(softboard_last_message(device(), text.data(), text.size()), 0);
    return text.data();
}

double Bench::position() {
    double mm = -1.0;
    EXPECT_EQ(softboard_belt_position(device(), &mm), 0);
    return mm;
}

std::vector<int> Bench::rowsOf(const Frame& frame) {
    std::vector<int> result;
    const std::size_t stride = std::size_t{frame.about.width} * 3;
    for (std::size_t at = 0; at < frame.bytes.size() && stride > 0; at += stride) {
        result.push_back(std::to_integer<int>(frame.bytes[at]));
    }
    return result;
}

std::vector<int> Bench::rows() {
    std::vector<int> result;
    for (std::int64_t number = 1, last = pictures(); number <= last; ++number) {
        result = together(result, rowsOf(frame(memory, number)));
    }
    return result;
}

std::vector<int> fromTo(int first, int last) {
    std::vector<int> result(last < first ? 0 : static_cast<std::size_t>(last - first + 1));
    std::iota(result.begin(), result.end(), first);
    return result;
}

std::vector<int> together(std::vector<int> first, const std::vector<int>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

}  // namespace quillon::frames_test
