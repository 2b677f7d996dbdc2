#pragma once

#include <string>
#include <string_view>

namespace quillon::cli {

/// A text of any origin in valid UTF-8. What is UTF-8 stays as it is; any other byte is read as Latin-1, and one that
/// is no printable character there becomes U+FFFD.
std::string asUtf8(std::string_view text);

}  // namespace quillon::cli
