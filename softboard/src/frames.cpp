/// @file
/// The control interface of frames.

#include "softboard/frames.h"

#include "softboard/src/FrameMemory.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/Process.h"

namespace {

using softboard::guarded;
using softboard::Process;

/// Runs `body` with the memory, if it is open.
template <class Result, class Body>
Result withMemory(const softboard_memory* memory, Result otherwise, Body body) {
    return guarded<Result>(otherwise, [&]() -> Result {
        const auto open = Process::instance().memory(memory);
        return open != nullptr ? body(*open) : otherwise;
    });
}

}  // namespace

softboard_memory* softboard_memory_open(IXdevice* board, size_t buffer_size, unsigned buffers, const char* shm_name) {
    return guarded<softboard_memory*>(nullptr, [&]() -> softboard_memory* {
        if (!Process::instance().isBoard(board)) {
            return nullptr;
        }
        auto memory = softboard::FrameMemory::make(board, buffer_size, buffers, shm_name);
        return memory != nullptr ? Process::instance().keep(std::move(memory)) : nullptr;
    });
}

int softboard_memory_close(softboard_memory* memory) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] { return Process::instance().closeMemory(memory); });
}

int softboard_memory_mode(softboard_memory* memory, int mode) {
    return withMemory<int>(memory, SOFTBOARD_E_ARGUMENT, [&](softboard_memory& it) { return it.setMode(mode); });
}

const void* softboard_memory_data(softboard_memory* memory, int64_t number, softboard_frame* about) {
    return withMemory<const void*>(memory, nullptr, [&](softboard_memory& it) { return it.data(number, about); });
}

int softboard_memory_release(softboard_memory* memory, int64_t number) {
    return withMemory<int>(memory, SOFTBOARD_E_ARGUMENT, [&](softboard_memory& it) {
        const int result = it.release(number);
        if (result == SOFTBOARD_OK && it.acquiring()) {
            it.board()->drawWaitingFrames();
        }
        return result;
    });
}

int softboard_on_frame(softboard_memory* memory,
                       void (*frame_came)(void* user, const softboard_frame* about, const void* data), void* user) {
    return withMemory<int>(memory, SOFTBOARD_E_ARGUMENT, [&](softboard_memory& it) {
        it.onFrame(frame_came, user);
        return SOFTBOARD_OK;
    });
}

int softboard_byte_order(IXdevice* board, int red_first) {
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
        if (!Process::instance().isBoard(board)) {
            return SOFTBOARD_E_ARGUMENT;
        }
        board->setRedFirst(red_first != 0);
        return SOFTBOARD_OK;
    });
}
