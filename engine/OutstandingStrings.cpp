#include "engine/OutstandingStrings.h"

#include <algorithm>

namespace quillon {

char* OutstandingStrings::handOut(std::string_view text) {
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    char* const string = copy.get();
    const std::lock_guard guard(lock_);
    strings_.emplace(string, std::move(copy));
    return string;
}

bool OutstandingStrings::takeBack(const void* string) {
    const std::lock_guard guard(lock_);
    return strings_.erase(string) != 0;
}

}  // namespace quillon
