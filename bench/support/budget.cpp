// SPDX-License-Identifier: MIT
#include "support/budget.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>

namespace wrenfold {

namespace {

using Run = benchmark::BenchmarkReporter::Run;

/// Why a run did not come to its end; none of one that did. Later versions of the library have other names for it.
template<typename AnyRun>
std::optional<std::string> errorOf(const AnyRun &run)
{
    if constexpr (requires { run.error_occurred; })
        return run.error_occurred ? std::optional(run.error_message) : std::nullopt;
    else
        return run.skipped ? std::optional(run.skip_message) : std::nullopt;
}

/// Keeps every repetition of every benchmark; what is printed follows from them at the end.
class Collector final : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (const std::optional<std::string> error = errorOf(run)) {
                std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), error->c_str());
                m_hasFailed = true;
            } else if (run.run_type == Run::RT_Iteration) {
                const std::string &arguments = run.run_name.args;
                m_runs[run.run_name.function_name + (arguments.empty() ? "" : "/" + arguments)].push_back(
                    run);
            }
        }
    }

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// The figure of each repetition; empty when there was no such benchmark.
    [[nodiscard]] std::vector<double> figures(const std::string &name, const std::string &counter) const
    {
        std::vector<double> result;
        const auto found = m_runs.find(name);
        if (found == m_runs.end())
            return result;
        for (const Run &run : found->second) {
            result.push_back(counter.empty() ? run.GetAdjustedRealTime() /
                                                   benchmark::GetTimeUnitMultiplier(run.time_unit) * 1000
                                             : run.counters.at(counter).value);
        }
        return result;
    }

private:
    std::map<std::string, std::vector<Run>> m_runs;
    bool m_hasFailed = false;
};

std::string text(double value)
{
    char buffer[32];
    const int decimals = value >= 100 ? 0 : value >= 10 ? 1 : 2;
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    return buffer;
}

double median(const std::vector<double> &sorted)
{
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

/// Of a ratio, what the two sides were.
std::string sides(std::vector<double> figures, std::vector<double> references)
{
    std::sort(figures.begin(), figures.end());
    std::sort(references.begin(), references.end());
    return text(median(figures)) + " / " + text(median(references));
}

/// False when there is nothing to print, since the benchmark was filtered out or has failed.
bool print(const Budget &budget, const Collector &collector)
{
    const std::vector<double> figures = collector.figures(budget.benchmark, budget.counter);
    std::vector<double> values = figures;
    std::string both;
    if (!budget.reference.empty()) {
        const std::vector<double> references = collector.figures(budget.reference, budget.counter);
        values.resize(std::min(figures.size(), references.size()));
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = figures[i] / references[i];
        if (!values.empty())
            both = sides(figures, references);
    }
    if (values.empty())
        return false;
    std::sort(values.begin(), values.end());
    const bool isMissed = budget.atMost && median(values) > *budget.atMost;
    const std::string bound = budget.atMost ? "<= " + text(*budget.atMost) : "";
    const std::string noise = text(values.front()) + "-" + text(values.back());
    std::printf("%-70s %8s %-3s %-9s %-13s %-20s%s\n", budget.what.c_str(), text(median(values)).c_str(),
                budget.unit.c_str(), bound.c_str(), noise.c_str(), both.c_str(), isMissed ? " MISSED" : "");
    std::fflush(stdout);
    return true;
}

} // namespace

int measureBudgets(int argc, char **argv, const std::vector<Budget> &budgets, int repetitions)
{
    std::string repeat = "--benchmark_repetitions=" + std::to_string(repetitions);
    std::string mix = "--benchmark_enable_random_interleaving=true";
    // Before the caller's own, of which the last one counts.
    std::vector<char *> arguments = {argv[0], repeat.data(), mix.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;

    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    const auto printed = std::count_if(budgets.begin(), budgets.end(),
                                       [&](const Budget &budget) { return print(budget, collector); });
    return collector.hasFailed() || printed == 0 ? 1 : 0;
}

double percentile(int percent, std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const auto rank = std::size_t(std::ceil(double(percent) * double(values.size()) / 100));
    return values.at(rank - 1);
}

} // namespace wrenfold
