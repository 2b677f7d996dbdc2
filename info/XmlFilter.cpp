#include "info/XmlFilter.h"

#include <array>
#include <cstddef>

namespace quillon {

namespace {

/// What stands for a byte in XML; empty for a byte that stands for itself.
constexpr std::array<std::string_view, 256> entities = [] {
    std::array<std::string_view, 256> table{};
    table['"'] = "&quot;";
    table['&'] = "&amp;";
    table['\''] = "&apos;";
    table['<'] = "&lt;";
    table['>'] = "&gt;";
    return table;
}();

constexpr std::array<bool, 256> tableOf(std::string_view bytes) {
    std::array<bool, 256> table{};
    for (const char byte : bytes) {
        table[static_cast<unsigned char>(byte)] = true;
    }
    return table;
}

constexpr std::array<bool, 256> firstNameBytes = tableOf("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
constexpr std::array<bool, 256> laterNameBytes =
    tableOf("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_");

}  // namespace

// Most texts have nothing to replace, so runs are copied and not bytes.
void appendXmlString(std::string& out, std::string_view text) {
    std::size_t copied = 0;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const std::string_view entity = entities[static_cast<unsigned char>(text[position])];
        if (!entity.empty()) {
            out.append(text, copied, position - copied).append(entity);
            copied = position + 1;
        }
    }
    out.append(text, copied);
}

std::string xmlStringFilter(std::string_view text) {
    std::string escaped;
    appendXmlString(escaped, text);
    return escaped;
}

std::string xmlNameFilter(std::string_view text) {
    std::string name(text.size(), '\0');
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const auto& allowed = position == 0 ? firstNameBytes : laterNameBytes;
        name[length] = text[position];
        length += allowed[static_cast<unsigned char>(text[position])] ? 1 : 0;
    }
    name.resize(length);
    return name;
}

}  // namespace quillon
