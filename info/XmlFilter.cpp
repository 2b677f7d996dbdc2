#include "info/XmlFilter.h"

namespace quillon {

std::string xmlStringFilter(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char byte : text) {
        switch (byte) {
            case '"': escaped += "&quot;"; break;
            case '&': escaped += "&amp;"; break;
            case '\'': escaped += "&apos;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            default: escaped += byte; break;
        }
    }
    return escaped;
}

std::string xmlNameFilter(std::string_view text) {
    const auto isLetter = [](char byte) { return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z'); };
    const auto isLaterByte = [](char byte) { return (byte >= '0' && byte <= '9') || byte == '_'; };
    std::string name;
    name.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (isLetter(text[position]) || (position > 0 && isLaterByte(text[position]))) {
            name += text[position];
        }
    }
    return name;
}

}  // namespace quillon
