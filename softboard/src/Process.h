/// @file
/// What there is once in the process: which boards, designs and handles are alive, and the record of calls that name no
/// board.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "softboard/src/Board.h"
#include "softboard/src/FrameMemory.h"
#include "softboard/src/LoadedDesign.h"

namespace softboard {

class SOFTBOARD_API Process {
public:
    /// It is never destroyed, so that libraries that are unloaded late may still call.
    static Process& instance();

    Recorder& recorder() { return recorder_; }

    IXdevice* openBoard();
    /// False if there is no such board.
    bool closeBoard(IXdevice* board);
    bool isBoard(const IXdevice* board) const;

    fpga_design* keep(std::unique_ptr<fpga_design> design);
    bool unload(fpga_design* design);
    bool isDesign(const fpga_design* design) const;
    std::size_t designCount() const;

    softboard_memory* keep(std::shared_ptr<softboard_memory> memory);
    /// Null if there is no such memory.
    std::shared_ptr<softboard_memory> memory(const softboard_memory* memory) const;
    /// SOFTBOARD_E_ARGUMENT if there is no such memory, SOFTBOARD_E_ACQUISITION while one fills it.
    int closeMemory(const softboard_memory* memory);

    void handleOpened();
    void handleClosed();
    std::size_t handleCount() const;

    /// What Fg_getLastErrorNumber answers for a null handle; a pinned number goes before a noted one.
    int initError() const;
    void noteInitError(int code);
    void pinInitError(int number);

private:
    mutable std::mutex mutex_;
    Recorder recorder_;
    std::unordered_map<const IXdevice*, std::unique_ptr<IXdevice>> boards_;
    std::unordered_map<const fpga_design*, std::unique_ptr<fpga_design>> designs_;
    std::unordered_map<const softboard_memory*, std::shared_ptr<softboard_memory>> memories_;
    std::size_t handles_ = 0;
    int initError_ = 0;
    int pinnedInitError_ = 0;
};

}  // namespace softboard
