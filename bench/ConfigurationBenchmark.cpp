// Saving and loading the state, on a file of the state at start.

#include <benchmark/benchmark.h>
#include <stdio.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"
#include "quillon/PublicParameters.h"

namespace {

using namespace quillon::client;

/// An applet on a board that records nothing, and a file that holds its state.
class SavedState {
public:
    SavedState() {
        built_.board.record(false);
        if (built_.applet.saveConfig(file_) != 0) {
            throw std::runtime_error("cannot save a configuration to load");
        }
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;
    ~SavedState() { std::filesystem::remove(file_); }

    Applet& applet() { return built_.applet; }
    const std::filesystem::path& file() const { return file_; }

private:
    testing::BuiltApplet built_;
    std::filesystem::path file_ =
        std::filesystem::temp_directory_path() / ("quillon-bench-" + std::to_string(::getpid()) + ".mcf");
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
using Line = std::array<char, 256>;

File open(const std::filesystem::path& file) {
    return {std::fopen(file.c_str(), "r"), &std::fclose};
}

bool readLine(std::FILE* file, Line& line) {
    return ::fgets_unlocked(line.data(), static_cast<int>(line.size()), file) != nullptr;
}

/// The numbers of the lines at which the look-ups of a load end, in order: those of the header, and twice those of the
/// values that can be set, of which the second pass leaves out the ones that have no handler of their own.
std::vector<int> lookUpsOfALoad(const std::filesystem::path& file) {
    std::vector<int> ends = {4, 5, 8};
    std::vector<int> again;
    const File stream = open(file);
    Line line;
    for (int number = 1; readLine(stream.get(), line); ++number) {
        const std::string key(line.data(), std::strcspn(line.data(), "="));
        const quillon::PublicParameter* parameter = quillon::findPublicParameter(key);
        const bool isDebug = key.starts_with("FG_DEBUG") && key != "FG_DEBUGFILE";
        if (parameter == nullptr || parameter->access == quillon::ParameterAccess::ReadOnly || isDebug) {
            continue;
        }
        ends.push_back(number);
        const bool isRateOrSize = key.starts_with("FG_CAMERASIMULATOR_") &&
                                  (key.ends_with("WIDTH") || key.ends_with("HEIGHT") || key.ends_with("GAP") ||
                                   key.ends_with("RATE") || key.ends_with("FREQUENCY"));
        if (!isRateOrSize && !key.starts_with("FG_PROCESSING_") && key != "FG_LUT_CUSTOM_FILE") {
            again.push_back(number);
        }
    }
    ends.insert(ends.end(), again.begin(), again.end());
    return ends;
}

void ConfigurationSave(benchmark::State& state) {
    SavedState saved;
    for (auto _ : state) {
        benchmark::DoNotOptimize(saved.applet().saveConfig(saved.file()));
    }
}
BENCHMARK(ConfigurationSave)->Unit(benchmark::kMicrosecond);

void ConfigurationLoad(benchmark::State& state) {
    SavedState saved;
    for (auto _ : state) {
        if (saved.applet().loadConfig(saved.file()) != 0) {
            state.SkipWithError("the file is refused");
            break;
        }
    }
}
BENCHMARK(ConfigurationLoad)->Unit(benchmark::kMicrosecond);

/// What a load can't do without: each look-up reads the file from its start to the line behind its key.
void LinesOncePerLookup(benchmark::State& state) {
    const SavedState saved;
    const std::vector<int> ends = lookUpsOfALoad(saved.file());
    Line line;
    for (auto _ : state) {
        const File stream = open(saved.file());
        for (const int end : ends) {
            std::rewind(stream.get());
            for (int number = 0; number <= end && readLine(stream.get(), line); ++number) {
                benchmark::DoNotOptimize(line);
            }
        }
    }
    state.counters["look-ups"] = static_cast<double>(ends.size());
}
BENCHMARK(LinesOncePerLookup)->Unit(benchmark::kMicrosecond);

}  // namespace
