// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wrenfold {

/// One line of the table that script/bench.sh prints: a figure of a benchmark, beside what it may be at most.
struct Budget
{
    std::string what;
    std::string unit;             ///< "x" for a ratio of two benchmarks.
    std::string benchmark;        ///< By its name and arguments, as in "load/10000".
    std::string reference;        ///< The benchmark that it is a multiple of; empty for a figure by itself.
    std::string counter;          ///< Which of the benchmark's counters; empty for its time, in milliseconds.
    std::optional<double> atMost; ///< None for a figure that is only good to know.
};

/// Runs all benchmarks of the program, every one several times and in mixed order, so that a slow spell of
/// the machine meets all of them. Prints a line for each budget: the median over the repetitions, the
/// smallest and the largest, and MISSED where the median is over the bound. A ratio is taken repetition by
/// repetition. The result is the program's exit status: 1 if a benchmark failed, but 0 for a missed budget.
[[nodiscard]] int measureBudgets(int argc, char **argv, const std::vector<Budget> &budgets,
                                 int repetitions = 9);

/// The value that so many in 100 do not exceed.
[[nodiscard]] double percentile(int percent, std::vector<double> values);

} // namespace wrenfold
