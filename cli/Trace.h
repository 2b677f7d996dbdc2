#pragma once

#include <ostream>
#include <vector>

#include "cli/Terminal.h"
#include "cli/Values.h"
#include "quillon/client/SoftBoard.h"

namespace quillon::cli {

/// The accesses to the design, the SDK's parameters and the registers that `action` causes, in order.
template <typename Action>
std::vector<client::Access> traced(client::SoftBoard& board, Action action) {
    board.clearTranscript();
    action();
    std::vector<client::Access> accesses = board.transcript();
    std::erase_if(accesses, [](const client::Access& access) { return access.direction == client::Direction::Call; });
    return accesses;
}

/// One line an access: number, direction, name, value, result.
void printTrace(std::ostream& out, const Painter& painter, const std::vector<client::Access>& accesses);
/// The same, numbered from 1; more than 16 entries of a table are told in short.
Json toJson(const std::vector<client::Access>& accesses);

}  // namespace quillon::cli
