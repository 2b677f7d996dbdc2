/// @file
/// What the functions of the control interface have in common that tell why they refuse a call.
#pragma once

#include <string>
#include <utility>

#include "softboard/softboard.h"
#include "softboard/src/Board.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/Process.h"

namespace softboard {

/// Runs `body`, which answers a Message, if the board exists; its text can be asked for afterwards.
template <class Body>
int onBoard(IXdevice* board, Body body) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        return Process::instance().isBoard(board) ? board->note(body()) : int{SOFTBOARD_E_ARGUMENT};
    });
}

/// An argument makes no sense.
inline Message refuse(std::string text) {
    return {SOFTBOARD_E_ARGUMENT, std::move(text)};
}

}  // namespace softboard
