#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>

namespace quillon {

/// The strings that reads have handed out and that were not given back; what is left goes with this object.
class OutstandingStrings {
public:
    /// A copy of `text` that is the caller's until it is taken back.
    char* handOut(std::string_view text);
    /// Releases a string. False if it is not outstanding; nothing is read through the pointer.
    bool takeBack(const void* string);

private:
    std::unordered_map<const void*, std::unique_ptr<char[]>> strings_;
};

}  // namespace quillon
