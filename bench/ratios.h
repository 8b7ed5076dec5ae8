#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>

/// Keeps the best time of each benchmark, and its last counters, for the ratios printed at the end.
class Ratios final : public benchmark::ConsoleReporter {
 public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            double& best =
                times_.try_emplace(run.run_name.function_name + run.run_name.args, 1e300).first->second;
            best = std::min(best, run.GetAdjustedRealTime());
            for (const auto& [name, counter] : run.counters)
                counters_[name] = counter;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    double ratio(const std::string& measured, const std::string& yardstick) {
        return times_[measured] / times_[yardstick];
    }
    double counter(const std::string& name) { return counters_[name]; }

 private:
    std::map<std::string, double> times_;
    std::map<std::string, double> counters_;
};
