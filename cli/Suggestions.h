#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillon::cli {

/// The candidate that `word` was probably meant to be, without regard to case; nothing if none comes near.
std::optional<std::string> nearest(std::string_view word, std::span<const std::string> candidates);

/// ", did you mean FG_WIDTH?", or nothing.
std::string didYouMean(std::string_view word, std::span<const std::string> candidates);

}  // namespace quillon::cli
