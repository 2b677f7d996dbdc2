/// @file
/// What is measured against what. A ratio of two times of one run says more than either time: it holds on other
/// machines too.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace quillon::bench {

/// Prints the usual table and keeps the times, so that ratios can be told at the end.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    using ConsoleReporter::ConsoleReporter;
    void ReportRuns(const std::vector<Run>& runs) override;
    /// Prints every ratio whose two sides have been measured.
    void printRatios() const;

private:
    std::map<std::string, double> cpuTimeByName_;  ///< nanoseconds
};

}  // namespace quillon::bench
