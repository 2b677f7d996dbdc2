#include "cli/Trace.h"

#include <sstream>

#include "cli/Answers.h"
#include "cli/Arguments.h"

namespace quillon::cli {

namespace {

std::string directionText(client::Direction direction) {
    switch (direction) {
        case client::Direction::Read: return "read";
        case client::Direction::Write: return "write";
        case client::Direction::Call: return "call";
    }
    return "";
}

/// A table of 16384 entries is one access; its beginning says enough.
std::string shortened(const std::string& value) {
    constexpr std::size_t longest = 48;
    return value.size() <= longest ? value : value.substr(0, longest - 3) + "...";
}

/// The kind of a value by the SDK's number for its type; a register has none.
const char* typeText(std::int32_t type) {
    constexpr std::int32_t fields = 0x1000;
    switch (type) {
        case 5: return "real";
        case 6: return "text";
        default: return type >= fields ? "table" : "integer";
    }
}

Json numberOf(const std::string& text) {
    if (const auto whole = parseWholeNumber(text)) {
        return whole->negative ? Json(static_cast<std::int64_t>(0 - whole->magnitude)) : Json(whole->magnitude);
    }
    const auto real = parseReal(text);
    return real ? Json(*real) : Json(nullptr);
}

/// "[first..last]=v0,v1,...": a few entries as they are, more of them in short.
void putEntries(Json& json, const std::string& text) {
    constexpr std::size_t most = 16;
    const std::size_t sign = text.find("]=");
    if (!text.starts_with('[') || sign == std::string::npos) {
        return;
    }
    put(json, "index", numberOf(text.substr(1, text.find_first_of(".]") - 1)));
    std::istringstream rest(text.substr(sign + 2));
    std::vector<std::uint32_t> entries;
    for (std::string entry; std::getline(rest, entry, ',');) {
        entries.push_back(static_cast<std::uint32_t>(parseWholeNumber(entry).value_or(WholeNumber{}).magnitude));
    }
    if (entries.size() <= most) {
        put(json, "value", entries);
    } else {
        put(json, "table", inShort(entries));
    }
}

/// An access that was refused for what was passed has no value.
void putAccessValue(Json& json, const client::Access& access) {
    const std::string type = typeText(access.type);
    put(json, "value", type == "text" ? Json(access.value) : numberOf(access.value));
    if (type == "table") {
        putEntries(json, access.value);
    }
}

}  // namespace

void printTrace(std::ostream& out, const Painter& painter, const std::vector<client::Access>& accesses) {
    Rows rows;
    int number = 0;
    for (const client::Access& access : accesses) {
        const std::string result = access.result == 0
                                       ? painter.paint(Style::Good, "ok")
                                       : painter.paint(Style::Bad, "failed: " + std::to_string(access.result));
        rows.push_back(
            {std::to_string(++number), directionText(access.direction), access.name, shortened(access.value), result});
    }
    printRows(out, rows, "  ");
}

Json toJson(const std::vector<client::Access>& accesses) {
    Json list = emptyList();
    for (const client::Access& access : accesses) {
        Json json = object({{"sequence", list.size() + 1},
                            {"direction", directionText(access.direction)},
                            {"name", access.name},
                            {"id", access.id},
                            {"type", typeText(access.type)}});
        putAccessValue(json, access);
        put(json, "result", access.result);
        append(list, json);
    }
    return list;
}

}  // namespace quillon::cli
