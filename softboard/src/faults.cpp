/// @file
/// The control interface of what goes wrong on the way of the pictures.

#include "softboard/faults.h"

#include <cmath>
#include <string>
#include <utility>

#include "softboard/src/OnBoard.h"

namespace {

using softboard::Message;
using softboard::onBoard;
using softboard::refuse;

constexpr double LongestStall = 60e6;       // microseconds
constexpr double MostLines = 4294967295.0;  // more than any frame has

}  // namespace

int softboard_plan_line_fault(IXdevice* board, uint64_t nth, int what) {
    return onBoard(board, [&]() -> Message {
        if (what < SOFTBOARD_FAULT_DROP || what > SOFTBOARD_FAULT_INVERT_BITS) {
            return refuse("a line is dropped (0), repeated (1), or its bits are inverted (2)");
        }
        board->planLineFault(nth, static_cast<std::size_t>(what));
        return {};
    });
}

int softboard_plan_frame_fault(IXdevice* board, uint64_t nth, int what, double amount) {
    return onBoard(board, [&]() -> Message {
        switch (what) {
            case SOFTBOARD_FAULT_LOSE: break;
            case SOFTBOARD_FAULT_TRUNCATE:
                if (!(amount >= 1.0 && amount <= MostLines && std::floor(amount) == amount)) {
                    return refuse("a frame is truncated to a whole number of lines, at least 1");
                }
                break;
            case SOFTBOARD_FAULT_STALL_DMA:
                if (!(amount > 0.0 && amount <= LongestStall)) {
                    return refuse("the DMA stands still for more than 0 us and at most 60 s");
                }
                break;
            default: return refuse("a frame is lost (0), truncated (1), or stalls the DMA (2)");
        }
        board->planFrameFault(nth, {what, amount});
        return {};
    });
}

int softboard_plan_outage(IXdevice* board, int what, double after_us, double for_us) {
    return onBoard(board, [&]() -> Message {
        if (what != SOFTBOARD_OUTAGE_CAMERA && what != SOFTBOARD_OUTAGE_LINK) {
            return refuse("the camera (0) or the link (1) can be gone");
        }
        if (!(after_us >= 0.0) || std::isinf(after_us) || !(for_us > 0.0)) {
            return refuse("what is gone goes at a time from now on, and comes back later");
        }
        return board->planOutage(what, after_us, for_us);
    });
}

int softboard_camera(IXdevice* board, int connected) {
    return onBoard(board, [&]() -> Message {
        board->setCamera(connected != 0);
        return {};
    });
}

int softboard_link(IXdevice* board, int up) {
    return onBoard(board, [&]() -> Message {
        board->setLink(up != 0);
        return {};
    });
}

int softboard_dma_rate(IXdevice* board, double bytes_per_second) {
    return onBoard(board, [&]() -> Message {
        if (!(bytes_per_second > 0.0)) {
            return refuse("the DMA moves more than 0 bytes a second");
        }
        board->setDmaRate(bytes_per_second);
        return {};
    });
}
