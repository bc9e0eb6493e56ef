// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "platform/linux/file_preferences.h"
#include "platform/system_clock.h"
#include "support/bench_file_system.h"
#include "support/budget.h"
#include "support/quiet_services.h"
#include "support/sample_state.h"

#include <QLoggingCategory>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

using namespace wrenfold;

/// What the program holds of the allocator, in the heap and beside it.
double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

/// Fifty renames, each of another task: every step has a list of its own, with all texts but one shared.
void undoSteps(benchmark::State &state)
{
    constexpr int steps = 50;
    const int count = int(state.range(0));
    const BenchFolder folder;
    SystemClock clock;
    FileSystemWithoutFlush fileSystem;
    FilePreferences preferences(folder.path(), clock, fileSystem);
    if (preferences.write(FocusStore::storageKey(), encodeSavedState(sampleState(count))))
        state.SkipWithError("the document could not be written");
    for (auto _ : state) {
        QuietServices quiet;
        FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        store.mediumGoal.set(
            QStringLiteral("目標")); // Brings what the first save allocates once and for all.
        const double before = allocatedBytes();
        for (int i = 0; i < steps; ++i)
            store.updateTaskTitle(store.tasks.value().at(i), QStringLiteral("新しい題名 %1").arg(i));
        state.counters["step"] = (allocatedBytes() - before) / steps / 1'000'000;
    }
}
BENCHMARK(undoSteps)->Arg(10'000)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false"));
    const QCoreApplication application(argc, argv);
    return measureBudgets(
        argc, argv,
        {{"memory of an undo step of 10,000 tasks (mean of 50)", "MB", "undoSteps/10000", "", "step", 1.5}});
}
