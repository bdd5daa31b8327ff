#include "RatioTable.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {
struct Comparison {
    char const *workload;
    char const *measured;
    char const *limit;
    double goal;
};

std::vector<Comparison> &comparisons()
{
    static std::vector<Comparison> list;
    return list;
}

// Prints each run as usual and keeps the processor times of the repetitions by benchmark.
class Reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(std::vector<Run> const &runs) override
    {
        for (Run const &run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                m_times[run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args)]
                    .push_back(run.GetAdjustedCPUTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatios()
    {
        std::printf("\n%-56s %10s %10s %7s %6s\n", "workload", "time", "limit", "ratio", "goal");
        for (Comparison const &row : comparisons()) {
            double const measured = median(row.measured);
            double const limit = median(row.limit);
            if (measured > 0 && limit > 0)
                std::printf("%-56s %10.4g %10.4g %7.2f %6.2f%s\n", row.workload, measured, limit, measured / limit,
                    row.goal, measured / limit <= row.goal ? "" : "  over");
        }
    }

private:
    double median(std::string const &name)
    {
        std::vector<double> &times = m_times[name];
        if (times.empty())
            return 0;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

    std::map<std::string, std::vector<double>> m_times;
};
} // namespace

int compareWithLimit(char const *workload, char const *measured, char const *limit, double goal)
{
    comparisons().push_back({ workload, measured, limit, goal });
    return 0;
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
