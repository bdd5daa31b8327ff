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
    double limits;
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
                    .push_back(run.run_name.time_type.empty() ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatios()
    {
        std::printf("\n%-56s %10s %10s %7s %6s\n", "workload", "time", "limit", "ratio", "goal");
        for (Comparison const &row : comparisons()) {
            double const measured = median(row.measured);
            double const limit = median(row.limit) * row.limits;
            if (measured <= 0 || limit <= 0)
                continue;
            double const ratio = measured / limit;
            std::printf("%-56s %10.4g %10.4g %7.2f", row.workload, measured, limit, ratio);
            if (row.goal > 0)
                std::printf(" %6.2f%s", row.goal, ratio <= row.goal ? "" : "  over");
            std::printf("\n");
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

int compareWithLimit(char const *workload, char const *measured, char const *limit, double goal, double limits)
{
    comparisons().push_back({ workload, measured, limit, goal, limits });
    return 0;
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList const typed = application.arguments();
    if (typed.size() == 3 && typed[1].startsWith(QLatin1String("--first-")))
        return runFirstOfProcess(typed[1], typed[2]);
    // What is measured and its limit take turns.
    std::vector<char *> arguments(argv, argv + argc);
    std::string defaults[] = { "--benchmark_repetitions=7", "--benchmark_enable_random_interleaving=true" };
    for (std::string &option : defaults)
        arguments.insert(arguments.begin() + 1, option.data());
    argc = int(arguments.size());
    argv = arguments.data();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
