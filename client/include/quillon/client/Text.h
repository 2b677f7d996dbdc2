#pragma once

#include <string>
#include <string_view>

namespace quillon::client {

/// The applet's texts are Latin-1 (the unit of the times has the byte 0xB5); this is the same text in UTF-8.
std::string utf8(std::string_view latin1);

/// The shortest decimal form that reads back as the same number: "0.1", "1e+300", "nan".
std::string shortest(double number);

}  // namespace quillon::client
