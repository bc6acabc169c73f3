#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

/// Prints the usual table and remembers the shortest time of each benchmark over its repetitions, the one that the
/// machine's other work disturbed least.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const auto [entry, isNew] = m_shortest.try_emplace(run.run_name.function_name, run.GetAdjustedCPUTime());
            entry->second = std::min(entry->second, run.GetAdjustedCPUTime());
        }
    }

    /// One line: how many times as long as the yardstick our own code takes.
    void printRatio(const char* what, const char* own, const char* yardstick) const
    {
        const auto a = m_shortest.find(own);
        const auto b = m_shortest.find(yardstick);
        if (a != m_shortest.end() && b != m_shortest.end())
            std::printf("%s: %.2f times the time of %s\n", what, a->second / b->second, yardstick);
    }

private:
    std::map<std::string, double> m_shortest;
};
