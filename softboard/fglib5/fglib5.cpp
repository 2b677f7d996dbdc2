/// @file
/// The SDK's functions over a board.

#include "softboard/fglib5.h"

#include <memory>
#include <mutex>
#include <string>

#include "softboard/fglib5/ConfigurationFile.h"
#include "softboard/fglib5/InfoTree.h"
#include "softboard/softboard.h"
#include "softboard/src/Guarded.h"
#include "softboard/src/Process.h"

/// A bound pair of board and design.
struct Fg_Struct_s {
    static constexpr std::uint64_t Alive = 0x4F4C524F46470001;

    std::uint64_t state = Alive;
    IXdevice* board = nullptr;
    std::unique_ptr<softboard::InfoTree> info;  ///< made when it is first asked for
};

namespace {

using softboard::Board;
using softboard::Function;
using softboard::guarded;
using softboard::listed;
using softboard::Process;

constexpr int KeepStateFlag = 1;

/// An access is the hot path: it costs this comparison before the board's lock.
bool isHandle(const Fg_Struct* fg) {
    return fg != nullptr && fg->state == Fg_Struct_s::Alive;
}

/// Runs one call on the handle's board, under its lock.
template <class Result, class Arguments, class Body>
Result onBoard(Fg_Struct* fg, Function function, Result otherwise, Arguments arguments, Body body) {
    if (!isHandle(fg)) {
        return otherwise;
    }
    return guarded<Result>(otherwise, [&] { return fg->board->recorder().call(function, arguments, body); });
}

/// The answer of a call that started or stopped an acquisition: what is left of the former one has ended by then.
int settled(Fg_Struct* fg, int result) {
    if (isHandle(fg)) {
        guarded<int>(SOFTBOARD_E_INTERNAL, [&]() -> int {
            fg->board->settleAcquisition();
            return SOFTBOARD_OK;
        });
    }
    return result;
}

std::string noArguments() {
    return {};
}

Fg_Struct* bound(IXdevice* device, fpga_design* design, int flags) {
    auto fg = std::make_unique<Fg_Struct>();
    fg->board = device;
    device->configureLocked(*design, (flags & KeepStateFlag) != 0);
    Process::instance().handleOpened();
    return fg.release();
}

Fg_Struct* initialised(Function function, const char* name, IXdevice* device, fpga_design* design, int flags) {
    Process& process = Process::instance();
    const bool deviceKnown = process.isBoard(device);
    const int refusal = !deviceKnown                ? SOFTBOARD_E_ARGUMENT
                        : !process.isDesign(design) ? SOFTBOARD_E_NO_DESIGN
                                                    : SOFTBOARD_OK;
    const auto refused = [&](std::int64_t code) -> Fg_Struct* {
        process.noteInitError(static_cast<int>(code));
        return nullptr;
    };
    softboard::Recorder& recorder = deviceKnown ? device->recorder() : process.recorder();
    return recorder.call(
        function, [&] { return listed(name, flags); },
        [&] { return refusal != SOFTBOARD_OK ? refused(refusal) : bound(device, design, flags); }, refused);
}

/// Shading, which the SDK has functions for but no board of this kind.
template <class Result>
Result noShading(Function function, Result answer) {
    return guarded<Result>(
        answer, [&] { return Process::instance().recorder().call(function, noArguments, [&] { return answer; }); });
}

int notImplemented(Function function) {
    return noShading<int>(function, SOFTBOARD_E_NOT_IMPLEMENTED);
}

}  // namespace

Fg_Struct* Fg_InitHandleSlaveAware(const char* name, IXdevice* device, fpga_design* design, int flags) {
    return guarded<Fg_Struct*>(
        nullptr, [&] { return initialised(Function::Fg_InitHandleSlaveAware, name, device, design, flags); });
}

Fg_Struct* Fg_InitHandle(const char* name, IXdevice* device, fpga_design* design) {
    return guarded<Fg_Struct*>(nullptr, [&] { return initialised(Function::Fg_InitHandle, name, device, design, 0); });
}

int Fg_FreeGrabber(Fg_Struct* fg) {
    const int result = onBoard<int>(fg, Function::Fg_FreeGrabber, SOFTBOARD_E_ARGUMENT, noArguments, [&] {
        if (fg->board->acquiringLocked()) {
            fg->board->stopAcquisitionLocked(0);
        }
        return SOFTBOARD_OK;
    });
    settled(fg, result);
    if (isHandle(fg)) {  // a planned fault changes the answer only: nobody could free the handle after it
        fg->state = 0;
        delete fg;
        Process::instance().handleClosed();
    }
    return result;
}

int Fg_getLastErrorNumber(Fg_Struct* fg) {
    if (!isHandle(fg)) {
        Process& process = Process::instance();
        return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
            return process.recorder().call(Function::Fg_getLastErrorNumber, noArguments,
                                           [&] { return process.initError(); });
        });
    }
    return onBoard<int>(fg, Function::Fg_getLastErrorNumber, SOFTBOARD_E_INTERNAL, noArguments,
                        [&] { return fg->board->lastErrorLocked(); });
}

int Fg_getAppletId(Fg_Struct* fg, const void*) {
    return onBoard<int>(fg, Function::Fg_getAppletId, SOFTBOARD_E_ARGUMENT, noArguments,
                        [&] { return fg->board->designTypeLocked(); });
}

int Fg_getParameterIdByName(Fg_Struct* fg, const char* name) {
    return onBoard<int>(
        fg, Function::Fg_getParameterIdByName, SOFTBOARD_E_ARGUMENT, [&] { return listed(name); },
        [&] {
            return fg->board->noteErrorLocked(name != nullptr ? fg->board->idByNameLocked(name) : SOFTBOARD_E_ARGUMENT);
        });
}

int Fg_setParameterWithType(Fg_Struct* fg, int id, const void* value, unsigned dma, int type) {
    if (!isHandle(fg)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
        return fg->board->writeParameter(Function::Fg_setParameterWithType, id, value, dma, type);
    });
}

int Fg_getParameterWithType(Fg_Struct* fg, int id, void* value, unsigned dma, int type) {
    if (!isHandle(fg)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
        return fg->board->readParameter(Function::Fg_getParameterWithType, id, value, dma, type);
    });
}

int Fg_setParameter(Fg_Struct* fg, int id, const void* value, unsigned dma) {
    if (!isHandle(fg)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
        return fg->board->writeParameter(Function::Fg_setParameter, id, value, dma, Board::OwnType);
    });
}

int Fg_getParameter(Fg_Struct* fg, int id, void* value, unsigned dma) {
    if (!isHandle(fg)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    return guarded<int>(SOFTBOARD_E_INTERNAL, [&] {
        return fg->board->readParameter(Function::Fg_getParameter, id, value, dma, Board::OwnType);
    });
}

int Fg_freeParameterStringWithType(Fg_Struct* fg, int id, void* value, unsigned dma, int type) {
    return onBoard<int>(
        fg, Function::Fg_freeParameterStringWithType, SOFTBOARD_E_ARGUMENT, [&] { return listed(id, dma, type); },
        [&] { return fg->board->noteErrorLocked(fg->board->releaseTextLocked(static_cast<char*>(value))); });
}

void* Fg_getParameterInfo(Fg_Struct* fg, int port) {
    return onBoard<void*>(
        fg, Function::Fg_getParameterInfo, nullptr, [&] { return listed(port); },
        [&]() -> void* {
            if (port != 0) {
                fg->board->noteErrorLocked(SOFTBOARD_E_ARGUMENT);
                return nullptr;
            }
            if (!fg->info) {
                fg->info = std::make_unique<softboard::InfoTree>(fg->board->parametersLocked());
            }
            return fg->info->head();
        });
}

int Fg_saveConfig(Fg_Struct* fg, const char* filename) {
    return onBoard<int>(
        fg, Function::Fg_saveConfig, SOFTBOARD_E_ARGUMENT, [&] { return listed(filename); },
        [&] {
            return fg->board->noteErrorLocked(
                filename != nullptr ? softboard::saveConfigurationLocked(*fg->board, filename) : SOFTBOARD_E_ARGUMENT);
        });
}

int Fg_loadConfig(Fg_Struct* fg, const char* filename) {
    return onBoard<int>(
        fg, Function::Fg_loadConfig, SOFTBOARD_E_ARGUMENT, [&] { return listed(filename); },
        [&] {
            return fg->board->noteErrorLocked(
                filename != nullptr ? softboard::loadConfigurationLocked(*fg->board, filename) : SOFTBOARD_E_ARGUMENT);
        });
}

int Fg_AcquireEx(Fg_Struct* fg, unsigned dma, int64_t count, unsigned flags, void* memory) {
    const int result = onBoard<int>(
        fg, Function::Fg_AcquireEx, SOFTBOARD_E_ARGUMENT, [&] { return listed(dma, count, flags); },
        [&] { return fg->board->startAcquisitionLocked(dma, count, static_cast<softboard_memory*>(memory)); });
    return settled(fg, result);
}

int Fg_stopAcquireEx(Fg_Struct* fg, unsigned dma, void*, unsigned flags) {
    const int result = onBoard<int>(
        fg, Function::Fg_stopAcquireEx, SOFTBOARD_E_ARGUMENT, [&] { return listed(dma, flags); },
        [&] { return fg->board->stopAcquisitionLocked(dma); });
    return settled(fg, result);
}

int Fg_Acquire(Fg_Struct* fg, unsigned dma, int64_t count) {
    const int result = onBoard<int>(
        fg, Function::Fg_Acquire, SOFTBOARD_E_ARGUMENT, [&] { return listed(dma, count); },
        [&] { return fg->board->startAcquisitionLocked(dma, count, nullptr); });
    return settled(fg, result);
}

int Fg_stopAcquire(Fg_Struct* fg, unsigned dma) {
    const int result = onBoard<int>(
        fg, Function::Fg_stopAcquire, SOFTBOARD_E_ARGUMENT, [&] { return listed(dma); },
        [&] { return fg->board->stopAcquisitionLocked(dma); });
    return settled(fg, result);
}

int64_t Fg_getLastPicNumberEx(Fg_Struct* fg, unsigned dma, void*) {
    return onBoard<int64_t>(
        fg, Function::Fg_getLastPicNumberEx, SOFTBOARD_E_ARGUMENT, [&] { return listed(dma); },
        [&]() -> int64_t {
            return dma == 0 ? fg->board->picturesLocked() : fg->board->noteErrorLocked<int64_t>(SOFTBOARD_E_ARGUMENT);
        });
}

int64_t Fg_getLastPicNumberBlockingEx(Fg_Struct* fg, int64_t number, unsigned dma, unsigned timeout, void*) {
    if (!isHandle(fg)) {
        return SOFTBOARD_E_ARGUMENT;
    }
    return guarded<int64_t>(SOFTBOARD_E_INTERNAL, [&] { return fg->board->waitForPicture(number, dma, timeout); });
}

int64_t Fg_getStatusEx(Fg_Struct* fg, unsigned param, int64_t data, unsigned dma, void*) {
    return onBoard<int64_t>(
        fg, Function::Fg_getStatusEx, SOFTBOARD_E_ARGUMENT, [&] { return listed(param, data, dma); },
        [&] {
            const int64_t result =
                dma == 0 ? fg->board->acquisitionStatusLocked(param, data) : int64_t{SOFTBOARD_E_ARGUMENT};
            return fg->board->noteErrorLocked(result);
        });
}

void* Fg_AllocShading(Fg_Struct*, int, int) {
    return noShading<void*>(Function::Fg_AllocShading, nullptr);
}

int Fg_FreeShading(Fg_Struct*, void*) {
    return notImplemented(Function::Fg_FreeShading);
}

int Shad_SetSubValueLine(void*, int, int, float) {
    return notImplemented(Function::Shad_SetSubValueLine);
}

int Shad_SetMultValueLine(void*, int, int, float) {
    return notImplemented(Function::Shad_SetMultValueLine);
}

int Shad_SetFixedPatternNoiseLine(void*, int, int, int) {
    return notImplemented(Function::Shad_SetFixedPatternNoiseLine);
}

int Shad_GetMaxLine(void*) {
    return notImplemented(Function::Shad_GetMaxLine);
}

int Shad_GetAccess(void*) {
    return notImplemented(Function::Shad_GetAccess);
}

int Shad_FreeAccess(void*) {
    return notImplemented(Function::Shad_FreeAccess);
}

int Shad_WriteActLine(void*, int) {
    return notImplemented(Function::Shad_WriteActLine);
}
