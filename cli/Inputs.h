/// @file
/// The digital inputs, as people name them.
#pragma once

#include <string>

#include "cli/Json.h"
#include "cli/Terminal.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

inline constexpr unsigned InputCount = 12;
inline constexpr unsigned FirstFrontInput = 8;

/// "GPI 0" to "GPI 7", "Front GPI 0" to "Front GPI 3".
std::string inputName(unsigned input);
/// "0", "gpi0", "front3", "FRONT_GPI_3", "11": the number from 0 to 11. Throws UsageError.
unsigned parseInput(const std::string& text);

/// The present levels on the board, a bit each.
std::uint64_t inputLevels(const client::SoftBoard& board);
void setInputLevels(client::SoftBoard& board, std::uint64_t levels);
/// Name and level of each input.
Json inputsToJson(std::uint64_t levels);

}  // namespace quillon::cli
