#include "softboard/src/Recorder.h"

namespace softboard {
namespace {

std::array<std::atomic<std::uint64_t>, FunctionNames.size()> counts{};

}  // namespace

void countCall(Function function) {
    counts[static_cast<std::size_t>(function)].fetch_add(1, std::memory_order_relaxed);
}

std::uint64_t callCount(std::string_view name) {
    for (std::size_t function = 0; function < FunctionNames.size(); ++function) {
        if (name == FunctionNames[function]) {
            return counts[function].load(std::memory_order_relaxed);
        }
    }
    return 0;
}

}  // namespace softboard
