#include "bench/Ratios.h"

#include <array>
#include <cstdio>

namespace quillon::bench {

namespace {

struct Ratio {
    const char* words;
    const char* measured;
    const char* against;
    double aim;  ///< the largest ratio that is wanted; 0 where there is no aim
};

constexpr std::array Ratios = {
    Ratio{"remembered read / lock and unlock", "RememberedRead", "LockAndUnlock", 3.0},
    Ratio{"FG_WIDTH write / its SDK calls, bare", "WidthWrite", "WidthWriteBareSdkCalls", 1.3},
    Ratio{"refused value / lock and unlock", "RefusedWrite", "LockAndUnlock", 0},
    Ratio{"text read and release, 60,000 out / 1,000 out", "TextReleaseAmong60000", "TextReleaseAmong1000", 2.0},
    Ratio{"disabled message / one comparison", "DisabledMessage", "OneComparison", 0},
    Ratio{"start-up / its SDK accesses, bare", "StartUp", "StartUpBareSdkAccesses", 0},
    Ratio{"gamma change / 16384 pow", "ProcessingGammaChange", "PowLoop", 1.2},
    Ratio{"gain change at gamma 1 / 16384 pow", "ProcessingGainChangeAtGammaOne", "PowLoop", 0.1},
    Ratio{"load / a pass over the lines per look-up", "ConfigurationLoad", "LinesOncePerLookup", 1.5},
    Ratio{"description / its bytes into a buffer", "DescriptionBuild", "DescriptionBytesIntoBuffer", 2.0},
    Ratio{"description / the same by an XML library", "DescriptionBuild", "DescriptionByXmlLibrary", 1.0},
    Ratio{"photo of 16 bits to FG_COL24 / its copy", "DrawPhotoRgb16Col24", "CopyRgb16", 2.5},
    Ratio{"noise of 16 bits to FG_COL24 / its copy", "DrawNoiseRgb16Col24", "CopyRgb16", 3.0},
    Ratio{"photo of 16 bits to FG_COL48 / its copy", "DrawPhotoRgb16Col48", "CopyRgb16", 3.0},
    Ratio{"noise of 16 bits to FG_COL48 / its copy", "DrawNoiseRgb16Col48", "CopyRgb16", 3.0},
    Ratio{"photo of 16 bits to FG_COL30 / its copy", "DrawPhotoRgb16Col30", "CopyRgb16", 3.0},
    Ratio{"noise of 16 bits to FG_COL30 / its copy", "DrawNoiseRgb16Col30", "CopyRgb16", 3.0},
    Ratio{"noise of 8 bits to FG_COL24 / its copy", "DrawNoiseRgb8Col24", "CopyRgb8", 3.3},
    Ratio{"ramp of 8 bits / noise of 8 bits", "DrawRampRgb8Col24", "DrawNoiseRgb8Col24", 1.0},
    Ratio{"ramp in the upper 8 of 16 bits / noise", "DrawRampRgb16Col24", "DrawNoiseRgb16Col24", 1.0},
    Ratio{"simulator frame / copy of 16 bits", "DrawSimulatorCol24", "CopyRgb16", 0.6},
    Ratio{"photo of 16 bits on a belt / its copy", "DrawBeltRgb16Col24", "CopyRgb16", 3.0},
    Ratio{"the same in light / its copy", "DrawBeltInLightRgb16Col24", "CopyRgb16", 0},
    Ratio{"the same with noise / its copy", "DrawBeltWithNoiseRgb16Col24", "CopyRgb16", 0},
    Ratio{"photo of 8 bits on a belt / its copy", "DrawBeltRgb8Col24", "CopyRgb8", 3.0},
    Ratio{"the same in light / its copy", "DrawBeltInLightRgb8Col24", "CopyRgb8", 0},
    Ratio{"the same with noise / its copy", "DrawBeltWithNoiseRgb8Col24", "CopyRgb8", 0},
    Ratio{"camera line, unheard / lock and unlock", "CameraLineUnheard", "LockAndUnlock", 6.0},
    Ratio{"camera line, routed / lock and unlock", "CameraLineRouted", "LockAndUnlock", 60.0},
    Ratio{"camera line for a memory / lock and unlock", "CameraLineForMemory", "LockAndUnlock", 0},
    Ratio{"simulator line, unheard / lock and unlock", "SimulatorLineUnheard", "LockAndUnlock", 6.0},
    Ratio{"simulator line, routed / lock and unlock", "SimulatorLineRouted", "LockAndUnlock", 60.0},
    Ratio{"simulator line for a memory / lock and unlock", "SimulatorLineForMemory", "LockAndUnlock", 0},
    Ratio{"last picture number / lock and unlock", "LastPictureNumber", "LockAndUnlock", 12.0},
    Ratio{"last picture number, noted / lock and unlock", "LastPictureNumberNoted", "LockAndUnlock", 12.0},
};

}  // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        // With repetitions the median counts, else the one run.
        if (!run.error_occurred && (run.run_type == Run::RT_Iteration || run.aggregate_name == "median")) {
            cpuTimeByName_[run.run_name.function_name] =
                run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e9;
        }
    }
}

void RatioReporter::printRatios() const {
    std::printf("\n%-46s %10s %10s %8s %6s\n", "ratio", "ns", "against", "ratio", "aim");
    for (const Ratio& ratio : Ratios) {
        const auto measured = cpuTimeByName_.find(ratio.measured);
        const auto against = cpuTimeByName_.find(ratio.against);
        if (measured == cpuTimeByName_.end() || against == cpuTimeByName_.end()) {
            continue;
        }
        std::printf("%-46s %10.1f %10.1f %8.2f ", ratio.words, measured->second, against->second,
                    measured->second / against->second);
        if (ratio.aim > 0) {
            std::printf("%6.1f\n", ratio.aim);
        } else {
            std::printf("%6s\n", "-");
        }
    }
}

}  // namespace quillon::bench
