#include "softboard/src/Process.h"

#include <utility>

namespace softboard {

Process& Process::instance() {
    static Process* const process = new Process;
    return *process;
}

IXdevice* Process::openBoard() {
    auto board = std::make_unique<IXdevice>();
    const std::lock_guard guard(mutex_);
    IXdevice* const key = board.get();
    boards_.emplace(key, std::move(board));
    return key;
}

bool Process::closeBoard(IXdevice* board) {
    std::unique_ptr<IXdevice> closed;
    const std::lock_guard guard(mutex_);
    const auto found = boards_.find(board);
    if (found == boards_.end()) {
        return false;
    }
    closed = std::move(found->second);
    boards_.erase(found);
    return true;
}

bool Process::isBoard(const IXdevice* board) const {
    const std::lock_guard guard(mutex_);
    return boards_.count(board) != 0;
}

fpga_design* Process::keep(std::unique_ptr<fpga_design> design) {
    const std::lock_guard guard(mutex_);
    fpga_design* const key = design.get();
    designs_.emplace(key, std::move(design));
    return key;
}

bool Process::unload(fpga_design* design) {
    const std::lock_guard guard(mutex_);
    return designs_.erase(design) != 0;
}

bool Process::isDesign(const fpga_design* design) const {
    const std::lock_guard guard(mutex_);
    return designs_.count(design) != 0;
}

std::size_t Process::designCount() const {
    const std::lock_guard guard(mutex_);
    return designs_.size();
}

softboard_memory* Process::keep(std::shared_ptr<softboard_memory> memory) {
    const std::lock_guard guard(mutex_);
    softboard_memory* const key = memory.get();
    memories_.emplace(key, std::move(memory));
    return key;
}

std::shared_ptr<softboard_memory> Process::memory(const softboard_memory* memory) const {
    const std::lock_guard guard(mutex_);
    const auto found = memories_.find(memory);
    return found != memories_.end() ? found->second : nullptr;
}

int Process::closeMemory(const softboard_memory* memory) {
    std::shared_ptr<softboard_memory> closed;
    const std::lock_guard guard(mutex_);
    const auto found = memories_.find(memory);
    if (found == memories_.end()) {
        return SOFTBOARD_E_ARGUMENT;
    }
    if (found->second->acquiring()) {
        return SOFTBOARD_E_ACQUISITION;
    }
    closed = std::move(found->second);
    memories_.erase(found);
    return SOFTBOARD_OK;
}

void Process::handleOpened() {
    const std::lock_guard guard(mutex_);
    ++handles_;
}

void Process::handleClosed() {
    const std::lock_guard guard(mutex_);
    --handles_;
}

std::size_t Process::handleCount() const {
    const std::lock_guard guard(mutex_);
    return handles_;
}

int Process::initError() const {
    const std::lock_guard guard(mutex_);
    return pinnedInitError_ != 0 ? pinnedInitError_ : initError_;
}

void Process::noteInitError(int code) {
    const std::lock_guard guard(mutex_);
    initError_ = code;
}

void Process::pinInitError(int number) {
    const std::lock_guard guard(mutex_);
    pinnedInitError_ = number;
}

}  // namespace softboard
