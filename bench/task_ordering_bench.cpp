// SPDX-License-Identifier: MIT
#include "model/task_ordering.h"
#include "support/budget.h"
#include "support/sample_state.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace {

using namespace wrenfold;

void newestFirst(benchmark::State &state)
{
    const TaskList tasks = sampleState(int(state.range(0))).tasks;
    for (auto _ : state)
        benchmark::DoNotOptimize(TaskOrdering::applyPriorityOrder(tasks, {}));
}
BENCHMARK(newestFirst)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Each task is named in the order, as in the answer to a sort of the whole list.
void allRanked(benchmark::State &state)
{
    const TaskList tasks = sampleState(int(state.range(0))).tasks;
    QList<QUuid> order;
    for (const TaskItem &task : tasks)
        order.append(task.id);
    std::shuffle(order.begin(), order.end(), std::mt19937(2));
    for (auto _ : state)
        benchmark::DoNotOptimize(TaskOrdering::applyPriorityOrder(tasks, order));
}
BENCHMARK(allRanked)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// What the order costs at least when the records themselves are sorted: one copy of the list and the sort.
void copyAndStableSort(benchmark::State &state)
{
    const TaskList tasks = sampleState(int(state.range(0))).tasks;
    for (auto _ : state) {
        TaskList copy(tasks.begin(), tasks.end());
        std::stable_sort(copy.begin(), copy.end(), [](const TaskItem &a, const TaskItem &b) {
            return a.isDone != b.isDone ? !a.isDone : a.createdAt > b.createdAt;
        });
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(copyAndStableSort)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const std::string reference = "copyAndStableSort/100000";
    return measureBudgets(argc, argv,
                          {
                              {"priority order of 100,000 tasks, none ranked / stable_sort + copy", "x",
                               "newestFirst/100000", reference, "", 2},
                              {"priority order of 100,000 tasks, all ranked / stable_sort + copy", "x",
                               "allRanked/100000", reference, "", 2},
                          });
}
