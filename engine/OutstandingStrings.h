#pragma once

#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>

namespace quillon {

/// The strings that reads have handed out and that were not given back; what is left goes with this object.
///
/// Usable from any thread. The lock is this set's own: a read that hands a string out holds the parameter lock as well,
/// a release does not, and so never waits for a parameter call.
class OutstandingStrings {
public:
    /// A copy of `text` that is the caller's until it is taken back.
    char* handOut(std::string_view text);
    /// Releases a string. False if it is not outstanding; nothing is read through the pointer.
    bool takeBack(const void* string);

private:
    std::mutex lock_;
    std::unordered_map<const void*, std::unique_ptr<char[]>> strings_;
};

}  // namespace quillon
