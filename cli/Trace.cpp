#include "cli/Trace.h"

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
        append(list, object({{"sequence", access.sequence},
                             {"direction", directionText(access.direction)},
                             {"name", access.name},
                             {"id", access.id},
                             {"type", access.type},
                             {"value", access.value},
                             {"result", access.result}}));
    }
    return list;
}

}  // namespace quillon::cli
