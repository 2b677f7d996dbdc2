#include "cli/Suggestions.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <vector>

namespace quillon::cli {

namespace {

std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return upper;
}

/// Insertions, deletions, replacements and swaps of neighbours that turn one text into the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last[to.size()];
}

}  // namespace

std::optional<std::string> nearest(std::string_view word, std::span<const std::string> candidates) {
    const std::string wanted = upperCase(word);
    const std::string* best = nullptr;
    // A third of the letters may be wrong; a name that only lacks its "FG_" is near, too.
    std::size_t bestDistance = std::max<std::size_t>(2, wanted.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        const std::string other = upperCase(candidate);
        const std::size_t distance = other == "FG_" + wanted ? 0 : editDistance(wanted, other);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = &candidate;
        }
    }
    return best != nullptr ? std::optional(*best) : std::nullopt;
}

std::string didYouMean(std::string_view word, std::span<const std::string> candidates) {
    const auto suggestion = nearest(word, candidates);
    return suggestion ? ", did you mean " + *suggestion + "?" : "";
}

}  // namespace quillon::cli
