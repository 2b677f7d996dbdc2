#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// Appends the text with the five characters that mean something in XML replaced: " & ' < >. All other bytes stay as
/// they are.
void appendXmlString(std::string& out, std::string_view text);

/// The text as appendXmlString() appends it.
std::string xmlStringFilter(std::string_view text);

/// The letters, digits and underscores of the text, without a digit or underscore that is its very first byte. The
/// text's position counts and not the result's: "-1a" becomes "1a".
std::string xmlNameFilter(std::string_view text);

}  // namespace quillon
